// SPDX-License-Identifier: MIT
#include "primes/quadratique/reglages.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace premiers::quadratique {

namespace {

// One size of n, in bits, and the settings of reglages.h for it; between two
// sizes they are interpolated. Found by measuring: for the sizes from 66 to 200 bits, the settings
// were changed one after the other by steps of 40 down to 3 percent, as long as the time for a set
// of 1 to 300 random products of two equal primes went down (one thread of a 2.6 GHz EPYC with
// AVX-512); 233 bits by a few trials; 380 is a guess.
//   base       too small: relations are rare; too large: too many are needed. 40 to 100000.
//   demi       too small: changing polynomials costs more than sieving; too large: the values
//              grow, and the array leaves the first-level cache (32 KB: demi = 16384).
//   grand      too small: few relations meet; too large: many are divided out and never meet.
//   petit      too small: most of the time goes to primes that tell little; too large: what is
//              reported becomes guesswork. 5 to 100.
//   tolerance  too small: relations are missed; too large: too many values are divided in vain.
//   facteur    small q make more polynomials of a family; large q are missed less in the sieve.
struct Ligne {
  double bits;
  double base;
  double demi;
  double grand;
  double petit;
  double tolerance;
  double facteur;
};

constexpr std::array<Ligne, 11> lignes{{
    {66, 46, 4096, 10, 9, 12, 7},
    {80, 88, 6528, 13, 15, 14, 7},
    {100, 189, 8128, 15, 21, 16.8, 9},
    {116, 338, 8064, 25, 25, 18, 9.3},
    {133, 616, 8448, 27, 30, 20.5, 9.3},
    {150, 1136, 9408, 49, 35, 22.7, 10},
    {166, 1964, 10432, 70, 40, 25.8, 10},
    {183, 3268, 10880, 117, 55, 27.3, 11},
    {200, 5357, 13056, 165, 60, 28.7, 11},
    {233, 11000, 18432, 350, 80, 32, 11.5},
    {380, 75000, 65536, 500, 120, 34, 12},
}};

// From here on values with two large primes pay. Below, they cost more divisions than they bring
// cycles.
constexpr double bits_deux_grands = 230;
// Bits of the tolerance that go with them: much more is divided, and more of it in vain.
constexpr double tolerance_en_moins = 8;

}  // namespace

Reglages reglages(long bits) {
  const auto taille = static_cast<double>(bits);
  std::size_t i = 1;
  while (i + 1 < lignes.size() && taille > lignes[i].bits) ++i;
  const Ligne& bas = lignes[i - 1];
  const Ligne& haut = lignes[i];
  const double part = std::clamp((taille - bas.bits) / (haut.bits - bas.bits), 0.0, 1.0);
  const auto entre = [part](double x, double y) { return std::lerp(x, y, part); };
  Reglages r{};
  r.base = static_cast<std::size_t>(entre(bas.base, haut.base));
  r.demi = static_cast<std::uint32_t>(entre(bas.demi, haut.demi)) / 64 * 64;
  r.demi = std::min<std::uint32_t>(r.demi, 16384);
  r.grand = static_cast<std::uint32_t>(entre(bas.grand, haut.grand));
  r.petit = static_cast<std::uint32_t>(entre(bas.petit, haut.petit));
  r.tolerance = entre(bas.tolerance, haut.tolerance);
  r.exposant = 1;
  if (taille >= bits_deux_grands) {
    r.exposant = 1.85;
    r.tolerance -= tolerance_en_moins;
  }
  r.facteur = entre(bas.facteur, haut.facteur);
  return r;
}

}  // namespace premiers::quadratique
