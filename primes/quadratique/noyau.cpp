// SPDX-License-Identifier: MIT
// Which way for which size, and the proof by multiplying back.
#include "primes/quadratique/noyau.h"

#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>

#include "primes/quadratique/algebre.h"
#include "primes/quadratique/filtrage.h"
#include "primes/quadratique/lanczos.h"
#include "primes/quadratique/listes_serrees.h"

namespace premiers::quadratique {

namespace {

constexpr std::size_t membres_au_plus = 64;

// Below so many rows the elimination costs less than the filtering would: it saves a tenth of the time of
// a whole sieve at 36 digits, 7 percent at 40 and at 44.
constexpr std::size_t filtrage_min = 1000;
// Up to so many columns, after filtering, the elimination is as fast, and cannot fail.
constexpr std::size_t elimination_max = 4000;
// Up to so many it stands behind block Lanczos when that failed: 200 MB.
constexpr std::size_t elimination_permise = 40000;
constexpr std::uint64_t graines = 4;

// Columns more than rows that are kept. More members than a few are hardly ever needed, and neither
// method needs more.
constexpr std::size_t surplus = 20;

std::vector<Ensemble> eliminer(const MatriceCreuse& creuse,
                               const std::function<void()>& signe_de_vie) {
  Matrice matrice(creuse.lignes, creuse.colonnes.size());
  for (std::size_t j = 0; j < creuse.colonnes.size(); ++j) {
    for (const std::uint32_t i : creuse.colonnes[j]) matrice.inverser(i, j);
  }
  return noyau(matrice, membres_au_plus, signe_de_vie);
}

std::vector<Ensemble> resoudre(const MatriceCreuse& matrice,
                               const std::function<void()>& signe_de_vie) {
  const std::size_t n = matrice.colonnes.size();
  if (n <= elimination_max) return eliminer(matrice, signe_de_vie);
  for (std::uint64_t graine = 1; graine <= graines; ++graine) {
    auto membres = noyau_lanczos(matrice, graine, signe_de_vie);
    if (!membres.empty()) return membres;
  }
  if (n <= elimination_permise) return eliminer(matrice, signe_de_vie);
  return {};
}

// The matrix as it came, in a third of the room, for the proof.
struct ColonnesSerrees {
  explicit ColonnesSerrees(const MatriceCreuse& matrice) : lignes(matrice.lignes) {
    places.reserve(matrice.colonnes.size());
    poids.reserve(matrice.colonnes.size());
    for (const Ensemble& colonne : matrice.colonnes) {
      places.push_back(listes.ajouter(colonne));
      poids.push_back(static_cast<std::uint32_t>(colonne.size()));
    }
  }

  bool somme_nulle(const Ensemble& colonnes) const {
    std::vector<bool> impaire(lignes);
    for (const std::uint32_t j : colonnes) {
      listes.pour_chaque(places[j], poids[j], [&](std::uint32_t i) { impaire[i].flip(); });
    }
    return std::find(impaire.begin(), impaire.end(), true) == impaire.end();
  }

  std::size_t lignes;
  ListesSerrees listes;
  std::vector<std::size_t> places;
  std::vector<std::uint32_t> poids;
};

}  // namespace

std::vector<Ensemble> noyau(MatriceCreuse matrice, const std::function<void()>& signe_de_vie) {
  if (matrice.lignes < filtrage_min) return eliminer(matrice, signe_de_vie);
  const ColonnesSerrees preuve(matrice);
  const std::size_t nombre = matrice.colonnes.size();
  const MatriceReduite reduite = filtrer(std::move(matrice), surplus, signe_de_vie);
  std::vector<Ensemble> membres;
  for (const auto& membre : resoudre(reduite.matrice, signe_de_vie)) {
    if (signe_de_vie) signe_de_vie();
    Ensemble colonnes = somme(reduite.origines, membre, nombre);
    if (!colonnes.empty() && preuve.somme_nulle(colonnes)) {
      membres.push_back(std::move(colonnes));
    }
  }
  return membres;
}

}  // namespace premiers::quadratique
