// SPDX-License-Identifier: MIT
// One loop for each number of times that a prime fits the array (tamis.h).
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

// Adds at x, or at a place of waste when x is outside.
inline void ajouter_dedans(Vue vue, std::uint32_t x, std::uint8_t poids) {
  const std::uint32_t rebut = vue.taille + (x & 63);
  ajouter(vue.octets[x < vue.taille ? x : rebut], poids);
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
    ajouter_dedans(vue, x, poids);
    ajouter_dedans(vue, y, poids);
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
    ajouter_dedans(vue, x, poids);
  }
}

template <std::size_t k>
void cribler_paliers(Vue vue, const std::vector<std::size_t>& paliers) {
  cribler_palier<k>(vue, paliers[k + 1], paliers[k]);
  if constexpr (k > 0) cribler_paliers<k - 1>(vue, paliers);
}

// The index of the first prime >= borne, from `ordinaires` on.
std::size_t indice_de(const Base& base, std::uint32_t borne) {
  const auto debut = base.premier.begin() + static_cast<std::ptrdiff_t>(base.ordinaires);
  const auto fin = base.premier.begin() + static_cast<std::ptrdiff_t>(base.taille);
  return static_cast<std::size_t>(std::lower_bound(debut, fin, borne) - base.premier.begin());
}

}  // namespace

Tamis::Tamis(const Base& base_, const Reglages& reglages)
    : base(base_),
      longueur(2 * reglages.demi),
      poids(base_.poids),
      lignes(longueur / 64 + 1),
      debut(indice_de(base_, reglages.petit)),
      fin(vecteurs_entiers(std::max(debut, indice_de(base_, longueur + 1)))),
      seaux(base_, fin, longueur) {
  paliers.push_back(fin);
  for (std::uint32_t k = 0; k <= deroules; ++k) {
    paliers.push_back(std::max(debut, indice_de(base, longueur / (k + 1) + 1)));
  }
}

const std::vector<Candidat>& Tamis::cribler(Polynomes& polynomes, std::uint32_t seuil) {
  assert(seuil <= seuil_max && polynomes.limite == fin);
  const std::uint32_t depart = 128 - seuil;
  std::uint8_t* const octets = lignes[0].octets;
  std::memset(octets, static_cast<int>(depart), longueur);
  for (const std::size_t i : polynomes.famille.facteurs) poids[i] = 0;
  const Vue vue{octets,
                longueur,
                base.premier.data(),
                poids.data(),
                polynomes.racine_1.data(),
                polynomes.racine_2.data()};
  cribler_petits(vue, debut, paliers[deroules + 1]);
  cribler_paliers<deroules>(vue, paliers);
  for (const std::size_t i : polynomes.famille.facteurs) poids[i] = base.poids[i];
  if (polynomes.rang % Seaux::lot == 0) seaux.remplir(polynomes);
  seaux.ajouter(polynomes.rang, octets);

  leves.clear();
  candidats.clear();
  vecteurs().relever(octets, longueur, leves);
  for (const std::uint32_t x : leves) candidats.push_back({x, octets[x] - depart});
  return candidats;
}

}  // namespace premiers::quadratique
