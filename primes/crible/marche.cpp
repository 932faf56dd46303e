// SPDX-License-Identifier: MIT
// The table of steps; the plain walk, and that of sixteen.
#include "primes/crible/marche.h"

#include <bit>
#include <cassert>

#include "primes/arithmetique/roue.h"

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace premiers {

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

constexpr Instructions besoin_avx512 =
    instructions::avx512f | instructions::avx512bw | instructions::popcnt;

// The two functions of three bits that _mm512_ternarylogic_epi32 is asked for.
constexpr int a_ou_c_sans_b = 0xF2;
constexpr int c_choisit_a_sinon_b = 0xE4;

[[gnu::target("avx512f,avx512bw,popcnt")]] std::size_t marcher_par_seize(Marcheurs& m,
                                                                         std::size_t nombre,
                                                                         std::size_t residu,
                                                                         std::uint32_t taille,
                                                                         std::uint32_t* sortie) {
  const __m512i basse = _mm512_loadu_si512(tables[residu].data());
  const __m512i haute = _mm512_loadu_si512(tables[residu].data() + 32);
  const __m512i fin = _mm512_set1_epi32(static_cast<int>(taille << Marcheurs::ou_octet));
  const __m512i un = _mm512_set1_epi32(1);
  const __m512i bit = _mm512_set1_epi32(masque_bit);
  const __m512i octet = _mm512_set1_epi32(0xFF);
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
      const __m512i raye = _mm512_maskz_sllv_epi32(
          0xFFFF, un, _mm512_and_si512(_mm512_maskz_srli_epi32(0xFFFF, pas, ou_bit), bit));
      const __m512i multiple = _mm512_ternarylogic_epi32(place, raye, octet, a_ou_c_sans_b);
      _mm512_storeu_si512(ici, _mm512_maskz_compress_epi32(dedans, multiple));
      ici += std::popcount(static_cast<unsigned>(dedans));
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

}  // namespace premiers
