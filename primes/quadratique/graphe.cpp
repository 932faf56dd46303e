// SPDX-License-Identifier: MIT
// An open table from primes to vertices, and the union of sets with halved paths.
#include "primes/quadratique/graphe.h"

namespace premiers::quadratique {

namespace {

// Where the table has, or would have, the vertex p. Its size is a power of two.
std::uint32_t& case_de(Graphe& graphe, std::uint32_t p) {
  const std::size_t masque = graphe.table.size() - 1;
  std::size_t i = (p * std::uint64_t{0x9e3779b97f4a7c15}) >> 32 & masque;
  while (graphe.table[i] != 0 && graphe.premiers[graphe.table[i] - 1] != p) i = (i + 1) & masque;
  return graphe.table[i];
}

void agrandir(Graphe& graphe) {
  graphe.table.assign(2 * graphe.table.size(), 0);
  for (std::uint32_t i = 0; i < graphe.premiers.size(); ++i) {
    case_de(graphe, graphe.premiers[i]) = i + 1;
  }
}

// The representative of a vertex's component. Every second vertex on the way is hung two steps
// higher, which keeps all ways short.
std::uint32_t representant(std::deque<std::uint32_t>& parent, std::uint32_t i) {
  while (parent[i] != i) {
    parent[i] = parent[parent[i]];
    i = parent[i];
  }
  return i;
}

}  // namespace

Graphe::Graphe() : table(1024) { numero(1); }

std::uint32_t Graphe::numero(std::uint32_t p) {
  std::uint32_t& ici = case_de(*this, p);
  if (ici != 0) return ici - 1;
  const auto nouveau = static_cast<std::uint32_t>(premiers.size());
  ici = nouveau + 1;
  premiers.push_back(p);
  parent.push_back(nouveau);
  ++composantes;
  if (2 * premiers.size() > table.size()) agrandir(*this);
  return nouveau;
}

void Graphe::ajouter(std::uint32_t p, std::uint32_t q) {
  const std::uint32_t i = representant(parent, numero(p));
  const std::uint32_t j = representant(parent, numero(q));
  ++aretes;
  if (i == j) return;
  // The older vertex stays, so that 1, in by far the largest component, represents its own.
  parent[i < j ? j : i] = i < j ? i : j;
  --composantes;
}

}  // namespace premiers::quadratique
