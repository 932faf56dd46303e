// SPDX-License-Identifier: MIT
#include "primes/quadratique/relations.h"

#include <algorithm>
#include <bit>
#include <tuple>

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

// Where the table has, or would have, an entry for a large prime. Its size is a power of two.
std::uint32_t& case_de(Recolte& recolte, std::uint32_t grand) {
  const std::size_t masque = recolte.table.size() - 1;
  std::size_t i = (grand * std::uint64_t{0x9e3779b97f4a7c15}) >> 32 & masque;
  while (recolte.table[i] != 0 && recolte.relations[recolte.table[i] - 1].grand != grand) {
    i = (i + 1) & masque;
  }
  return recolte.table[i];
}

// Makes a column of the last relation, if it has no large prime or meets one with the same.
void ranger(Recolte& recolte) {
  const auto dernier = static_cast<std::uint32_t>(recolte.relations.size() - 1);
  const std::uint32_t grand = recolte.relations.back().grand;
  if (grand == 1) {
    recolte.colonnes.emplace_back(dernier, dernier);
    return;
  }
  std::uint32_t& ici = case_de(recolte, grand);
  if (ici != 0) {
    recolte.colonnes.emplace_back(ici - 1, dernier);
    return;
  }
  ici = dernier + 1;
  if (2 * ++recolte.partielles > recolte.table.size()) {
    std::vector<std::uint32_t> ancienne(2 * recolte.table.size());
    ancienne.swap(recolte.table);
    for (const std::uint32_t numero : ancienne) {
      if (numero != 0) case_de(recolte, recolte.relations[numero - 1].grand) = numero;
    }
  }
}

}  // namespace

Recolte::Recolte(const Base& base_, const Reglages& reglages)
    : base(base_),
      borne_grand(base_.premier[base_.taille - 1] * reglages.grand),
      table(1024),
      inverses(base_.taille) {
  for (std::size_t i = 2; i < base.taille; ++i) inverses[i] = inverse_2_64(base.premier[i]);
}

void Recolte::examiner(const Polynomes& polynomes, std::uint32_t position) {
  const std::int64_t x = static_cast<std::int64_t>(position) - polynomes.demi;
  const Entier256 ax_b = somme(produit(polynomes.a, x), polynomes.b);
  Entier256 v = somme(produit(ax_b, x), polynomes.c);
  const std::size_t debut = facteurs.size();
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
  if (mots > 1 || v.mot[0] >= borne_grand) {
    facteurs.resize(debut);
    return;
  }
  // (2ax + b)^2 = 4 a Q
  facteurs.insert(facteurs.end(), polynomes.facteurs.begin(), polynomes.facteurs.end());
  facteurs.insert(facteurs.end(), 2, 1);
  const Entier256 u = somme(ax_b, produit(polynomes.a, x));
  relations.push_back(
      {negatif(u) ? oppose(u) : u, debut, facteurs.size(), static_cast<std::uint32_t>(v.mot[0])});
  ranger(*this);
}

void retirer_doubles(Recolte& recolte) {
  // The same relation twice makes a pair that says u^2 = u^2.
  std::erase_if(recolte.colonnes, [&recolte](const Colonne& c) {
    return c.first != c.second &&
           recolte.relations[c.first].u.mot == recolte.relations[c.second].u.mot;
  });
  const auto cle = [&recolte](const Colonne& c) {
    return std::tie(recolte.relations[c.second].u.mot, recolte.relations[c.first].u.mot);
  };
  std::sort(recolte.colonnes.begin(), recolte.colonnes.end(),
            [&cle](const Colonne& c, const Colonne& d) { return cle(c) < cle(d); });
  const auto fin =
      std::unique(recolte.colonnes.begin(), recolte.colonnes.end(),
                  [&cle](const Colonne& c, const Colonne& d) { return cle(c) == cle(d); });
  recolte.colonnes.erase(fin, recolte.colonnes.end());
}

}  // namespace premiers::quadratique
