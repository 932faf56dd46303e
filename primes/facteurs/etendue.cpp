// SPDX-License-Identifier: MIT
// The primes up to 10^7, made once, and the crossing off (etendue.h).
#include "primes/facteurs/etendue.h"

#include <algorithm>
#include <array>

#include "primes/crible/premiers_jusqu_a.h"
#include "primes/facteurs/restes.h"

namespace premiers::facteurs {

namespace {

/// The primes up to `plus_grand_diviseur`, made when first needed; behind them as many as fill a
/// group, each a 1, of which every integer is a multiple.
const std::vector<std::uint32_t>& diviseurs() {
  static const std::vector<std::uint32_t> liste = [] {
    static_assert(plus_grand_diviseur < borne_restes);
    auto l = crible::premiers_jusqu_a(plus_grand_diviseur);
    l.resize(l.size() + largeur_restes, 1);
    return l;
  }();
  return liste;
}

// Effect: primes whose first multiples are found together. It begins with few, since most single
// integers need no more, and doubles up to what stays in the first-level cache.
constexpr std::size_t lot_initial = largeur_restes;
constexpr std::size_t plus_grand_lot = 4096;

}  // namespace

/// Gives how many integers have got their first factor.
std::size_t Etendue::rayer(std::uint32_t p, std::uint32_t manque) {
  std::size_t nommes = 0;
  for (std::size_t i = manque; i < facteurs_.size(); i += p) {
    if (facteurs_[i] != 0) continue;
    facteurs_[i] = p;
    ++nommes;
  }
  return nommes;
}

Etendue::Etendue(const NTL::ZZ& debut, std::size_t nombre, std::uint64_t au_dela_de)
    : facteurs_(nombre) {
  static const Restes restes = choisir(versions_de_restes()).boucle;
  const auto chiffres = chiffres_de_28_bits(debut);
  const auto& premiers = diviseurs();
  const auto fin = premiers.end() - static_cast<std::ptrdiff_t>(largeur_restes);
  auto p = std::upper_bound(premiers.begin(), fin, au_dela_de);
  std::array<std::uint32_t, plus_grand_lot> manques;
  std::size_t reste = nombre;
  for (std::size_t lot = lot_initial; p < fin && reste > 0;
       lot = std::min(2 * lot, plus_grand_lot)) {
    const auto ici = std::min(lot, static_cast<std::size_t>(fin - p));
    const std::size_t groupes = (ici + largeur_restes - 1) / largeur_restes;
    restes(chiffres, &*p, manques.data(), groupes * largeur_restes);
    for (std::size_t i = 0; i < ici; ++i, ++p) {
      if (manques[i] < nombre) reste -= rayer(*p, manques[i]);
    }
  }
}

}  // namespace premiers::facteurs
