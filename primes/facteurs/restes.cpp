// SPDX-License-Identifier: MIT
// Horner's rule, plain and for four vectors of primes abreast (restes.h).
#include "primes/facteurs/restes.h"

#include <cassert>

#include "primes/arithmetique/quotient.h"

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace premiers::facteurs {

namespace {

constexpr long bits_par_chiffre = 28;
constexpr double base = std::uint64_t{1} << bits_par_chiffre;

void restes(std::span<const double> chiffres, const std::uint32_t* premiers, std::uint32_t* manques,
            std::size_t nombre) {
  assert(nombre % largeur_restes == 0);
  for (std::size_t i = 0; i < nombre; ++i) {
    const auto p = static_cast<std::int32_t>(premiers[i]);
    const double inverse = 1.0 / p;
    double r = 0;
    for (const double chiffre : chiffres) r = reste_proche(r * base + chiffre, p, inverse);
    std::int32_t manque = -static_cast<std::int32_t>(r);
    if (manque < 0) manque += p;
    manques[i] = static_cast<std::uint32_t>(manque < p ? manque : manque - p);
  }
}

#if defined(__x86_64__)

constexpr std::size_t de_front = 4;

[[gnu::target("avx512f,avx512vl")]] void restes_avx512(std::span<const double> chiffres,
                                                       const std::uint32_t* premiers,
                                                       std::uint32_t* manques, std::size_t nombre) {
  constexpr __mmask8 tous = 0xFF;  // without a mask, gcc 12 sees something uninitialised
  const __m512d bases = _mm512_set1_pd(base);
  for (std::size_t i = 0; i < nombre; i += largeur_restes) {
    __m256i entiers[de_front];
    __m512d p[de_front], inverses[de_front], r[de_front];
    for (std::size_t j = 0; j < de_front; ++j) {
      entiers[j] = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(premiers + i + 8 * j));
      p[j] = _mm512_maskz_cvtepi32_pd(tous, entiers[j]);
      inverses[j] = _mm512_div_pd(_mm512_set1_pd(1.0), p[j]);
      r[j] = _mm512_setzero_pd();
    }
    for (const double chiffre : chiffres) {
      const __m512d c = _mm512_set1_pd(chiffre);
      for (std::size_t j = 0; j < de_front; ++j) {
        r[j] = huit_restes_proches(_mm512_fmadd_pd(r[j], bases, c), p[j], inverses[j]);
      }
    }
    for (std::size_t j = 0; j < de_front; ++j) {
      // Of a number and the same plus or minus p, the right one is the least without a sign.
      __m256i m = _mm256_sub_epi32(_mm256_setzero_si256(), _mm512_maskz_cvtpd_epi32(tous, r[j]));
      m = _mm256_min_epu32(m, _mm256_add_epi32(m, entiers[j]));
      m = _mm256_min_epu32(m, _mm256_sub_epi32(m, entiers[j]));
      _mm256_storeu_si256(reinterpret_cast<__m256i*>(manques + i + 8 * j), m);
    }
  }
}

[[gnu::target("avx2,fma")]] void restes_avx2(std::span<const double> chiffres,
                                             const std::uint32_t* premiers, std::uint32_t* manques,
                                             std::size_t nombre) {
  const __m256d bases = _mm256_set1_pd(base);
  for (std::size_t i = 0; i < nombre; i += largeur_restes / 2) {
    __m128i entiers[de_front];
    __m256d p[de_front], inverses[de_front], r[de_front];
    for (std::size_t j = 0; j < de_front; ++j) {
      entiers[j] = _mm_loadu_si128(reinterpret_cast<const __m128i*>(premiers + i + 4 * j));
      p[j] = _mm256_cvtepi32_pd(entiers[j]);
      inverses[j] = _mm256_div_pd(_mm256_set1_pd(1.0), p[j]);
      r[j] = _mm256_setzero_pd();
    }
    for (const double chiffre : chiffres) {
      const __m256d c = _mm256_set1_pd(chiffre);
      for (std::size_t j = 0; j < de_front; ++j) {
        r[j] = quatre_restes_proches(_mm256_fmadd_pd(r[j], bases, c), p[j], inverses[j]);
      }
    }
    for (std::size_t j = 0; j < de_front; ++j) {
      __m128i m = _mm_sub_epi32(_mm_setzero_si128(), _mm256_cvtpd_epi32(r[j]));
      m = _mm_min_epu32(m, _mm_add_epi32(m, entiers[j]));
      m = _mm_min_epu32(m, _mm_sub_epi32(m, entiers[j]));
      _mm_storeu_si128(reinterpret_cast<__m128i*>(manques + i + 4 * j), m);
    }
  }
}

#endif

constexpr Version<Restes> versions[] = {
#if defined(__x86_64__)
    {instructions::avx512f | instructions::avx512vl, restes_avx512},
    {instructions::avx2 | instructions::fma, restes_avx2},
#endif
    {instructions::aucune, restes},
};

}  // namespace

Versions<Restes> versions_de_restes() { return versions; }

std::vector<double> chiffres_de_28_bits(const NTL::ZZ& N) {
  const long nombre = (NTL::NumBits(N) + bits_par_chiffre - 1) / bits_par_chiffre;
  std::vector<double> chiffres;
  chiffres.reserve(static_cast<std::size_t>(nombre));
  for (long i = nombre; i-- > 0;) {
    const NTL::ZZ chiffre = NTL::trunc_ZZ(N >> (i * bits_par_chiffre), bits_par_chiffre);
    chiffres.push_back(NTL::conv<double>(chiffre));
  }
  return chiffres;
}

}  // namespace premiers::facteurs
