// SPDX-License-Identifier: MIT
// What the ways to primes cost, in nanoseconds, so that the cheapest can be taken: sieving, deciding
// numbers one by one, counting. All constants that are compared with each other stand here. Where
// two ways cost the same a factor of two does no harm, so none of them is given to more than two
// digits.
//
// Only their ratios matter. Measured side by side on one thread of a Xeon at 2.5 GHz with AVX-512
// while its neighbours worked, which costs all of them a factor of two.
#pragma once

#include <algorithm>
#include <cmath>

#include "primes/arithmetique/processeur.h"

namespace premiers::rangs {

/// Sieving `largeur` integers that end at x. An integer costs what its crossings cost, more from
/// 10^12 on, where they go through buckets; each sieving prime up to the root costs once to be found
/// and placed, those below 2^20 with their state more than the others, which cost a third with
/// AVX-512 (primes/crible/touches.h). These cost something anew for each round, until the window is
/// so wide that it pays to keep them (primes/crible/partage.h). Measured without the rows of
/// primes/crible/crible_seize.h, which take a seventh off wide windows: good to a factor of two.
inline double cout_crible(double largeur, double x) {
  constexpr double preparation = 10'000;
  constexpr double par_entier = 0.13;          // at 10^8,
  constexpr double par_decade = 0.07;          // for each factor of ten above,
  constexpr double par_decade_de_seaux = 0.1;  // and above 10^12
  constexpr double par_petit_cribleur = 28;
  static const double par_grand_cribleur =
      jouable(instructions::avx512f | instructions::avx512dq | instructions::avx512vl) ? 3.5 : 11;
  constexpr double petits_cribleurs = 82'000;
  constexpr double par_grand_cribleur_et_tour = 1.2;
  constexpr double entiers_par_tour = 1e9;
  constexpr double tours_sans_garder = 10;
  const double decades = std::log10(std::max(x, 1e8)) - 8;
  const double entier =
      par_entier + par_decade * decades + par_decade_de_seaux * std::max(decades - 4, 0.0);
  const double racine = std::sqrt(x);
  const double cribleurs = racine / std::max(std::log(racine) - 1, 1.0);
  const double tours = std::min(largeur / entiers_par_tour, tours_sans_garder);
  return preparation + largeur * entier +
         std::min(cribleurs, petits_cribleurs) * par_petit_cribleur +
         std::max(cribleurs - petits_cribleurs, 0.0) *
             (par_grand_cribleur + tours * par_grand_cribleur_et_tour);
}

/// Deciding `largeur` integers one by one, odd or even: the mean, most are told by a small factor.
inline double cout_un_par_un(double largeur) {
  constexpr double par_entier = 70;
  return largeur * par_entier;
}

/// Whether deciding one by one is the cheaper way through an interval.
inline bool vaut_un_par_un(double largeur, double x) {
  return cout_un_par_un(largeur) < cout_crible(largeur, x);
}

/// Counting the primes up to x without knowing them: the exponent is that of measured counts from
/// 10^9 to 10^14, below the 2/3 of the method because its logarithms are left out.
inline double cout_compte(double x) {
  constexpr double preparation = 250'000;
  constexpr double de_10_12 = 2.8e7;
  constexpr double exposant = 0.58;
  return preparation + de_10_12 * std::pow(x / 1e12, exposant);
}

/// Whether counting twice is the cheaper way to the number of primes in an interval that ends at x.
inline bool vaut_deux_comptes(double largeur, double x) {
  return cout_compte(std::max(x - largeur, 0.0)) + cout_compte(x) < cout_crible(largeur, x);
}

/// The cheaper way through an interval.
inline double cout_intervalle(double largeur, double x) {
  return std::min(cout_crible(largeur, x), cout_un_par_un(largeur));
}

/// Going through so many primes near x.
inline double cout_saut(double nombre, double x) {
  return cout_intervalle(nombre * std::log(x), x);
}

/// Counting the primes up to about x, and sieving to the one of the rank: an estimate of it is wrong
/// by `part` times the root of x in the mean (primes/rangs/riemann.h; of 400 ranks tried).
inline double cout_par_un_compte(double x) {
  constexpr double part = 0.2;
  return cout_compte(x) + cout_saut(part * std::sqrt(x), x);
}

}  // namespace premiers::rangs
