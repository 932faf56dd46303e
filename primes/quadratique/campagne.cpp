// SPDX-License-Identifier: MIT
// The bounds that follow from the settings, and the loop: a polynomial, its candidates, relations.
#include "primes/quadratique/campagne.h"

#include <algorithm>
#include <cmath>

namespace premiers::quadratique {

namespace {

// What the residues may be. Large primes stay below P^2, or they would not be known to be prime.
BornesDesRestes bornes_des_restes(const Base& base, const Reglages& choix, Scission scission) {
  const std::uint64_t dernier = base.premier[base.taille - 1];
  const std::uint64_t carre = dernier * dernier;
  const std::uint64_t premier = std::min({dernier * choix.grand, carre, std::uint64_t{1} << 32});
  if (choix.exposant <= 1 || scission == nullptr) return {carre, premier, 0};
  const double produit = std::exp2(choix.exposant * std::log2(static_cast<double>(premier)));
  return {carre, premier, static_cast<std::uint64_t>(std::min(produit, 0x1p63))};
}

// The logarithm (to base 2) that the sieved primes have to reach: that of the largest |Q|, which
// is demi * sqrt(kn / 8), less that of the large primes and the tolerance. Small n would go below
// zero. A byte holds it at every size that there are settings for; with one large prime only from some 325
// bits on no more: the tolerance then grows by what is missing (half a bit for each bit of n), and the
// longer n is, the more values are divided in vain.
std::uint32_t seuil_du_crible(const Base& base, const Reglages& choix,
                              const BornesDesRestes& bornes) {
  const double taille_q =
      std::log2(choix.demi) + (static_cast<double>(NTL::NumBits(base.kn)) - 3) / 2;
  double reste = std::log2(choix.grand);
  // Two large primes instead of one: so much more may be left.
  if (bornes.produit > bornes.premier) {
    reste += std::log2(static_cast<double>(bornes.produit) / static_cast<double>(bornes.premier));
  }
  return static_cast<std::uint32_t>(
      std::clamp(taille_q - choix.tolerance - reste, 10.0, static_cast<double>(Tamis::seuil_max)));
}

}  // namespace

Campagne::Campagne(const Base& base, const Reglages& reglages, Scission scission_)
    : bornes(bornes_des_restes(base, reglages, scission_)),
      scission(scission_),
      seuil(seuil_du_crible(base, reglages, bornes)),
      polynomes(base, reglages),
      tamis(base, reglages),
      division(base, tamis, std::log2(std::max(bornes.premier, bornes.produit))),
      recolte(base) {
  polynomes.limite = tamis.fin;
}

bool Campagne::avancer() {
  if (!polynomes.suivant()) return false;
  for (const Candidat candidat : tamis.cribler(polynomes, seuil)) {
    if (!division.diviser(polynomes, candidat)) continue;
    const auto grands = grands_premiers(division.valeur.reste, bornes, scission);
    if (grands) recolte.ajouter(division.valeur, *grands);
  }
  return true;
}

}  // namespace premiers::quadratique
