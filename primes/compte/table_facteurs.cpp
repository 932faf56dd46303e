// SPDX-License-Identifier: MIT
// A sieve with all primes from 13 to y: the first to meet m leaves its mark, the others toggle the
// low bit; squares put 0. An m nobody has met is a prime above y: with z < 13 y, a cofactor of such
// a prime has no prime factor from 13 on.
#include "primes/compte/table_facteurs.h"

#include <algorithm>
#include <limits>

#include "primes/compte/roue2310.h"

namespace premiers::compte {

TableFacteurs::TableFacteurs(const std::vector<std::uint32_t>& premiers, std::uint64_t z) {
  constexpr std::uint16_t vierge = std::numeric_limits<std::uint16_t>::max();
  constexpr std::size_t rang_13 = 6;
  constexpr std::size_t groupe = 16;
  entrees.assign((Roue2310::nombre(z) + groupe - 1) / groupe * groupe, vierge);
  for (std::size_t rang = rang_13; rang < premiers.size(); ++rang) {
    const std::uint64_t p = premiers[rang];
    const auto marque = static_cast<std::uint16_t>(std::min<std::uint64_t>(p, vierge) - 1);
    const std::uint64_t fin = Roue2310::nombre(z / p);
    for (std::uint64_t j = 0; j < fin; ++j) {
      std::uint16_t& entree = entrees[Roue2310::nombre(p * Roue2310::valeur(j)) - 1];
      if (entree == vierge) {
        entree = marque;
      } else if (entree != 0) {
        entree ^= 1;
      }
    }
    if (p > z / p) continue;
    const std::uint64_t fin_carres = Roue2310::nombre(z / (p * p));
    for (std::uint64_t j = 0; j < fin_carres; ++j) {
      entrees[Roue2310::nombre(p * p * Roue2310::valeur(j)) - 1] = 0;
    }
  }
  std::replace(entrees.begin(), entrees.end(), vierge, std::uint16_t{0});
}

}  // namespace premiers::compte
