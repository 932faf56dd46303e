// SPDX-License-Identifier: MIT
// Sieving by primes that have a multiple or a dozen in a segment, sixteen of them at a time, or eight.
//
// They stand in rows, by residue mod 30, and each segment goes through all of them: first they walk
// through the segment and note their multiples (primes/crible/marche.h), block by block, then these are
// crossed off. Nothing is sorted and nothing is moved; the rows are read and written from one end to the
// other, 8 bytes for each prime.
//
// Only where they really walk together: on other processors these primes are sieved as medium ones
// (primes/crible/crible_moyen.h) and as kept ones (primes/crible/crible_garde.h), at twice the cost.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "primes/crible/marche.h"

namespace premiers::crible {

/// Sieving primes in rows.
struct CribleSeize {
  /// The range in which it is the cheapest. At the lower end the loops of the medium primes are as fast,
  /// 2^16 to 2^18 are alike; 10^9 integers at 10^15 cost 2 % more where the range ends at 2^22, 5 % where
  /// it ends at 12 million.
  static constexpr std::uint32_t debut = std::uint32_t{1} << 17;
  static constexpr std::uint32_t dernier = std::uint32_t{1} << 23;
  /// Bytes of a segment at most.
  static constexpr std::size_t taille_segment = std::size_t{1} << 19;

  /// Whether it is worth while on this processor.
  static bool vaut();

  /// Adds the prime p, debut < p < 2^24, for segments from byte `octet` on, at most 2^63 / 30.
  /// Multiples below p * p are partly crossed off too: they are composite. A prime whose first multiple
  /// is at or after `octet_fin` is dropped.
  void ajouter(std::uint32_t p, std::uint64_t octet, std::uint64_t octet_fin);

  /// Crosses off the multiples of all primes added; goes on to the next segment.
  void cribler(std::span<std::uint8_t> segment);

 private:
  struct Rangee {
    std::vector<std::unique_ptr<Marcheurs>> blocs;
    std::size_t dans_le_dernier = Marcheurs::places;
  };

  std::array<Rangee, 8> rangees_;  // by index of p mod 30
  std::vector<std::uint32_t> multiples_;
};

}  // namespace premiers::crible
