// SPDX-License-Identifier: MIT
// Exponents are added up and halved; U and V are multiplied modulo n as they come.
#include "primes/quadratique/racine.h"

#include <algorithm>

#include "primes/arithmetique/zz.h"

namespace premiers::quadratique {

namespace {

// A product modulo n. Small factors are gathered up to a word before it goes into the long number.
class Produit {
 public:
  explicit Produit(const NTL::ZZ& n) : n_(n), valeur_(1) {}
  void fois(std::uint32_t facteur) {
    mot_ *= facteur;
    if (mot_ >> 32 != 0) vider();
  }
  const NTL::ZZ& valeur() {
    vider();
    return valeur_;
  }

 private:
  void vider() {
    valeur_ = valeur_ * en_zz(mot_) % n_;
    mot_ = 1;
  }
  const NTL::ZZ& n_;
  NTL::ZZ valeur_;
  std::uint64_t mot_ = 1;
};

}  // namespace

bool tient(const NTL::ZZ& n, const Recolte& recolte, const Relation& relation) {
  Produit produit(n);
  bool moins = false;
  recolte.facteurs.pour_chaque(relation.place, relation.nombre, [&](std::uint32_t i) {
    if (i == 0) {
      moins = !moins;
    } else {
      produit.fois(recolte.base.premier[i]);
    }
  });
  produit.fois(relation.grands.petit);
  produit.fois(relation.grands.grand);
  const NTL::ZZ u = grand_entier(relation.u);
  return (u * u + (moins ? produit.valeur() : -produit.valeur())) % n == 0;
}

NTL::ZZ pgcd_des_racines(const NTL::ZZ& n, const Recolte& recolte,
                         const std::vector<std::uint32_t>& indices) {
  NTL::ZZ u(1);
  std::vector<std::uint32_t> exposants(recolte.base.taille);
  std::vector<std::uint32_t> grands;
  for (const std::uint32_t indice : indices) {
    const Relation& relation = recolte.relations[indice];
    u = u * grand_entier(relation.u) % n;
    recolte.facteurs.pour_chaque(relation.place, relation.nombre,
                                 [&](std::uint32_t i) { ++exposants[i]; });
    grands.push_back(relation.grands.petit);
    grands.push_back(relation.grands.grand);
  }
  Produit v(n);
  for (std::size_t i = 0; i < exposants.size(); ++i) {
    if (exposants[i] % 2 != 0) return NTL::ZZ(0);
    if (i == 0) continue;  // (-1)^even
    for (std::uint32_t e = exposants[i]; e > 0; e -= 2) v.fois(recolte.base.premier[i]);
  }
  // In order, the two of each pair of equal ones are neighbours.
  std::sort(grands.begin(), grands.end());
  for (std::size_t i = 0; i < grands.size(); i += 2) {
    if (grands[i] != grands[i + 1]) return NTL::ZZ(0);
    v.fois(grands[i]);
  }
  return NTL::GCD(u - v.valeur(), n);
}

}  // namespace premiers::quadratique
