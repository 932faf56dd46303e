// SPDX-License-Identifier: MIT
// Sieving by the medium primes, those with a few multiples in a segment.
//
// For each prime the place of its next multiple is kept, and where that is in the wheel. The primes
// are held in 64 lists by residue of p and of the cofactor mod 30: one instance of the loop for
// each list knows all its offsets and masks at compile time, and the jump into the wheel is the
// same for the whole list, so that the processor need not guess it.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace premiers::crible {

/// The medium sieving primes with the state of the wheel.
struct CribleMoyen {
  struct Cribleur {
    std::uint32_t k;      // p = 30 k + residue
    std::uint32_t place;  // byte of the next multiple, from the start of the segment
  };
  /// Lists by 8 * (index of p mod 30) + index of the cofactor mod 30.
  using Listes = std::array<std::vector<Cribleur>, 64>;

  /// Adds the prime p, 5 < p < 2^28, for segments from byte `octet` on; multiples from p * p on, which
  /// must be below 30 (octet + 2^31). A prime whose first multiple is at or after `octet_fin` is
  /// dropped.
  void ajouter(std::uint32_t p, std::uint64_t octet, std::uint64_t octet_fin);

  /// Crosses off the multiples of all primes added; goes on to the next segment.
  void cribler(std::span<std::uint8_t> segment);

  Listes listes;    // at the start of a segment
  Listes avancees;  // what has gone past its end
};

}  // namespace premiers::crible
