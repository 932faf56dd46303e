// SPDX-License-Identifier: MIT
// The polynomials of one leading coefficient a, the product of s primes q of the base: 2^(s-1) of them,
// one for each b = +-B_1 +-...+-B_s with the sign of one fixed.
//
// B_l is a root of kn modulo q_l and 0 modulo the other q. In the order of a Gray code (S. Contini, 1997)
// one sign changes at a time, so each root modulo p moves by a number, 2 B_l / 2 a, that is known for the
// whole family.
//
// Why it is fast: with the inverses of the q modulo every p at hand, a family needs no big integer
// in its loop over the base, as B_l / a = gamma_l / q_l modulo p with a small gamma_l.
#pragma once

#include <NTL/ZZ.h>

#include <cstddef>
#include <cstdint>
#include <vector>

#include "primes/quadratique/base.h"
#include "primes/quadratique/entier.h"
#include "primes/quadratique/tableau.h"

namespace premiers::quadratique {

/// The place of a root that does not exist; beyond every sieve array.
inline constexpr std::uint32_t absente = std::uint32_t{1} << 30;

/// How the roots move from one polynomial to the next: by so much, up or down.
struct Mouvement {
  const std::uint32_t* pas;
  bool monter;
};

struct Famille {
  /// Of coefficients that are the product of `nombre` primes. Positions count from x = -demi.
  Famille(const Base& base, std::uint32_t demi, std::size_t nombre);

  /// Another coefficient: these primes of the base, given by their indices.
  void commencer(std::vector<std::size_t> premiers_de_a);
  /// The roots of the first polynomial, whose b is the sum of all B_l: positions < p.
  void racines_initiales(Tableau<std::uint32_t>& racine_1, Tableau<std::uint32_t>& racine_2);

  /// The b of the first polynomial.
  Entier256 b_initial() const;
  /// What b changes by on the way to the polynomial of that rank > 0.
  Entier256 changement_de_b(std::uint32_t rang) const;
  /// The move of the roots that leads to the polynomial of that rank; to the first, none at all.
  Mouvement mouvement(std::uint32_t rang) const;
  std::size_t nombre_de_polynomes() const { return std::size_t{1} << (termes_.size() - 1); }

  Entier256 a, inverse_a;             // the latter modulo 2^256
  std::vector<std::size_t> facteurs;  // the primes of a, as indices into the base

 private:
  void preparer_terme(const NTL::ZZ& grand_a, std::size_t l);

  const Base& base_;
  std::vector<Entier256> termes_;                 // the B_l
  std::vector<Tableau<std::uint32_t>> pas_;       // B_l / a modulo every p
  std::vector<Tableau<std::uint32_t>> inverses_;  // 1 / q modulo every p, made when needed
  Tableau<std::uint32_t> demi_mod_;               // demi modulo every p
  Tableau<std::uint32_t> sur_place_;              // steps of zero: to the first polynomial
  Tableau<std::uint32_t> tampon_;                 // scratch
};

}  // namespace premiers::quadratique
