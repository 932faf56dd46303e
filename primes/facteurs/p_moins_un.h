// SPDX-License-Identifier: MIT
// The P - 1 method for a long n: finds p where p - 1 has all its prime powers below B1 but for one
// prime below B2.
//
// J. M. Pollard, "Theorems on factorization and primality testing", Proceedings of the Cambridge
// Philosophical Society 76 (1974). First stage: x = 3^lcm(1..B1), by GMP, one exponent of some
// hundred words after the other. Second stage (P. L. Montgomery, Mathematics of Computation 48,
// 1987): V(m) = x^m + x^-m is the same for m and -m, and V(k D) = V(j) modulo p when k D + j or
// k D - j is what is missing of p - 1; so it follows the rows and the loop of ECM (ecm_phases.h).
//
// One run costs as much as 0.15 curves of the same bounds, and finds what curves do not care for.
// The order of 3 is a divisor of p - 1; 3 is not tried a second time with another base.
#pragma once

#include <NTL/ZZ.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "primes/arithmetique/entier_long.h"
#include "primes/facteurs/ecm_phases.h"
#include "primes/facteurs/ecm_rangees.h"
#include "primes/suivi/suivi.h"

namespace premiers::ecm {

/// The steps of the second stage.
template <class A>
struct PasMoinsUn {
  using Residu = typename A::Residu;
  static constexpr std::size_t bloc = 128;

  const A& a;
  Residu reduit_un;  ///< a product with it leaves a number what it is, and makes it a product
  std::array<Residu, Rangees::bebes> bebes;
  Residu un, precedent, courant;  ///< V(D), V((k - 1) D), V(k D)
  typename A::Entier diviseur = 1;

  /// V(m + n), given V(m), V(n) and V(m - n).
  Residu lucas(const Residu& vm, const Residu& vn, const Residu& ecart) const {
    return a.produit(a.difference(a.produit(vm, vn), ecart), reduit_un);
  }

  /// v1 = V(1).
  PasMoinsUn(const A& anneau, const Residu& v1, std::size_t k0)
      : a{anneau}, reduit_un{a.m.entrer(1)} {
    constexpr std::size_t D = Rangees::pas;
    std::array<Residu, D / 6 + 3> multiples;  // V(j) at j / 3, for j = 1 or 5 modulo 6
    const Residu v0{a.m.entrer(2)};
    const Residu v2 = lucas(v1, v1, v0);
    const Residu v3 = lucas(v2, v1, v1);
    const Residu v6 = lucas(v3, v3, v0);
    multiples[0] = v1;
    multiples[1] = lucas(v3, v2, v1);
    multiples[2] = lucas(v6, v1, multiples[1]);
    multiples[3] = lucas(v6, multiples[1], v1);
    for (std::size_t i = 4; i < multiples.size(); ++i) {
      multiples[i] = lucas(multiples[i - 2], v6, multiples[i - 4]);
    }
    const auto& residus = Rangees::residus();
    for (std::size_t i = 0; i < bebes.size(); ++i) bebes[i] = multiples[residus[i] / 3];
    constexpr std::size_t j = D / 2 - 2;  // D = j + (D - j), and their difference is 4
    un = lucas(multiples[(D - j) / 3], multiples[j / 3], lucas(v2, v2, v0));
    precedent = v0;
    courant = un;
    for (std::size_t k = 1; k < k0; ++k) avancer();
  }

  void avancer() {
    const Residu suivant = lucas(courant, un, precedent);
    precedent = courant;
    courant = suivant;
  }

  typename A::Entier suivants(std::span<Residu> valeurs) {
    for (Residu& v : valeurs) {
      v = courant;
      avancer();
    }
    return 1;
  }
};

/// 3^e modulo n for e = lcm(1..b1); where that is 1 modulo a factor of n it ends earlier. Gives the
/// gcd of n and the power less 1: n only where one prime alone makes it so.
NTL::ZZ premiere_phase_moins_un(const NTL::ZZ& n, std::uint64_t b1, NTL::ZZ& x, const Suivi& suivi);

/// P - 1 in the ring a of n. 1, n, or a proper factor of n.
template <class A>
NTL::ZZ essayer_moins_un(const A& a, const NTL::ZZ& n, std::uint64_t b1, const Rangees& rangees,
                         const Suivi& suivi) {
  NTL::ZZ x;
  const NTL::ZZ g = premiere_phase_moins_un(n, b1, x, suivi);
  if (g != 1) return g;
  constexpr std::size_t L = A::Entier::taille;
  const NTL::ZZ v1 = (x + NTL::InvMod(x, n)) % n;
  const PasMoinsUn<A> pas{a, a.produit({en_mots<L>(v1)}, {a.m.r2}), rangees.k0};
  return premiers::en_zz(seconde_phase_longue(a, pas, rangees, suivi));
}

}  // namespace premiers::ecm
