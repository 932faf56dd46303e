// SPDX-License-Identifier: MIT
// Dividing the value of a polynomial by the primes of the base.
//
// Which primes divide Q(x) is read, not tried. A prime that went through a bucket has left its
// number there (seaux.h); of the others p divides if x mod p is one of its two roots, which eight
// or sixteen are asked at once. Only those are really divided by, and that by multiplication with
// the inverse modulo 2^64.
//
// The primes that were not sieved come first, and what they say decides: together with the
// logarithms that the sieve has found, they must leave no more than may be left over. Nine of ten
// candidates end there, after the thirty smallest primes (this second look is what allows the sieve
// to leave them out; S. Contini, "Factoring integers with the self-initializing quadratic sieve",
// 1997, calls it the small prime variation).
#pragma once

#include <cstdint>
#include <vector>

#include "primes/quadratique/polynome.h"
#include "primes/quadratique/tamis.h"

namespace premiers::quadratique {

/// u^2 = product of the primes * reste, modulo kn.
struct Valeur {
  Entier256 u;                          // >= 0
  std::vector<std::uint32_t> facteurs;  // indices into the base, as often as they divide; unordered
  std::uint64_t reste = 1;              // no prime of the base divides it
};

struct Division {
  /// `bits_reste`: the logarithm (to base 2) of the largest residue that is of use.
  Division(const Base& base, const Tamis& tamis, double bits_reste);
  /// Divides the value of the polynomial that was just sieved at that position, and leaves what
  /// came of it in `valeur`; false if what remains is more than 64 bits, or surely too large.
  bool diviser(const Polynomes& polynomes, Candidat candidat);

  Valeur valeur;

  const Base& base;
  const Tamis& tamis;
  double bits_reste;
  std::vector<std::uint64_t> inverses;  // of the primes, modulo 2^64
  std::vector<std::uint32_t> trouves;   // scratch
};

}  // namespace premiers::quadratique
