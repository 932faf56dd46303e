// SPDX-License-Identifier: MIT
// The loops of the quadratic sieve that do the same to every prime, to every byte or to every row.
//
// Written once, in plain C++; compiled twice, for any processor and for AVX2, and chosen when the
// program runs. The compiler makes vectors of 4 or 8 lanes of them. Vectors of 16 lanes, tried too,
// lose a tenth of the sieve at 116 bits and a fiftieth at 250: these loops are too short for what
// such vectors cost a processor. Those that are long have versions of their own (seaux.h).
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "primes/arithmetique/processeur.h"

namespace premiers::quadratique {

/// The arrays indexed by prime have a multiple of this many elements.
inline constexpr std::size_t largeur_vecteurs = 32;
/// The first such multiple from i on.
constexpr std::size_t vecteurs_entiers(std::size_t i) {
  return (i + largeur_vecteurs - 1) / largeur_vecteurs * largeur_vecteurs;
}

/// Primes must be below, for the float arithmetic (primes/arithmetique/quotient.h).
inline constexpr std::uint32_t borne_premiers = std::uint32_t{1} << 23;

struct Vecteurs {
  /// Moves n roots r < p by steps d < p, up or down, modulo p.
  void (*monter)(std::uint32_t* r, const std::uint32_t* d, const std::uint32_t* p, std::size_t n);
  void (*descendre)(std::uint32_t* r, const std::uint32_t* d, const std::uint32_t* p,
                    std::size_t n);
  /// r = a * b modulo p for n elements; a * b < 2^23 p; reciproque = 1 / p.
  void (*multiplier)(std::uint32_t* r, const std::uint32_t* a, const std::uint32_t* b,
                     const std::uint32_t* p, const float* reciproque, std::size_t n);
  /// Appends to `liste` the indices debut <= i < fin, both multiples of largeur_vecteurs, for which
  /// x mod p[i] is r1[i] or r2[i]; x < 2^22.
  void (*reperer)(std::uint32_t x, const std::uint32_t* p, const float* reciproque,
                  const std::uint32_t* r1, const std::uint32_t* r2, std::size_t debut,
                  std::size_t fin, std::vector<std::uint32_t>& liste);
  /// Appends to `liste` the indices of the bytes whose bit 7 is set; n is a multiple of 64.
  void (*relever)(const std::uint8_t* octets, std::size_t n, std::vector<std::uint32_t>& liste);
  /// Adds (modulo 2) to each row of a bit matrix of `mots` words a row, from the word of group g
  /// on, those two of 2 * 256 sums which its bits in columns 16g .. 16g + 15 tell: eight each.
  void (*eliminer)(std::uint64_t* bits, std::size_t lignes, std::size_t mots, std::size_t g,
                   const std::uint64_t* sommes);
};

/// The best version for this processor.
const Vecteurs& vecteurs();
Versions<Vecteurs> versions_des_vecteurs();

}  // namespace premiers::quadratique
