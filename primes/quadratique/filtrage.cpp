// SPDX-License-Identifier: MIT
// The three rules of filtrage.h on a matrix with its transpose, then what is left, renumbered.
#include "primes/quadratique/filtrage.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <numeric>
#include <utility>

namespace premiers::quadratique {

namespace {

// Rows with up to so many entries are merged. More hardly ever pay.
constexpr std::size_t fusion_max = 8;

// A round of block Lanczos costs as much for a column as so many of its entries, beside those it
// has: the products by blocks.
constexpr double cout_de_colonne = 30;

// So many columns or rows between two signs of life.
constexpr std::size_t cadence = 512;

// The matrix while it becomes smaller. A column that has gone is empty and not alive; a living one
// may be empty too.
struct Chantier {
  MatriceCreuse matrice;
  std::vector<Ensemble> origines;
  std::vector<std::uint8_t> vivante;
  std::size_t vivantes = 0;
  std::size_t entrees = 0;
  std::vector<std::uint32_t> poids;   // of the rows
  std::vector<Ensemble> colonnes_de;  // of the rows that are watched: their columns, in any order
  std::vector<std::uint8_t> suivie;
};

void retirer_colonne(Chantier& c, std::uint32_t j) {
  for (const std::uint32_t i : c.matrice.colonnes[j]) {
    --c.poids[i];
    if (c.suivie[i] != 0) std::erase(c.colonnes_de[i], j);
  }
  c.entrees -= c.matrice.colonnes[j].size();
  c.matrice.colonnes[j] = {};
  c.origines[j] = {};
  c.vivante[j] = 0;
  --c.vivantes;
}

// Adds a column to another one.
void ajouter_colonne(Chantier& c, std::uint32_t a, std::uint32_t j) {
  Ensemble& ici = c.matrice.colonnes[a];
  const Ensemble& terme = c.matrice.colonnes[j];
  for (const std::uint32_t i : terme) {
    const bool deja = std::binary_search(ici.begin(), ici.end(), i);
    if (deja) {
      --c.poids[i];
    } else {
      ++c.poids[i];
    }
    if (c.suivie[i] == 0) continue;
    if (deja) {
      std::erase(c.colonnes_de[i], a);
    } else {
      c.colonnes_de[i].push_back(a);
    }
  }
  c.entrees -= ici.size();
  ici = difference_symetrique(ici, terme);
  c.entrees += ici.size();
  c.origines[a] = difference_symetrique(c.origines[a], c.origines[j]);
}

// Watches the rows of 1 to `maximum` entries, and those only.
void suivre(Chantier& c, std::size_t maximum) {
  c.colonnes_de.assign(c.matrice.lignes, {});
  for (std::size_t i = 0; i < c.matrice.lignes; ++i) {
    c.suivie[i] = c.poids[i] > 0 && c.poids[i] <= maximum ? 1 : 0;
  }
  for (std::uint32_t j = 0; j < c.matrice.colonnes.size(); ++j) {
    for (const std::uint32_t i : c.matrice.colonnes[j]) {
      if (c.suivie[i] != 0) c.colonnes_de[i].push_back(j);
    }
  }
}

// Columns go that have the only entry of a row.
void retirer_singletons(Chantier& c) {
  for (bool change = true; change;) {
    change = false;
    for (std::uint32_t j = 0; j < c.matrice.colonnes.size(); ++j) {
      const Ensemble& colonne = c.matrice.colonnes[j];
      if (std::none_of(colonne.begin(), colonne.end(),
                       [&c](std::uint32_t i) { return c.poids[i] == 1; }))
        continue;
      retirer_colonne(c, j);
      change = true;
    }
  }
}

std::size_t lignes_occupees(const Chantier& c) {
  return c.poids.size() - static_cast<std::size_t>(std::count(c.poids.begin(), c.poids.end(), 0U));
}

// The heaviest columns go, until there are `surplus` more than rows. Rows that lose all their entries
// by it make more columns superfluous.
void retirer_surplus(Chantier& c, std::size_t surplus) {
  retirer_singletons(c);
  while (c.vivantes > lignes_occupees(c) + surplus) {
    std::vector<std::uint32_t> ordre;
    for (std::uint32_t j = 0; j < c.vivante.size(); ++j) {
      if (c.vivante[j] != 0) ordre.push_back(j);
    }
    std::stable_sort(ordre.begin(), ordre.end(), [&c](std::uint32_t a, std::uint32_t b) {
      return c.matrice.colonnes[a].size() > c.matrice.colonnes[b].size();
    });
    ordre.resize(c.vivantes - lignes_occupees(c) - surplus);
    for (const std::uint32_t j : ordre) retirer_colonne(c, j);
    retirer_singletons(c);
  }
}

// Takes a watched row away by its lightest column, if that pays.
bool fusionner(Chantier& c, std::uint32_t ligne) {
  const Ensemble& colonnes = c.colonnes_de[ligne];
  const std::size_t m = colonnes.size();
  if (m == 0 || m > fusion_max) return false;
  const std::uint32_t pivot =
      *std::min_element(colonnes.begin(), colonnes.end(), [&c](std::uint32_t a, std::uint32_t b) {
        return std::pair{c.matrice.colonnes[a].size(), a} <
               std::pair{c.matrice.colonnes[b].size(), b};
      });
  // The work is n (entries + cout n): with n less by one, so many entries may be added.
  const auto n = static_cast<double>(c.vivantes);
  const double permis = static_cast<double>(c.entrees) / n + 2 * cout_de_colonne;
  const auto poids = static_cast<double>(c.matrice.colonnes[pivot].size());
  const auto autres = static_cast<double>(m) - 1;
  if (autres * (poids - 2) - poids > permis) return false;
  for (const std::uint32_t a : Ensemble(colonnes)) {
    if (a != pivot) ajouter_colonne(c, a, pivot);
  }
  retirer_colonne(c, pivot);
  return true;
}

// Only what is left: living columns, and rows with entries.
MatriceReduite compacter(Chantier& c) {
  std::vector<std::uint32_t> numero(c.matrice.lignes);
  MatriceReduite r;
  for (std::size_t i = 0; i < c.matrice.lignes; ++i) {
    if (c.poids[i] > 0) numero[i] = static_cast<std::uint32_t>(r.matrice.lignes++);
  }
  for (std::size_t j = 0; j < c.matrice.colonnes.size(); ++j) {
    if (c.vivante[j] == 0) continue;
    for (std::uint32_t& i : c.matrice.colonnes[j]) i = numero[i];
    r.matrice.colonnes.push_back(std::move(c.matrice.colonnes[j]));
    r.origines.push_back(std::move(c.origines[j]));
  }
  return r;
}

Chantier ouvrir(MatriceCreuse matrice) {
  Chantier c;
  c.matrice = std::move(matrice);
  c.vivantes = c.matrice.colonnes.size();
  c.vivante.assign(c.vivantes, 1);
  c.poids.assign(c.matrice.lignes, 0);
  c.suivie.assign(c.matrice.lignes, 0);
  c.origines.resize(c.vivantes);
  for (std::uint32_t j = 0; j < c.vivantes; ++j) {
    c.origines[j] = {j};
    c.entrees += c.matrice.colonnes[j].size();
    for (const std::uint32_t i : c.matrice.colonnes[j]) ++c.poids[i];
  }
  return c;
}

}  // namespace

MatriceReduite filtrer(MatriceCreuse matrice, std::size_t surplus,
                       const std::function<void()>& signe_de_vie) {
  Chantier c = ouvrir(std::move(matrice));
  if (signe_de_vie) signe_de_vie();
  retirer_surplus(c, surplus);
  for (std::size_t m = 2; m <= fusion_max; ++m) {
    if (signe_de_vie) signe_de_vie();
    suivre(c, m);
    for (std::uint32_t i = 0; i < c.matrice.lignes; ++i) {
      if (signe_de_vie && i % cadence == 0) signe_de_vie();
      if (c.suivie[i] != 0) fusionner(c, i);
    }
  }
  return compacter(c);
}

}  // namespace premiers::quadratique
