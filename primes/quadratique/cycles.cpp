// SPDX-License-Identifier: MIT
// Neighbours as one list, trees breadth first, then a cycle for each edge left (cycles.h).
#include "primes/quadratique/cycles.h"

#include <cstddef>
#include <utility>

#include "primes/quadratique/graphe.h"

namespace premiers::quadratique {

namespace {

constexpr std::uint32_t aucune = ~std::uint32_t{0};

// So many edges or vertices between two signs of life.
constexpr std::size_t cadence = 1U << 15;

// Called once for each edge or vertex.
struct Cadence {
  const std::function<void()>& signe_de_vie;
  std::size_t fois = 0;
  void pas() {
    if (++fois % cadence == 0 && signe_de_vie) signe_de_vie();
  }
};

using Bouts = std::pair<std::uint32_t, std::uint32_t>;

// The edges at each vertex, one vertex behind the other.
struct Voisinage {
  std::vector<std::uint32_t> debut;  // of each vertex, and the end of the last
  std::vector<std::uint32_t> aretes;
};

Voisinage voisinage(const std::vector<Bouts>& bouts, std::size_t sommets, Cadence& vie) {
  Voisinage v{std::vector<std::uint32_t>(sommets + 1),
              std::vector<std::uint32_t>(2 * bouts.size())};
  for (const auto& [i, j] : bouts) {
    ++v.debut[i];
    ++v.debut[j];
  }
  std::uint32_t total = 0;
  for (std::uint32_t& d : v.debut) d = total += d;  // the end of each, which filling moves down
  for (std::uint32_t a = 0; a < bouts.size(); ++a) {
    vie.pas();
    v.aretes[--v.debut[bouts[a].first]] = a;
    v.aretes[--v.debut[bouts[a].second]] = a;
  }
  return v;
}

// The spanning trees: the way up from every vertex.
struct Arbres {
  std::vector<std::uint32_t> montee;  // the edge towards the root; aucune at a root
  std::vector<std::uint32_t> niveau;  // aucune: not reached yet
};

std::uint32_t autre_bout(const Bouts& bouts, std::uint32_t sommet) {
  return bouts.first == sommet ? bouts.second : bouts.first;
}

// Grows the tree of the component of `origine`.
void parcourir(const std::vector<Bouts>& bouts, const Voisinage& voisins, std::uint32_t origine,
               Arbres& arbres, Cadence& vie) {
  std::vector<std::uint32_t> file{origine};
  arbres.niveau[origine] = 0;
  for (std::size_t tete = 0; tete < file.size(); ++tete) {
    vie.pas();
    const std::uint32_t ici = file[tete];
    for (std::uint32_t k = voisins.debut[ici]; k < voisins.debut[ici + 1]; ++k) {
      const std::uint32_t arete = voisins.aretes[k];
      const std::uint32_t la = autre_bout(bouts[arete], ici);
      if (arbres.niveau[la] != aucune) continue;
      arbres.niveau[la] = arbres.niveau[ici] + 1;
      arbres.montee[la] = arete;
      file.push_back(la);
    }
  }
}

// The cycle that an edge outside of the trees closes.
std::vector<std::uint32_t> cycle_de(const std::vector<Bouts>& bouts, const Arbres& arbres,
                                    std::uint32_t arete) {
  std::vector<std::uint32_t> cycle{arete};
  auto [i, j] = bouts[arete];
  while (i != j) {
    std::uint32_t& profond = arbres.niveau[i] < arbres.niveau[j] ? j : i;
    cycle.push_back(arbres.montee[profond]);
    profond = autre_bout(bouts[cycle.back()], profond);
  }
  return cycle;
}

}  // namespace

std::vector<std::vector<std::uint32_t>> cycles_independants(
    const std::vector<GrandsPremiers>& aretes, const std::function<void()>& signe_de_vie) {
  Cadence vie{signe_de_vie};
  Graphe graphe;  // for its numbers only
  std::vector<Bouts> bouts;
  bouts.reserve(aretes.size());
  for (const GrandsPremiers& a : aretes) {
    vie.pas();
    const std::uint32_t i = graphe.numero(a.petit);
    bouts.emplace_back(i, graphe.numero(a.grand));
  }
  const std::size_t sommets = graphe.premiers.size();
  const Voisinage voisins = voisinage(bouts, sommets, vie);
  Arbres arbres{std::vector<std::uint32_t>(sommets, aucune),
                std::vector<std::uint32_t>(sommets, aucune)};
  for (std::uint32_t origine = 0; origine < sommets; ++origine) {
    if (arbres.niveau[origine] == aucune) parcourir(bouts, voisins, origine, arbres, vie);
  }
  std::vector<std::vector<std::uint32_t>> cycles;
  for (std::uint32_t a = 0; a < bouts.size(); ++a) {
    vie.pas();
    if (arbres.montee[bouts[a].first] == a || arbres.montee[bouts[a].second] == a) continue;
    cycles.push_back(cycle_de(bouts, arbres, a));
  }
  return cycles;
}

}  // namespace premiers::quadratique
