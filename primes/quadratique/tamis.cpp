// SPDX-License-Identifier: MIT
#include "primes/quadratique/tamis.h"

#include <algorithm>
#include <cassert>
#include <cstring>

#include "primes/quadratique/vecteurs.h"

namespace premiers::quadratique {

namespace {

// Up to so many places in a block a prime has its own loop without a counter.
constexpr std::size_t deroules = 8;

// One block, and the first place of each prime in it, which moves on to the next block.
struct Vue {
  std::uint8_t* octets;
  std::uint32_t taille;  // bytes; 64 more are waste
  const std::uint16_t* premier;
  const std::uint8_t* poids;
  std::uint16_t* place_1;
  std::uint16_t* place_2;
};

inline void ajouter(std::uint8_t& octet, std::uint8_t poids) {
  octet = static_cast<std::uint8_t>(octet + poids);
}

// Adds at x, or at a place of waste when x is outside; gives the place in the next block.
inline std::uint16_t ajouter_dedans(Vue vue, std::uint32_t x, std::uint32_t p, std::uint8_t poids) {
  const bool dedans = x < vue.taille;
  const std::uint32_t rebut = vue.taille + (x & 63);
  ajouter(vue.octets[dedans ? x : rebut], poids);
  return static_cast<std::uint16_t>((dedans ? x + p : x) - vue.taille);
}

// The primes that come by k or k + 1 times.
template <std::size_t k>
void cribler_palier(Vue vue, std::size_t debut, std::size_t fin) {
  for (std::size_t i = debut; i < fin; ++i) {
    const std::uint32_t p = vue.premier[i];
    const std::uint8_t poids = vue.poids[i];
    std::uint32_t x = vue.place_1[i];
    std::uint32_t y = vue.place_2[i];
    for (std::size_t j = 0; j < k; ++j) {
      ajouter(vue.octets[x], poids);
      ajouter(vue.octets[y], poids);
      x += p;
      y += p;
    }
    vue.place_1[i] = ajouter_dedans(vue, x, p, poids);
    vue.place_2[i] = ajouter_dedans(vue, y, p, poids);
  }
}

// The smaller primes, up to `fin`.
void cribler_petits(Vue vue, std::size_t debut, std::size_t fin) {
  for (std::size_t i = debut; i < fin; ++i) {
    const std::uint32_t p = vue.premier[i];
    const std::uint8_t poids = vue.poids[i];
    std::uint32_t x = std::min(vue.place_1[i], vue.place_2[i]);
    std::uint32_t y = std::max(vue.place_1[i], vue.place_2[i]);
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
    vue.place_1[i] = ajouter_dedans(vue, x, p, poids);
    vue.place_2[i] = static_cast<std::uint16_t>(y - vue.taille);
  }
}

template <std::size_t k>
void cribler_paliers(Vue vue, const std::vector<std::size_t>& paliers) {
  cribler_palier<k>(vue, paliers[k + 1], paliers[k]);
  if constexpr (k > 0) cribler_paliers<k - 1>(vue, paliers);
}

// The index of the first prime >= borne, from `ordinaires` on.
std::size_t rang(const Base& base, std::uint32_t borne) {
  const auto debut = base.premier.begin() + static_cast<std::ptrdiff_t>(base.ordinaires);
  const auto fin = base.premier.begin() + static_cast<std::ptrdiff_t>(base.taille);
  return static_cast<std::size_t>(std::lower_bound(debut, fin, borne) - base.premier.begin());
}

constexpr std::size_t vecteurs_entiers(std::size_t i) {
  return (i + largeur_vecteurs - 1) / largeur_vecteurs * largeur_vecteurs;
}

}  // namespace

Tamis::Tamis(const Base& base_, const Reglages& reglages)
    : base(base_),
      longueur(2 * reglages.demi),
      poids(base_.poids),
      lignes(std::min(longueur, taille_bloc) / 64 + 1),
      debut(rang(base_, reglages.petit)),
      fin(std::max(vecteurs_entiers(debut),
                   vecteurs_entiers(rang(base_, std::min(longueur, taille_bloc))))),
      seaux(base_, fin, longueur),
      premier(fin),
      place_1(fin),
      place_2(fin) {
  assert(longueur % taille_bloc == 0 || longueur < taille_bloc);
  vecteurs().abreger(base.premier.data(), fin, premier.data());
  const std::uint32_t bloc = std::min(longueur, taille_bloc);
  paliers.push_back(fin);
  for (std::uint32_t k = 0; k <= deroules; ++k) {
    paliers.push_back(std::max(debut, rang(base, bloc / (k + 1) + 1)));
  }
}

const std::vector<Candidat>& Tamis::cribler(Polynomes& polynomes, std::uint32_t seuil) {
  assert(seuil <= seuil_max && polynomes.limite == fin);
  const std::uint32_t bloc = std::min(longueur, taille_bloc);
  const std::uint32_t depart = 128 - seuil;
  std::uint8_t* const octets = lignes[0].octets;
  for (const std::size_t i : polynomes.facteurs) poids[i] = 0;
  const Vue vue{octets, bloc, premier.data(), poids.data(), place_1.data(), place_2.data()};
  seaux.remplir(polynomes);
  vecteurs().abreger(polynomes.racine_1.data(), fin, place_1.data());
  vecteurs().abreger(polynomes.racine_2.data(), fin, place_2.data());
  candidats.clear();
  for (std::uint32_t origine = 0; origine < longueur; origine += bloc) {
    std::memset(octets, static_cast<int>(depart), bloc);
    cribler_petits(vue, debut, paliers[deroules + 1]);
    cribler_paliers<deroules>(vue, paliers);
    seaux.ajouter(origine / taille_bloc, octets);
    leves.clear();
    vecteurs().relever(octets, bloc, leves);
    for (const std::uint32_t x : leves) candidats.push_back({origine + x, octets[x] - depart});
  }
  for (const std::size_t i : polynomes.facteurs) poids[i] = base.poids[i];
  return candidats;
}

}  // namespace premiers::quadratique
