// SPDX-License-Identifier: MIT
// The elliptic curve method, written once for every arithmetic modulo n: points, curves, the first
// stage, and what is found. The second stage is ecm_seconde.h.
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
// - The curve constant stays a fraction: one product more per doubling, and no inversion.
// - Nothing is copied: results are written where they belong.
//
// The rings (`Anneau`): ecm_voies.h and ecm_avx512.cpp up to 128 bits, where all is inlined;
// primes/arithmetique/montgomery_long.h (one lane) and huit.h (eight) for long n, where the length is
// found at run time. Every argument of a sum or difference below is a product: lazy rings count on
// that. Cost: 6 products an addition or doubling, 13.2 B1 in all.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "primes/arithmetique/racines.h"
#include "primes/arithmetique/zz.h"
#include "primes/facteurs/ecm_chaines.h"
#include "primes/suivi/suivi.h"

namespace premiers::facteurs::ecm {

/// `voies` residues modulo the same n that undergo the same operations. A result may be one of the
/// arguments, but for `fois_ecart`, where r becomes r (x - y); `papillon` is a sum and a difference.
/// Numbers enter one a lane; those that are read have the same factors in common with n as the residues.
template <class A>
concept Anneau = requires(const A a, typename A::Residu r, const typename A::Residu x,
                          const std::array<typename A::Entier, A::voies> nombres) {
  a.produit(r, x, x);
  a.somme(r, x, x);
  a.difference(r, x, x);
  a.papillon(r, r, x, x);
  a.fois_ecart(r, x, x);
  r = a.entrer(nombres);
  nombres == a.lire(x);
  nombres[0] == a.module();
};

template <Anneau A>
struct Point {
  typename A::Residu x, z;
};

/// The curve of each lane: its constant (A + 2) / 4 = numerateur / denominateur.
template <Anneau A>
struct Courbe {
  typename A::Residu numerateur, denominateur;
};

/// r = 2 p; r may be p.
template <Anneau A>
void doubler(const A& a, const Courbe<A>& c, Point<A>& r, const Point<A>& p) {
  typename A::Residu s, d, t;
  a.papillon(s, d, p.x, p.z);
  a.produit(s, s, s);
  a.produit(d, d, d);
  a.difference(t, s, d);
  a.produit(d, d, c.denominateur);
  a.produit(r.x, s, d);
  a.produit(s, t, c.numerateur);
  a.somme(s, d, s);
  a.produit(r.z, t, s);
}

/// r = p + q, given p - q; r may be p or q.
template <Anneau A>
void ajouter(const A& a, Point<A>& r, const Point<A>& p, const Point<A>& q, const Point<A>& ecart) {
  typename A::Residu s, d, u, v;
  a.papillon(s, d, p.x, p.z);
  a.papillon(u, v, q.x, q.z);
  a.produit(d, d, u);
  a.produit(s, s, v);
  a.papillon(u, v, d, s);
  a.produit(u, u, u);
  a.produit(v, v, v);
  a.produit(r.x, u, ecart.z);
  a.produit(r.z, v, ecart.x);
}

/// r = x in all lanes. No function but a ring's own returns a residue: see ecm_anneau_avx512.h.
template <Anneau A>
void partout(const A& a, typename A::Residu& r, std::uint64_t x) {
  std::array<typename A::Entier, A::voies> nombres;
  nombres.fill(entier<typename A::Entier>(x));
  r = a.entrer(nombres);
}

/// Products that are no part of a loop: not in line, where a dozen of them would take as long to
/// compile as all the rest.
template <Anneau A>
struct Produits {
  using Residu = typename A::Residu;
  const A& a;

  [[gnu::noinline]] void produit(Residu& r, const Residu& x, const Residu& y) const {
    a.produit(r, x, y);
  }
  [[gnu::noinline]] void petit(Residu& r, std::uint64_t x) const { partout(a, r, x); }
  void fois(Residu& r, std::uint64_t facteur, const Residu& x) const {
    Residu f;
    petit(f, facteur);
    produit(r, x, f);
  }
  void cube(Residu& r, const Residu& x) const {
    Residu carre;
    produit(carre, x, x);
    produit(r, carre, x);
  }
};

/// Suyama's curves are good from this parameter on.
inline constexpr std::uint64_t sigma_minimal = 6;

/// Suyama's curve and point for the parameter sigma >= sigma_minimal of each lane: with
/// u = sigma^2 - 5 and v = 4 sigma, the point is (u^3 : v^3) and (A + 2) / 4 = (v - u)^3 (3u + v) / (16 u^3 v).
template <Anneau A>
Point<A> suyama(const A& a, const std::array<std::uint64_t, A::voies>& sigma, Courbe<A>& courbe) {
  const Produits<A> p{a};
  std::array<typename A::Entier, A::voies> nombres;
  for (std::size_t i = 0; i < A::voies; ++i) nombres[i] = entier<typename A::Entier>(sigma[i]);
  const typename A::Residu s = a.entrer(nombres);
  typename A::Residu u, v, w, t;
  p.petit(t, 5);
  p.produit(u, s, s);
  a.difference(u, u, t);
  p.fois(u, 1, u);
  p.fois(v, 4, s);
  Point<A> depart;
  p.cube(depart.x, u);
  p.cube(depart.z, v);
  a.difference(w, v, u);
  p.cube(w, w);
  p.fois(t, 3, u);
  a.somme(t, t, v);
  p.produit(courbe.numerateur, w, t);
  p.fois(t, 16, v);
  p.produit(courbe.denominateur, depart.x, t);
  return depart;
}

/// A walk along chains, over four places.
template <Anneau A>
struct Marche {
  const A& a;
  const Courbe<A>& courbe;
  std::array<Point<A>, nombre_places> places;
  std::uint8_t ici = 0;  ///< where the point is

  Marche(const A& anneau, const Courbe<A>& c, const Point<A>& depart) : a{anneau}, courbe{c} {
    places[0] = depart;
  }
  const Point<A>& point() const { return places[ici]; }

  void executer(const Instruction& i) {
    if (i.a == i.b) {
      doubler(a, courbe, places[i.vers], places[i.a]);
    } else {
      ajouter(a, places[i.vers], places[i.a], places[i.b], places[i.ecart]);
    }
  }
  /// A program, which begins in place 0.
  void executer(std::span<const Instruction> instructions) {
    for (const Instruction& i : instructions) executer(i);
    ici = instructions.back().vers;
  }
  void multiplier(const Multiplicateur& m) {
    ici = parcourir(m, ici, [this](const Instruction& i) { executer(i); });
  }
};

/// The first stage: the point times 12 lcm(1..b1), then by those of a list.
template <Anneau A>
Point<A> phase_un(const A& a, const Courbe<A>& courbe, const Point<A>& depart, std::size_t b1,
                  std::span<const Multiplicateur> suite = {}, const Suivi& suivi = {}) {
  constexpr std::size_t lot = 64;  // some ms
  Marche<A> marche{a, courbe, depart};
  marche.executer(programme(b1));
  for (std::size_t i = 0; i < suite.size(); ++i) {
    if (suivi && i % lot == 0) suivi(0);
    marche.multiplier(suite[i]);
  }
  return marche.point();
}

/// What the lanes have found so far: each the gcd of its residue and n, when that was first more than
/// 1. It is n where a lane finds all factors at once.
template <Anneau A>
struct Trouves {
  using Entier = typename A::Entier;
  using Nombres = std::array<Entier, A::voies>;

  const A& a;
  Nombres g;

  explicit Trouves(const A& anneau) : a{anneau} { g.fill(entier<Entier>(1)); }

  /// One gcd for all lanes, and one more for each lane if there is something to find. Not in line, as
  /// above.
  [[gnu::noinline]] void noter_nombres(const Nombres& x) {
    if constexpr (A::voies > 1) {
      Entier tous = x[0];
      for (std::size_t j = 1; j < A::voies; ++j) tous = a.reunir(tous, x[j]);
      if (pgcd(tous, a.module()) == 1) return;
    }
    for (std::size_t j = 0; j < A::voies; ++j) {
      if (g[j] == 1) g[j] = pgcd(x[j], a.module());
    }
  }
  void noter(const typename A::Residu& x) { noter_nombres(a.lire(x)); }

  bool rien() const {
    return std::all_of(g.begin(), g.end(), [](const Entier& x) { return x == 1; });
  }
  bool tous() const {
    return std::all_of(g.begin(), g.end(), [](const Entier& x) { return x != 1; });
  }
  /// A proper factor of n that a lane has found; else 1.
  Entier propre() const {
    for (const Entier& x : g) {
      if (x != 1 && x != a.module()) return x;
    }
    return entier<Entier>(1);
  }
};

}  // namespace premiers::facteurs::ecm
