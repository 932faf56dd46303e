// SPDX-License-Identifier: MIT
// Which stretch a piece is in, and what it leaves to be noted; why by stretches, the header tells.
#include "primes/dette/notes_par_etendue.h"

#include <algorithm>
#include <utility>

#include "primes/concatenations/decoupe.h"
#include "primes/dette/decisions.h"

namespace premiers::dette {

namespace {

std::uint64_t puissance_de_dix(std::size_t exposant) {
  std::uint64_t r = 1;
  for (std::size_t i = 0; i < exposant; ++i) r *= 10;
  return r;
}

}  // namespace

const NotesParEtendue::Tranche& NotesParEtendue::trouver(const Dette& dette, Places places,
                                                         std::string_view morceau,
                                                         std::uint32_t mobile,
                                                         std::uint64_t combien) {
  const std::string_view tete = morceau.substr(0, morceau.size() - chiffres_mobiles);
  const auto connue = tranches_.find(places);
  if (connue != tranches_.end() && connue->second.contient(tete, mobile)) return connue->second;
  const std::uint64_t jusqu_au_bout = puissance_de_dix(chiffres_mobiles) - mobile;
  const std::size_t nombre = std::min(combien, jusqu_au_bout);
  // A factor p is worth p - 1.
  Tranche nouvelle{
      std::string(tete), mobile,
      facteurs::Etendue(concatenations::valeur_des_chiffres(morceau), nombre, dette.borne_due + 1)};
  return tranches_.insert_or_assign(places, std::move(nouvelle)).first->second;
}

void NotesParEtendue::noter(Dette& dette, std::string_view chiffres, std::size_t fin,
                            std::size_t longueur) {
  if (dette.borne_due >= borne_des_diviseurs) return;
  const std::string_view morceau = chiffres.substr(fin - longueur, longueur);
  const std::size_t derriere = chiffres.size() - fin;
  // So many pieces of these places are to come, this one included.
  const std::uint64_t combien =
      derriere < chiffres_mobiles ? (largeur_ - 1) / puissance_de_dix(derriere) + 1 : 1;
  if (combien > 1) {
    std::uint32_t mobile = 0;
    for (const char c : morceau.substr(longueur - chiffres_mobiles)) {
      mobile = 10 * mobile + static_cast<std::uint32_t>(c - '0');
    }
    const Tranche& t = trouver(dette, {longueur, derriere}, morceau, mobile, combien);
    if (t.facteurs[mobile - t.debut] <= dette.borne_due + 1) return;
  }
  noter_prem(dette, concatenations::valeur_des_chiffres(morceau));
}

}  // namespace premiers::dette
