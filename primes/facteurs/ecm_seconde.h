// SPDX-License-Identifier: MIT
// The second stage of ECM: one prime factor of the group order in (B1, B2].
//
// P. L. Montgomery, "Speeding the Pollard and elliptic curve methods of factorization", Mathematics
// of Computation 48 (1987). Every such prime is k D +- j with j coprime to D and below D/2; then
// k D Q and j Q have the same x, and the product of all x(k D Q) - x(j Q) shares the factor with n.
// Which pairs (k, j) there are stands in lists: ecm_paires.h for small bounds, ecm_rangees.h for
// large ones.
//
// With small bounds all points come at once (ecm_multiples.h), with large ones in blocks. P - 1 shares
// the comparisons (p_moins_un.cpp).
//
// Cost: 5 to 7 B1 products with B2 = 100 B1. Memory with large bounds: some 800 points.
#pragma once

#include <algorithm>
#include <array>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "primes/facteurs/ecm.h"
#include "primes/facteurs/ecm_multiples.h"
#include "primes/facteurs/ecm_paires.h"
#include "primes/facteurs/ecm_rangees.h"
#include "primes/suivi/suivi.h"

namespace premiers::facteurs::ecm {

/// The product of the differences so far.
template <Anneau A>
struct Ecarts {
  typename A::Residu gauche, droite;  ///< two, so that a product need not wait for the one before

  explicit Ecarts(const A& a) {
    partout(a, gauche, 1);
    droite = gauche;
  }

  /// The pairs (k, j) of a list, k counted from k0; of the points the x count.
  void multiplier(const A& a, std::span<const Paire> paires, std::size_t k0,
                  std::span<const Point<A>> geants, std::span<const Point<A>> bebes) {
    auto g = gauche;
    auto d = droite;
    const auto un = [&](typename A::Residu & r, const Paire& p) __attribute__((always_inline)) {
      a.fois_ecart(r, geants[p.geant - k0].x, bebes[p.bebe].x);
    };
    std::size_t i = 0;
    for (; i + 1 < paires.size(); i += 2) {
      un(g, paires[i]);
      un(d, paires[i + 1]);
    }
    if (i < paires.size()) un(g, paires[i]);
    gauche = g;
    droite = d;
  }
  void noter(Trouves<A>& trouves) const {
    typename A::Residu r;
    trouves.a.produit(r, gauche, droite);
    trouves.noter(r);
  }
};

/// The second stage with small bounds: for primes in (max(b1, D / 2), b2], rounded outwards to odd
/// multiples of D / 2.
template <Anneau A>
void phase_deux(const Courbe<A>& courbe, const Point<A>& q, const ListePaires& liste,
                std::size_t b1, std::size_t b2, Trouves<A>& trouves) {
  const std::size_t D = liste.pas_de_geant;
  assert(b1 <= b2 && b2 <= liste.portee);
  const A& a = trouves.a;
  const std::size_t k0 = b1 < D / 2 ? 1 : (b1 + D / 2) / D;
  const std::size_t k1 = (b2 + D / 2) / D;
  const std::size_t petits = liste.residus.size();
  const std::size_t nombre = petits + k1 + 1 - k0;
  // The small multiples are made where the large ones come later. Up to 500 KB: too much for a stack.
  std::vector<Point<A>> memoire(std::max(nombre, petits + nombre_multiples(D)));
  const std::span<Point<A>> points{memoire};
  const auto bebes = points.first(petits);
  const auto geants = points.subspan(petits, k1 + 1 - k0);
  PasEcm<A> pas{a, courbe, q, D, liste.residus, bebes, points.subspan(petits)};
  pas.aller_a(k0);
  pas.suivants(geants);
  reduire_au_meme_denominateur(a, points.first(nombre));
  Ecarts<A> ecarts{a};
  const auto paires = liste.paires.subspan(liste.debut[k0], liste.debut[k1 + 1] - liste.debut[k0]);
  ecarts.multiplier(a, paires, k0, geants, bebes);
  ecarts.noter(trouves);
}

/// The curves of small bounds, sigma[0] .. sigma[A::voies - 1] at once; 2 <= b1 <= b1_court,
/// b1 <= b2 <= paires_longues.portee. A proper factor of n, or 1.
template <Anneau A>
typename A::Entier essayer(const A& a, const std::array<std::uint64_t, A::voies>& sigma,
                           std::size_t b1, std::size_t b2) {
  Trouves<A> trouves{a};
  Courbe<A> courbe;
  const auto depart = suyama(a, sigma, courbe);
  const auto q = phase_un(a, courbe, depart, b1);
  trouves.noter(q.z);
  // A lane that has found all of n takes nothing away from the others.
  if (trouves.propre() == 1) phase_deux(courbe, q, liste_paires(b2), b1, b2, trouves);
  return trouves.propre();
}

/// How thoroughly a search with large bounds looks at its gcds. Step by step nothing is lost where
/// several factors are found together: only those that one and the same step finds stay together.
enum class Allure : std::uint8_t { rapide, pas_a_pas };

/// Where the differences of a row all at once give n, one of them may tell the factors apart.
template <Anneau A>
void separer(std::span<const Paire> paires, const Point<A>& geant, std::span<const Point<A>> bebes,
             Trouves<A>& trouves) {
  for (const Paire& p : paires) {
    if (trouves.propre() != 1) return;
    Trouves<A> seuls{trouves.a};
    Ecarts<A> ecart{trouves.a};
    ecart.multiplier(trouves.a, {&p, 1}, 0, {&geant, 1}, bebes);
    ecart.noter(seuls);
    if (seuls.propre() != 1) trouves.g = seuls.g;
  }
}

/// The second stage with large bounds. `pas` is at rangees.k0, and gives the large points; both it and
/// `bebes` give points whose x can be compared.
template <Anneau A, class Pas>
void comparer(Pas& pas, std::span<const Point<A>> bebes, const Rangees& rangees, Allure allure,
              Trouves<A>& trouves, const Suivi& suivi) {
  const A& a = trouves.a;
  const bool rapide = allure == Allure::rapide;
  // Large points whose z are divided out together, for one inversion; 128 of them stay in the caches.
  const std::size_t bloc = rapide ? 128 : 1;
  std::vector<Point<A>> memoire(bloc);
  std::vector<Paire> paires;
  Ecarts<A> ecarts{a};
  for (std::size_t i = 0; i < rangees.bits.size() && !trouves.tous(); i += bloc) {
    const auto geants = std::span<Point<A>>{memoire}.first(std::min(bloc, rangees.bits.size() - i));
    pas.suivants(geants, trouves);
    for (std::size_t k = 0; k < geants.size(); ++k) {
      if (suivi && (i + k) % 16 == 0) suivi(0);  // some 1700 products
      lire_rangee(rangees.bits[i + k], paires);
      ecarts.multiplier(a, paires, 0, geants.subspan(k, 1), bebes);
    }
    if (rapide) continue;
    ecarts.noter(trouves);
    if (trouves.tous()) separer(paires, geants[0], bebes, trouves);
  }
  if (!trouves.tous()) ecarts.noter(trouves);
}

/// Points of a curve with their z divided out, block by block.
template <Anneau A>
struct PasNormalises {
  PasEcm<A> pas;

  void suivants(std::span<Point<A>> points, Trouves<A>& trouves) {
    pas.suivants(points);
    normaliser(points, trouves);
  }
};

template <Anneau A>
void phase_deux_longue(const Courbe<A>& courbe, const Point<A>& q, const Rangees& rangees,
                       Allure allure, Trouves<A>& trouves, const Suivi& suivi) {
  std::vector<Point<A>> bebes(Rangees::bebes);
  std::vector<Point<A>> espace(nombre_multiples(Rangees::pas_de_geant));
  PasNormalises<A> pas{
      {trouves.a, courbe, q, Rangees::pas_de_geant, Rangees::residus(), bebes, espace}};
  const std::size_t bloc = allure == Allure::rapide ? bebes.size() : 1;
  for (std::size_t i = 0; i < bebes.size() && !trouves.tous(); i += bloc) {
    normaliser(std::span{bebes}.subspan(i, bloc), trouves);
  }
  pas.pas.aller_a(rangees.k0);
  comparer(pas, std::span<const Point<A>>{bebes}, rangees, allure, trouves, suivi);
}

}  // namespace premiers::facteurs::ecm
