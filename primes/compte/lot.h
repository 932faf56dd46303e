// SPDX-License-Identifier: MIT
// Hard leaves by the batch: which m suit a prime q, and where the quotients w / m lie.
//
// Both loops go through thousands of entries that have nothing to do with each other, so they are
// worth vectors: sixteen entries of the table of factors are compared and closed up at once, and
// eight quotients are taken at a time. Every m is odd, which leaves its lowest bit free to say with
// which sign its leaf counts.
//
// Cost: a quarter of the time of the hard leaves without vectors, a tenth with AVX-512.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "primes/arithmetique/processeur.h"

namespace premiers::compte {

struct Lot {
  /// Entries of a table that one lot takes: numbers, questions and answers stay in the first-level
  /// cache.
  static constexpr std::uint32_t taille = 512;
  /// The loops may read and write so much more than they say.
  static constexpr std::size_t marge = 16;

  std::vector<std::uint32_t> m = std::vector<std::uint32_t>(taille + marge);
  std::vector<std::uint32_t> questions = std::vector<std::uint32_t>(taille + marge);
};

struct BouclesDuLot {
  /// Of the ranks haut - 1 down to bas (Roue2310) those whose entry in a table of factors is greater
  /// than q: their integers, the lowest bit replaced by that of the entry. Gives how many there are.
  /// The table is readable up to the next multiple of 16; haut - bas <= Lot::taille.
  std::size_t (*retenir)(const std::uint16_t* entrees, std::uint32_t haut, std::uint32_t bas,
                         std::uint32_t q, std::uint32_t* m);
  /// Their questions to a segment that begins at `debut` (primes/compte/segment.h): of the odd integer
  /// twice w / m - debut, plus the lowest bit of what stands in m. w < 2^63, quotients below 2^50.
  void (*diviser)(std::uint64_t w, std::uint64_t debut, const std::uint32_t* m, std::size_t nombre,
                  std::uint32_t* questions);
};
Versions<BouclesDuLot> versions_du_lot();

}  // namespace premiers::compte
