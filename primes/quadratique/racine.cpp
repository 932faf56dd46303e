// SPDX-License-Identifier: MIT
#include "primes/quadratique/racine.h"

#include <vector>

#include "primes/quadratique/algebre.h"

namespace premiers::quadratique {

namespace {

// Calls f with each relation of a column: one or two.
template <class F>
void pour_chaque_relation(const Recolte& recolte, const Colonne& colonne, F f) {
  f(recolte.relations[colonne.first]);
  if (colonne.second != colonne.first) f(recolte.relations[colonne.second]);
}

// Row: entry of the base; column: column of the harvest; bit: is the exponent odd?
Matrice matrice_des_exposants(const Recolte& recolte) {
  Matrice matrice(recolte.base.taille, recolte.colonnes.size());
  for (std::size_t j = 0; j < recolte.colonnes.size(); ++j) {
    pour_chaque_relation(recolte, recolte.colonnes[j], [&](const Relation& relation) {
      for (std::size_t i = relation.debut; i < relation.fin; ++i) {
        matrice.inverser(recolte.facteurs[i], j);
      }
    });
  }
  return matrice;
}

// gcd(U - V, n) for a set of columns whose product is a square.
NTL::ZZ pgcd_de(const NTL::ZZ& n, const Recolte& recolte, const std::vector<std::size_t>& membre) {
  NTL::ZZ u(1);
  NTL::ZZ v(1);
  std::vector<long> exposants(recolte.base.taille);
  for (const std::size_t j : membre) {
    const Colonne& colonne = recolte.colonnes[j];
    pour_chaque_relation(recolte, colonne, [&](const Relation& relation) {
      u = NTL::MulMod(u, grand_entier(relation.u) % n, n);
      for (std::size_t i = relation.debut; i < relation.fin; ++i) {
        ++exposants[recolte.facteurs[i]];
      }
    });
    // The large prime is in both relations of a pair: its square is in the product.
    if (colonne.first != colonne.second) {
      v = NTL::MulMod(v, NTL::to_ZZ(recolte.relations[colonne.first].grand) % n, n);
    }
  }
  // p^(e/2) of all primes; products are gathered up to a word, before one goes into v.
  constexpr std::uint64_t plein = std::uint64_t{1} << 40;
  std::uint64_t mot = 1;
  for (std::size_t i = 1; i < exposants.size(); ++i) {
    for (long e = exposants[i]; e > 0; e -= 2) {
      mot *= recolte.base.premier[i];
      if (mot < plein) continue;
      v = NTL::MulMod(v, NTL::to_ZZ(static_cast<unsigned long>(mot)) % n, n);
      mot = 1;
    }
  }
  v = NTL::MulMod(v, NTL::to_ZZ(static_cast<unsigned long>(mot)) % n, n);
  return NTL::GCD(u - v, n);
}

}  // namespace

std::optional<NTL::ZZ> facteur_des_relations(const NTL::ZZ& n, const Recolte& recolte,
                                             const std::function<void()>& signe_de_vie) {
  constexpr std::size_t essais = 64;
  Matrice matrice = matrice_des_exposants(recolte);
  for (const auto& membre : noyau(matrice, essais, signe_de_vie)) {
    NTL::ZZ facteur = pgcd_de(n, recolte, membre);
    if (facteur != 1 && facteur != n) return facteur;
  }
  return std::nullopt;
}

}  // namespace premiers::quadratique
