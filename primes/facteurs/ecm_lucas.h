// SPDX-License-Identifier: MIT
// The first stage of ECM beyond the table of ecm_chaines.h: Lucas chains that are searched when
// they are needed.
//
// P. L. Montgomery, "Evaluating recurrences of form X_(m+n) = f(X_m, X_n, X_(m-n)) via Lucas
// chains" (1983): p = (p - r) 2 + (2r - p), and a subtractive Euclid on the two coefficients, which
// halves where it can, is a chain for p. Which r gives the shortest has to be tried; the good ones
// are near p divided by the golden ratio. A search costs as much as some dozen products, so its
// outcome is kept, one r a prime: a list serves all the curves of one bound. The walk along the
// chain is then repeated for each curve and costs next to nothing.
//
// Cost: 9.12 products a bit of p with `rayon` 15 (9.20 with 5, 9.06 with 120; Montgomery's own ten
// ratios and nine rules: 9.12). 8 us a prime for the search, 8 bytes to keep it. For p < 2^31.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "primes/facteurs/ecm.h"
#include "primes/suivi/suivi.h"

namespace premiers::ecm {

/// The point is to be multiplied by p, along the chain that r begins; r = 0 is a doubling.
struct Multiplicateur {
  std::uint32_t p;
  std::uint32_t r;
};

/// What the point has to be multiplied by to come from lcm(1..debut) to lcm(1..fin): a prime for
/// each prime power in (debut, fin], in their order. debut >= 2, fin < 2^31.
std::vector<Multiplicateur> multiplicateurs(std::uint64_t debut, std::uint64_t fin,
                                            const Suivi& suivi = {});

/// r becomes p + q or 2 p. A ring whose points are costly to copy has its own (ecm_huit.cpp).
template <class A>
void ajouter_dans(const A& a, Point<A>& r, const Point<A>& p, const Point<A>& q,
                  const Point<A>& ecart) {
  r = ajouter(a, p, q, ecart);
}
template <class A>
void doubler_dans(const A& a, const Courbe<A>& c, Point<A>& r, const Point<A>& p) {
  r = doubler(a, c, p);
}

/// A walk along chains: four points, of which three mean something, are exchanged by their
/// addresses.
template <class A>
struct Marche {
  const A& a;
  const Courbe<A>& courbe;
  std::array<Point<A>, 4> points;
  Point<A>* u = points.data();  ///< the result of the last multiplication
  Point<A>* v = u + 1;
  Point<A>* ecart = u + 2;  ///< +-(u - v)
  Point<A>* libre = u + 3;

  Marche(const A& anneau, const Courbe<A>& c, const Point<A>& depart) : a{anneau}, courbe{c} {
    *u = depart;
  }
  Marche(const Marche&) = delete;
  Marche& operator=(const Marche&) = delete;

  void doubler(Point<A>*& x) {
    doubler_dans(a, courbe, *libre, *x);
    std::swap(libre, x);
  }
  /// x + y, whose difference is z, takes the place of `vers`.
  void ajouter(Point<A>*& vers, const Point<A>* x, const Point<A>* y, const Point<A>* z) {
    ajouter_dans(a, *libre, *x, *y, *z);
    std::swap(libre, vers);
  }

  void multiplier(const Multiplicateur& m) {
    if (m.r == 0) return doubler(u);
    std::uint32_t d = m.p - m.r;
    std::uint32_t e = 2 * m.r - m.p;
    *v = *u;  // p u = d (2u) + e u
    *ecart = *u;
    doubler(u);
    while (d != e) {
      if (d < e) {
        std::swap(d, e);
        std::swap(u, v);
      }
      pas(d, e);
    }
    ajouter(u, u, v, ecart);
  }

  /// One step: what is wanted stays d u + e v, d > e.
  void pas(std::uint32_t& d, std::uint32_t& e) {
    if (d <= 4 * std::uint64_t{e}) {  // (d - e) u + e (u + v)
      ajouter(ecart, u, v, ecart);
      std::swap(v, ecart);
      d -= e;
    } else if (d % 2 == e % 2) {  // (d - e)/2 2u + e (u + v)
      ajouter(v, u, v, ecart);
      doubler(u);
      d = (d - e) / 2;
    } else if (d % 2 == 0) {  // d/2 2u + e v, and 2u - v = u + (u - v)
      ajouter(ecart, u, ecart, v);
      doubler(u);
      d /= 2;
    } else {  // d u + e/2 2v, and u - 2v = (u - v) - v
      ajouter(ecart, ecart, v, u);
      doubler(v);
      e /= 2;
    }
  }
};

}  // namespace premiers::ecm
