// SPDX-License-Identifier: MIT
// The kernels of the ring of eight lanes for processors that multiply 52 by 52 bits and add the low or
// the high half (AVX-512 IFMA): two instructions a pair of limbs, which read the low 52 bits by
// themselves.
#include "primes/facteurs/huit_noyaux.h"

#if defined(__x86_64__)

#include <immintrin.h>

#include <array>
#include <utility>

#if defined(__clang__)
#pragma clang attribute push(__attribute__((target("avx512f,avx512ifma"))), apply_to = function)
#else
#pragma GCC push_options
#pragma GCC target("avx512f,avx512ifma")
#endif

#include "primes/facteurs/huit_produit.h"

namespace premiers::facteurs::ecm {
namespace {

struct Entiers {
  using Chiffre = __m512i;
  static constexpr std::uint64_t biais_bas = 0;
  static constexpr std::uint64_t biais_haut = 0;

  [[gnu::always_inline]] static Chiffre preparer(__m512i membre) { return membre; }
  [[gnu::always_inline]] static Chiffre module(const Huit::Module& m, std::size_t i) {
    return diffuser(m.n[i]);
  }
  [[gnu::always_inline]] static Chiffre quotient(__m512i t, const Huit::Module& m) {
    return _mm512_madd52lo_epu64(__m512i{}, t, diffuser(m.inverse));
  }
  [[gnu::always_inline]] static void ajouter(__m512i& bas, __m512i& haut, Chiffre a, Chiffre b) {
    bas = _mm512_madd52lo_epu64(bas, a, b);
    haut = _mm512_madd52hi_epu64(haut, a, b);
  }
};

}  // namespace

Huit::Noyaux noyaux_ifma(std::size_t membres) { return noyaux_de_longueur<Entiers>(membres); }

}  // namespace premiers::facteurs::ecm

#if defined(__clang__)
#pragma clang attribute pop
#else
#pragma GCC pop_options
#endif

#endif
