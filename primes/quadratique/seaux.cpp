// SPDX-License-Identifier: MIT
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
/// Where a hit tells its place in its block.
constexpr std::uint32_t masque_place = (taille_bloc - 1) << bits_numero;

// ---- Any processor -----------------------------------------------------------------------------

std::size_t verser(const Deplacement& d, std::uint32_t longueur, std::uint32_t* liste) {
  std::size_t j = 0;
  for (std::size_t i = 0; i < d.nombre; ++i) {
    const std::uint32_t p = d.premier[i];
    const std::uint32_t pas = d.monter ? d.pas[i] : p - d.pas[i];
    for (std::uint32_t* const racine : {d.racine_1 + i, d.racine_2 + i}) {
      *racine = std::min(*racine + pas, *racine + pas - p);
      for (std::uint32_t x = *racine; x < longueur; x += p) {
        liste[j++] = (x << bits_numero) | static_cast<std::uint32_t>(i);
      }
    }
  }
  return j;
}

void chercher(const std::uint32_t* touches, std::size_t n, std::uint32_t position,
              std::uint32_t premier, std::vector<std::uint32_t>& liste) {
  const std::uint32_t place = (position << bits_numero) & masque_place;
  for (std::size_t i = 0; i < n; ++i) {
    if ((touches[i] & masque_place) == place) {
      liste.push_back(premier + (touches[i] & masque_numero));
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

[[gnu::target("avx2,popcnt")]] std::size_t verser_avx2(const Deplacement& d, std::uint32_t longueur,
                                                       std::uint32_t* liste) {
  // Positions and primes are below 2^31: signed comparisons serve.
  const __m256i borne = _mm256_set1_epi32(static_cast<int>(longueur));
  __m256i numero = _mm256_setr_epi32(0, 1, 2, 3, 4, 5, 6, 7);
  std::uint32_t* fin = liste;
  for (std::size_t i = 0; i < d.nombre; i += 8) {
    const __m256i p = lire(d.premier + i);
    const __m256i lu = lire(d.pas + i);
    const __m256i pas = d.monter ? lu : _mm256_sub_epi32(p, lu);
    for (std::uint32_t* const racines : {d.racine_1, d.racine_2}) {
      const __m256i loin = _mm256_add_epi32(lire(racines + i), pas);
      __m256i x = _mm256_min_epu32(loin, _mm256_sub_epi32(loin, p));
      _mm256_storeu_si256(reinterpret_cast<__m256i*>(racines + i), x);
      while (true) {
        const auto oui = static_cast<unsigned>(
            _mm256_movemask_ps(_mm256_castsi256_ps(_mm256_cmpgt_epi32(borne, x))));
        if (oui == 0) break;
        const __m256i touche = _mm256_or_si256(_mm256_slli_epi32(x, bits_numero), numero);
        const __m256i ordre = lire(serrer[oui].data());
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(fin),
                            _mm256_permutevar8x32_epi32(touche, ordre));
        fin += std::popcount(oui);
        x = _mm256_add_epi32(x, p);
      }
    }
    numero = _mm256_add_epi32(numero, _mm256_set1_epi32(8));
  }
  return static_cast<std::size_t>(fin - liste);
}

[[gnu::target("avx2")]] void chercher_avx2(const std::uint32_t* touches, std::size_t n,
                                           std::uint32_t position, std::uint32_t premier,
                                           std::vector<std::uint32_t>& liste) {
  const __m256i place =
      _mm256_set1_epi32(static_cast<int>((position << bits_numero) & masque_place));
  const __m256i masque = _mm256_set1_epi32(static_cast<int>(masque_place));
  std::size_t i = 0;
  for (; i + 8 <= n; i += 8) {
    const __m256i egal = _mm256_cmpeq_epi32(_mm256_and_si256(lire(touches + i), masque), place);
    auto oui = static_cast<unsigned>(_mm256_movemask_ps(_mm256_castsi256_ps(egal)));
    for (; oui != 0; oui &= oui - 1) {
      const std::size_t voie = i + static_cast<std::size_t>(std::countr_zero(oui));
      liste.push_back(premier + (touches[voie] & masque_numero));
    }
  }
  chercher(touches + i, n - i, position, premier, liste);
}

// ---- AVX-512: sixteen at a time ----------------------------------------------------------------

[[gnu::target("avx512f,popcnt")]] std::size_t verser_avx512(const Deplacement& d,
                                                            std::uint32_t longueur,
                                                            std::uint32_t* liste) {
  // With a mask of its own each instruction is free of a warning of gcc 12 about its header.
  constexpr __mmask16 toutes = 0xFFFF;
  const __m512i borne = _mm512_set1_epi32(static_cast<int>(longueur));
  __m512i numero = _mm512_setr_epi32(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15);
  std::uint32_t* fin = liste;
  for (std::size_t i = 0; i < d.nombre; i += 16) {
    const __m512i p = _mm512_loadu_si512(d.premier + i);
    const __m512i lu = _mm512_loadu_si512(d.pas + i);
    const __m512i pas = d.monter ? lu : _mm512_sub_epi32(p, lu);
    for (std::uint32_t* const racines : {d.racine_1, d.racine_2}) {
      const __m512i loin = _mm512_add_epi32(_mm512_loadu_si512(racines + i), pas);
      __m512i x = _mm512_maskz_min_epu32(toutes, loin, _mm512_sub_epi32(loin, p));
      _mm512_storeu_si512(racines + i, x);
      while (true) {
        const __mmask16 oui = _mm512_cmplt_epu32_mask(x, borne);
        if (oui == 0) break;
        const __m512i touche =
            _mm512_or_si512(_mm512_maskz_slli_epi32(oui, x, bits_numero), numero);
        _mm512_storeu_si512(fin, _mm512_maskz_compress_epi32(oui, touche));
        fin += std::popcount(static_cast<unsigned>(oui));
        x = _mm512_add_epi32(x, p);
      }
    }
    numero = _mm512_add_epi32(numero, _mm512_set1_epi32(16));
  }
  return static_cast<std::size_t>(fin - liste);
}

[[gnu::target("avx512f")]] void chercher_avx512(const std::uint32_t* touches, std::size_t n,
                                                std::uint32_t position, std::uint32_t premier,
                                                std::vector<std::uint32_t>& liste) {
  const __m512i place =
      _mm512_set1_epi32(static_cast<int>((position << bits_numero) & masque_place));
  const __m512i masque = _mm512_set1_epi32(static_cast<int>(masque_place));
  std::size_t i = 0;
  for (; i + 16 <= n; i += 16) {
    const __m512i t = _mm512_loadu_si512(touches + i);
    auto oui = static_cast<unsigned>(_mm512_cmpeq_epi32_mask(_mm512_and_si512(t, masque), place));
    for (; oui != 0; oui &= oui - 1) {
      const std::size_t voie = i + static_cast<std::size_t>(std::countr_zero(oui));
      liste.push_back(premier + (touches[voie] & masque_numero));
    }
  }
  chercher(touches + i, n - i, position, premier, liste);
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

// Puts each hit of the list behind the last one of its block.
void trier(const std::uint32_t* liste, std::size_t n, std::uint32_t** fins) {
  for (std::size_t i = 0; i < n; ++i) {
    const std::uint32_t touche = liste[i];
    *fins[touche >> (bits_bloc + bits_numero)]++ = touche;
  }
}

}  // namespace

Versions<BouclesSeaux> versions_des_seaux() { return versions; }

Seaux::Seaux(const Base& base_, std::size_t debut, std::uint32_t longueur_)
    : base(base_), longueur(longueur_), blocs((longueur_ + taille_bloc - 1) / taille_bloc) {
  assert(debut % largeur_vecteurs == 0 && longueur <= longueur_max);
  std::size_t place = 16;
  for (std::size_t i = debut; i < base.premier.size();) {
    // Neighbours have the same weight; a vector that spans two weights takes that of its first.
    std::size_t fin = i + largeur_vecteurs;
    while (fin < base.premier.size() && fin - i < tranche_max && base.poids[fin] == base.poids[i]) {
      fin += largeur_vecteurs;
    }
    tranches.push_back({i, fin, base.poids[i]});
    place = std::max(place, 2 * (fin - i) * (longueur / base.premier[i] + 1) + 16);
    i = fin;
  }
  seaux.resize(blocs);
  bornes.resize((tranches.size() + 1) * blocs);
  liste.resize(place);
}

void Seaux::remplir(Polynomes& polynomes) {
  std::vector<std::uint32_t*> fins(blocs);
  for (std::size_t t = 0; t < tranches.size(); ++t) {
    const Tranche& tranche = tranches[t];
    const Deplacement deplacement{polynomes.racine_1.data() + tranche.debut,
                                  polynomes.racine_2.data() + tranche.debut,
                                  polynomes.dernier_pas + tranche.debut,
                                  base.premier.data() + tranche.debut,
                                  tranche.fin - tranche.debut,
                                  polynomes.dernier_monte};
    const std::size_t nombre = boucles().verser(deplacement, longueur, liste.data());
    for (std::size_t b = 0; b < blocs; ++b) {
      const std::size_t avant = bornes[t * blocs + b];
      if (seaux[b].size() < avant + nombre) seaux[b].resize(avant + nombre);
      fins[b] = seaux[b].data() + avant;
    }
    trier(liste.data(), nombre, fins.data());
    for (std::size_t b = 0; b < blocs; ++b) {
      bornes[(t + 1) * blocs + b] = static_cast<std::size_t>(fins[b] - seaux[b].data());
    }
  }
}

void Seaux::ajouter(std::size_t bloc, std::uint8_t* octets) const {
  for (std::size_t t = 0; t < tranches.size(); ++t) {
    const std::uint8_t poids = tranches[t].poids;
    const std::uint32_t* const touches = seaux[bloc].data();
    for (std::size_t i = bornes[t * blocs + bloc]; i < bornes[(t + 1) * blocs + bloc]; ++i) {
      std::uint8_t& octet = octets[(touches[i] & masque_place) >> bits_numero];
      octet = static_cast<std::uint8_t>(octet + poids);
    }
  }
}

void Seaux::diviseurs(std::uint32_t position, std::vector<std::uint32_t>& trouves) const {
  const std::size_t bloc = position >> bits_bloc;
  for (std::size_t t = 0; t < tranches.size(); ++t) {
    const std::size_t debut = bornes[t * blocs + bloc];
    boucles().chercher(seaux[bloc].data() + debut, bornes[(t + 1) * blocs + bloc] - debut, position,
                       static_cast<std::uint32_t>(tranches[t].debut), trouves);
  }
}

}  // namespace premiers::quadratique
