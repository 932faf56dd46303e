// SPDX-License-Identifier: MIT
// Eight curves at a time; the method is told in ecm_phases.h.
#include "primes/facteurs/ecm_huit.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <memory>
#include <span>

#include "primes/arithmetique/zz.h"
#include "primes/facteurs/ecm.h"
#include "primes/facteurs/ecm_lucas.h"
#include "primes/facteurs/ecm_rangees.h"

namespace premiers::ecm {

void ajouter_dans(const Huit& a, Point<Huit>& r, const Point<Huit>& p, const Point<Huit>& q,
                  const Point<Huit>& ecart) {
  const auto& [produit, somme, difference] = a.noyaux;
  const Huit::Module& m = a.module;
  Huit::Residu u, v;
  difference(m, u, p.x, p.z);
  somme(m, v, q.x, q.z);
  produit(m, u, u, v);
  somme(m, v, p.x, p.z);
  difference(m, r.x, q.x, q.z);
  produit(m, v, v, r.x);
  somme(m, r.x, u, v);
  difference(m, r.z, u, v);
  produit(m, r.x, r.x, r.x);
  produit(m, r.z, r.z, r.z);
  produit(m, r.x, r.x, ecart.z);
  produit(m, r.z, r.z, ecart.x);
}

void doubler_dans(const Huit& a, const Courbe<Huit>& c, Point<Huit>& r, const Point<Huit>& p) {
  const auto& [produit, somme, difference] = a.noyaux;
  const Huit::Module& m = a.module;
  Huit::Residu s, d, t;
  somme(m, s, p.x, p.z);
  produit(m, s, s, s);
  difference(m, d, p.x, p.z);
  produit(m, d, d, d);
  difference(m, t, s, d);
  produit(m, d, d, c.denominateur);
  produit(m, r.x, s, d);
  produit(m, r.z, t, c.numerateur);
  somme(m, r.z, d, r.z);
  produit(m, r.z, r.z, t);
}

namespace {

/// What each lane has found so far; 1 is nothing.
struct Trouves {
  explicit Trouves(const NTL::ZZ& modulus) : n{modulus} { g.fill(NTL::ZZ{1}); }

  /// The lanes' residues: who shares a factor with n has found it.
  void noter(const Huit::Nombres& x) {
    for (std::size_t j = 0; j < g.size(); ++j) {
      if (g[j] == 1) g[j] = NTL::GCD(x[j], n);
    }
  }
  bool tous() const {
    return std::all_of(g.begin(), g.end(), [](const NTL::ZZ& x) { return x != 1; });
  }

  NTL::ZZ n;
  Huit::Nombres g;
};

/// 1 / x in each lane; a lane without an inverse has found something, and goes on with 1.
Huit::Nombres inverses(Huit::Nombres x, Trouves& trouves) {
  const NTL::ZZ& n = trouves.n;
  trouves.noter(x);
  Huit::Nombres avant;
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
void normaliser(const Huit& a, std::span<Point<Huit>> points, Trouves& trouves) {
  std::vector<Huit::Residu> avant(points.size());
  auto produit = points[0].z;
  for (std::size_t i = 1; i < points.size(); ++i) {
    avant[i] = produit;
    a.noyaux.produit(a.module, produit, produit, points[i].z);
  }
  auto inverse = a.entrer(inverses(a.lire(produit), trouves));
  for (std::size_t i = points.size(); i-- > 1;) {
    a.noyaux.produit(a.module, avant[i], avant[i], inverse);
    a.noyaux.produit(a.module, points[i].x, points[i].x, avant[i]);
    a.noyaux.produit(a.module, inverse, inverse, points[i].z);
  }
  a.noyaux.produit(a.module, points[0].x, points[0].x, inverse);
}

/// Suyama's curves (ecm.h), a sigma a lane.
Point<Huit> suyama(const Huit& a, std::uint64_t sigma, Courbe<Huit>& courbe) {
  Huit::Nombres x, z, numerateur, denominateur;
  for (std::size_t j = 0; j < Huit::voies; ++j) {
    const NTL::ZZ s = en_zz(sigma + j);
    const NTL::ZZ u = s * s - 5;
    const NTL::ZZ v = 4 * s;
    const NTL::ZZ w = v - u;
    x[j] = u * u * u % a.n;
    z[j] = v * v * v % a.n;
    numerateur[j] = w * w * w * (3 * u + v) % a.n;
    denominateur[j] = 16 * u * u * u * v % a.n;
  }
  courbe = {a.entrer(numerateur), a.entrer(denominateur)};
  return {a.entrer(x), a.entrer(z)};
}

Point<Huit> premiere_phase(const Huit& a, const Courbe<Huit>& courbe, const Point<Huit>& depart,
                           const BornesLongues& bornes, const Suivi& suivi) {
  constexpr std::size_t lot = 64;  // some ms
  constexpr Multiplicateur deux{2, 0};
  Marche<Huit> marche{a, courbe, depart};
  marche.multiplier(deux);
  for (const auto* const liste : {&bornes.debut, &bornes.liste}) {
    for (std::size_t i = 0; i < liste->size(); ++i) {
      if (suivi && i % lot == 0) suivi(0);
      marche.multiplier((*liste)[i]);
    }
  }
  return *marche.u;
}

/// The steps of the second stage: x / z of the small multiples, and of the large ones in blocks.
struct Pas {
  static constexpr std::size_t bloc = 128;

  const Huit& a;
  const Courbe<Huit>& courbe;
  std::vector<Huit::Residu> bebes;
  std::vector<Point<Huit>> geants;
  Point<Huit> un, precedent, courant;  ///< D q, (k - 1) D q, k D q
  std::size_t k = 1;

  Pas(const Huit& anneau, const Courbe<Huit>& c, const Point<Huit>& q, std::size_t k0,
      Trouves& trouves)
      : a{anneau}, courbe{c}, geants(bloc) {
    constexpr std::size_t D = Rangees::pas;
    const auto multiples = std::make_unique<std::array<Point<Huit>, D / 6 + 3>>();
    un = petits_multiples<D>(a, courbe, q, *multiples);
    std::vector<Point<Huit>> petits;
    for (const std::size_t j : Rangees::residus()) petits.push_back((*multiples)[j / 3]);
    normaliser(a, petits, trouves);
    for (const auto& p : petits) bebes.push_back(p.x);
    courant = un;
    while (k < k0) avancer();
  }

  void avancer() {
    Point<Huit> suivant;
    if (k == 1) {
      doubler_dans(a, courbe, suivant, un);
    } else {
      ajouter_dans(a, suivant, courant, un, precedent);
    }
    precedent = courant;
    courant = suivant;
    ++k;
  }

  /// The next `nombre` large multiples.
  void suivants(std::size_t nombre, Trouves& trouves) {
    for (std::size_t i = 0; i < nombre; ++i) {
      geants[i] = courant;
      avancer();
    }
    normaliser(a, std::span{geants}.first(nombre), trouves);
  }
};

void seconde_phase(const Huit& a, Pas pas, const Rangees& rangees, Trouves& trouves,
                   const Suivi& suivi) {
  Huit::Nombres uns;
  uns.fill(NTL::ZZ{1});
  std::array<Huit::Residu, 2> produits{a.entrer(uns), a.entrer(uns)};  // one need not wait
  Huit::Residu ecart;
  for (std::size_t i = 0; i < rangees.bits.size(); i += Pas::bloc) {
    const std::size_t nombre = std::min(Pas::bloc, rangees.bits.size() - i);
    pas.suivants(nombre, trouves);
    for (std::size_t k = 0; k < nombre; ++k) {
      if (suivi && k % 16 == 0) suivi(0);
      std::size_t cote = 0;
      pour_chaque_bebe(rangees.bits[i + k], [&](std::size_t b) {
        a.noyaux.difference(a.module, ecart, pas.geants[k].x, pas.bebes[b]);
        a.noyaux.produit(a.module, produits[cote], produits[cote], ecart);
        cote = 1 - cote;
      });
    }
  }
  for (const auto& produit : produits) trouves.noter(a.lire(produit));
}

/// What the lanes' gcds say: those that are n leave the work to one curve alone.
std::vector<NTL::ZZ> conclure(const Trouves& trouves, std::uint64_t sigma,
                              const BornesLongues& bornes, const Suivi& suivi) {
  std::vector<NTL::ZZ> facteurs;
  for (std::size_t j = 0; j < Huit::voies; ++j) {
    NTL::ZZ g = trouves.g[j];
    if (g == trouves.n) g = essayer_courbe(trouves.n, sigma + j, bornes, suivi);
    if (g != 1) facteurs.push_back(g);
  }
  return facteurs;
}

}  // namespace

std::vector<NTL::ZZ> essayer_huit_courbes(const NTL::ZZ& n, std::uint64_t sigma,
                                          const BornesLongues& bornes,
                                          Huit::NoyauxParLongueur noyaux, const Suivi& suivi) {
  const Huit a{n, noyaux};
  Trouves trouves{n};
  Courbe<Huit> courbe;
  const auto depart = suyama(a, sigma, courbe);
  const auto q = premiere_phase(a, courbe, depart, bornes, suivi);
  trouves.noter(a.lire(q.z));
  if (!trouves.tous()) {
    seconde_phase(a, Pas{a, courbe, q, bornes.rangees.k0, trouves}, bornes.rangees, trouves, suivi);
  }
  return conclure(trouves, sigma, bornes, suivi);
}

}  // namespace premiers::ecm
