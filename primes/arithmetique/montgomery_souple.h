// SPDX-License-Identifier: MIT
// Montgomery arithmetic that is lazy about ranges, for moduli that leave four bits of their word
// free.
//
// Products are left in (0, 2n) and sums and differences of products in (0, 4n), without any
// correction. That is sound because 4n 4n < 2^w n when n < 2^(w-4), the condition under which a
// Montgomery reduction still gives two terms below n. The gain is a third of the instructions of a
// product and four fifths of those of a sum.
#pragma once

#include "primes/arithmetique/montgomery.h"

namespace premiers {
inline namespace arithmetique {

/// The ring of `Montgomery`, for n < 2^(w-4), w being its word's 64 or 128 bits. The arguments of
/// `somme` and `difference` must be products (or residues of `entrer`); those of `produit` and
/// `carre` may be anything that these functions give. Residues are not unique: only their gcd with
/// n means something.
template <class Montgomery>
struct MontgomerySouple {
  using Entier = typename Montgomery::Entier;
  static constexpr int bits_maximum = 8 * static_cast<int>(sizeof(Entier)) - 4;

  Montgomery strict;
  Entier n;
  Entier deux_n;

  constexpr explicit MontgomerySouple(Entier modulus)
      : strict{modulus}, n{modulus}, deux_n{2 * modulus} {}

  [[gnu::always_inline]] constexpr Entier somme(Entier a, Entier b) const { return a + b; }
  [[gnu::always_inline]] constexpr Entier difference(Entier a, Entier b) const {
    return a + (deux_n - b);
  }
  [[gnu::always_inline]] constexpr Entier produit(Entier a, Entier b) const {
    const auto t = strict.reduire(a, b);
    return t.plus + (n - t.moins);
  }
  [[gnu::always_inline]] constexpr Entier carre(Entier a) const { return produit(a, a); }
  constexpr Entier entrer(std::uint64_t x) const { return strict.entrer(x); }
};

}  // namespace arithmetique
}  // namespace premiers
