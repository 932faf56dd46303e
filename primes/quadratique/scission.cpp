// SPDX-License-Identifier: MIT
// The cases in the order of their cost: one prime, a prime too long, a square, two primes.
#include "primes/quadratique/scission.h"

#include <algorithm>

#include "primes/arithmetique/racines.h"
#include "primes/primalite/primalite.h"

namespace premiers::quadratique {

std::optional<GrandsPremiers> grands_premiers(std::uint64_t reste, const BornesDesRestes& bornes,
                                              Scission scission) {
  if (reste < bornes.premier && reste < bornes.carre) {
    return GrandsPremiers{1, static_cast<std::uint32_t>(reste)};
  }
  if (reste < bornes.carre || reste >= bornes.produit || primalite::est_premier(reste))
    return std::nullopt;
  // No splitting finds the root of a square.
  const std::uint64_t racine_entiere = racine_carree(reste);
  const std::uint64_t p =
      racine_entiere * racine_entiere == reste ? racine_entiere : scission(reste);
  if (p == 0) return std::nullopt;
  const auto [petit, grand] = std::minmax({p, reste / p});
  // Composite factors fall here too: they are above P^2.
  if (grand >= std::min(bornes.premier, bornes.carre)) return std::nullopt;
  return GrandsPremiers{static_cast<std::uint32_t>(petit), static_cast<std::uint32_t>(grand)};
}

}  // namespace premiers::quadratique
