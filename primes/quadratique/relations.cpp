// SPDX-License-Identifier: MIT
#include "primes/quadratique/relations.h"

#include <algorithm>
#include <bit>
#include <tuple>

#include "primes/quadratique/vecteurs.h"

namespace premiers::quadratique {

namespace {

// Where the table has, or would have, an entry for a large prime. Its size is a power of two.
std::uint32_t& case_de(Recolte& recolte, std::uint32_t grand) {
  const std::size_t masque = recolte.table.size() - 1;
  std::size_t i = (grand * std::uint64_t{0x9e3779b97f4a7c15}) >> 32 & masque;
  while (recolte.table[i] != 0 && recolte.relations[recolte.table[i] - 1].grand != grand) {
    i = (i + 1) & masque;
  }
  return recolte.table[i];
}

// Makes a column of the last relation, if it has no large prime or meets one with the same.
void ranger(Recolte& recolte) {
  const auto dernier = static_cast<std::uint32_t>(recolte.relations.size() - 1);
  const std::uint32_t grand = recolte.relations.back().grand;
  if (grand == 1) {
    recolte.colonnes.emplace_back(dernier, dernier);
    return;
  }
  std::uint32_t& ici = case_de(recolte, grand);
  if (ici != 0) {
    recolte.colonnes.emplace_back(ici - 1, dernier);
    return;
  }
  ici = dernier + 1;
  if (2 * ++recolte.partielles > recolte.table.size()) {
    std::vector<std::uint32_t> ancienne(2 * recolte.table.size());
    ancienne.swap(recolte.table);
    for (const std::uint32_t numero : ancienne) {
      if (numero != 0) case_de(recolte, recolte.relations[numero - 1].grand) = numero;
    }
  }
}

}  // namespace

Recolte::Recolte(const Base& base_, const Reglages& reglages)
    : base(base_), borne_grand(base_.premier[base_.taille - 1] * reglages.grand), table(1024) {}

void Recolte::examiner(Division& division, const Polynomes& polynomes, Candidat candidat) {
  if (!division.diviser(polynomes, candidat) || division.valeur.reste >= borne_grand) return;
  const Valeur& valeur = division.valeur;
  const std::size_t debut = facteurs.size();
  facteurs.insert(facteurs.end(), valeur.facteurs.begin(), valeur.facteurs.end());
  relations.push_back({valeur.u, debut, facteurs.size(), static_cast<std::uint32_t>(valeur.reste)});
  ranger(*this);
}

void retirer_doubles(Recolte& recolte) {
  // The same relation twice makes a pair that says u^2 = u^2.
  std::erase_if(recolte.colonnes, [&recolte](const Colonne& c) {
    return c.first != c.second &&
           recolte.relations[c.first].u.mot == recolte.relations[c.second].u.mot;
  });
  const auto cle = [&recolte](const Colonne& c) {
    return std::tie(recolte.relations[c.second].u.mot, recolte.relations[c.first].u.mot);
  };
  std::sort(recolte.colonnes.begin(), recolte.colonnes.end(),
            [&cle](const Colonne& c, const Colonne& d) { return cle(c) < cle(d); });
  const auto fin =
      std::unique(recolte.colonnes.begin(), recolte.colonnes.end(),
                  [&cle](const Colonne& c, const Colonne& d) { return cle(c) == cle(d); });
  recolte.colonnes.erase(fin, recolte.colonnes.end());
}

}  // namespace premiers::quadratique
