// SPDX-License-Identifier: MIT
// Arithmetic modulo an odd n of L words without division, lazy about ranges: what
// montgomery_souple.h is up to 128 bits, beyond.
//
// P. L. Montgomery, "Modular multiplication without trial division", Mathematics of Computation 44
// (1985). Multiplying and cancelling alternate word by word, so that a product never takes more
// than L words between two steps. With n < 2^(64 L - 4) products are left in (0, 2n) and sums and
// differences of products in (0, 4n) without any correction, because 4n 4n < 2^(64 L) n.
//
// The length is a constant of the type: all loops are unrolled, and residues live in registers.
#pragma once

#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>

#include "primes/arithmetique/entier128.h"
#include "primes/primalite/montgomery.h"

namespace premiers {

/// An integer of L words, the lowest first.
template <std::size_t L>
struct EntierLong {
  std::array<std::uint64_t, L> mots{};

  constexpr EntierLong() = default;
  constexpr EntierLong(std::uint64_t x) { mots[0] = x; }  // NOLINT: an integer like any other

  friend constexpr bool operator==(const EntierLong&, const EntierLong&) = default;
  friend constexpr std::strong_ordering operator<=>(const EntierLong& a, const EntierLong& b) {
    std::size_t i = L - 1;
    while (i > 0 && a.mots[i] == b.mots[i]) --i;
    return a.mots[i] <=> b.mots[i];
  }
};

/// a + b and a - b modulo 2^(64 L).
template <std::size_t L>
[[gnu::always_inline]] constexpr EntierLong<L> operator+(const EntierLong<L>& a,
                                                         const EntierLong<L>& b) {
  EntierLong<L> r;
  std::uint64_t retenue = 0;
  for (std::size_t i = 0; i < L; ++i) {
    const Entier128 s = Entier128{a.mots[i]} + b.mots[i] + retenue;
    r.mots[i] = bas(s);
    retenue = haut(s);
  }
  return r;
}
template <std::size_t L>
[[gnu::always_inline]] constexpr EntierLong<L> operator-(const EntierLong<L>& a,
                                                         const EntierLong<L>& b) {
  EntierLong<L> r;
  std::uint64_t emprunt = 0;
  for (std::size_t i = 0; i < L; ++i) {
    const Entier128 d = Entier128{a.mots[i]} - b.mots[i] - emprunt;
    r.mots[i] = bas(d);
    emprunt = haut(d) & 1;
  }
  return r;
}

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

  /// r2_modulo_n must be 2^(128 L) modulo the modulus.
  constexpr MontgomeryLong(const Entier& modulus, const Entier& r2_modulo_n)
      : n{modulus},
        deux_n{modulus + modulus},
        r2{r2_modulo_n},
        oppose{0 - inverse_2_64(modulus.mots[0])} {}

  [[gnu::always_inline]] constexpr Entier somme(const Entier& a, const Entier& b) const {
    return a + b;
  }
  [[gnu::always_inline]] constexpr Entier difference(const Entier& a, const Entier& b) const {
    return a + (deux_n - b);
  }
  [[gnu::noinline]] constexpr Entier produit(const Entier& a, const Entier& b) const {
    Entier t;
#pragma GCC unroll 8
    for (std::size_t i = 0; i < L; ++i) {  // t = (t + a b[i] + f n) / 2^64
      Entier128 x = Entier128{a.mots[0]} * b.mots[i] + t.mots[0];
      const std::uint64_t f = bas(x) * oppose;
      Entier128 y = Entier128{f} * n.mots[0] + bas(x);
#pragma GCC unroll 8
      for (std::size_t j = 1; j < L; ++j) {
        x = Entier128{a.mots[j]} * b.mots[i] + t.mots[j] + haut(x);
        y = Entier128{f} * n.mots[j] + bas(x) + haut(y);
        t.mots[j - 1] = bas(y);
      }
      t.mots[L - 1] = haut(x) + haut(y);
    }
    return t;
  }
  [[gnu::always_inline]] constexpr Entier carre(const Entier& a) const { return produit(a, a); }

  /// The residue of a small integer.
  constexpr Entier entrer(std::uint64_t x) const { return produit(Entier{x}, r2); }
};

}  // namespace premiers
