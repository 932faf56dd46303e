// SPDX-License-Identifier: MIT
// The elliptic curve method, written once for every arithmetic modulo n (`A`, a ring of lanes: see
// primes/facteurs/ecm_voies.h, primes/facteurs/ecm_avx512.cpp).
//
// H. W. Lenstra, "Factoring integers with elliptic curves", Annals of Mathematics 126 (1987), on
// curves in Montgomery's form (P. L. Montgomery, "Speeding the Pollard and elliptic curve methods
// of factorization", Mathematics of Computation 48, 1987) of H. Suyama's family, whose group orders
// are divisible by 12. A prime p | n is found when the order of the curve modulo p has all its
// prime powers below B1 but for one prime below B2.
//
// Why it is fast:
// - Several curves advance in step, as lanes of one residue. One product has to wait for the one
//   before it, but not for its neighbour's; and eight lanes fit one vector register.
// - No inversion anywhere: the curve constant stays a fraction (one product more per doubling), and
//   the points of the second stage are brought to a common denominator instead of being normalised.
// - Both stages follow tables made at compile time (ecm_chaines.h, ecm_paires.h).
//
// Every argument of a sum or difference below is a product: lazy rings count on that.
#pragma once

#include <array>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "primes/arithmetique/racines.h"
#include "primes/facteurs/ecm_chaines.h"
#include "primes/facteurs/ecm_paires.h"

namespace premiers::ecm {

template <class A>
struct Point {
  typename A::Residu x, z;
};

/// The curve of each lane: its constant (A + 2) / 4 = numerateur / denominateur.
template <class A>
struct Courbe {
  typename A::Residu numerateur, denominateur;
};

template <class A>
Point<A> doubler(const A& a, const Courbe<A>& c, const Point<A>& p) {
  const auto s = a.carre(a.somme(p.x, p.z));
  const auto d = a.carre(a.difference(p.x, p.z));
  const auto t = a.difference(s, d);
  const auto dd = a.produit(d, c.denominateur);
  return {a.produit(s, dd), a.produit(t, a.somme(dd, a.produit(t, c.numerateur)))};
}

/// p + q, given p - q.
template <class A>
Point<A> ajouter(const A& a, const Point<A>& p, const Point<A>& q, const Point<A>& ecart) {
  const auto u = a.produit(a.difference(p.x, p.z), a.somme(q.x, q.z));
  const auto v = a.produit(a.somme(p.x, p.z), a.difference(q.x, q.z));
  return {a.produit(ecart.z, a.carre(a.somme(u, v))),
          a.produit(ecart.x, a.carre(a.difference(u, v)))};
}

/// Suyama's curve and point for the parameter sigma of each lane: with u = sigma^2 - 5 and
/// v = 4 sigma, the point is (u^3 : v^3) and (A + 2) / 4 = (v - u)^3 (3u + v) / (16 u^3 v).
template <class A>
Point<A> suyama(const A& a, const std::uint32_t* sigma, Courbe<A>& courbe) {
  std::array<std::uint64_t, A::voies> u, v, seize_v, somme;
  for (std::size_t i = 0; i < A::voies; ++i) {
    u[i] = std::uint64_t{sigma[i]} * sigma[i] - 5;
    v[i] = 4 * std::uint64_t{sigma[i]};
    seize_v[i] = 16 * v[i];
    somme[i] = 3 * u[i] + v[i];
  }
  // A curve comes here once, so nothing is gained by a dozen products in line, which take as long to
  // compile as all the rest. The results are not returned: see ecm_anneau_avx512.h.
  using Residu = typename A::Residu;
  const auto entrer = [&](const std::array<std::uint64_t, A::voies>& x, Residu& r)
      __attribute__((noinline)) {
    r = a.entrer(x);
  };
  const auto multiplier = [&](const Residu& x, Residu& r) __attribute__((noinline)) {
    r = a.produit(r, x);
  };
  const auto cuber = [&](const Residu& x, Residu& r) {
    r = x;
    multiplier(x, r);
    multiplier(x, r);
  };
  Residu ru, rv;
  entrer(u, ru);
  entrer(v, rv);
  Point<A> depart;
  cuber(ru, depart.x);
  cuber(rv, depart.z);
  const Residu w = a.difference(rv, ru);
  Residu w3;
  cuber(w, w3);
  entrer(somme, courbe.numerateur);
  multiplier(w3, courbe.numerateur);
  entrer(seize_v, courbe.denominateur);
  multiplier(depart.x, courbe.denominateur);
  return depart;
}

/// The first stage: the point times lcm(1..b1), times 12.
template <class A>
Point<A> premiere_phase(const A& a, const Courbe<A>& courbe, const Point<A>& depart,
                        std::size_t b1) {
  assert(b1 >= 2 && b1 <= b1_maximal);
  std::array<Point<A>, 4> slot;
  slot[0] = depart;
  const std::span instructions{programme.instructions.data(), programme.fin[b1]};
  for (const auto [vers, i, j, ecart] : instructions) {
    slot[vers] = i == j ? doubler(a, courbe, slot[i]) : ajouter(a, slot[i], slot[j], slot[ecart]);
  }
  return slot[instructions.back().vers];
}

/// Multiplies every x by all z but its own: the points then have a common denominator.
template <class A>
void reduire_au_meme_denominateur(const A& a, std::span<Point<A>> points) {
  auto avant = points.front().z;
  for (std::size_t i = 1; i < points.size(); ++i) {
    points[i].x = a.produit(points[i].x, avant);
    avant = a.produit(avant, points[i].z);
  }
  auto apres = points.back().z;
  for (std::size_t i = points.size() - 1; i-- > 0;) {
    points[i].x = a.produit(points[i].x, apres);
    apres = a.produit(apres, points[i].z);
  }
}

/// j q for all j = 1 or 5 modulo 6 up to a little beyond D/2, at index j / 3; gives D q.
template <std::size_t D, class A>
Point<A> petits_multiples(const A& a, const Courbe<A>& courbe, const Point<A>& q,
                          std::array<Point<A>, D / 6 + 3>& multiples) {
  const auto q2 = doubler(a, courbe, q);
  const auto q3 = ajouter(a, q2, q, q);
  const auto q6 = doubler(a, courbe, q3);
  multiples[0] = q;
  multiples[1] = ajouter(a, q2, q3, q);
  multiples[2] = ajouter(a, q, q6, multiples[1]);  // 7 = 1 + 6, and 6 - 1 = 5
  multiples[3] = ajouter(a, multiples[1], q6, q);  // 11 = 5 + 6, and 6 - 5 = 1
  for (std::size_t i = 4; i < multiples.size(); ++i) {
    multiples[i] = ajouter(a, multiples[i - 2], q6, multiples[i - 4]);
  }
  // D = j + (D - j) with j just below D/2.
  static_assert(D % 6 == 0);
  constexpr std::size_t j = D % 4 == 0 ? D / 2 - 1 : D / 2 - 2;
  static_assert(j % 6 == 1 || j % 6 == 5);
  return ajouter(a, multiples[(D - j) / 3], multiples[j / 3],
                 D % 4 == 0 ? q2 : doubler(a, courbe, q2));
}

/// A proper factor of n if a lane has a factor in common with n; else 1.
template <class A>
typename A::Entier facteur_commun(const A& a, const typename A::Residu& residu) {
  const auto voies = a.lire(residu);
  auto produit = voies[0];
  for (std::size_t i = 1; i < A::voies; ++i) produit = a.m.produit(produit, voies[i]);
  const auto g = pgcd(produit, a.m.n);
  if (g < a.m.n) return g;
  for (const auto& voie : voies) {  // two lanes found different factors, or one of them found all
    const auto h = pgcd(voie, a.m.n);
    if (h > 1 && h < a.m.n) return h;
  }
  return 1;
}

/// The points that the second stage compares: first j q for the j coprime to D, then k D q for
/// k = k0 .. k1. Only their x are of use then, over a common denominator.
template <class A, class P>
void preparer_les_pas(const A& a, const Courbe<A>& courbe, const Point<A>& q, const P& table,
                      std::size_t k0, std::size_t k1, std::vector<Point<A>>& points) {
  constexpr std::size_t D = P::pas;
  std::array<Point<A>, D / 6 + 3> multiples;
  const auto un = petits_multiples<D>(a, courbe, q, multiples);
  for (std::size_t b = 0; b < P::bebes; ++b) points[b] = multiples[table.residus[b] / 3];
  std::size_t n = P::bebes;
  auto precedent = un;
  auto courant = doubler(a, courbe, un);
  if (k0 == 1) points[n++] = un;
  for (std::size_t k = 2; k <= k1; ++k) {
    if (k >= k0) points[n++] = courant;
    const auto suivant = ajouter(a, courant, un, precedent);
    precedent = courant;
    courant = suivant;
  }
  reduire_au_meme_denominateur(a, std::span<Point<A>>{points.data(), n});
}

/// The second stage: a proper factor of n if the order of q modulo a prime factor of n is a prime
/// in (b1, b2], rounded outwards to multiples of D; else 1.
template <class A, class P>
typename A::Entier seconde_phase(const A& a, const Courbe<A>& courbe, const Point<A>& q,
                                 const P& table, std::size_t b1, std::size_t b2) {
  constexpr std::size_t D = P::pas;
  assert(b1 <= b2 && b2 <= P::portee);
  const std::size_t k0 = b1 < D / 2 ? 1 : (b1 + D / 2) / D;
  const std::size_t k1 = (b2 + D / 2) / D;
  std::vector<Point<A>> points(P::bebes + k1 + 2 - k0);  // up to 200 KB: too much for a stack
  preparer_les_pas(a, courbe, q, table, k0, k1, points);
  const Point<A>* const geants = points.data() + P::bebes - k0;
  const auto ecart = [&](const Paire& p) __attribute__((always_inline)) {
    return a.difference(geants[p.geant].x, points[p.bebe].x);
  };
  // Two accumulators, so that a product need not wait for the one before.
  auto gauche = q.z;
  auto droite = q.z;
  const std::size_t fin = table.debut[k1 + 1];
  std::size_t i = table.debut[k0];
  for (; i + 1 < fin; i += 2) {
    gauche = a.produit(gauche, ecart(table.paires[i]));
    droite = a.produit(droite, ecart(table.paires[i + 1]));
  }
  if (i < fin) gauche = a.produit(gauche, ecart(table.paires[i]));
  return facteur_commun(a, a.produit(gauche, droite));
}

/// Tries the curves sigma[0] .. sigma[A::voies - 1] at once. A proper factor of n, or 1.
template <class A, class P>
typename A::Entier essayer(const A& a, const std::uint32_t* sigma, const P& table, std::size_t b1,
                           std::size_t b2) {
  Courbe<A> courbe;
  const auto depart = suyama(a, sigma, courbe);
  const auto q = premiere_phase(a, courbe, depart, b1);
  const auto g = facteur_commun(a, q.z);
  if (g != 1) return g;
  return seconde_phase(a, courbe, q, table, b1, b2);
}

}  // namespace premiers::ecm
