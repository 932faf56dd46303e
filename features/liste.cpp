// SPDX-License-Identifier: MIT
// The texts, then the list and the count.
#include "features/liste.h"

#include <string_view>

#include "console/controle.h"
#include "console/entrees.h"
#include "console/suivre.h"
#include "primes/dette/decisions.h"
#include "primes/rangs/lots_de_premiers.h"

namespace premiers {

namespace {

namespace texte {
constexpr std::string_view debut = " \n ";
constexpr std::string_view inferieure = "\n \t Limite inferieure ? : ";
constexpr std::string_view entre_les_deux = " \n  ";
constexpr std::string_view superieure = "\n \t Limite superieure ? : ";
constexpr std::string_view effectif_seulement =
    "\n \n \t Afficher,  [1] L'effectif seulement / [0] Toute la liste : ? ";
constexpr std::string_view entete = " \n \n \t  Entre ces limites, les nombres premiers sont : ";
constexpr std::string_view il_y_a = " \n \n \t  Il y a  ";
constexpr std::string_view nombres = "  nombres premiers entre ces limites. \n \n \n ";
// The work that lasts, in the line that tells of it.
constexpr std::string_view une_liste = "liste";
constexpr std::string_view un_compte = "compte";
}  // namespace texte

/// Prints the primes as they are found; gives how many there are.
std::int64_t lister(Session& s, rangs::Intervalle bornes) {
  const Suivi suivi = suivre(s, texte::une_liste);
  rangs::LotsDePremiers lots(bornes, crible::CribleGrand::memoire_max);
  std::int64_t effectif = 0;
  for (auto lot = lots.suivant(suivi); !lot.empty(); lot = lots.suivant(suivi)) {
    EntreesSansRang entrees(s.sortie);
    for (const std::uint64_t premier : lot) entrees.ecrire(premier);
    effectif += static_cast<std::int64_t>(lot.size());
  }
  return effectif;
}

/// Asks the bounds until the first is not above the second.
rangs::Intervalle demander_bornes(Session& s) {
  for (;;) {
    const std::int64_t debut = demander_nombre(s, Cas::borne, texte::inferieure);
    s.sortie << texte::entre_les_deux;
    const std::int64_t fin = demander_nombre(s, Cas::borne, texte::superieure);
    if (debut <= fin) return {debut, fin};
  }
}

}  // namespace

void liste(Session& s) {
  s.sortie << texte::debut;
  const rangs::Intervalle bornes = demander_bornes(s);
  const bool effectif_seulement = demander_choix(s, Cas::oui_non, texte::effectif_seulement) == 1;

  std::int64_t effectif = 0;
  if (effectif_seulement) {
    effectif = rangs::compter_premiers(bornes, suivre(s, texte::un_compte));
  } else {
    s.sortie << texte::entete;
    effectif = lister(s, bornes);
  }
  dette::noter_intervalle(s.etat.dette, bornes);
  s.sortie << texte::il_y_a << effectif << texte::nombres;
}

}  // namespace premiers
