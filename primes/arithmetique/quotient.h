// SPDX-License-Identifier: MIT
// Quotients and remainders of integers by floating point.
//
// A processor divides doubles some three times as fast as words of 64 bits, multiplies by a reciprocal
// ten times as fast, and does both in vectors. What it gives is rounded. Here are all ways from there
// to exact integers, each with the range that it is proven for; a new one belongs here as well. (The
// filter of primes/crible/touches.cpp wants no exact quotient, only a bound of its error.)
//
// Let b be the bits of a significand, 53 for double and 24 for float; a rounding changes a number x by
// |x| 2^-b at most, and never carries it across a number that needs none.
//
//  1. One division: floor(n / d) for n, d < 2^52. Both are exact. Where n / d is no integer it lies
//     1 / d below the next one at least; the rounding moves it by n / d 2^-53, less than half of that.
//  2. A rounded reciprocal, times n + 1/2: floor(n / d) for n < 2^(b - 2). n + 1/2 is exact, and
//     (n + 1/2) / d at least 1 / 2d away from any integer. Two roundings move it by less than
//     (2 + 2^-b) 2^-b (n + 1/2) / d, which is less than 1 / 2d, as 2 n + 1 <= 2^(b - 1) - 1.
//  3. A division, then what is wrong is put right in integers: n < 2^63, d < 2^52, n / d < 2^50. Of
//     the roundings, that of n and that of the quotient, comes less than 2^50 (2^-52 + 2^-106), hardly
//     more than 1/4: cut off, the quotient is wrong by one at most, and n - q d lies in ]-d, 2 d[. It
//     is computed modulo 2^64, which changes nothing as it is so small.
//  4. The nearest quotient: the remainder t - q d for integers |t| < 2^52, d < 2^24. Adding 3 * 2^51
//     and taking it away rounds to an integer. The quotient before that is off by 2^-52 |t / d| at
//     most, so |t - q d| <= d / 2 + 2^-52 |t| < d / 2 + 1; q d and the difference are integers below
//     2^53, so exact.
//  5. In floats, as a product modulo p: a, b < p < 2^23, a b < 2^23 p. Three roundings (product,
//     reciprocal, product of both) make the quotient wrong by less than 1.51 before it is cut off, so
//     the remainder, computed modulo 2^32, is above -2 p and below 3 p. Of a number and the same plus
//     or minus a multiple of p the right one is the least without a sign: three minima.
#pragma once

#include <algorithm>
#include <cassert>
#include <concepts>
#include <cstdint>
#include <limits>
#include <type_traits>

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace premiers {
inline namespace arithmetique {

/// 1. floor(n / d), n < 2^52, 0 < d < 2^52.
[[gnu::always_inline]] inline std::uint64_t quotient_direct(std::uint64_t n, std::uint64_t d) {
  assert(n >> 52 == 0 && d >> 52 == 0 && d > 0);
  return static_cast<std::uint64_t>(
      static_cast<std::int64_t>(static_cast<double>(static_cast<std::int64_t>(n)) /
                                static_cast<double>(static_cast<std::int64_t>(d))));
}

/// 2. n must be below 2 to this power: 51 for double, 22 for float.
template <std::floating_point Reel>
inline constexpr int bits_par_inverse = std::numeric_limits<Reel>::digits - 2;

/// 2. What `quotient_par_inverse` takes for n, kept where many quotients of one n are wanted.
template <std::floating_point Reel, std::integral Entier>
[[gnu::always_inline]] inline Reel avec_demi(Entier n) {
  assert(n >= 0 && static_cast<std::uint64_t>(n) >> bits_par_inverse<Reel> == 0);
  return static_cast<Reel>(static_cast<std::make_signed_t<Entier>>(n)) + Reel{0.5};
}

/// 2. floor(n / d) from avec_demi(n) and 1 / d, rounded: a signed integer as wide as the float, which is
/// what processors make of one.
[[gnu::always_inline]] inline std::int64_t quotient_par_inverse(double n_et_demi, double inverse) {
  return static_cast<std::int64_t>(n_et_demi * inverse);
}
[[gnu::always_inline]] inline std::int32_t quotient_par_inverse(float n_et_demi, float inverse) {
  return static_cast<std::int32_t>(n_et_demi * inverse);
}

/// 3. A quotient that may be wrong by one, with n - quotient * d.
struct QuotientProche {
  std::uint64_t quotient;
  std::int64_t reste;
};
[[gnu::always_inline]] inline QuotientProche quotient_proche(std::uint64_t n, std::uint64_t d) {
  assert(n >> 63 == 0 && d >> 52 == 0 && d > 0 && n / d >> 50 == 0);
  const double q = static_cast<double>(static_cast<std::int64_t>(n)) /
                   static_cast<double>(static_cast<std::int64_t>(d));
  const auto entier = static_cast<std::uint64_t>(static_cast<std::int64_t>(q));
  return {entier, static_cast<std::int64_t>(n - entier * d)};
}

/// 3. floor(n / d) and ceil(n / d), n < 2^63, 0 < d < 2^52, n / d < 2^50: a third of what the exact
/// division costs.
[[gnu::always_inline]] inline std::uint64_t quotient_inferieur(std::uint64_t n, std::uint64_t d) {
  const auto [q, reste] = quotient_proche(n, d);
  return q + static_cast<std::uint64_t>(reste >= static_cast<std::int64_t>(d)) -
         static_cast<std::uint64_t>(reste < 0);
}
[[gnu::always_inline]] inline std::uint64_t quotient_superieur(std::uint64_t n, std::uint64_t d) {
  const auto [q, reste] = quotient_proche(n, d);
  return q + static_cast<std::uint64_t>(reste > 0) +
         static_cast<std::uint64_t>(reste > static_cast<std::int64_t>(d));
}

/// 4. Added and taken away, it rounds to the nearest integer what is below 2^51.
inline constexpr double arrondi_entier = 3 * static_cast<double>(std::uint64_t{1} << 51);

/// 4. t modulo d, between -d / 2 - 1 and d / 2 + 1; inverse = 1 / d.
[[gnu::always_inline]] inline double reste_proche(double t, double d, double inverse) {
  const double quotient = (t * inverse + arrondi_entier) - arrondi_entier;
  return t - quotient * d;
}

/// 5. a b modulo p; inverse = 1 / p.
[[gnu::always_inline]] inline std::uint32_t produit_par_inverse(std::uint32_t a, std::uint32_t b,
                                                                std::uint32_t p, float inverse) {
  const float produit = static_cast<float>(static_cast<std::int32_t>(a)) *
                        static_cast<float>(static_cast<std::int32_t>(b));
  const auto quotient = static_cast<std::uint32_t>(static_cast<std::int32_t>(produit * inverse));
  std::uint32_t reste = a * b - quotient * p;
  reste = std::min(reste, reste + 2 * p);
  reste = std::min(reste, reste - 2 * p);
  return std::min(reste, reste - p);
}

#if defined(__x86_64__)

// The same for vectors. Without a mask, gcc 12 sees something uninitialised in some of these.

/// 1 / d for eight d, wrong by two roundings at most: an estimate of 14 bits, its bits doubled twice.
[[gnu::always_inline, gnu::target("avx512f")]] inline __m512d huit_inverses(__m512d d) {
  const __m512d un = _mm512_set1_pd(1);
  __m512d y = _mm512_maskz_rcp14_pd(0xFF, d);
  y = _mm512_fmadd_pd(y, _mm512_fnmadd_pd(d, y, un), y);
  return _mm512_fmadd_pd(y, _mm512_fnmadd_pd(d, y, un), y);
}

/// 2. Eight quotients, as doubles.
[[gnu::always_inline, gnu::target("avx512f")]] inline __m512d huit_quotients_par_inverse(
    __m512d n, __m512d inverse) {
  return _mm512_maskz_roundscale_pd(0xFF,
                                    _mm512_mul_pd(_mm512_add_pd(n, _mm512_set1_pd(0.5)), inverse),
                                    _MM_FROUND_TO_NEG_INF | _MM_FROUND_NO_EXC);
}

/// 2. Sixteen quotients in floats, n < 2^22.
[[gnu::always_inline, gnu::target("avx512f")]] inline __m512i seize_quotients_par_inverse(
    __m512i n, __m512 inverse) {
  const __m512 milieux = _mm512_add_ps(_mm512_maskz_cvtepi32_ps(0xFFFF, n), _mm512_set1_ps(0.5F));
  return _mm512_maskz_cvttps_epi32(0xFFFF, _mm512_mul_ps(milieux, inverse));
}

/// 3. Eight quotients of one n that may be wrong by one. By `huit_inverses` instead of a division two
/// roundings more come in, which leaves them right to one for quotients below 2^49.
[[gnu::always_inline, gnu::target("avx512f,avx512dq")]] inline __m512i huit_quotients_proches(
    std::uint64_t n, __m512d inverses) {
  return _mm512_maskz_cvttpd_epi64(0xFF,
                                   _mm512_mul_pd(_mm512_set1_pd(static_cast<double>(n)), inverses));
}

/// 3. Eight times floor(n / d).
[[gnu::always_inline, gnu::target("avx512f,avx512dq")]] inline __m512i huit_quotients_inferieurs(
    std::uint64_t n, __m512i d) {
  const __m512i un = _mm512_set1_epi64(1);
  const __m512d reel = _mm512_set1_pd(static_cast<double>(n));
  const __m512i q = _mm512_cvttpd_epi64(_mm512_div_pd(reel, _mm512_cvtepi64_pd(d)));
  const __m512i reste =
      _mm512_sub_epi64(_mm512_set1_epi64(static_cast<long long>(n)), _mm512_mullo_epi64(q, d));
  const __m512i plus = _mm512_mask_add_epi64(q, _mm512_cmpge_epi64_mask(reste, d), q, un);
  return _mm512_mask_sub_epi64(plus, _mm512_cmplt_epi64_mask(reste, _mm512_setzero_si512()), plus,
                               un);
}

/// 4. Eight remainders, and four; the quotient is spared a rounding.
[[gnu::always_inline, gnu::target("avx512f")]] inline __m512d huit_restes_proches(__m512d t,
                                                                                  __m512d d,
                                                                                  __m512d inverse) {
  const __m512d arrondi = _mm512_set1_pd(arrondi_entier);
  const __m512d q = _mm512_sub_pd(_mm512_fmadd_pd(t, inverse, arrondi), arrondi);
  return _mm512_fnmadd_pd(q, d, t);
}
[[gnu::always_inline, gnu::target("avx2,fma")]] inline __m256d quatre_restes_proches(
    __m256d t, __m256d d, __m256d inverse) {
  const __m256d arrondi = _mm256_set1_pd(arrondi_entier);
  const __m256d q = _mm256_sub_pd(_mm256_fmadd_pd(t, inverse, arrondi), arrondi);
  return _mm256_fnmadd_pd(q, d, t);
}

#endif

}  // namespace arithmetique
}  // namespace premiers
