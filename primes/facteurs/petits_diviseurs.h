// SPDX-License-Identifier: MIT
// Exact division by small odd primes with one multiplication and one comparison each.
//
// T. Granlund and P. L. Montgomery, "Division by invariant integers using multiplication", PLDI
// 1994, section 9: with i = 1/p mod 2^64, the products n i mod 2^64 for the multiples n of p are
// the quotients, 0 .. (2^64 - 1) / p, and those for all other n are greater.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "primes/arithmetique/montgomery.h"

namespace premiers::facteurs {

struct PetitDiviseur {
  std::uint64_t inverse;           ///< 1 / p modulo 2^64
  std::uint64_t quotient_maximal;  ///< (2^64 - 1) / p
  std::uint64_t p;

  constexpr bool divise(std::uint64_t n) const { return n * inverse <= quotient_maximal; }
  /// n / p, if p divides n.
  constexpr std::uint64_t quotient(std::uint64_t n) const { return n * inverse; }
};

/// The first `nombre` odd primes.
template <std::size_t nombre>
constexpr std::array<PetitDiviseur, nombre> table_diviseurs() {
  std::array<PetitDiviseur, nombre> table{};
  std::size_t trouves = 0;
  for (std::uint64_t p = 3; trouves < nombre; p += 2) {
    bool premier = true;
    for (std::size_t i = 0; i < trouves && table[i].p * table[i].p <= p; ++i) {
      if (table[i].divise(p)) {
        premier = false;
        break;
      }
    }
    if (premier) table[trouves++] = {inverse_2_64(p), ~std::uint64_t{0} / p, p};
  }
  return table;
}

}  // namespace premiers::facteurs
