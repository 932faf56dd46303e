// SPDX-License-Identifier: MIT
// Integers of a fixed number of words: just enough for Montgomery rings and for ECM, which wants to
// compare them and to take their gcd.
#pragma once

#include <NTL/ZZ.h>

#include <algorithm>
#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>

#include "primes/arithmetique/entier128.h"
#include "primes/arithmetique/gmp_zz.h"

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

/// n >= 0, which must fit.
template <std::size_t L>
EntierLong<L> en_mots(const NTL::ZZ& n) {
  EntierLong<L> r;
  std::copy_n(NTL::ZZ_limbs_get(n), n.size(), r.mots.begin());
  return r;
}
template <std::size_t L>
NTL::ZZ en_zz(const EntierLong<L>& x) {
  NTL::ZZ n;
  NTL::ZZ_limbs_set(n, x.mots.data(), static_cast<long>(L));
  return n;
}

/// a + b and a - b modulo 2^(64 L).
template <std::size_t L>
constexpr EntierLong<L> operator+(const EntierLong<L>& a, const EntierLong<L>& b) {
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
constexpr EntierLong<L> operator-(const EntierLong<L>& a, const EntierLong<L>& b) {
  EntierLong<L> r;
  std::uint64_t emprunt = 0;
  for (std::size_t i = 0; i < L; ++i) {
    const Entier128 d = Entier128{a.mots[i]} - b.mots[i] - emprunt;
    r.mots[i] = bas(d);
    emprunt = haut(d) & 1;
  }
  return r;
}

/// The greatest common divisor of a and n > 0; n if a is 0.
template <std::size_t L>
EntierLong<L> pgcd(const EntierLong<L>& a, const EntierLong<L>& n) {
  mpz_t vue_a, vue_n;
  mpz_roinit_n(vue_a, a.mots.data(), static_cast<mp_size_t>(L));
  mpz_roinit_n(vue_n, n.mots.data(), static_cast<mp_size_t>(L));
  EntierGmp g;
  mpz_gcd(g.z, vue_a, vue_n);
  EntierLong<L> r;
  for (std::size_t i = 0; i < L; ++i) r.mots[i] = mpz_getlimbn(g.z, static_cast<mp_size_t>(i));
  return r;
}

}  // namespace premiers
