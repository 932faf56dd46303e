// SPDX-License-Identifier: MIT
#include "primes/quadratique/division.h"

#include <algorithm>
#include <bit>

#include "primes/quadratique/vecteurs.h"

namespace premiers::quadratique {

namespace {

// Divides v by 2 as often as possible and notes it.
void retirer_2(Entier256& v, std::vector<std::uint32_t>& facteurs) {
  while ((v.mot[0] & 1) == 0) {
    const auto bits = static_cast<unsigned>(std::min(std::countr_zero(v.mot[0]), 63));
    v = decalage(v, bits);
    facteurs.insert(facteurs.end(), bits, 1);
  }
}

}  // namespace

Division::Division(const Base& base_) : base(base_), inverses(base_.taille) {
  for (std::size_t i = 2; i < base.taille; ++i) inverses[i] = inverse_2_64(base.premier[i]);
}

bool Division::diviser(const Polynomes& polynomes, std::uint32_t position) {
  const std::int64_t x = static_cast<std::int64_t>(position) - polynomes.demi;
  const Entier256 ax_b = somme(produit(polynomes.a, x), polynomes.b);
  Entier256 v = somme(produit(ax_b, x), polynomes.c);
  std::vector<std::uint32_t>& facteurs = valeur.facteurs;
  facteurs.clear();
  if (negatif(v)) {
    v = oppose(v);
    facteurs.push_back(0);
  }
  retirer_2(v, facteurs);
  trouves.assign(polynomes.facteurs.begin(), polynomes.facteurs.end());
  for (std::uint32_t i = 2; i < base.ordinaires; ++i) trouves.push_back(i);
  vecteurs().reperer(position, base.premier.data(), base.reciproque.data(),
                     polynomes.racine_1.data(), polynomes.racine_2.data(), base.premier.size(),
                     trouves);
  std::size_t mots = longueur(v);
  for (const std::uint32_t i : trouves) {
    while (divise(v, mots, base.premier[i], inverses[i])) {
      facteurs.push_back(i);
      if (v.mot[mots - 1] == 0) --mots;  // v stays positive: one word remains
    }
  }
  if (mots > 1) return false;
  valeur.reste = v.mot[0];
  // (2ax + b)^2 = 4 a Q
  facteurs.insert(facteurs.end(), polynomes.facteurs.begin(), polynomes.facteurs.end());
  facteurs.insert(facteurs.end(), 2, 1);
  const Entier256 u = somme(ax_b, produit(polynomes.a, x));
  valeur.u = negatif(u) ? oppose(u) : u;
  return true;
}

}  // namespace premiers::quadratique
