// SPDX-License-Identifier: MIT
// The kernels of the ring of eight lanes for processors with AVX-512 that multiply no 52-bit integers:
// the floating-point unit does it.
//
// N. Emmart, F. Zheng, C. Weems, "Faster modular exponentiation using double precision floating point
// arithmetic on the GPU" (ARITH 2018). Rounded towards zero, a b + 2^104 has the high half of a b in
// the low bits of its mantissa: its units are 2^52. What is missing of a b is exact in a second fused
// multiplication, with 2^52 added so that it is no less and no more than 52 bits. Both are added to the
// columns as they stand, exponents and all; those are the biases.
//
// Cost: two multiplications, a difference and two sums a pair of limbs, where IFMA takes two
// instructions.
#include "primes/facteurs/huit_noyaux.h"

#if defined(__x86_64__)

#include <immintrin.h>

#include <array>
#include <bit>
#include <utility>

#if defined(__clang__)
#pragma clang attribute push(__attribute__((target("avx512f"))), apply_to = function)
#else
#pragma GCC push_options
#pragma GCC target("avx512f")
#endif

#include "primes/facteurs/huit_produit.h"

namespace premiers::facteurs::ecm {
namespace {

struct Reels {
  using Chiffre = __m512d;
  static constexpr double un_bas = 0x1p52;
  static constexpr double un_haut = 0x1p104;
  static constexpr auto biais_bas = std::bit_cast<std::uint64_t>(un_bas);
  static constexpr auto biais_haut = std::bit_cast<std::uint64_t>(un_haut);

  [[gnu::always_inline]] static Chiffre preparer(__m512i membre) {
    const __m512i exposant = diffuser(biais_bas);
    return _mm512_castsi512_pd((membre & diffuser(masque_membre)) | exposant) -
           _mm512_set1_pd(un_bas);
  }
  [[gnu::always_inline]] static Chiffre module(const Huit::Module& m, std::size_t i) {
    return _mm512_set1_pd(m.n_reel[i]);
  }
  /// a b + c, rounded towards zero.
  [[gnu::always_inline]] static __m512d combiner(Chiffre a, Chiffre b, __m512d c) {
    return _mm512_fmadd_round_pd(a, b, c, _MM_FROUND_TO_ZERO | _MM_FROUND_NO_EXC);
  }
  [[gnu::always_inline]] static __m512d moitie_haute(Chiffre a, Chiffre b) {
    return combiner(a, b, _mm512_set1_pd(un_haut));
  }
  [[gnu::always_inline]] static __m512d moitie_basse(Chiffre a, Chiffre b, __m512d haute) {
    return combiner(a, b, _mm512_set1_pd(un_haut + un_bas) - haute);
  }
  [[gnu::always_inline]] static Chiffre quotient(__m512i t, const Huit::Module& m) {
    const Chiffre x = preparer(t);
    const Chiffre inverse = _mm512_set1_pd(m.inverse_reel);
    return moitie_basse(x, inverse, moitie_haute(x, inverse)) - _mm512_set1_pd(un_bas);
  }
  [[gnu::always_inline]] static void ajouter(__m512i& bas, __m512i& haut, Chiffre a, Chiffre b) {
    const __m512d h = moitie_haute(a, b);
    haut += _mm512_castpd_si512(h);
    bas += _mm512_castpd_si512(moitie_basse(a, b, h));
  }
};

}  // namespace

Huit::Noyaux noyaux_reels(std::size_t membres) { return noyaux_de_longueur<Reels>(membres); }

}  // namespace premiers::facteurs::ecm

#if defined(__clang__)
#pragma clang attribute pop
#else
#pragma GCC pop_options
#endif

#endif
