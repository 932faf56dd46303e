// SPDX-License-Identifier: MIT
// The two stages of ECM with large bounds, and the second stage that it shares with P - 1, in any
// ring of one lane (primes/facteurs/ecm_voies.h).
//
// What is different from ecm.h, where a curve takes less than a millisecond: chains and pairs come
// from lists that all curves of a level share (ecm_lucas.h, ecm_rangees.h); the points of the second
// stage come in blocks, whose z are divided out with one inversion modulo n a block (P. L.
// Montgomery, "Speeding the Pollard and elliptic curve methods of factorization", Mathematics of
// Computation 48, 1987, section 10.3.1); and the progress callback is called all along.
//
// No factor is lost where several are found together: when a gcd is n, the steps since the last one
// are gone over again with a gcd each. Only factors that one and the same step finds stay together.
//
// Cost: 9.12 products a bit, 13.2 B1 in all, for the first stage; 5 to 7 B1 for the second with
// B2 = 100 B1. Memory: below 100 KB, beside the lists.
#pragma once

#include <gmp.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "primes/arithmetique/entier_long.h"
#include "primes/arithmetique/zz.h"
#include "primes/facteurs/ecm.h"
#include "primes/facteurs/ecm_lucas.h"
#include "primes/facteurs/ecm_rangees.h"
#include "primes/suivi/suivi.h"

namespace premiers::ecm {

/// What a search found, with its gcd: 1 nothing, n everything at once, else a proper factor.
template <class A>
typename A::Entier pgcd_avec_n(const A& a, const typename A::Residu& x) {
  return pgcd(a.lire(x)[0], a.m.n);
}

// ---- The first stage -----------------------------------------------------------------------------

/// Suyama's curve (ecm.h) for any sigma >= 6.
template <class A>
Point<A> suyama_long(const A& a, const NTL::ZZ& n, std::uint64_t sigma, Courbe<A>& courbe) {
  const auto entrer = [&](const NTL::ZZ& x) {
    return a.produit({en_mots<A::Entier::taille>(x % n)}, {a.m.r2});
  };
  const NTL::ZZ s = premiers::en_zz(sigma);
  const NTL::ZZ u = s * s - 5;
  const NTL::ZZ v = 4 * s;
  const NTL::ZZ w = v - u;
  const NTL::ZZ u3 = u * u * u;
  courbe = {entrer(w * w * w * (3 * u + v)), entrer(16 * u3 * v)};
  return {entrer(u3), entrer(v * v * v)};
}

/// The first stage up to the bound of the table of ecm_chaines.h. Gives the gcd; where that is n,
/// the one after the least bound that finds anything.
template <class A>
typename A::Entier premiere_phase_courte(const A& a, const Courbe<A>& courbe,
                                         const Point<A>& depart, Point<A>& q) {
  q = premiere_phase(a, courbe, depart, b1_maximal);
  auto g = pgcd_avec_n(a, q.z);
  if (g < a.m.n) return g;
  std::size_t rien = 1;
  std::size_t trouve = b1_maximal;
  while (trouve - rien > 1) {
    const std::size_t b1 = (rien + trouve) / 2;
    const auto h = pgcd_avec_n(a, premiere_phase(a, courbe, depart, b1).z);
    if (h == 1) {
      rien = b1;
    } else {
      trouve = b1;
      g = h;
    }
  }
  return g;
}

/// q times all the multipliers; stops at the first ones that find something, and gives the gcd.
template <class A>
typename A::Entier premiere_phase_longue(const A& a, const Courbe<A>& courbe, Point<A>& q,
                                         std::span<const Multiplicateur> liste,
                                         const Suivi& suivi) {
  constexpr std::size_t lot = 64;  // 1 to 4 ms; the gcd is a hundredth of it
  Marche<A> marche{a, courbe, q};
  for (std::size_t i = 0; i < liste.size(); i += lot) {
    if (suivi) suivi(0);
    const auto part = liste.subspan(i, std::min(lot, liste.size() - i));
    q = *marche.u;
    for (const auto& m : part) marche.multiplier(m);
    auto g = pgcd_avec_n(a, marche.u->z);
    if (g == 1) continue;
    if (g < a.m.n) return g;
    *marche.u = q;
    for (std::size_t j = 0; j < part.size(); ++j) {
      marche.multiplier(part[j]);
      g = pgcd_avec_n(a, marche.u->z);
      if (g > 1) return g;
    }
  }
  q = *marche.u;
  return 1;
}

// ---- The second stage ----------------------------------------------------------------------------

/// Replaces every point's x by x / z: `z` become useless. Gives 1, or what hinders: the gcd of n and
/// a z, a proper factor if there is one.
template <class A>
typename A::Entier normaliser(const A& a, std::span<Point<A>> points) {
  using Residu = typename A::Residu;
  std::vector<Residu> avant(points.size());
  Residu produit = points[0].z;
  for (std::size_t i = 1; i < points.size(); ++i) {
    avant[i] = produit;
    produit = a.produit(produit, points[i].z);
  }
  Residu inverse;
  if (!a.m.inverser(produit[0], inverse[0])) {
    typename A::Entier pire = 1;
    for (const auto& p : points) {
      const auto g = pgcd_avec_n(a, p.z);
      if (g > 1 && g < a.m.n) return g;
      if (g > 1) pire = g;
    }
    return pire;
  }
  for (std::size_t i = points.size(); i-- > 1;) {
    points[i].x = a.produit(points[i].x, a.produit(inverse, avant[i]));
    inverse = a.produit(inverse, points[i].z);
  }
  points[0].x = a.produit(points[0].x, inverse);
  return 1;
}

/// Both kinds of steps of a second stage: the values f(j) of the small multiples, and those of the
/// large ones, f(k D), in blocks. They are equal modulo p when k D + j or k D - j is what is missing.
template <class A>
struct PasEcm {
  using Residu = typename A::Residu;
  static constexpr std::size_t bloc = 128;

  const A& a;
  const Courbe<A>& courbe;
  std::array<Residu, Rangees::bebes> bebes;
  Point<A> un, precedent, courant;  ///< D q, (k - 1) D q, k D q
  std::size_t k = 1;
  typename A::Entier diviseur = 1;  ///< what normalising found

  PasEcm(const A& anneau, const Courbe<A>& c, const Point<A>& q, std::size_t k0)
      : a{anneau}, courbe{c} {
    constexpr std::size_t D = Rangees::pas;
    std::array<Point<A>, D / 6 + 3> multiples;
    un = petits_multiples<D>(a, courbe, q, multiples);
    std::vector<Point<A>> petits;
    for (const std::size_t j : Rangees::residus()) petits.push_back(multiples[j / 3]);
    diviseur = normaliser(a, std::span<Point<A>>{petits});
    for (std::size_t i = 0; i < bebes.size(); ++i) bebes[i] = petits[i].x;
    courant = un;
    while (k < k0) avancer();
  }

  void avancer() {
    const auto suivant = k == 1 ? doubler(a, courbe, un) : ajouter(a, courant, un, precedent);
    precedent = courant;
    courant = suivant;
    ++k;
  }

  /// The next values f(k D), fewer than `bloc` or as many; gives 1 or what was found on the way.
  typename A::Entier suivants(std::span<Residu> valeurs) {
    std::array<Point<A>, bloc> points;
    const std::span<Point<A>> ceux{points.data(), valeurs.size()};
    for (auto& p : ceux) {
      p = courant;
      avancer();
    }
    const auto g = normaliser(a, ceux);
    for (std::size_t i = 0; i < valeurs.size(); ++i) valeurs[i] = ceux[i].x;
    return g;
  }
};

/// Compares f(k D) with f(j) as the rows tell. With `fin` a gcd is taken after every row, and the
/// pairs of a row one by one where that is n; without it once at the end.
template <class Pas, class A>
typename A::Entier comparer(const A& a, Pas pas, const Rangees& rangees, bool fin,
                            const Suivi& suivi) {
  using Residu = typename A::Residu;
  if (pas.diviseur != 1) return pas.diviseur;
  std::array<Residu, Pas::bloc> geants;
  Residu produits[2] = {{a.m.entrer(1)}, {a.m.entrer(1)}};  // one need not wait for the other
  for (std::size_t i = 0; i < rangees.bits.size(); i += Pas::bloc) {
    const std::size_t nombre = std::min(Pas::bloc, rangees.bits.size() - i);
    const auto g = pas.suivants(std::span<Residu>{geants.data(), nombre});
    if (g != 1) return g;
    for (std::size_t k = 0; k < nombre; ++k) {
      if (suivi && k % 16 == 0) suivi(0);
      std::size_t cote = 0;
      const auto& rangee = rangees.bits[i + k];
      pour_chaque_bebe(rangee, [&](std::size_t b) {
        produits[cote] = a.produit(produits[cote], a.difference(geants[k], pas.bebes[b]));
        cote = 1 - cote;
      });
      if (!fin) continue;
      auto h = pgcd_avec_n(a, a.produit(produits[0], produits[1]));
      if (h == 1) continue;
      if (h < a.m.n) return h;
      pour_chaque_bebe(rangee, [&](std::size_t b) {
        const auto seul =
            pgcd_avec_n(a, a.produit(a.difference(geants[k], pas.bebes[b]), {a.m.r2}));
        if (h == a.m.n && seul > 1) h = seul;
      });
      return h;
    }
  }
  return pgcd_avec_n(a, a.produit(produits[0], produits[1]));
}

/// The second stage: first quickly, and once more where everything was found at once.
template <class Pas, class A>
typename A::Entier seconde_phase_longue(const A& a, const Pas& pas, const Rangees& rangees,
                                        const Suivi& suivi) {
  const auto g = comparer(a, pas, rangees, false, suivi);
  return g == a.m.n ? comparer(a, pas, rangees, true, suivi) : g;
}

/// One curve. 1, n, or a proper factor of n.
template <class A>
typename A::Entier essayer_long(const A& a, const NTL::ZZ& n, std::uint64_t sigma,
                                std::span<const Multiplicateur> liste, const Rangees& rangees,
                                const Suivi& suivi) {
  Courbe<A> courbe;
  const auto depart = suyama_long(a, n, sigma, courbe);
  Point<A> q;
  auto g = premiere_phase_courte(a, courbe, depart, q);
  if (g == 1) g = premiere_phase_longue(a, courbe, q, liste, suivi);
  if (g != 1) return g;
  return seconde_phase_longue(a, PasEcm<A>{a, courbe, q, rangees.k0}, rangees, suivi);
}

}  // namespace premiers::ecm
