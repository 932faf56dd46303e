// SPDX-License-Identifier: MIT
// The filter and the multiples: portable loops, and loops for AVX-512.
#include "primes/crible/touches.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cassert>

#include "primes/arithmetique/bits.h"
#include "primes/arithmetique/quotient.h"
#include "primes/arithmetique/roue.h"

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace premiers::crible {

namespace {

/// The window in double precision, halved, because an odd number 2 n + 1 is sought as n; how far the
/// quotients may be off; and what is taken from them.
struct Bornes {
  double debut;
  double fin;
  double en_bas;
  double en_haut;
};

Bornes bornes(const Fenetre& f, std::uint64_t plus_petit) {
  const auto debut = static_cast<double>(f.debut);
  const auto fin = static_cast<double>(f.fin);
  const auto b = static_cast<double>(plus_petit);
  // A dozen roundings of 2^-53 each, and the first term left out of the series.
  const double x = 240 / b;
  const double ecart = fin / b * (0x1p-49 + x * x * x * x);
  return {debut / 2, fin / 2, -0.5 - ecart, -0.5 + ecart};
}

std::size_t touches_portable(std::span<const std::uint8_t> octets, std::uint64_t octet_initial,
                             const Fenetre& fenetre, std::uint32_t* sortie) {
  const Bornes w = bornes(fenetre, 30 * octet_initial);
  std::size_t nombre = 0;
  for (std::size_t i = 0; i < octets.size(); i += 8) {
    const std::size_t n = octets.size() - i < 8 ? octets.size() - i : 8;
    const std::uint64_t origine = 30 * (octet_initial + i);
    const double inverse = 1 / static_cast<double>(origine);
    const double debut = w.debut * inverse;
    const double fin = w.fin * inverse;
    pour_chaque_bit(lire_mot(octets.data() + i, n), 0, [&](std::uint64_t d) {
      const double x = static_cast<double>(static_cast<std::int64_t>(d)) * inverse;
      const double y = 1 - x * (1 - x * (1 - x));
      const auto entier = static_cast<std::int64_t>(fin * y + w.en_haut);
      sortie[nombre] = static_cast<std::uint32_t>(origine + d);
      nombre += static_cast<double>(entier) >= debut * y + w.en_bas;
    });
  }
  return nombre;
}

/// Bit h: 2 h + 1 is prime to 105; 64 bits a word, and no end: 105 bits are followed by the first.
constexpr std::uint32_t periode = 105;
constexpr std::array<std::uint64_t, 8> premiers_a_105 = [] {
  std::array<std::uint64_t, 8> t{};
  for (std::uint32_t h = 0; h < periode; ++h) {
    const std::uint32_t q = 2 * h + 1;
    if (q % 3 != 0 && q % 5 != 0 && q % 7 != 0) t[h / 64] |= std::uint64_t{1} << (h % 64);
  }
  return t;
}();

std::size_t multiples_portable(std::span<const std::uint32_t> candidats, const Fenetre& fenetre,
                               std::uint32_t* sortie) {
  const std::uint64_t largeur = fenetre.fin - fenetre.debut;
  std::size_t nombre = 0;
  for (const std::uint64_t p : candidats) {
    const std::uint64_t q = quotient_superieur(fenetre.debut, p) | 1;
    auto h = static_cast<std::uint32_t>(q / 2 % periode);
    for (std::uint64_t m = q * p - fenetre.debut; m < largeur; m += 2 * p) {
      const auto octet = static_cast<std::uint32_t>(m) / 30;
      const std::uint32_t reste = static_cast<std::uint32_t>(m) - 30 * octet;
      sortie[nombre] = 8 * octet + indice_suivant[reste];
      nombre += premiers_a_105[h / 64] >> (h % 64) & 1;  // no branch: it could not be guessed
      h = h + 1 == periode ? 0 : h + 1;
    }
  }
  return nombre;
}

#if defined(__x86_64__)

constexpr Instructions besoin_avx512 =
    instructions::avx512f | instructions::avx512dq | instructions::avx512vl | instructions::popcnt;

/// Writes the p flagged in `octets` to `sortie`, which has room for 16 more; returns how many.
[[gnu::target("avx512f,avx512dq,avx512vl,popcnt")]] std::size_t extraire(
    std::span<const std::uint8_t> octets, std::uint64_t octet_initial, std::uint32_t* sortie) {
  __m512i valeurs[4];
  for (std::size_t i = 0; i < 4; ++i) {
    const auto* quart = reinterpret_cast<const __m128i*>(valeurs_bits.data() + 16 * i);
    valeurs[i] = _mm512_maskz_cvtepu8_epi32(0xFFFF, _mm_loadu_si128(quart));
  }
  std::size_t nombre = 0;
  for (std::size_t i = 0; i < octets.size(); i += 8) {
    std::uint64_t mot = lire_mot(octets.data() + i, std::min<std::size_t>(octets.size() - i, 8));
    const __m512i origine = _mm512_set1_epi32(static_cast<int>(30 * (octet_initial + i)));
    for (const __m512i valeur : valeurs) {
      const auto ici = static_cast<__mmask16>(mot);
      _mm512_storeu_si512(sortie + nombre,
                          _mm512_maskz_compress_epi32(ici, _mm512_add_epi32(origine, valeur)));
      nombre += static_cast<std::size_t>(std::popcount(static_cast<unsigned>(ici)));
      mot >>= 16;
    }
  }
  return nombre;
}

/// Keeps those of `n` candidates that may have an odd multiple; returns how many.
[[gnu::target("avx512f,avx512dq,avx512vl,popcnt")]] std::size_t filtrer(std::uint32_t* candidats,
                                                                        std::size_t n,
                                                                        const Bornes& w) {
  const __m512d debut = _mm512_set1_pd(w.debut);
  const __m512d fin = _mm512_set1_pd(w.fin);
  const __m512d en_bas = _mm512_set1_pd(w.en_bas);
  const __m512d en_haut = _mm512_set1_pd(w.en_haut);
  std::size_t nombre = 0;
  for (std::size_t i = 0; i < n; i += 8) {
    const __m256i p = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(candidats + i));
    const __m512d y = huit_inverses(_mm512_maskz_cvtepu32_pd(0xFF, p));
    const __m512d bas = _mm512_fmadd_pd(debut, y, en_bas);
    const __m512d haut = _mm512_fmadd_pd(fin, y, en_haut);
    const __m512d entier =
        _mm512_maskz_roundscale_pd(0xFF, bas, _MM_FROUND_TO_POS_INF | _MM_FROUND_NO_EXC);
    const auto valides = static_cast<__mmask8>(n - i < 8 ? (1u << (n - i)) - 1 : 0xFFu);
    const __mmask8 touche = _mm512_mask_cmp_pd_mask(valides, entier, haut, _CMP_LE_OQ);
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(candidats + nombre),
                        _mm256_maskz_compress_epi32(touche, p));
    nombre += static_cast<std::size_t>(std::popcount(static_cast<unsigned>(touche)));
  }
  return nombre;
}

[[gnu::target("avx512f,avx512dq,avx512vl,popcnt")]] std::size_t touches_avx512(
    std::span<const std::uint8_t> octets, std::uint64_t octet_initial, const Fenetre& fenetre,
    std::uint32_t* sortie) {
  constexpr std::size_t a_la_fois = 512;  // bytes, so that their candidates stay in the L1 cache
  const Bornes w = bornes(fenetre, 30 * octet_initial);
  std::size_t nombre = 0;
  for (std::size_t i = 0; i < octets.size(); i += a_la_fois) {
    const auto ici = octets.subspan(i, std::min(a_la_fois, octets.size() - i));
    nombre += filtrer(sortie + nombre, extraire(ici, octet_initial + i, sortie + nombre), w);
  }
  return nombre;
}

/// Eight candidates with their next odd multiples.
struct Huit {
  __m512i pas;       // 2 p
  __m512i multiple;  // from the window's start
  __m512i h;         // (cofactor - 1) / 2 mod 105
};

[[gnu::target("avx512f,avx512dq,avx512vl,popcnt")]] inline Huit multiples_initiaux(
    __m256i candidats, std::uint64_t debut) {
  const __m512i p = _mm512_maskz_cvtepu32_epi64(0xFF, candidats);
  const __m512i pas = _mm512_add_epi64(p, p);
  const __m512d inverses = huit_inverses(_mm512_maskz_cvtepu32_pd(0xFF, candidats));
  // The quotient, below 2^44, is off by less than one, so its odd part by one step at most, and only
  // downward.
  const __m512i q = _mm512_or_epi64(huit_quotients_proches(debut, inverses), _mm512_set1_epi64(1));
  const __m512i m = _mm512_sub_epi64(_mm512_mullo_epi64(q, p),
                                     _mm512_set1_epi64(static_cast<std::int64_t>(debut)));
  const __mmask8 trop_bas = _mm512_movepi64_mask(m);
  const __m512i n = _mm512_maskz_srli_epi64(0xFF, q, 1);
  const __m512d moitie =
      _mm512_maskz_cvtepi64_pd(0xFF, _mm512_mask_add_epi64(n, trop_bas, n, _mm512_set1_epi64(1)));
  const __m512d tours = huit_quotients_par_inverse(moitie, _mm512_set1_pd(1.0 / periode));
  const __m512d h = _mm512_fnmadd_pd(tours, _mm512_set1_pd(periode), moitie);
  return {pas, _mm512_mask_add_epi64(m, trop_bas, m, pas), _mm512_maskz_cvttpd_epi64(0xFF, h)};
}

/// Bit h mod 64 of word h / 64 of `premiers_a_105` in each lane of `dedans`: is the cofactor of use?
[[gnu::target("avx512f,avx512dq,avx512vl,popcnt")]] inline __mmask8 utiles(__mmask8 dedans,
                                                                           __m512i h) {
  const __m512i table = _mm512_loadu_si512(premiers_a_105.data());
  const __m512i mots =
      _mm512_maskz_permutexvar_epi64(0xFF, _mm512_maskz_srli_epi64(0xFF, h, 6), table);
  const __m512i decales =
      _mm512_maskz_srlv_epi64(0xFF, mots, _mm512_and_epi64(h, _mm512_set1_epi64(63)));
  return _mm512_mask_test_epi64_mask(dedans, decales, _mm512_set1_epi64(1));
}

/// Four bits for each odd remainder modulo 30, from the lowest on: where it is prime to 30, its index.
constexpr std::uint64_t indices_des_restes = [] {
  std::uint64_t t = 0;
  for (std::uint64_t i = 0; i < 8; ++i) t |= i << (2 * (residus[i] - 1));
  return t;
}();

/// The bits of eight multiples in the window, which are below 2^32 and prime to 30.
[[gnu::target("avx512f,avx512dq,avx512vl,popcnt")]] inline __m256i numeros_de_bits(__m512i m) {
  // m / 30 = m (2^36 / 30) / 2^36 for m < 2^32
  const __m512i par_30 = _mm512_set1_epi64(0x88888889);
  const __m512i octet = _mm512_maskz_srli_epi64(0xFF, _mm512_maskz_mul_epu32(0xFF, m, par_30), 36);
  const __m512i reste =
      _mm512_sub_epi64(m, _mm512_maskz_mul_epu32(0xFF, octet, _mm512_set1_epi64(30)));
  const __m512i place =
      _mm512_maskz_slli_epi64(0xFF, _mm512_sub_epi64(reste, _mm512_set1_epi64(1)), 1);
  const __m512i indices = _mm512_set1_epi64(static_cast<std::int64_t>(indices_des_restes));
  const __m512i bit =
      _mm512_and_epi64(_mm512_maskz_srlv_epi64(0xFF, indices, place), _mm512_set1_epi64(7));
  return _mm512_maskz_cvtepi64_epi32(0xFF,
                                     _mm512_or_epi64(_mm512_maskz_slli_epi64(0xFF, octet, 3), bit));
}

[[gnu::target("avx512f,avx512dq,avx512vl,popcnt")]] std::size_t multiples_avx512(
    std::span<const std::uint32_t> candidats, const Fenetre& fenetre, std::uint32_t* sortie) {
  const __m512i largeur = _mm512_set1_epi64(static_cast<std::int64_t>(fenetre.fin - fenetre.debut));
  std::size_t nombre = 0;
  for (std::size_t i = 0; i < candidats.size(); i += 8) {
    const std::size_t n = std::min<std::size_t>(candidats.size() - i, 8);
    const auto valides = static_cast<__mmask8>((1u << n) - 1);
    Huit x =
        multiples_initiaux(_mm256_maskz_loadu_epi32(valides, candidats.data() + i), fenetre.debut);
    for (;;) {
      const __mmask8 dedans = _mm512_mask_cmplt_epu64_mask(valides, x.multiple, largeur);
      if (dedans == 0) break;
      const __mmask8 utile = utiles(dedans, x.h);
      _mm256_storeu_si256(reinterpret_cast<__m256i*>(sortie + nombre),
                          _mm256_maskz_compress_epi32(utile, numeros_de_bits(x.multiple)));
      nombre += static_cast<std::size_t>(std::popcount(static_cast<unsigned>(utile)));
      x.multiple = _mm512_add_epi64(x.multiple, x.pas);
      const __m512i h = _mm512_add_epi64(x.h, _mm512_set1_epi64(1));
      x.h = _mm512_maskz_min_epu64(0xFF, h, _mm512_sub_epi64(h, _mm512_set1_epi64(periode)));
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

constexpr Version<decltype(&multiples)> versions_multiples[] = {
#if defined(__x86_64__)
    {besoin_avx512, multiples_avx512},
#endif
    {instructions::aucune, multiples_portable},
};

}  // namespace

Versions<decltype(&touches)> versions_de_touches() { return versions; }
Versions<decltype(&multiples)> versions_de_multiples() { return versions_multiples; }

std::size_t touches(std::span<const std::uint8_t> octets, std::uint64_t octet_initial,
                    const Fenetre& fenetre, std::uint32_t* sortie) {
  assert(fenetre.debut < fenetre.fin);
  assert(30 * octet_initial >= (std::uint64_t{1} << 19) - 30);
  static const auto boucle = choisir(versions_de_touches()).boucle;
  return boucle(octets, octet_initial, fenetre, sortie);
}

std::size_t multiples(std::span<const std::uint32_t> candidats, const Fenetre& fenetre,
                      std::uint32_t* sortie) {
  assert(fenetre.debut % 30 == 0 && fenetre.fin - fenetre.debut <= std::uint64_t{1} << 30);
  static const auto boucle = choisir(versions_de_multiples()).boucle;
  return boucle(candidats, fenetre, sortie);
}

}  // namespace premiers::crible
