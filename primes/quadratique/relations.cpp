// SPDX-License-Identifier: MIT
// An open table that knows a relation again by its u; the counts by kind.
#include "primes/quadratique/relations.h"

#include <algorithm>
#include <bit>

namespace premiers::quadratique {

namespace {

constexpr std::size_t taille_initiale = 1024;

// Where the table has, or would have, the relation of u. Its size is a power of two.
std::uint32_t& case_de(Recolte& recolte, const Entier256& u) {
  const std::size_t masque = recolte.table.size() - 1;
  std::size_t i = ((u.mot[0] ^ u.mot[1]) * 0x9e3779b97f4a7c15) >> 32 & masque;
  while (recolte.table[i] != 0 && recolte.relations[recolte.table[i] - 1].u.mot != u.mot) {
    i = (i + 1) & masque;
  }
  return recolte.table[i];
}

void agrandir(Recolte& recolte) {
  recolte.table.assign(2 * recolte.table.size(), 0);
  for (std::uint32_t i = 0; i < recolte.relations.size(); ++i) {
    case_de(recolte, recolte.relations[i].u) = i + 1;
  }
}

// Counts a relation as what its large primes make it.
void compter(Recolte& recolte, GrandsPremiers grands) {
  if (grands.grand == 1) ++recolte.pleines;
  if (grands.petit != 1) ++recolte.doubles;
  recolte.graphe.ajouter(grands.petit, grands.grand);
}

}  // namespace

void Recolte::recompter() {
  graphe = Graphe();
  pleines = doubles = 0;
  table.assign(std::bit_ceil(std::max(taille_initiale, 2 * relations.size())), 0);
  for (std::uint32_t i = 0; i < relations.size(); ++i) {
    case_de(*this, relations[i].u) = i + 1;
    compter(*this, relations[i].grands);
  }
}

void Recolte::alleger() {
  graphe = Graphe();
  table = {};
}

Recolte::Recolte(const Base& base_) : base(base_), table(taille_initiale) {}

bool Recolte::ajouter(Valeur& valeur, GrandsPremiers grands) {
  std::uint32_t& ici = case_de(*this, valeur.u);
  if (ici != 0) return false;
  std::sort(valeur.facteurs.begin(), valeur.facteurs.end());
  const std::size_t place = facteurs.ajouter(valeur.facteurs);
  relations.push_back({valeur.u, static_cast<std::uint32_t>(place),
                       static_cast<std::uint32_t>(valeur.facteurs.size()), grands});
  ici = static_cast<std::uint32_t>(relations.size());
  if (2 * relations.size() > table.size()) agrandir(*this);
  compter(*this, grands);
  return true;
}

}  // namespace premiers::quadratique
