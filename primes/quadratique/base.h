// SPDX-License-Identifier: MIT
// The multiplier and the factor base of the quadratic sieve.
//
// We factor n by sieving values b^2 - kn with a small multiplier k. Only primes p with a square
// root of kn mod p can divide such values; k is chosen to bring many small ones among them
// (D. Knuth and R. Schroeppel, in The Art of Computer Programming, volume 2, 4.5.4). Only k with
// kn = 1 mod 8 are taken: then 2 divides most, and the polynomials can be made for odd numbers
// 2ax + b alone, whose values are half as large (see polynome.h).
#pragma once

#include <NTL/ZZ.h>

#include <cstddef>
#include <cstdint>
#include <vector>

#include "primes/quadratique/tableau.h"
#include "primes/quadratique/vecteurs.h"

namespace premiers::quadratique {

/// The factor base, one array for each property (loops run over one property at a time).
/// Index 0 stands for -1, index 1 for 2, then come the odd primes dividing k, from `ordinaires` on
/// the odd primes of which kn is a nonzero square, increasing, up to `taille`. The arrays go on to
/// a multiple of `pas` with entries that never divide anything, for loops over whole vectors.
struct Base {
  std::uint32_t multiplicateur = 1;
  NTL::ZZ kn;
  std::size_t ordinaires = 0;
  std::size_t taille = 0;
  Tableau<std::uint32_t> premier;
  Tableau<std::uint32_t> racine;    // a square root of kn
  Tableau<float> reciproque;        // 1 / p
  std::vector<float> logarithme;    // log2 p
  std::vector<std::uint8_t> poids;  // the same, rounded
  std::uint32_t diviseur = 0;       // a prime of the base that divides n, or 0
};

/// The factor base of `taille` entries for odd n > 2^40.
Base construire_base(const NTL::ZZ& n, std::size_t taille);

/// a b mod p; a, b < 2^32, 0 < p < 2^32.
inline std::uint32_t produit_mod(std::uint32_t a, std::uint32_t b, std::uint32_t p) {
  return static_cast<std::uint32_t>(static_cast<std::uint64_t>(a) * b % p);
}

/// a^e mod p; a < p.
std::uint32_t puissance_mod(std::uint32_t a, std::uint32_t e, std::uint32_t p);

}  // namespace premiers::quadratique
