// SPDX-License-Identifier: MIT
// What the ways to primes cost, in nanoseconds, so that the cheapest can be taken: sieving, deciding
// numbers one by one, counting. All constants that are compared with each other stand here. Where
// two ways cost the same a factor of two does no harm, so none of them is given to more than two
// digits.
//
// Measured on one thread of a Xeon at 2.5 GHz (AVX-512) with the benchmarks of crible, primalite
// and compte; on other processors all of them move together.
#pragma once

#include <algorithm>
#include <cmath>

namespace premiers {

/// Sieving `largeur` integers that end at x. The price of an integer follows the number of its
/// crossings, and from 10^13 or so the buckets; each sieving prime up to the root costs once.
inline double cout_crible(double largeur, double x) {
  constexpr double par_entier = 0.12;        // at 10^8 ...
  constexpr double par_decade = 0.035;       // ... and more for each factor of ten above
  constexpr double par_cribleur = 3.0;       // found, and placed in the window
  constexpr double preparation = 10'000;     // the first primes, the patterns
  const double decades = std::max(std::log10(std::max(x, 1.0)) - 8, 0.0);
  const double racine = std::sqrt(x);
  const double cribleurs = racine / std::max(std::log(racine) - 1, 1.0);
  return preparation + largeur * (par_entier + par_decade * decades) + cribleurs * par_cribleur;
}

/// Deciding `largeur` integers one by one, odd or even.
inline double cout_un_par_un(double largeur) {
  constexpr double par_entier = 50;
  return largeur * par_entier;
}

/// Counting the primes up to x without knowing them: the exponent is that of measured counts from
/// 10^8 to 10^15, below the 2/3 of the method because its logarithms are left out.
inline double cout_compte(double x) {
  constexpr double de_10_14 = 1.5e8;
  constexpr double exposant = 0.61;
  constexpr double preparation = 20'000;
  return preparation + de_10_14 * std::pow(x / 1e14, exposant);
}

/// The cheaper way through an interval.
inline double cout_intervalle(double largeur, double x) {
  return std::min(cout_crible(largeur, x), cout_un_par_un(largeur));
}

}  // namespace premiers
