// SPDX-License-Identifier: MIT
// Dividing the value of a polynomial by the primes of the base.
//
// Why it is fast: which primes divide Q(x) is read from the roots - p does if x mod p is one of
// its two - for eight or sixteen primes at once; only those are really divided by, and that by
// multiplication with the inverse modulo 2^64.
#pragma once

#include <cstdint>
#include <vector>

#include "primes/quadratique/polynome.h"

namespace premiers::quadratique {

/// u^2 = product of the primes * reste, modulo kn.
struct Valeur {
  Entier256 u;                          // >= 0
  std::vector<std::uint32_t> facteurs;  // indices into the base, as often as they divide; unordered
  std::uint64_t reste = 1;              // no prime of the base divides it
};

struct Division {
  explicit Division(const Base& base);
  /// Divides the value of the current polynomial at that position, and leaves what came of it in
  /// `valeur`; false if more than 64 bits remain.
  bool diviser(const Polynomes& polynomes, std::uint32_t position);

  Valeur valeur;

  const Base& base;
  std::vector<std::uint64_t> inverses;  // of the primes, modulo 2^64
  std::vector<std::uint32_t> trouves;   // scratch
};

}  // namespace premiers::quadratique
