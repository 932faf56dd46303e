// SPDX-License-Identifier: MIT
// The step from one polynomial to the next; what they are good for, polynome.h tells.
#include "primes/quadratique/polynome.h"

#include <utility>

#include "primes/quadratique/vecteurs.h"

namespace premiers::quadratique {

Polynomes::Polynomes(const Base& base_, const Reglages& reglages)
    : base(base_),
      demi(reglages.demi),
      limite(base_.premier.size()),
      coefficients(base_, reglages),
      famille(base_, demi, coefficients.nombre),
      racine_1(base_.premier.size(), absente),
      racine_2(base_.premier.size(), absente),
      moins_kn_(entier256(-base_.kn)) {}

bool Polynomes::nouvelle_famille() {
  auto facteurs = coefficients.suivant(limite);
  if (facteurs.empty()) return false;
  famille.commencer(std::move(facteurs));
  famille.racines_initiales(racine_1, racine_2);
  b = famille.b_initial();
  rang = 0;
  return true;
}

bool Polynomes::suivant() {
  ++rang;
  if (famille.facteurs.empty() || rang >= famille.nombre_de_polynomes()) {
    if (!nouvelle_famille()) return false;
  } else {
    const auto [de_combien, vers_le_haut] = famille.mouvement(rang);
    const auto deplacer = vers_le_haut ? vecteurs().monter : vecteurs().descendre;
    for (Tableau<std::uint32_t>* racines : {&racine_1, &racine_2}) {
      deplacer(racines->data(), de_combien, base.premier.data(), limite);
    }
    b = somme(b, famille.changement_de_b(rang));
  }
  // 4 c = (b^2 - kn) / a: an exact division, done modulo 2^256.
  c = decalage(produit(somme(produit(b, b), moins_kn_), famille.inverse_a), 2);
  return true;
}

}  // namespace premiers::quadratique
