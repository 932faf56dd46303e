// SPDX-License-Identifier: MIT
// The texts, then the factors as they are printed: one by one, with their exponents.
#include "features/decomp.h"

#include <string_view>

#include "console/controle.h"
#include "console/suivre.h"
#include "primes/dette/decisions.h"
#include "primes/facteurs/facteurs.h"

namespace premiers {

namespace {

namespace texte {
constexpr std::string_view titre =
    "\n"
    "______________________________________________________________________________________________"
    "_____________"
    " \n \n \t *****  DECOMPOSITION D'UN ENTIER N EN FACTEURS PREMIERS.  ***** ";
constexpr std::string_view quel_N = " \n \n \n \t N ? : ";
constexpr std::string_view resultat = " \n \n \t ";
constexpr std::string_view est_premier = "  est un nombre premier. ";
constexpr std::string_view egale = " =  ";
constexpr std::string_view fois = " X ";
constexpr std::string_view autre_N = "\n \n \t Nouvelle valeur de N ? Oui [1] , Non [0] : ";
// The work that lasts, in the line that tells of it.
constexpr std::string_view travail = "decomposition";
}  // namespace texte

/// N is prime, or the product of its prime powers; the empty product for 1.
void imprimer(Sortie& sortie, const NTL::ZZ& N, const facteurs::Facteurs& trouves) {
  sortie << texte::resultat << N;
  if (trouves.size() == 1 && trouves.front().exposant == 1) {
    sortie << texte::est_premier;
    return;
  }
  sortie << texte::egale;
  std::string_view separateur;
  for (const auto& [premier, exposant] : trouves) {
    sortie << separateur << "(" << premier << ")";
    if (exposant != 1) sortie << "^" << exposant;
    separateur = texte::fois;
  }
}

}  // namespace

void decomp(Session& s) {
  s.sortie << texte::titre;
  do {
    const NTL::ZZ N = demander_grand_nombre(s, texte::quel_N);
    const facteurs::Facteurs trouves = facteurs::decomposer(N, suivre(s, texte::travail));
    dette::noter_decomposition(s.etat.dette, trouves);
    imprimer(s.sortie, N, trouves);
  } while (demander_choix(s, Cas::oui_non, texte::autre_N) == 1);
}

}  // namespace premiers
