// SPDX-License-Identifier: MIT
// The table of the settings, and what stands between its lines.
#include "primes/quadratique/reglages.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "primes/quadratique/seaux.h"

namespace premiers::quadratique {

namespace {

// One size of n, in bits, and the settings of reglages.h for it; between two sizes they are
// interpolated.
//
// How they were found. 66 to 150 bits: the settings were changed one after the other by steps of 40
// down to 3 percent, as long as the time for a set of 1 to 300 random products of two equal primes
// went down. 183 bits and more: by bench/reglages_quadratique.cpp, which measures what is gathered
// in a second (`chercher` at 183, 200, 250, 266, 283, 300, 316 and 333 bits, what is near one another
// held side by side by `essayer`), and by whole sieves at 200, 216, 233 and 250 bits (`entier`). One
// thread of a Xeon of 2.5 GHz with AVX-512. Around these values the time is flat: bases of 17000 and
// 22000 take the same at 250 bits, as do arrays of 40 and of 57 KB at 283. At 316 bits `grand` = 230
// and `exposant` = 1.9 would take 0.91 of the time of 134 and 1.85, and 1.3 of its memory: what
// stands there is between them. At 340 bits 250 and 1.9 take 0.87 of the time of 152 and 1.85; 350
// bits is drawn out from there.
//   base       too small: relations are rare; too large: too many are needed. 40 to 200000.
//   demi       too small: changing polynomials costs more than sieving; too large: the values
//              grow, and the array leaves the first-level cache (32 KB: demi = 16384), which pays
//              only when the primes that are moved are very many. Below 2^15.
//   grand      too small: few relations meet; too large: many are divided out and never meet.
//   petit      too small: most of the time goes to primes that tell little; too large: what is
//              reported becomes guesswork. 5 to 300.
//   tolerance  too small: relations are missed; too large: too many values are divided in vain.
//   exposant   two large primes pay from 225 bits on: at 216 they take 1.2 of the time of one, at
//              233 0.77. Too large: residues that are split in vain. 1.7 to 1.95.
//   facteur    small q make more polynomials of a family; large q are missed less in the sieve. Bits of
//              each prime of a: 7 to 12, so that there are enough of them in the base.
struct Palier {
  double bits;
  double base;
  double demi;
  double grand;
  double petit;
  double tolerance;
  double exposant;
  double facteur;
};

constexpr std::array<Palier, 17> paliers{{
    {66, 46, 4096, 10, 9, 12, 1, 7},
    {80, 88, 6528, 13, 15, 14, 1, 7},
    {100, 189, 8128, 15, 21, 16.8, 1, 9},
    {116, 338, 8064, 25, 25, 18, 1, 9.3},
    {133, 616, 8448, 27, 30, 20.5, 1, 9.3},
    {150, 1200, 9408, 49, 40, 25, 1, 10},
    {166, 2200, 9728, 70, 60, 28.5, 1, 10},
    {183, 3900, 9984, 100, 90, 31, 1, 10.5},
    {200, 5700, 11328, 180, 104, 34.5, 1, 11.5},
    {216, 7500, 12288, 200, 120, 36, 1, 11.5},
    {224, 8700, 13312, 210, 128, 36.5, 1, 11.5},
    {225, 9500, 13312, 85, 220, 37, 1.75, 11.5},
    {233, 11000, 14336, 90, 256, 38, 1.75, 11.5},
    {250, 20000, 16384, 95, 256, 40, 1.8, 11.5},
    {283, 48000, 20480, 110, 256, 45, 1.85, 11.7},
    {316, 91000, 26496, 170, 256, 49, 1.88, 11.8},
    {350, 140000, 32704, 250, 256, 53, 1.9, 11.9},
}};

static_assert(std::is_sorted(paliers.begin(), paliers.end(),
                             [](const Palier& a, const Palier& b) { return a.bits < b.bits; }));
static_assert(std::all_of(paliers.begin(), paliers.end(),
                          [](const Palier& l) { return 2 * l.demi < longueur_max; }));

}  // namespace

Reglages reglages(long bits) {
  const auto taille = static_cast<double>(bits);
  std::size_t i = 1;
  while (i + 1 < paliers.size() && taille > paliers[i].bits) ++i;
  const Palier& avant = paliers[i - 1];
  const Palier& apres = paliers[i];
  const double part = std::clamp((taille - avant.bits) / (apres.bits - avant.bits), 0.0, 1.0);
  const auto entre = [part](double x, double y) { return std::lerp(x, y, part); };
  Reglages r{};
  r.base = static_cast<std::size_t>(entre(avant.base, apres.base));
  r.demi = static_cast<std::uint32_t>(entre(avant.demi, apres.demi)) / 64 * 64;
  r.grand = static_cast<std::uint32_t>(entre(avant.grand, apres.grand));
  r.petit = static_cast<std::uint32_t>(entre(avant.petit, apres.petit));
  r.tolerance = entre(avant.tolerance, apres.tolerance);
  r.exposant = entre(avant.exposant, apres.exposant);
  r.facteur = entre(avant.facteur, apres.facteur);
  return r;
}

}  // namespace premiers::quadratique
