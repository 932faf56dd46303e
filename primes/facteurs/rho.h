// SPDX-License-Identifier: MIT
// Pollard's rho method in Brent's form: the method that cannot miss, only be slow. It stands behind
// ECM, for the rare n on which all curves fail.
//
// J. M. Pollard, "A Monte Carlo method for factorization", BIT 15 (1975); R. P. Brent, "An improved
// Monte Carlo factorization algorithm", BIT 20 (1980). About sqrt(p) steps for the factor p; the
// gcds are taken once in 64 steps, and the last 64 steps are gone over again when a gcd is n.
#pragma once

#include <algorithm>
#include <cstdint>

#include "primes/arithmetique/racines.h"

namespace premiers::facteurs {

/// A proper factor of the composite n of the ring m; a square of a prime is better seen by its root.
/// Other sequences are tried until one finds a factor.
template <class Montgomery>
typename Montgomery::Entier facteur_rho(const Montgomery& m) {
  using Entier = typename Montgomery::Entier;
  constexpr std::uint64_t lot = 64;
  for (std::uint64_t constante = 1;; ++constante) {
    const Entier c = m.entrer(constante);
    const auto f = [&](Entier x) { return m.somme(m.carre(x), c); };
    Entier y = m.entrer(2);
    Entier x = y;
    Entier reprise = y;
    Entier g = 1;
    for (std::uint64_t r = 1; g == 1; r *= 2) {
      x = y;
      for (std::uint64_t i = 0; i < r; ++i) y = f(y);
      for (std::uint64_t k = 0; k < r && g == 1; k += lot) {
        reprise = y;
        Entier produit = m.un;
        for (std::uint64_t i = std::min(lot, r - k); i > 0; --i) {
          y = f(y);
          produit = m.produit(produit, m.difference(x, y));
        }
        g = pgcd(produit, m.n);
      }
    }
    if (g == m.n) {
      do {
        reprise = f(reprise);
        g = pgcd(m.difference(x, reprise), m.n);
      } while (g == 1);
    }
    if (g != m.n) return g;
  }
}

}  // namespace premiers::facteurs
