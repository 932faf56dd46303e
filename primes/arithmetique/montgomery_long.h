// SPDX-License-Identifier: MIT
// Arithmetic modulo an odd n of L words without division, lazy about ranges: what
// montgomery_souple.h is up to 128 bits, beyond.
//
// P. L. Montgomery, "Modular multiplication without trial division", Mathematics of Computation 44
// (1985). Multiplying and cancelling alternate word by word, so that a product never takes more
// than L words between two steps. With n < 2^(64 L - 4) products are left in (0, 2n) and sums and
// differences of products in (0, 4n) without any correction, because 4n 4n < 2^(64 L) n.
//
// The length is a constant of the type, so that all loops are unrolled.
#pragma once

#include <NTL/ZZ.h>
#include <gmp.h>

#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "primes/arithmetique/entier_long.h"
#include "primes/arithmetique/gmp_zz.h"
#include "primes/arithmetique/montgomery.h"

namespace premiers {

/// The ring Z/nZ for odd n, 3 <= n < 2^(64 L - 4). Arguments of `somme` and `difference` must be
/// products (or residues of `entrer`); those of `produit` and `carre` may be anything that these
/// functions give. Residues are not unique: only their gcd with n means something.
template <std::size_t L>
struct MontgomeryLong {
  using Entier = EntierLong<L>;
  static constexpr long bits_maximum = 64 * static_cast<long>(L) - 4;

  Entier n;
  Entier deux_n;
  Entier r2;             ///< 2^(128 L) modulo n
  std::uint64_t oppose;  ///< -1 / n modulo 2^64

  explicit MontgomeryLong(const NTL::ZZ& modulus)
      : n{en_mots<L>(modulus)},
        deux_n{n + n},
        r2{en_mots<L>(NTL::power2_ZZ(static_cast<long>(128 * L)) % modulus)},
        oppose{0 - inverse_2_64(n.mots[0])} {}

  Entier somme(const Entier& a, const Entier& b) const { return a + b; }
  Entier difference(const Entier& a, const Entier& b) const { return a + (deux_n - b); }

  /// Not inlined: of the 60 places where ECM multiplies, each would be a hundred instructions and
  /// more, and take six times as long to compile.
  [[gnu::noinline]] Entier produit(const Entier& a, const Entier& b) const {
    Entier t;
#pragma GCC unroll 16
    for (std::size_t i = 0; i < L; ++i) {  // t = (t + a b[i] + f n) / 2^64
      Entier128 x = Entier128{a.mots[0]} * b.mots[i] + t.mots[0];
      const std::uint64_t f = bas(x) * oppose;
      Entier128 y = Entier128{f} * n.mots[0] + bas(x);
#pragma GCC unroll 16
      for (std::size_t j = 1; j < L; ++j) {
        x = Entier128{a.mots[j]} * b.mots[i] + t.mots[j] + haut(x);
        y = Entier128{f} * n.mots[j] + bas(x) + haut(y);
        t.mots[j - 1] = bas(y);
      }
      t.mots[L - 1] = haut(x) + haut(y);
    }
    return t;
  }
  Entier carre(const Entier& a) const { return produit(a, a); }

  /// The residue of a small integer.
  Entier entrer(std::uint64_t x) const { return produit(Entier{x}, r2); }

  /// The residue whose product with the product a is that of 1; false if there is none.
  bool inverser(const Entier& a, Entier& inverse) const {
    mpz_t vue_a, vue_n;
    mpz_roinit_n(vue_a, a.mots.data(), static_cast<mp_size_t>(L));
    mpz_roinit_n(vue_n, n.mots.data(), static_cast<mp_size_t>(L));
    EntierGmp i;
    if (mpz_invert(i.z, vue_a, vue_n) == 0) return false;
    for (std::size_t j = 0; j < L; ++j) {
      inverse.mots[j] = mpz_getlimbn(i.z, static_cast<mp_size_t>(j));
    }
    inverse = produit(produit(inverse, r2), r2);
    return true;
  }
};

// The products of all lengths are compiled once (montgomery_long.cpp).
extern template EntierLong<2> MontgomeryLong<2>::produit(const Entier&, const Entier&) const;
extern template EntierLong<3> MontgomeryLong<3>::produit(const Entier&, const Entier&) const;
extern template EntierLong<4> MontgomeryLong<4>::produit(const Entier&, const Entier&) const;
extern template EntierLong<5> MontgomeryLong<5>::produit(const Entier&, const Entier&) const;
extern template EntierLong<6> MontgomeryLong<6>::produit(const Entier&, const Entier&) const;
extern template EntierLong<7> MontgomeryLong<7>::produit(const Entier&, const Entier&) const;
extern template EntierLong<8> MontgomeryLong<8>::produit(const Entier&, const Entier&) const;
extern template EntierLong<9> MontgomeryLong<9>::produit(const Entier&, const Entier&) const;
extern template EntierLong<10> MontgomeryLong<10>::produit(const Entier&, const Entier&) const;
extern template EntierLong<11> MontgomeryLong<11>::produit(const Entier&, const Entier&) const;

/// A number of words, as an argument.
template <std::size_t L>
using Longueur = std::integral_constant<std::size_t, L>;

/// The most words that there is code for: 700 bits, which is 210 digits.
inline constexpr std::size_t longueur_maximale = 11;

/// f(Longueur<L>{}) for the shortest ring that takes moduli of so many bits, 65 <= bits <=
/// MontgomeryLong<longueur_maximale>::bits_maximum.
template <std::size_t L = 2, class F>
auto a_la_longueur(long bits, const F& f) {
  if constexpr (L < longueur_maximale) {
    if (bits > MontgomeryLong<L>::bits_maximum) return a_la_longueur<L + 1>(bits, f);
  }
  return f(Longueur<L>{});
}

}  // namespace premiers
