// SPDX-License-Identifier: MIT
#include "primes/quadratique/tamis.h"

#include <algorithm>
#include <cassert>
#include <cstring>

#include "primes/quadratique/vecteurs.h"

namespace premiers::quadratique {

namespace {

// Up to so many places a prime has its own loop without a counter.
constexpr std::size_t deroules = 8;

struct Vue {
  std::uint8_t* octets;
  std::uint32_t taille;  // bytes; 64 more are waste
  const std::uint32_t* premier;
  const std::uint8_t* poids;
  const std::uint32_t* racine_1;
  const std::uint32_t* racine_2;
};

inline void ajouter(std::uint8_t& octet, std::uint8_t poids) {
  octet = static_cast<std::uint8_t>(octet + poids);
}

// x, or a place of waste when x is outside.
inline std::uint32_t dedans(Vue vue, std::uint32_t x) {
  const std::uint32_t rebut = vue.taille + (x & 63);
  return x < vue.taille ? x : rebut;
}

// The primes that come by k or k + 1 times.
template <std::size_t k>
void cribler_palier(Vue vue, std::size_t debut, std::size_t fin) {
  for (std::size_t i = debut; i < fin; ++i) {
    const std::uint32_t p = vue.premier[i];
    const std::uint8_t poids = vue.poids[i];
    std::uint32_t x = vue.racine_1[i];
    std::uint32_t y = vue.racine_2[i];
    for (std::size_t j = 0; j < k; ++j) {
      ajouter(vue.octets[x], poids);
      ajouter(vue.octets[y], poids);
      x += p;
      y += p;
    }
    ajouter(vue.octets[dedans(vue, x)], poids);
    ajouter(vue.octets[dedans(vue, y)], poids);
  }
}

// The smaller primes, up to `fin`.
void cribler_petits(Vue vue, std::size_t debut, std::size_t fin) {
  for (std::size_t i = debut; i < fin; ++i) {
    const std::uint32_t p = vue.premier[i];
    const std::uint8_t poids = vue.poids[i];
    std::uint32_t x = std::min(vue.racine_1[i], vue.racine_2[i]);
    std::uint32_t y = std::max(vue.racine_1[i], vue.racine_2[i]);
    // Four places of each root at a time, by pointers one, two and three steps ahead.
    const std::size_t p2 = 2 * std::size_t{p};
    for (; y + 3 * p < vue.taille; x += 4 * p, y += 4 * p) {
      std::uint8_t* const u = vue.octets + x;
      std::uint8_t* const v = vue.octets + y;
      ajouter(u[0], poids);
      ajouter(v[0], poids);
      ajouter(u[p], poids);
      ajouter(v[p], poids);
      ajouter(u[p2], poids);
      ajouter(v[p2], poids);
      ajouter(u[p2 + p], poids);
      ajouter(v[p2 + p], poids);
    }
    for (; y < vue.taille; x += p, y += p) {
      ajouter(vue.octets[x], poids);
      ajouter(vue.octets[y], poids);
    }
    ajouter(vue.octets[dedans(vue, x)], poids);
  }
}

// The primes from `debut` on, which come by once or not at all. Neighbours have the same weight.
void cribler_grands(Vue vue, std::size_t debut, std::size_t fin,
                    std::vector<std::uint32_t>& touches) {
  while (debut < fin) {
    std::size_t i = debut;
    const std::uint8_t poids = vue.poids[debut];
    while (i < fin && vue.poids[i] == poids) ++i;
    for (const std::uint32_t* racines : {vue.racine_1, vue.racine_2}) {
      const std::size_t nombre =
          vecteurs().retenir(racines + debut, i - debut, vue.taille, touches.data());
      for (std::size_t j = 0; j < nombre; ++j) ajouter(vue.octets[touches[j]], poids);
    }
    debut = i;
  }
}

template <std::size_t k>
void cribler_paliers(Vue vue, const std::vector<std::size_t>& paliers) {
  cribler_palier<k>(vue, paliers[k], paliers[k - 1]);
  if constexpr (k > 1) cribler_paliers<k - 1>(vue, paliers);
}

}  // namespace

Tamis::Tamis(const Base& base_, std::uint32_t demi, std::uint32_t petit)
    : base(base_), poids(base_.poids), lignes(demi / 32 + 1), touches(base_.premier.size() + 16) {
  const auto rang = [this](std::uint32_t borne) {
    const auto debut_base = base.premier.begin() + static_cast<std::ptrdiff_t>(base.ordinaires);
    const auto fin_base = base.premier.begin() + static_cast<std::ptrdiff_t>(base.taille);
    return static_cast<std::size_t>(std::lower_bound(debut_base, fin_base, borne) -
                                    base.premier.begin());
  };
  debut = rang(petit);
  for (std::uint32_t k = 0; k <= deroules; ++k) {
    paliers.push_back(std::max(debut, rang(2 * demi / (k + 1) + 1)));
  }
}

const std::vector<std::uint32_t>& Tamis::cribler(const Polynomes& polynomes, std::uint32_t seuil) {
  assert(seuil <= seuil_max);
  std::uint8_t* const octets = lignes[0].octets;
  const auto taille = static_cast<std::uint32_t>(64 * (lignes.size() - 1));
  std::memset(octets, static_cast<int>(128 - seuil), taille);
  for (const std::size_t i : polynomes.facteurs) poids[i] = 0;
  const Vue vue{octets,
                taille,
                base.premier.data(),
                poids.data(),
                polynomes.racine_1.data(),
                polynomes.racine_2.data()};
  cribler_petits(vue, debut, paliers[deroules]);
  cribler_paliers<deroules>(vue, paliers);
  cribler_grands(vue, paliers[0], base.taille, touches);
  for (const std::size_t i : polynomes.facteurs) poids[i] = base.poids[i];

  candidats.clear();
  vecteurs().relever(octets, taille, candidats);
  return candidats;
}

}  // namespace premiers::quadratique
