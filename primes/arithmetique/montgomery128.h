// SPDX-License-Identifier: MIT
// Arithmetic modulo an odd n < 2^128 without division, in two 64-bit limbs; the same interface as
// primes/arithmetique/montgomery.h, so that one text of an algorithm serves both sizes.
//
// The product takes ten multiplications: four for ab and three for each of the two limbs that are
// cancelled from below. As there, multiples of n are subtracted, not added: the cancelled limbs are
// equal, so their low products need not be formed, and one conditional addition at the end brings
// the difference of two numbers below n back into [0, n) for every odd n up to 2^128 - 1.
#pragma once

#include <cstdint>

#include "primes/arithmetique/entier128.h"
#include "primes/arithmetique/montgomery.h"

namespace premiers {
inline namespace arithmetique {

/// The ring Z/nZ for odd n, 3 <= n < 2^128. Every residue is kept in [0, n).
struct Montgomery128 {
  using Entier = Entier128;

  Entier n;               ///< the modulus
  std::uint64_t inverse;  ///< 1 / n modulo 2^64
  Entier un;              ///< the residue 1, that is 2^128 mod n

  /// n must be odd and at least 3 (not checked).
  constexpr explicit Montgomery128(Entier modulus)
      : n{modulus}, inverse{inverse_2_64(bas(modulus))}, un{(0 - modulus) % modulus} {}

  [[gnu::always_inline]] constexpr Entier difference(Entier a, Entier b) const {
    return difference_modulo(a, b, n);
  }
  [[gnu::always_inline]] constexpr Entier difference(Termes<Entier> t) const {
    return difference(t.plus, t.moins);
  }
  [[gnu::always_inline]] constexpr Entier somme(Entier a, Entier b) const {
    return somme_modulo(a, b, n);
  }

  [[gnu::always_inline]] constexpr Entier produit(Entier a, Entier b) const {
    return difference(reduire(a, b));
  }
  [[gnu::always_inline]] constexpr Entier carre(Entier a) const { return produit(a, a); }

  /// Two numbers below n, if a b < 2^128 n, whose difference is a b 2^-128 modulo n.
  [[gnu::always_inline]] constexpr Termes<Entier> reduire(Entier a, Entier b) const {
    const Entier x0 = Entier{bas(a)} * bas(b);
    const Entier x01 = Entier{bas(a)} * haut(b) + haut(x0);
    const Entier x1 = Entier{haut(a)} * bas(b) + bas(x01);
    const Entier x23 = Entier{haut(a)} * haut(b) + haut(x01) + haut(x1);
    const std::uint64_t m0 = bas(x0) * inverse;
    const Entier u = Entier{m0} * haut(n) + haut(Entier{m0} * bas(n));
    const std::uint64_t m1 = (bas(x1) - bas(u)) * inverse;
    const unsigned retenue = bas(x1) < bas(u) ? 1 : 0;
    return {x23, Entier{m1} * haut(n) + haut(Entier{m1} * bas(n)) + haut(u) + retenue};
  }

  /// The residue of a (small) integer, and the integer in [0, n) that a residue stands for.
  constexpr Entier entrer(std::uint64_t x) const { return multiple_modulo(x, un, n); }
  constexpr Entier sortir(Entier residu) const { return produit(residu, 1); }
};

}  // namespace arithmetique
}  // namespace premiers
