// SPDX-License-Identifier: MIT
// Integers of a fixed number of words: just enough for Montgomery rings and for ECM, which wants to
// compare them and to take their gcd.
#pragma once

#include <NTL/ZZ.h>

#if defined(__x86_64__)
#include <immintrin.h>
#endif

#include <algorithm>
#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "primes/arithmetique/entier128.h"
#include "primes/arithmetique/gmp_zz.h"

namespace premiers {

/// An integer of L words, the lowest first.
template <std::size_t L>
struct EntierLong {
  static constexpr std::size_t taille = L;

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

/// One word of a sum or of a difference; the carry or borrow, 0 or 1, goes in and out. Compilers do
/// not see the machine's own instruction in the plain form: sums of five words then take 12 ns
/// instead of 7, differences modulo n 25 instead of 6.
constexpr std::uint64_t ajouter_mot(unsigned char& retenue, std::uint64_t a, std::uint64_t b) {
#if defined(__x86_64__)
  if (!std::is_constant_evaluated()) {
    unsigned long long s = 0;
    retenue = _addcarry_u64(retenue, a, b, &s);
    return s;
  }
#endif
  const Entier128 s = Entier128{a} + b + retenue;
  retenue = static_cast<unsigned char>(haut(s));
  return bas(s);
}
constexpr std::uint64_t retrancher_mot(unsigned char& emprunt, std::uint64_t a, std::uint64_t b) {
#if defined(__x86_64__)
  if (!std::is_constant_evaluated()) {
    unsigned long long d = 0;
    emprunt = _subborrow_u64(emprunt, a, b, &d);
    return d;
  }
#endif
  const Entier128 d = Entier128{a} - b - emprunt;
  emprunt = static_cast<unsigned char>(haut(d) & 1);
  return bas(d);
}

/// a + b and a - b modulo 2^(64 L).
template <std::size_t L>
constexpr EntierLong<L> operator+(const EntierLong<L>& a, const EntierLong<L>& b) {
  EntierLong<L> r;
  unsigned char retenue = 0;
#pragma GCC unroll 16
  for (std::size_t i = 0; i < L; ++i) r.mots[i] = ajouter_mot(retenue, a.mots[i], b.mots[i]);
  return r;
}
template <std::size_t L>
constexpr EntierLong<L> operator-(const EntierLong<L>& a, const EntierLong<L>& b) {
  EntierLong<L> r;
  unsigned char emprunt = 0;
#pragma GCC unroll 16
  for (std::size_t i = 0; i < L; ++i) r.mots[i] = retrancher_mot(emprunt, a.mots[i], b.mots[i]);
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
