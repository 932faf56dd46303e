// SPDX-License-Identifier: MIT
// Which multiples of a point a second stage of ECM with large bounds compares: what ecm_paires.h is
// for small ones, made when it is needed.
//
// With D = 2310 every prime q is k D +- j, j coprime to D and below D/2; one comparison of k D Q
// with j Q serves both signs. The 240 values of j make one row of bits for each k: 32 bytes, 1.4 MB
// for B2 = 10^8, where 45 of 100 bits are set (the primes are 5.8 million, the comparisons 4.7).
//
// The rows serve every curve of a level, and P - 1 as well.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "primes/facteurs/ecm_paires.h"
#include "primes/suivi/suivi.h"

namespace premiers::facteurs::ecm {

/// The rows k0 .. k0 + bits.size() - 1, which hold every prime in (b1, b2].
struct Rangees {
  static constexpr std::size_t pas_de_geant = 2310;  ///< D
  static constexpr std::size_t bebes = 240;
  using Rangee = std::array<std::uint64_t, (bebes + 63) / 64>;

  std::size_t k0 = 1;
  std::vector<Rangee> bits;  ///< bit i of row k: k D - j or k D + j is wanted, j = residus()[i]

  /// The j in increasing order.
  static const std::array<std::uint16_t, bebes>& residus();

  /// pas_de_geant/2 <= b1 < b2.
  Rangees(std::uint64_t b1, std::uint64_t b2, const Suivi& suivi = {});
};

/// The pairs of a row, as those of k = 0.
inline void lire_rangee(const Rangees::Rangee& rangee, std::vector<Paire>& paires) {
  paires.clear();
  for (std::size_t m = 0; m < rangee.size(); ++m) {
    for (std::uint64_t mot = rangee[m]; mot != 0; mot &= mot - 1) {
      paires.push_back({0, static_cast<std::uint16_t>(
                               64 * m + static_cast<std::size_t>(std::countr_zero(mot)))});
    }
  }
}

}  // namespace premiers::facteurs::ecm
