// SPDX-License-Identifier: MIT
// The two loops, plain and with vectors (lot.h).
#include "primes/compte/lot.h"

#include <algorithm>
#include <array>
#include <bit>

#if defined(__x86_64__)
#include <immintrin.h>
#endif

#include "primes/arithmetique/quotient.h"
#include "primes/compte/roue2310.h"

namespace premiers::compte {

namespace {

std::size_t retenir(const std::uint16_t* entrees, std::uint32_t haut, std::uint32_t bas,
                    std::uint32_t q, std::uint32_t* m) {
  std::size_t nombre = 0;
  for (std::uint32_t i = haut; i > bas;) {  // without a branch
    m[nombre] = --i;
    nombre += entrees[i] > q ? 1 : 0;
  }
  for (std::size_t k = 0; k < nombre; ++k) {
    const auto valeur = static_cast<std::uint32_t>(Roue2310::valeur(m[k]));
    m[k] = (valeur ^ 1U) | (entrees[m[k]] & 1U);
  }
  return nombre;
}

void diviser(std::uint64_t w, std::uint64_t debut, const std::uint32_t* m, std::size_t nombre,
             std::uint32_t* questions) {
  for (std::size_t k = 0; k < nombre; ++k) {
    const std::uint64_t n = quotient_inferieur(w, m[k] | 1U);
    questions[k] = static_cast<std::uint32_t>(2 * (n - debut) + (m[k] & 1U));
  }
}

#if defined(__x86_64__)

constexpr std::uint32_t seize = 16;
static_assert(Roue2310::par_tour % seize == 0, "sixteen entries lie within a turn of the wheel");

/// The integers of a turn, each group of sixteen backward.
constexpr auto valeurs_a_rebours = [] {
  std::array<std::uint16_t, Roue2310::par_tour> t{};
  for (std::size_t i = 0; i < t.size(); ++i) {
    t[i] = static_cast<std::uint16_t>(Roue2310::valeur(i / seize * seize + seize - 1 - i % seize));
  }
  return t;
}();

[[gnu::target("avx512f")]] inline __m512i seize_de_16_bits(const std::uint16_t* p) {
  return _mm512_maskz_cvtepu16_epi32(0xFFFF,
                                     _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p)));
}

[[gnu::target("avx512f,popcnt")]] std::size_t retenir_avx512(const std::uint16_t* entrees,
                                                             std::uint32_t haut, std::uint32_t bas,
                                                             std::uint32_t q, std::uint32_t* m) {
  const __m512i a_rebours = _mm512_set_epi32(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15);
  const __m512i un = _mm512_set1_epi32(1);
  const __m512i seuil = _mm512_set1_epi32(static_cast<int>(q));
  std::size_t nombre = 0;
  for (std::uint32_t fin = (haut + seize - 1) / seize * seize; fin > bas; fin -= seize) {
    const std::uint32_t i = fin - seize;
    // Of the sixteen those below haut, from bas on: rank i + 15 is the first.
    std::uint32_t dedans = 0xFFFFU << (fin - std::min(haut, fin));
    dedans &= 0xFFFFU >> (std::max(bas, i) - i);
    const __m512i e =
        _mm512_maskz_permutexvar_epi32(0xFFFF, a_rebours, seize_de_16_bits(entrees + i));
    const __mmask16 gardes = _mm512_mask_cmpgt_epu32_mask(static_cast<__mmask16>(dedans), e, seuil);
    const auto tour = static_cast<int>(i / Roue2310::par_tour * Roue2310::tour);
    const __m512i valeurs = _mm512_add_epi32(
        _mm512_set1_epi32(tour), seize_de_16_bits(&valeurs_a_rebours[i % Roue2310::par_tour]));
    const __m512i marques = _mm512_or_si512(_mm512_xor_si512(valeurs, un), _mm512_and_si512(e, un));
    _mm512_storeu_si512(m + nombre, _mm512_maskz_compress_epi32(gardes, marques));
    nombre += static_cast<std::size_t>(std::popcount(static_cast<std::uint32_t>(gardes)));
  }
  return nombre;
}

[[gnu::target("avx512f,avx512dq")]] void diviser_avx512(std::uint64_t w, std::uint64_t debut,
                                                        const std::uint32_t* m, std::size_t nombre,
                                                        std::uint32_t* questions) {
  constexpr __mmask8 huit = 0xFF;
  const __m512i un = _mm512_set1_epi64(1);
  const __m512i debuts = _mm512_set1_epi64(static_cast<long long>(debut));
  for (std::size_t k = 0; k < nombre; k += 8) {
    const __m512i marques = _mm512_maskz_cvtepu32_epi64(
        huit, _mm256_loadu_si256(reinterpret_cast<const __m256i*>(m + k)));
    const __m512i n =
        _mm512_sub_epi64(huit_quotients_inferieurs(w, _mm512_or_si512(marques, un)), debuts);
    const __m512i question =
        _mm512_add_epi64(_mm512_add_epi64(n, n), _mm512_and_si512(marques, un));
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(questions + k),
                        _mm512_maskz_cvtepi64_epi32(huit, question));
  }
}

#endif

constexpr Version<BouclesDuLot> versions[] = {
#if defined(__x86_64__)
    {instructions::popcnt | instructions::avx512f | instructions::avx512dq,
     {retenir_avx512, diviser_avx512}},
#endif
    {instructions::aucune, {retenir, diviser}},
};

}  // namespace

Versions<BouclesDuLot> versions_du_lot() { return versions; }

}  // namespace premiers::compte
