// SPDX-License-Identifier: MIT
// The filter of large sieving primes: a portable loop, and one for AVX-512 with VBMI2.
#include "primes/crible/touches.h"

#include <array>
#include <bit>
#include <cassert>

#include "primes/arithmetique/bits.h"
#include "primes/arithmetique/roue.h"

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace premiers {

namespace {

/// The window in double precision, and how far the quotients may be off.
struct Bornes {
  double debut;
  double fin;
  double ecart;
};

Bornes bornes(const Fenetre& f, std::uint64_t plus_petit) {
  const auto debut = static_cast<double>(f.debut);
  const auto fin = static_cast<double>(f.fin);
  const auto b = static_cast<double>(plus_petit);
  // A dozen roundings of 2^-53 each, and the first term left out of the series.
  const double x = 240 / b;
  return {debut, fin, fin / b * (0x1p-49 + x * x * x * x)};
}

std::size_t touches_portable(std::span<const std::uint8_t> octets, std::uint64_t premier_octet,
                             const Fenetre& fenetre, std::uint32_t* sortie) {
  const Bornes w = bornes(fenetre, 30 * premier_octet);
  std::size_t nombre = 0;
  for (std::size_t i = 0; i < octets.size(); i += 8) {
    const std::size_t n = octets.size() - i < 8 ? octets.size() - i : 8;
    const std::uint64_t origine = 30 * (premier_octet + i);
    const double inverse = 1 / static_cast<double>(origine);
    const double debut = w.debut * inverse;
    const double fin = w.fin * inverse;
    pour_chaque_bit(lire_mot(octets.data() + i, n), 0, [&](std::uint64_t d) {
      const double x = static_cast<double>(static_cast<std::int64_t>(d)) * inverse;
      const double y = 1 - x * (1 - x * (1 - x));
      const auto entier = static_cast<std::int64_t>(fin * y + w.ecart);
      sortie[nombre] = static_cast<std::uint32_t>(origine + d);
      nombre += static_cast<double>(entier) >= debut * y - w.ecart;
    });
  }
  return nombre;
}

#if defined(__x86_64__)

constexpr Instructions besoin_avx512 = instructions::avx512f | instructions::avx512bw |
                                       instructions::avx512vl | instructions::avx512vbmi2 |
                                       instructions::popcnt;

[[gnu::target("avx512f,avx512bw,avx512vl,avx512vbmi2,popcnt")]] std::size_t touches_avx512(
    std::span<const std::uint8_t> octets, std::uint64_t premier_octet, const Fenetre& fenetre,
    std::uint32_t* sortie) {
  const Bornes w = bornes(fenetre, 30 * premier_octet);
  const __m512i valeurs = _mm512_loadu_si512(valeurs_bits.data());
  const __m512d un = _mm512_set1_pd(1);
  const __m512d ecart = _mm512_set1_pd(w.ecart);
  std::size_t nombre = 0;
  for (std::size_t i = 0; i < octets.size(); i += 8) {
    const std::size_t n = octets.size() - i < 8 ? octets.size() - i : 8;
    const std::uint64_t mot = lire_mot(octets.data() + i, n);
    const std::uint64_t origine = 30 * (premier_octet + i);
    const double inverse = 1 / static_cast<double>(origine);
    const __m512d inverses = _mm512_set1_pd(inverse);
    const __m512d debut = _mm512_set1_pd(w.debut * inverse);
    const __m512d fin = _mm512_set1_pd(w.fin * inverse);
    const __m256i base = _mm256_set1_epi32(static_cast<int>(origine));
    alignas(64) std::array<std::uint8_t, 64> d;
    _mm512_store_si512(d.data(), _mm512_maskz_compress_epi8(mot, valeurs));
    const int n_bits = std::popcount(mot);
    const std::uint64_t tous = n_bits == 64 ? ~std::uint64_t{0} : (std::uint64_t{1} << n_bits) - 1;
    const std::uint8_t* suite = d.data();
    // Three eights are the rule: doing them always spares the processor a guess.
    for (int fait = 0; fait < 24 || fait < n_bits; fait += 8, suite += 8) {
      const auto* huit = reinterpret_cast<const __m128i*>(suite);
      const __m256i d8 = _mm256_cvtepu8_epi32(_mm_loadl_epi64(huit));
      const __m512d x = _mm512_mul_pd(_mm512_maskz_cvtepi32_pd(0xFF, d8), inverses);
      __m512d y = _mm512_sub_pd(un, x);
      y = _mm512_fnmadd_pd(x, y, un);
      y = _mm512_fnmadd_pd(x, y, un);
      const __m512d bas = _mm512_fmsub_pd(debut, y, ecart);
      const __m512d haut = _mm512_fmadd_pd(fin, y, ecart);
      const __m512d entier =
          _mm512_maskz_roundscale_pd(0xFF, bas, _MM_FROUND_TO_POS_INF | _MM_FROUND_NO_EXC);
      const auto valides = static_cast<__mmask8>(tous >> fait);
      const __mmask8 m = _mm512_mask_cmp_pd_mask(valides, entier, haut, _CMP_LE_OQ);
      if (m == 0) continue;
      _mm256_storeu_si256(reinterpret_cast<__m256i*>(sortie + nombre),
                          _mm256_maskz_compress_epi32(m, _mm256_add_epi32(base, d8)));
      nombre += static_cast<std::size_t>(std::popcount(static_cast<unsigned>(m)));
    }
  }
  return nombre;
}

#endif

constexpr Version<decltype(&touches)> versions[] = {
#if defined(__x86_64__)
    {besoin_avx512, touches_avx512},
#endif
    {instructions::aucune, touches_portable},
};

}  // namespace

Versions<decltype(&touches)> versions_de_touches() { return versions; }

std::size_t touches(std::span<const std::uint8_t> octets, std::uint64_t premier_octet,
                    const Fenetre& fenetre, std::uint32_t* sortie) {
  assert(fenetre.debut < fenetre.fin);
  assert(30 * premier_octet >= (std::uint64_t{1} << 19) - 30);
  static const auto boucle = choisir(versions_de_touches()).boucle;
  return boucle(octets, premier_octet, fenetre, sortie);
}

}  // namespace premiers
