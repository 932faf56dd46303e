// SPDX-License-Identifier: MIT
// The move of the roots and the pouring into buckets, in three versions; then what reads them.
#include "primes/quadratique/seaux.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cassert>

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace premiers::quadratique {

namespace {

constexpr std::uint32_t masque_numero = tranche_max - 1;

// ---- Any processor -----------------------------------------------------------------------------

std::size_t verser(Deplacement d, std::uint32_t longueur, std::uint32_t* liste) {
  std::size_t j = 0;
  for (std::size_t i = 0; i < d.nombre; ++i) {
    const std::uint32_t p = d.premier[i];
    const std::uint32_t pas = d.monter ? d.pas[i] : p - d.pas[i];
    for (std::uint32_t* const racine : {d.racine_1 + i, d.racine_2 + i}) {
      const std::uint32_t x = std::min(*racine + pas, *racine + pas - p);
      *racine = x;
      liste[j] = (x << bits_numero) | (d.numero + static_cast<std::uint32_t>(i));
      j += x < longueur ? 1U : 0U;
    }
  }
  return j;
}

void chercher(const std::uint32_t* touches, std::size_t n, std::uint32_t position,
              std::uint32_t debut, std::vector<std::uint32_t>& liste) {
  for (std::size_t i = 0; i < n; ++i) {
    if (touches[i] >> bits_numero == position) {
      liste.push_back(debut + (touches[i] & masque_numero));
    }
  }
}

#if defined(__x86_64__)

// ---- AVX2: eight at a time ---------------------------------------------------------------------

// [mask]: the lanes whose bits are set, moved together.
constexpr auto serrer = [] {
  std::array<std::array<std::uint32_t, 8>, 256> table{};
  for (std::uint32_t masque = 0; masque < 256; ++masque) {
    std::size_t j = 0;
    for (std::uint32_t voie = 0; voie < 8; ++voie) {
      if ((masque >> voie & 1) != 0) table[masque][j++] = voie;
    }
  }
  return table;
}();

[[gnu::target("avx2")]] inline __m256i lire(const std::uint32_t* huit) {
  return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(huit));
}

[[gnu::target("avx2")]] inline void ecrire(std::uint32_t* huit, __m256i v) {
  _mm256_storeu_si256(reinterpret_cast<__m256i*>(huit), v);
}

[[gnu::target("avx2,popcnt")]] std::size_t verser_avx2(Deplacement d, std::uint32_t longueur,
                                                       std::uint32_t* liste) {
  // Roots and primes are below 2^31: signed comparisons serve.
  const __m256i borne = _mm256_set1_epi32(static_cast<int>(longueur));
  __m256i numero = _mm256_add_epi32(_mm256_setr_epi32(0, 1, 2, 3, 4, 5, 6, 7),
                                    _mm256_set1_epi32(static_cast<int>(d.numero)));
  std::uint32_t* fin = liste;
  for (std::size_t i = 0; i < d.nombre; i += 8) {
    const __m256i p = lire(d.premier + i);
    const __m256i lu = lire(d.pas + i);
    const __m256i pas = d.monter ? lu : _mm256_sub_epi32(p, lu);
    for (std::uint32_t* const racines : {d.racine_1 + i, d.racine_2 + i}) {
      const __m256i loin = _mm256_add_epi32(lire(racines), pas);
      const __m256i x = _mm256_min_epu32(loin, _mm256_sub_epi32(loin, p));
      ecrire(racines, x);
      const auto oui = static_cast<unsigned>(
          _mm256_movemask_ps(_mm256_castsi256_ps(_mm256_cmpgt_epi32(borne, x))));
      if (oui == 0) continue;
      const __m256i touche = _mm256_or_si256(_mm256_slli_epi32(x, bits_numero), numero);
      ecrire(fin, _mm256_permutevar8x32_epi32(touche, lire(serrer[oui].data())));
      fin += std::popcount(oui);
    }
    numero = _mm256_add_epi32(numero, _mm256_set1_epi32(8));
  }
  return static_cast<std::size_t>(fin - liste);
}

[[gnu::target("avx2")]] void chercher_avx2(const std::uint32_t* touches, std::size_t n,
                                           std::uint32_t position, std::uint32_t debut,
                                           std::vector<std::uint32_t>& liste) {
  const __m256i place = _mm256_set1_epi32(static_cast<int>(position));
  std::size_t i = 0;
  for (; i + 8 <= n; i += 8) {
    const __m256i egal =
        _mm256_cmpeq_epi32(_mm256_srli_epi32(lire(touches + i), bits_numero), place);
    auto oui = static_cast<unsigned>(_mm256_movemask_ps(_mm256_castsi256_ps(egal)));
    for (; oui != 0; oui &= oui - 1) {
      const std::size_t voie = i + static_cast<std::size_t>(std::countr_zero(oui));
      liste.push_back(debut + (touches[voie] & masque_numero));
    }
  }
  chercher(touches + i, n - i, position, debut, liste);
}

// ---- AVX-512: sixteen at a time ----------------------------------------------------------------

[[gnu::target("avx512f,popcnt")]] std::size_t verser_avx512(Deplacement d, std::uint32_t longueur,
                                                            std::uint32_t* liste) {
  // With a mask of its own an instruction is free of a false warning of gcc 12.
  constexpr __mmask16 toutes = 0xFFFF;
  const __m512i borne = _mm512_set1_epi32(static_cast<int>(longueur));
  __m512i numero =
      _mm512_add_epi32(_mm512_setr_epi32(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15),
                       _mm512_set1_epi32(static_cast<int>(d.numero)));
  std::uint32_t* fin = liste;
  for (std::size_t i = 0; i < d.nombre; i += 16) {
    const __m512i p = _mm512_loadu_si512(d.premier + i);
    const __m512i lu = _mm512_loadu_si512(d.pas + i);
    const __m512i pas = d.monter ? lu : _mm512_sub_epi32(p, lu);
    for (std::uint32_t* const racines : {d.racine_1 + i, d.racine_2 + i}) {
      const __m512i loin = _mm512_add_epi32(_mm512_loadu_si512(racines), pas);
      const __m512i x = _mm512_maskz_min_epu32(toutes, loin, _mm512_sub_epi32(loin, p));
      _mm512_storeu_si512(racines, x);
      const __mmask16 oui = _mm512_cmplt_epu32_mask(x, borne);
      const __m512i touche = _mm512_or_si512(_mm512_maskz_slli_epi32(oui, x, bits_numero), numero);
      _mm512_storeu_si512(fin, _mm512_maskz_compress_epi32(oui, touche));
      fin += std::popcount(static_cast<unsigned>(oui));
    }
    numero = _mm512_add_epi32(numero, _mm512_set1_epi32(16));
  }
  return static_cast<std::size_t>(fin - liste);
}

[[gnu::target("avx512f")]] void chercher_avx512(const std::uint32_t* touches, std::size_t n,
                                                std::uint32_t position, std::uint32_t debut,
                                                std::vector<std::uint32_t>& liste) {
  // A hit at that position differs from position << bits_numero in its number at most.
  const __m512i place = _mm512_set1_epi32(static_cast<int>(position << bits_numero));
  const __m512i numeros = _mm512_set1_epi32(static_cast<int>(masque_numero));
  std::size_t i = 0;
  for (; i + 16 <= n; i += 16) {
    const __m512i ecart = _mm512_xor_si512(_mm512_loadu_si512(touches + i), place);
    auto oui = static_cast<unsigned>(_mm512_cmple_epu32_mask(ecart, numeros));
    for (; oui != 0; oui &= oui - 1) {
      const std::size_t voie = i + static_cast<std::size_t>(std::countr_zero(oui));
      liste.push_back(debut + (touches[voie] & masque_numero));
    }
  }
  chercher(touches + i, n - i, position, debut, liste);
}

#endif

constexpr Version<BouclesSeaux> versions[] = {
#if defined(__x86_64__)
    {instructions::avx512f | instructions::popcnt, {verser_avx512, chercher_avx512}},
    {instructions::avx2 | instructions::popcnt, {verser_avx2, chercher_avx2}},
#endif
    {instructions::aucune, {verser, chercher}},
};

const BouclesSeaux& boucles() {
  static const BouclesSeaux& choix = choisir(versions_des_seaux()).boucle;
  return choix;
}

}  // namespace

Versions<BouclesSeaux> versions_des_seaux() { return versions; }

Seaux::Seaux(const Base& base_, std::size_t debut, std::uint32_t longueur_)
    : base(base_), longueur(longueur_), capacite(2 * (base_.premier.size() - debut) + 16) {
  assert(debut % largeur_vecteurs == 0 && longueur < longueur_max);
  for (std::size_t i = debut; i < base.premier.size();) {
    // Neighbours have the same weight; a vector that spans two weights takes that of its first.
    std::size_t fin = i + largeur_vecteurs;
    while (fin < base.premier.size() && fin - i < tranche_max && base.poids[fin] == base.poids[i]) {
      fin += largeur_vecteurs;
    }
    tranches.push_back({i, fin, base.poids[i]});
    i = fin;
  }
  touches.resize(lot * capacite);
  bornes.resize((tranches.size() + 1) * lot);
}

void Seaux::remplir(Polynomes& polynomes) {
  // A stretch of the base with its roots and the steps that come most often: 14 KB.
  constexpr std::size_t troncon = 512;
  std::array<std::size_t, lot> fins{};
  const std::size_t nombre = std::min(lot, polynomes.reste_de_la_famille());
  for (std::size_t t = 0; t < tranches.size(); ++t) {
    std::copy(fins.begin(), fins.end(), bornes.begin() + static_cast<std::ptrdiff_t>(t * lot));
    for (std::size_t i = tranches[t].debut; i < tranches[t].fin; i += troncon) {
      for (std::size_t k = 0; k < nombre; ++k) {
        const Mouvement mouvement =
            polynomes.famille.mouvement(polynomes.rang + static_cast<std::uint32_t>(k));
        const Deplacement deplacement{polynomes.racine_1.data() + i,
                                      polynomes.racine_2.data() + i,
                                      mouvement.pas + i,
                                      base.premier.data() + i,
                                      std::min(troncon, tranches[t].fin - i),
                                      static_cast<std::uint32_t>(i - tranches[t].debut),
                                      mouvement.monter};
        fins[k] += boucles().verser(deplacement, longueur, touches.data() + k * capacite + fins[k]);
      }
    }
  }
  std::copy(fins.begin(), fins.end(),
            bornes.begin() + static_cast<std::ptrdiff_t>(tranches.size() * lot));
}

void Seaux::ajouter(std::size_t rang, std::uint8_t* octets) const {
  const std::size_t k = rang % lot;
  const std::uint32_t* const seau = touches.data() + k * capacite;
  for (std::size_t t = 0; t < tranches.size(); ++t) {
    const std::uint8_t poids = tranches[t].poids;
    const std::uint32_t* const fin = seau + bornes[(t + 1) * lot + k];
    for (const std::uint32_t* touche = seau + bornes[t * lot + k]; touche < fin; ++touche) {
      std::uint8_t& octet = octets[*touche >> bits_numero];
      octet = static_cast<std::uint8_t>(octet + poids);
    }
  }
}

void Seaux::diviseurs(std::size_t rang, std::uint32_t position,
                      std::vector<std::uint32_t>& trouves) const {
  const std::size_t k = rang % lot;
  for (std::size_t t = 0; t < tranches.size(); ++t) {
    const std::size_t debut = bornes[t * lot + k];
    boucles().chercher(touches.data() + k * capacite + debut, bornes[(t + 1) * lot + k] - debut,
                       position, static_cast<std::uint32_t>(tranches[t].debut), trouves);
  }
}

}  // namespace premiers::quadratique
