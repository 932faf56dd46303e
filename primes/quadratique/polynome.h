// SPDX-License-Identifier: MIT
// Families of polynomials whose values are sieved, and where each prime divides them.
//
// With b^2 = kn mod 4a the values Q(x) = a x^2 + b x + c, c = (b^2 - kn) / 4a, satisfy
// (2 a x + b)^2 = 4 a Q(x) + kn, and |Q| stays below M sqrt(kn / 8) for |x| <= M when a is near
// sqrt(kn / 2) / M. a is a product of s primes q of the base, so there are 2^(s-1) essentially
// different b = +-B_1 +-...+-B_s for it, each B_l a root of kn modulo q_l and 0 modulo the others.
// They are walked in the order of a Gray code (S. Contini, 1997): one sign changes at a time, and
// each root modulo p moves by a number that is known for the whole family.
//
// Polynomials are short, so there are many: 10^8 at 105 digits. They do not run out: of some 60
// primes in reserve a dozen make a coefficient, which makes 2^11 polynomials.
//
// Why it is fast: with the inverses of the q modulo every p at hand, a family needs no big integer
// in its loop over the base, as B_l / a = gamma_l / q_l modulo p with a small gamma_l. The step
// from one polynomial to the next is an addition and a minimum per root, eight or sixteen at once.
#pragma once

#include <NTL/ZZ.h>

#include <cstddef>
#include <cstdint>
#include <set>
#include <vector>

#include "primes/quadratique/base.h"
#include "primes/quadratique/entier.h"
#include "primes/quadratique/reglages.h"

namespace premiers::quadratique {

/// The place of a root that does not exist; beyond every sieve array.
inline constexpr std::uint32_t absente = std::uint32_t{1} << 30;

/// How the roots move from one polynomial to the next: by so much, up or down.
struct Mouvement {
  const std::uint32_t* pas;
  bool monter;
};

/// One polynomial after the other. Positions count from the left end of the sieve: x = -demi.
struct Polynomes {
  Polynomes(const Base& base, const Reglages& reglages);
  /// Goes on to the next polynomial (to the first one, when called first); false if there is none
  /// left, which happens for small n only.
  bool suivant();
  /// The move that leads to the polynomial of that rank in the family; to the first, none at all.
  Mouvement mouvement(std::uint32_t rang_voulu) const;
  /// How many polynomials the family has from the current one on.
  std::size_t reste_de_la_famille() const { return (std::size_t{1} << (nombre - 1)) - rang; }

  /// The current polynomial.
  Entier256 a, b, c;
  std::vector<std::size_t> facteurs;          // the primes of a, as indices into the base
  Tableau<std::uint32_t> racine_1, racine_2;  // the positions < p that p divides

  // What follows is kept from one polynomial to the next.
  const Base& base;
  std::uint32_t demi;
  /// Roots from this index on are left to others to be moved (seaux.h). The end of the base, if
  /// not set; above the primes that coefficients are made of.
  std::size_t limite;
  double taille_a;                               // wished log2 of a
  std::size_t nombre;                            // of primes in a
  std::size_t reserve_debut, reserve_fin;        // of the base: where most of these come from
  std::vector<Tableau<std::uint32_t>> inverses;  // 1 / q modulo every p, made when needed
  std::set<std::vector<std::size_t>> deja;       // the sets of q that have been used
  std::uint64_t alea = 1;                        // state of the random choice
  Entier256 moins_kn, inverse_a;                 // -kn; 1 / a modulo 2^256
  std::vector<Entier256> termes;                 // the B_l
  std::vector<Tableau<std::uint32_t>> pas;       // B_l / a modulo every p
  Tableau<std::uint32_t> demi_mod;               // demi modulo every p
  Tableau<std::uint32_t> sur_place;              // steps of zero: for a new family
  Tableau<std::uint32_t> tampon;                 // scratch
  std::uint32_t rang = 0;                        // of the polynomial in its family
};

}  // namespace premiers::quadratique
