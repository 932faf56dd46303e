// SPDX-License-Identifier: MIT
// Arithmetic modulo an odd n < 2^64 without division: a residue x is carried as x 2^64 mod n, and a
// product costs three multiplications.
//
// Method: P. L. Montgomery, "Modular multiplication without trial division", Mathematics of
// Computation 44 (1985), in its subtracting form: with m = ab / n mod 2^64, the low halves of ab
// and of mn are equal, hence ab - mn is exactly 2^64 (high(ab) - high(mn)). The difference of two
// numbers below n is corrected by one conditional addition, so nothing overflows for any odd n up
// to 2^64 - 1.
#pragma once

#include <cstdint>

#include "primes/arithmetique/entier128.h"

namespace premiers {
inline namespace arithmetique {

/// 1 / n modulo 2^64 for odd n. Newton's iteration doubles the number of good bits: 5, 10, ... 80.
constexpr std::uint64_t inverse_2_64(std::uint64_t n) {
  std::uint64_t x = (3 * n) ^ 2;
  for (int i = 0; i < 4; ++i) x *= 2 - n * x;
  return x;
}

/// a - b and a + b modulo n, for a and b in [0, n) and n of any width. Nothing overflows. The
/// correction is masked, not branched upon: its outcome is a toss of a coin.
template <class Entier>
constexpr Entier difference_modulo(Entier a, Entier b, Entier n) {
  const auto masque = static_cast<std::uint64_t>(0 - static_cast<std::uint64_t>(a < b));
  return a - b + masquer(n, masque);
}
template <class Entier>
constexpr Entier somme_modulo(Entier a, Entier b, Entier n) {
  return difference_modulo<Entier>(a, n - b, n);
}

/// x times the residue `un` modulo n, by doubling and adding: meant for small x.
template <class Entier>
constexpr Entier multiple_modulo(std::uint64_t x, Entier un, Entier n) {
  Entier residu = 0;
  for (int i = bits(x) - 1; i >= 0; --i) {
    residu = somme_modulo(residu, residu, n);
    if (((x >> i) & 1) != 0) residu = somme_modulo(residu, un, n);
  }
  return residu;
}

/// What a Montgomery product is before its last step: the difference of two numbers.
template <class Entier>
struct Termes {
  Entier plus, moins;
};

/// The ring Z/nZ for odd n, 3 <= n < 2^64. Every residue is kept in [0, n).
struct Montgomery64 {
  using Entier = std::uint64_t;

  Entier n;        ///< the modulus
  Entier inverse;  ///< 1 / n modulo 2^64
  Entier un;       ///< the residue 1, that is 2^64 mod n

  /// n must be odd and at least 3 (not checked).
  constexpr explicit Montgomery64(Entier modulus)
      : n{modulus}, inverse{inverse_2_64(modulus)}, un{(0 - modulus) % modulus} {}

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

  /// Two numbers below n, if a b < 2^64 n, whose difference is a b 2^-64 modulo n.
  [[gnu::always_inline]] constexpr Termes<Entier> reduire(Entier a, Entier b) const {
    const Entier128 x = Entier128{a} * b;
    return {haut(x), haut(Entier128{bas(x) * inverse} * n)};
  }

  /// The residue of a (small) integer, and the integer in [0, n) that a residue stands for.
  constexpr Entier entrer(std::uint64_t x) const { return multiple_modulo(x, un, n); }
  constexpr Entier sortir(Entier residu) const { return produit(residu, 1); }
};

}  // namespace arithmetique
}  // namespace premiers
