// SPDX-License-Identifier: MIT
// The 64 loops of the medium primes.
#include "primes/crible/crible_moyen.h"

#include "primes/arithmetique/roue.h"
#include "primes/crible/multiple_initial.h"

namespace premiers::crible {

namespace {

using Cribleur = CribleMoyen::Cribleur;
using Listes = CribleMoyen::Listes;

/// Crosses off with the primes of list (R, C) until each has left the segment, and hands it to the
/// list that it has arrived at.
template <std::size_t R, std::size_t C>
void cribler_liste(std::vector<Cribleur>& liste, Listes& avancees, std::uint8_t* octets,
                   std::size_t taille) {
  for (const Cribleur c : liste) {
    const std::size_t k = c.k;
    std::size_t place = c.place;
    // One multiple, the I-th from here; false if it is beyond the segment.
    const auto avancer = [&]<std::size_t I>() {
      constexpr std::size_t cofacteur = (C + I) % 8;
      if (place >= taille) {
        avancees[8 * R + cofacteur].push_back({c.k, static_cast<std::uint32_t>(place - taille)});
        return false;
      }
      octets[place] &= Croix<R, cofacteur>::masque;
      place += k * ecarts[cofacteur] + Croix<R, cofacteur>::retenue;
      return true;
    };
    const auto tour = [&]<std::size_t... I>(std::index_sequence<I...>) {
      return (avancer.template operator()<I>() && ...);
    };
    while (tour(std::make_index_sequence<8>{})) {
    }
  }
  liste.clear();
}

}  // namespace

void CribleMoyen::ajouter(std::uint32_t p, std::uint64_t octet, std::uint64_t octet_fin) {
  const MultipleInitial m = multiple_initial(p, octet);
  if (m.place >= octet_fin - octet) return;
  const std::size_t r = indice_suivant[p % 30];
  listes[8 * r + m.cofacteur].push_back({p / 30, static_cast<std::uint32_t>(m.place)});
}

void CribleMoyen::cribler(std::span<std::uint8_t> segment) {
  [&]<std::size_t... L>(std::index_sequence<L...>) {
    (cribler_liste<L / 8, L % 8>(listes[L], avancees, segment.data(), segment.size()), ...);
  }
  (std::make_index_sequence<64>{});
  std::swap(listes, avancees);
}

}  // namespace premiers::crible
