// SPDX-License-Identifier: MIT
// The points that the second stage of ECM compares (ecm_seconde.h): j q for the small j coprime to D,
// and k D q, each a sum of two before it; then a common denominator for their x.
//
// Where an inversion costs as much as many products, all points are brought to one by products alone,
// four a point. Else they come in blocks, whose z are divided out with one inversion a block (P. L.
// Montgomery, "Speeding the Pollard and elliptic curve methods of factorization", Mathematics of
// Computation 48, 1987, section 10.3.1), again with four products a point.
#pragma once

#include <NTL/ZZ.h>

#include <array>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "primes/facteurs/ecm.h"

namespace premiers::facteurs::ecm {

/// How many j there are of 1 or 5 modulo 6 up to a little beyond D/2.
[[gnu::always_inline]] constexpr std::size_t nombre_multiples(std::size_t D) { return D / 6 + 3; }

/// j q for those j, at index j / 3; gives D q.
template <Anneau A>
Point<A> petits_multiples(const A& a, const Courbe<A>& courbe, const Point<A>& q, std::size_t D,
                          std::span<Point<A>> multiples) {
  Point<A> q2, q3, q6, q4;
  doubler(a, courbe, q2, q);
  ajouter(a, q3, q2, q, q);
  doubler(a, courbe, q6, q3);
  multiples[0] = q;
  ajouter(a, multiples[1], q2, q3, q);
  ajouter(a, multiples[2], q, q6, multiples[1]);  // 7 = 1 + 6, and 6 - 1 = 5
  ajouter(a, multiples[3], multiples[1], q6, q);  // 11 = 5 + 6, and 6 - 5 = 1
  for (std::size_t i = 4; i < nombre_multiples(D); ++i) {
    ajouter(a, multiples[i], multiples[i - 2], q6, multiples[i - 4]);
  }
  // D = j + (D - j) with j just below D/2; their difference is 2 or 4.
  const std::size_t j = D % 4 == 0 ? D / 2 - 1 : D / 2 - 2;
  assert(D % 6 == 0 && (j % 6 == 1 || j % 6 == 5));
  doubler(a, courbe, q4, q2);
  Point<A> grand;
  ajouter(a, grand, multiples[(D - j) / 3], multiples[j / 3], D % 4 == 0 ? q2 : q4);
  return grand;
}

/// The points j q and, one after the other, k D q.
template <Anneau A>
class PasEcm {
 public:
  /// Writes j q for the `residus` j to `bebes`; `espace` is room for nombre_multiples(D) points.
  PasEcm(const A& a, const Courbe<A>& courbe, const Point<A>& q, std::size_t D,
         std::span<const std::uint16_t> residus, std::span<Point<A>> bebes,
         std::span<Point<A>> espace)
      : a_{a}, courbe_{courbe}, un_{petits_multiples(a, courbe, q, D, espace)}, courant_{un_} {
    for (std::size_t b = 0; b < bebes.size(); ++b) bebes[b] = espace[residus[b] / 3];
  }

  void aller_a(std::size_t k) {
    while (k_ < k) avancer();
  }
  void suivants(std::span<Point<A>> points) {
    for (Point<A>& p : points) {
      p = courant_;
      avancer();
    }
  }

 private:
  void avancer() {
    Point<A> suivant;
    if (k_ == 1) {
      doubler(a_, courbe_, suivant, un_);
    } else {
      ajouter(a_, suivant, courant_, un_, precedent_);
    }
    precedent_ = courant_;
    courant_ = suivant;
    ++k_;
  }

  const A& a_;
  const Courbe<A>& courbe_;
  Point<A> un_, courant_, precedent_;  // D q, k D q, (k - 1) D q
  std::size_t k_ = 1;
};

/// Multiplies every x by all z but its own: the points then have a common denominator.
template <Anneau A>
void reduire_au_meme_denominateur(const A& a, std::span<Point<A>> points) {
  auto avant = points.front().z;
  for (std::size_t i = 1; i < points.size(); ++i) {
    a.produit(points[i].x, points[i].x, avant);
    a.produit(avant, avant, points[i].z);
  }
  auto apres = points.back().z;
  for (std::size_t i = points.size() - 1; i-- > 0;) {
    a.produit(points[i].x, points[i].x, apres);
    a.produit(apres, apres, points[i].z);
  }
}

/// 1 / x in each lane; a lane without an inverse has found something, and goes on with 1.
template <Anneau A>
std::array<NTL::ZZ, A::voies> inverses(std::array<NTL::ZZ, A::voies> x, Trouves<A>& trouves) {
  const NTL::ZZ& n = trouves.a.module();
  trouves.noter_nombres(x);
  std::array<NTL::ZZ, A::voies> avant;
  NTL::ZZ produit{1};
  for (std::size_t j = 0; j < x.size(); ++j) {
    if (NTL::GCD(x[j], n) != 1) x[j] = 1;
    avant[j] = produit;
    produit = NTL::MulMod(produit, x[j], n);
  }
  NTL::ZZ inverse = NTL::InvMod(produit, n);
  for (std::size_t j = x.size(); j-- > 0;) {
    avant[j] = NTL::MulMod(avant[j], inverse, n);
    inverse = NTL::MulMod(inverse, x[j], n);
  }
  return avant;
}

/// Replaces every point's x by x / z: `z` become useless.
template <Anneau A>
void normaliser(std::span<Point<A>> points, Trouves<A>& trouves) {
  const A& a = trouves.a;
  std::vector<typename A::Residu> avant(points.size());
  auto produit = points[0].z;
  for (std::size_t i = 1; i < points.size(); ++i) {
    avant[i] = produit;
    a.produit(produit, produit, points[i].z);
  }
  auto inverse = a.entrer(inverses(a.lire(produit), trouves));
  for (std::size_t i = points.size(); i-- > 1;) {
    a.produit(avant[i], avant[i], inverse);
    a.produit(points[i].x, points[i].x, avant[i]);
    a.produit(inverse, inverse, points[i].z);
  }
  a.produit(points[0].x, points[0].x, inverse);
}

}  // namespace premiers::facteurs::ecm
