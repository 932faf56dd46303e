// SPDX-License-Identifier: MIT
// Polynomials whose values are sieved, one after the other, and where each prime divides them.
//
// With b^2 = kn mod 4a the values Q(x) = a x^2 + b x + c, c = (b^2 - kn) / 4a, satisfy
// (2 a x + b)^2 = 4 a Q(x) + kn, and |Q| stays below M sqrt(kn / 8) for |x| <= M when a is near
// sqrt(kn / 2) / M. Which a are taken is told in coefficients.h, how the b of one a follow each other in
// famille.h.
//
// Polynomials are short, so there are many: 10^8 at 105 digits. The step from one to the next is an
// addition and a minimum per root, eight or sixteen at once.
#pragma once

#include <cstddef>
#include <cstdint>

#include "primes/quadratique/base.h"
#include "primes/quadratique/coefficients.h"
#include "primes/quadratique/entier.h"
#include "primes/quadratique/famille.h"
#include "primes/quadratique/reglages.h"
#include "primes/quadratique/tableau.h"

namespace premiers::quadratique {

/// One polynomial after the other. Positions count from the left end of the sieve: x = -demi.
struct Polynomes {
  Polynomes(const Base& base, const Reglages& reglages);
  /// Goes on to the next polynomial (to the first one, when called first); false if there is none
  /// left, which happens for small n only.
  bool suivant();
  /// How many polynomials the family has from the current one on.
  std::size_t reste_de_la_famille() const { return famille.nombre_de_polynomes() - rang; }

  const Base& base;
  std::uint32_t demi;
  /// Roots from this index on are left to others to be moved (seaux.h). The end of the base, if
  /// not set; above the primes that coefficients are made of.
  std::size_t limite;
  Coefficients coefficients;

  /// The current polynomial; its a is that of the family.
  Famille famille;
  std::uint32_t rang = 0;  // in its family
  Entier256 b, c;
  Tableau<std::uint32_t> racine_1, racine_2;  // the positions < p that p divides

 private:
  bool nouvelle_famille();

  Entier256 moins_kn_;
};

}  // namespace premiers::quadratique
