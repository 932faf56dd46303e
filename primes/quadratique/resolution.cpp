// SPDX-License-Identifier: MIT
// The matrix of the cycles, the check of every relation, then one root for each member of the
// kernel.
#include "primes/quadratique/resolution.h"

#include <vector>

#include "primes/quadratique/cycles.h"
#include "primes/quadratique/noyau.h"
#include "primes/quadratique/racine.h"

namespace premiers::quadratique {

namespace {

// So many relations, or cycles, between two signs of life: some milliseconds.
constexpr std::size_t cadence = 2048;

std::vector<GrandsPremiers> aretes_de(const Recolte& recolte) {
  std::vector<GrandsPremiers> aretes;
  aretes.reserve(recolte.relations.size());
  for (const Relation& relation : recolte.relations) aretes.push_back(relation.grands);
  return aretes;
}

}  // namespace

MatriceCreuse matrice_des_exposants(const Recolte& recolte, const std::vector<Ensemble>& cycles,
                                    const std::function<void()>& signe_de_vie) {
  MatriceCreuse matrice{recolte.base.taille, {}};
  matrice.colonnes.reserve(cycles.size());
  for (const Ensemble& cycle : cycles) {
    Ensemble colonne;
    for (const std::uint32_t indice : cycle) {
      const Relation& relation = recolte.relations[indice];
      recolte.facteurs.pour_chaque(relation.place, relation.nombre,
                                   [&](std::uint32_t i) { colonne.push_back(i); });
    }
    garder_impairs(colonne);
    colonne.shrink_to_fit();
    matrice.colonnes.push_back(std::move(colonne));
    if (signe_de_vie && matrice.colonnes.size() % cadence == 0) signe_de_vie();
  }
  return matrice;
}

std::size_t retirer_fausses(const NTL::ZZ& n, Recolte& recolte,
                            const std::function<void()>& signe_de_vie) {
  std::size_t gardees = 0;
  for (std::size_t i = 0; i < recolte.relations.size(); ++i) {
    if (signe_de_vie && i % cadence == 0) signe_de_vie();
    const Relation relation = recolte.relations[i];
    if (tient(n, recolte, relation)) recolte.relations[gardees++] = relation;
  }
  const std::size_t fausses = recolte.relations.size() - gardees;
  recolte.relations.resize(gardees);
  if (fausses > 0) recolte.recompter();
  return fausses;
}

std::optional<NTL::ZZ> facteur_des_relations(const NTL::ZZ& n, const Recolte& recolte,
                                             const std::function<void()>& signe_de_vie) {
  const std::vector<Ensemble> cycles = cycles_independants(aretes_de(recolte), signe_de_vie);
  for (const Ensemble& membre :
       noyau(matrice_des_exposants(recolte, cycles, signe_de_vie), signe_de_vie)) {
    if (signe_de_vie) signe_de_vie();
    NTL::ZZ facteur = pgcd_des_racines(n, recolte, somme(cycles, membre, recolte.relations.size()));
    if (facteur > 1 && facteur != n) return facteur;
  }
  return std::nullopt;
}

}  // namespace premiers::quadratique
