// SPDX-License-Identifier: MIT
// The table of steps; the plain walk, that of eight, and that of sixteen.
#include "primes/crible/marche.h"

#include <bit>
#include <cassert>

#include "primes/arithmetique/roue.h"

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace premiers::crible {

namespace {

// A step, from its lowest bit: the index of the next cofactor, where that stands in a state; the
// multiple's bit; the bytes that are carried to the next one, where a place has its bytes; half the
// length of the step, k times which is bytes as well.
constexpr unsigned ou_bit = Marcheurs::ou_k;
constexpr unsigned ou_retenue = Marcheurs::ou_octet;
constexpr unsigned ou_moitie = 13;
constexpr unsigned masque_cofacteur = (1U << Marcheurs::ou_k) - 1;
constexpr unsigned masque_bit = 7;
constexpr unsigned masque_retenue = 15U << ou_retenue;

/// 48 steps, and room to the end of two registers.
using Pas = std::array<std::uint16_t, 64>;

/// By index of p mod 30.
constexpr std::array<Pas, 8> tables = [] {
  std::array<Pas, 8> t{};
  for (std::size_t r = 0; r < t.size(); ++r) {
    for (std::size_t c = 0; c < roue_210::nombre; ++c) {
      const bool dernier = c + 1 == roue_210::nombre;
      const unsigned q = roue_210::valeurs[c];
      const unsigned longueur =
          (dernier ? roue_210::module + roue_210::valeurs[0] : roue_210::valeurs[c + 1]) - q;
      const unsigned ici = residus[r] * q % 30;
      const unsigned retenue = (ici + residus[r] * longueur) / 30;
      const std::size_t suivant = dernier ? 0 : c + 1;
      t[r][c] = static_cast<std::uint16_t>(suivant |
                                           static_cast<unsigned>(indice_suivant[ici]) << ou_bit |
                                           retenue << ou_retenue | longueur / 2 << ou_moitie);
    }
  }
  return t;
}();

std::size_t marcher_un_par_un(Marcheurs& m, std::size_t nombre, std::size_t residu,
                              std::uint32_t taille, std::uint32_t* sortie) {
  const Pas& table = tables[residu];
  const std::uint32_t fin = taille << Marcheurs::ou_octet;
  std::size_t n = 0;
  for (std::size_t i = 0; i < nombre; ++i) {
    const std::uint32_t k = m.etat[i] >> Marcheurs::ou_k;
    std::uint32_t cofacteur = m.etat[i] & masque_cofacteur;
    std::uint32_t place = m.place[i];
    while (place < fin) {
      const unsigned pas = table[cofacteur];
      sortie[n++] = place | (0xFF & ~(1U << (pas >> ou_bit & masque_bit)));
      place += (2 * k * (pas >> ou_moitie) << Marcheurs::ou_octet) + (pas & masque_retenue);
      cofacteur = pas & masque_cofacteur;
    }
    m.etat[i] = k << Marcheurs::ou_k | cofacteur;
    m.place[i] = place - fin;
  }
  return n;
}

#if defined(__x86_64__)

constexpr Instructions besoin_avx2 = instructions::avx2 | instructions::popcnt;

/// By a set of eight numbers, in bytes: those in it in increasing order, then anything.
constexpr std::array<std::uint64_t, 256> serrer = [] {
  std::array<std::uint64_t, 256> t{};
  for (std::size_t ensemble = 0; ensemble < t.size(); ++ensemble) {
    unsigned ou = 0;
    for (std::uint64_t i = 0; i < 8; ++i) {
      if ((ensemble >> i & 1) == 0) continue;
      t[ensemble] |= i << ou;
      ou += 8;
    }
  }
  return t;
}();

/// The 48 steps, eight in a register.
struct SixFoisHuit {
  __m256i pas[6];
};

[[gnu::target("avx2,popcnt")]] inline SixFoisHuit six_fois_huit(const Pas& table) {
  SixFoisHuit t;
  for (std::size_t i = 0; i < 6; ++i) {
    const auto* huit = reinterpret_cast<const __m128i*>(table.data() + 8 * i);
    t.pas[i] = _mm256_cvtepu16_epi32(_mm_loadu_si128(huit));
  }
  return t;
}

/// The steps of the cofactors in the lowest six bits: looked up in each register by three of them, and
/// chosen by the others. Gathered from memory they cost twice as much where the processor is kept from
/// giving away what it gathers.
[[gnu::target("avx2,popcnt")]] inline __m256i chercher(const SixFoisHuit& t, __m256i cofacteurs) {
  __m256 p[6];
  for (std::size_t i = 0; i < 6; ++i) {
    p[i] = _mm256_castsi256_ps(_mm256_permutevar8x32_epi32(t.pas[i], cofacteurs));
  }
  const __m256 bit_3 = _mm256_castsi256_ps(_mm256_slli_epi32(cofacteurs, 31 - 3));
  const __m256 bit_4 = _mm256_castsi256_ps(_mm256_slli_epi32(cofacteurs, 31 - 4));
  const __m256 bit_5 = _mm256_castsi256_ps(_mm256_slli_epi32(cofacteurs, 31 - 5));
  const __m256 bas = _mm256_blendv_ps(_mm256_blendv_ps(p[0], p[1], bit_3),
                                      _mm256_blendv_ps(p[2], p[3], bit_3), bit_4);
  return _mm256_castps_si256(_mm256_blendv_ps(bas, _mm256_blendv_ps(p[4], p[5], bit_3), bit_5));
}

/// Which of eight numbers are below `fin`, as all ones or none.
[[gnu::target("avx2,popcnt")]] inline __m256i en_dessous(__m256i nombres, __m256i fin) {
  const __m256i signe = _mm256_set1_epi32(INT32_MIN);
  return _mm256_cmpgt_epi32(_mm256_xor_si256(fin, signe), _mm256_xor_si256(nombres, signe));
}

/// Writes the multiples of those of the set `ensemble`; returns the place behind them.
[[gnu::target("avx2,popcnt")]] inline std::uint32_t* noter_huit(__m256i place, __m256i pas,
                                                                unsigned ensemble,
                                                                std::uint32_t* ici) {
  const __m256i bit =
      _mm256_and_si256(_mm256_srli_epi32(pas, ou_bit), _mm256_set1_epi32(masque_bit));
  const __m256i raye = _mm256_sllv_epi32(_mm256_set1_epi32(1), bit);
  const __m256i multiple =
      _mm256_or_si256(place, _mm256_andnot_si256(raye, _mm256_set1_epi32(0xFF)));
  const __m256i ordre =
      _mm256_cvtepu8_epi32(_mm_cvtsi64_si128(static_cast<std::int64_t>(serrer[ensemble])));
  _mm256_storeu_si256(reinterpret_cast<__m256i*>(ici),
                      _mm256_permutevar8x32_epi32(multiple, ordre));
  return ici + std::popcount(ensemble);
}

[[gnu::target("avx2,popcnt")]] std::size_t marcher_par_huit(Marcheurs& m, std::size_t nombre,
                                                            std::size_t residu,
                                                            std::uint32_t taille,
                                                            std::uint32_t* sortie) {
  const SixFoisHuit table = six_fois_huit(tables[residu]);
  const __m256i fin = _mm256_set1_epi32(static_cast<int>(taille << Marcheurs::ou_octet));
  const __m256i retenue = _mm256_set1_epi32(masque_retenue);
  const __m256i cofacteur = _mm256_set1_epi32(masque_cofacteur);
  const __m256i rangs = _mm256_setr_epi32(0, 1, 2, 3, 4, 5, 6, 7);
  std::uint32_t* ici = sortie;
  for (std::size_t i = 0; i < nombre; i += 8) {
    auto* etats = reinterpret_cast<__m256i*>(m.etat.data() + i);
    auto* places = reinterpret_cast<__m256i*>(m.place.data() + i);
    const __m256i valides =
        _mm256_cmpgt_epi32(_mm256_set1_epi32(static_cast<int>(nombre - i)), rangs);
    __m256i etat = _mm256_load_si256(etats);
    __m256i place = _mm256_load_si256(places);
    const __m256i deux_k = _mm256_slli_epi32(_mm256_andnot_si256(cofacteur, etat),
                                             1 + Marcheurs::ou_octet - Marcheurs::ou_k);
    __m256i dedans = _mm256_and_si256(valides, en_dessous(place, fin));
    while (const auto ensemble =
               static_cast<unsigned>(_mm256_movemask_ps(_mm256_castsi256_ps(dedans)))) {
      const __m256i pas = chercher(table, etat);
      ici = noter_huit(place, pas, ensemble, ici);
      const __m256i moitie = _mm256_srli_epi32(pas, ou_moitie);
      const __m256i octets =
          _mm256_add_epi32(_mm256_mullo_epi32(deux_k, moitie), _mm256_and_si256(pas, retenue));
      place = _mm256_add_epi32(place, _mm256_and_si256(octets, dedans));
      const __m256i change = _mm256_and_si256(_mm256_xor_si256(etat, pas), cofacteur);
      etat = _mm256_xor_si256(etat, _mm256_and_si256(change, dedans));
      dedans = _mm256_and_si256(valides, en_dessous(place, fin));
    }
    _mm256_store_si256(etats, etat);
    _mm256_store_si256(places, _mm256_sub_epi32(place, fin));
  }
  return static_cast<std::size_t>(ici - sortie);
}

constexpr Instructions besoin_avx512 =
    instructions::avx512f | instructions::avx512bw | instructions::popcnt;

// The two functions of three bits that _mm512_ternarylogic_epi32 is asked for.
constexpr int a_ou_c_sans_b = 0xF2;
constexpr int c_choisit_a_sinon_b = 0xE4;

/// Writes the multiples of those of the set `ensemble`; returns the place behind them.
[[gnu::target("avx512f,avx512bw,popcnt")]] inline std::uint32_t* noter_seize(__m512i place,
                                                                             __m512i pas,
                                                                             __mmask16 ensemble,
                                                                             std::uint32_t* ici) {
  const __m512i bit =
      _mm512_and_si512(_mm512_maskz_srli_epi32(0xFFFF, pas, ou_bit), _mm512_set1_epi32(masque_bit));
  const __m512i raye = _mm512_maskz_sllv_epi32(0xFFFF, _mm512_set1_epi32(1), bit);
  const __m512i multiple =
      _mm512_ternarylogic_epi32(place, raye, _mm512_set1_epi32(0xFF), a_ou_c_sans_b);
  _mm512_storeu_si512(ici, _mm512_maskz_compress_epi32(ensemble, multiple));
  return ici + std::popcount(static_cast<unsigned>(ensemble));
}

[[gnu::target("avx512f,avx512bw,popcnt")]] std::size_t marcher_par_seize(Marcheurs& m,
                                                                         std::size_t nombre,
                                                                         std::size_t residu,
                                                                         std::uint32_t taille,
                                                                         std::uint32_t* sortie) {
  const __m512i basse = _mm512_loadu_si512(tables[residu].data());
  const __m512i haute = _mm512_loadu_si512(tables[residu].data() + 32);
  const __m512i fin = _mm512_set1_epi32(static_cast<int>(taille << Marcheurs::ou_octet));
  const __m512i retenue = _mm512_set1_epi32(masque_retenue);
  const __m512i de_k = _mm512_set1_epi32(static_cast<int>(~masque_cofacteur));
  std::uint32_t* ici = sortie;
  for (std::size_t i = 0; i < nombre; i += 16) {
    const auto valides =
        static_cast<__mmask16>(nombre - i < 16 ? (1U << (nombre - i)) - 1 : 0xFFFF);
    __m512i etat = _mm512_load_si512(m.etat.data() + i);
    __m512i place = _mm512_load_si512(m.place.data() + i);
    const __m512i deux_k = _mm512_maskz_slli_epi32(0xFFFF, _mm512_and_si512(etat, de_k),
                                                   1 + Marcheurs::ou_octet - Marcheurs::ou_k);
    __mmask16 dedans = _mm512_mask_cmplt_epu32_mask(valides, place, fin);
    while (dedans != 0) {
      // Looked up by the lowest six bits of each lower half; the upper halves stay empty.
      const __m512i pas = _mm512_maskz_permutex2var_epi16(0x55555555, basse, etat, haute);
      ici = noter_seize(place, pas, dedans, ici);
      const __m512i moitie = _mm512_maskz_srli_epi32(0xFFFF, pas, ou_moitie);
      const __m512i octets =
          _mm512_add_epi32(_mm512_mullo_epi32(deux_k, moitie), _mm512_and_si512(pas, retenue));
      place = _mm512_mask_add_epi32(place, dedans, place, octets);
      etat = _mm512_mask_ternarylogic_epi32(etat, dedans, pas, de_k, c_choisit_a_sinon_b);
      dedans = _mm512_mask_cmplt_epu32_mask(valides, place, fin);
    }
    _mm512_store_si512(m.etat.data() + i, etat);
    _mm512_store_si512(m.place.data() + i, _mm512_sub_epi32(place, fin));
  }
  return static_cast<std::size_t>(ici - sortie);
}

#endif

constexpr Version<decltype(&marcher)> versions[] = {
#if defined(__x86_64__)
    {besoin_avx512, marcher_par_seize},
    {besoin_avx2, marcher_par_huit},
#endif
    {instructions::aucune, marcher_un_par_un},
};

}  // namespace

Versions<decltype(&marcher)> versions_de_marcher() { return versions; }

std::size_t marcher(Marcheurs& m, std::size_t nombre, std::size_t residu, std::uint32_t taille,
                    std::uint32_t* sortie) {
  assert(nombre <= Marcheurs::places && taille <= 1U << 19);
  static const auto boucle = choisir(versions_de_marcher()).boucle;
  return boucle(m, nombre, residu, taille, sortie);
}

}  // namespace premiers::crible
