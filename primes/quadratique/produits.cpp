// SPDX-License-Identifier: MIT
// Which rows are dense enough to be kept as bits, and the two products (produits.h).
#include "primes/quadratique/produits.h"

#include <algorithm>
#include <numeric>

namespace premiers::quadratique {

namespace {

// 64 rows are kept as bits if they have more entries than this for each column. Fewer: look-ups for
// words that are nearly empty; more: lists of what could be looked up. 4, 8 and 16 differ by less
// than 5 percent at 25000 columns; without bits it takes a quarter more.
constexpr std::size_t entrees_par_mot = 8;

std::vector<std::size_t> poids_des_lignes(const MatriceCreuse& matrice) {
  std::vector<std::size_t> poids(matrice.lignes);
  for (const Ensemble& colonne : matrice.colonnes) {
    for (const std::uint32_t i : colonne) ++poids[i];
  }
  return poids;
}

// How many of the rows, the heaviest first, are dense.
std::size_t nombre_de_denses(const std::vector<std::uint32_t>& ordre,
                             const std::vector<std::size_t>& poids, std::size_t colonnes) {
  std::size_t denses = 0;
  while (denses + 64 <= ordre.size()) {
    std::size_t total = 0;
    for (std::size_t k = denses; k < denses + 64; ++k) total += poids[ordre[k]];
    if (total < entrees_par_mot * colonnes) break;
    denses += 64;
  }
  return denses;
}

}  // namespace

MatriceDeProduits::MatriceDeProduits(const MatriceCreuse& matrice)
    : colonnes(matrice.colonnes.size()) {
  const std::vector<std::size_t> poids = poids_des_lignes(matrice);
  std::vector<std::uint32_t> ordre(matrice.lignes);
  std::iota(ordre.begin(), ordre.end(), 0);
  std::stable_sort(ordre.begin(), ordre.end(),
                   [&](std::uint32_t i, std::uint32_t j) { return poids[i] > poids[j]; });
  const std::size_t nombre_denses = nombre_de_denses(ordre, poids, colonnes);
  denses.assign(nombre_denses / 64, Mots(colonnes));
  legeres = matrice.lignes - nombre_denses;
  std::vector<std::uint32_t> place(matrice.lignes);  // of each row in the order
  for (std::uint32_t k = 0; k < ordre.size(); ++k) place[ordre[k]] = k;

  debut.push_back(0);
  for (std::size_t j = 0; j < colonnes; ++j) {
    for (const std::uint32_t i : matrice.colonnes[j]) {
      const std::uint32_t k = place[i];
      if (k < nombre_denses) {
        denses[k / 64][j] |= std::uint64_t{1} << (k % 64);
      } else {
        lignes.push_back(k - static_cast<std::uint32_t>(nombre_denses));
      }
    }
    debut.push_back(lignes.size());
  }
}

Mots MatriceDeProduits::image_legere(const Mots& x) const {
  Mots y(legeres);
  for (std::size_t j = 0; j < colonnes; ++j) {
    for (std::size_t k = debut[j]; k < debut[j + 1]; ++k) y[lignes[k]] ^= x[j];
  }
  return y;
}

Mots MatriceDeProduits::gram(const Mots& x) const {
  const Mots y = image_legere(x);
  Mots z(colonnes);
  for (std::size_t j = 0; j < colonnes; ++j) {
    std::uint64_t somme = 0;
    for (std::size_t k = debut[j]; k < debut[j + 1]; ++k) somme ^= y[lignes[k]];
    z[j] = somme;
  }
  for (const Mots& bloc : denses) ajouter_produit(z, bloc, produit_interieur(bloc, x));
  return z;
}

Mots MatriceDeProduits::image(const Mots& x) const {
  Mots y = image_legere(x);
  for (const Mots& bloc : denses) {
    const Bloc lignes_denses = produit_interieur(bloc, x);
    y.insert(y.end(), lignes_denses.begin(), lignes_denses.end());
  }
  return y;
}

}  // namespace premiers::quadratique
