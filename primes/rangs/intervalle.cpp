// SPDX-License-Identifier: MIT
// The choice among the three ways to count, and each of them.
#include "primes/rangs/intervalle.h"

#include <algorithm>

#include "primes/compte/compte.h"
#include "primes/crible/crible.h"
#include "primes/rangs/couts.h"
#include "primes/rangs/lots_de_premiers.h"

namespace premiers::rangs {

namespace {

std::int64_t compter_un_par_un(Intervalle bornes, const Suivi& suivi, std::uint64_t memoire) {
  std::int64_t effectif = 0;
  LotsDePremiers lots(bornes, memoire);
  for (auto lot = lots.suivant(suivi); !lot.empty(); lot = lots.suivant(suivi)) {
    effectif += static_cast<std::int64_t>(lot.size());
  }
  return effectif;
}

}  // namespace

std::int64_t compter_premiers(Intervalle bornes, const Suivi& suivi, std::uint64_t memoire) {
  bornes.debut = std::max<std::int64_t>(bornes.debut, 1);
  if (bornes.fin < bornes.debut) return 0;
  const auto x = static_cast<double>(bornes.fin);
  const double largeur = static_cast<double>(bornes.fin - bornes.debut) + 1;
  if (vaut_un_par_un(largeur, x)) return compter_un_par_un(bornes, suivi, memoire);
  const auto debut = static_cast<std::uint64_t>(bornes.debut);
  const auto fin = static_cast<std::uint64_t>(bornes.fin);
  if (vaut_deux_comptes(largeur, x)) {
    const std::uint64_t avant = compte::nombre_premiers(debut - 1, etape(suivi, 0, 0.5));
    return static_cast<std::int64_t>(compte::nombre_premiers(fin, etape(suivi, 0.5, 1)) - avant);
  }
  return static_cast<std::int64_t>(crible::compter_par_crible(debut, fin, suivi, memoire));
}

}  // namespace premiers::rangs
