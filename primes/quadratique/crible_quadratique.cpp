// SPDX-License-Identifier: MIT
#include "primes/quadratique/crible_quadratique.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "primes/quadratique/base.h"
#include "primes/quadratique/polynome.h"
#include "primes/quadratique/racine.h"
#include "primes/quadratique/reglages.h"
#include "primes/quadratique/relations.h"
#include "primes/quadratique/tamis.h"

namespace premiers {

namespace {

using namespace quadratique;

// Columns more than rows, so that there are several independent solutions.
constexpr std::size_t excedent = 6;

}  // namespace

std::optional<NTL::ZZ> facteur_quadratique(const NTL::ZZ& n, const Suivi& suivi) {
  const long bits = NTL::NumBits(n);
  if (n <= 0 || !NTL::IsOdd(n) || bits < 50 || bits > 380) return std::nullopt;
  const Reglages choix = reglages(bits);
  const Base base = construire_base(n, choix.base);
  if (base.diviseur != 0) return NTL::to_ZZ(base.diviseur);

  Polynomes polynomes(base, choix);
  Tamis tamis(base, choix.demi, choix.petit);
  Recolte recolte(base, choix);
  // log2 of the largest |Q|: demi * sqrt(kn / 8)
  const double taille_q =
      std::log2(choix.demi) + (static_cast<double>(NTL::NumBits(base.kn)) - 3) / 2;
  const auto seuil = static_cast<std::uint32_t>(
      std::clamp(taille_q - choix.tolerance - std::log2(choix.grand), 10.0, 120.0));

  std::size_t but = base.taille + excedent;
  while (polynomes.suivant()) {
    for (const std::uint32_t position : tamis.cribler(polynomes, seuil)) {
      recolte.examiner(polynomes, position);
    }
    if (recolte.colonnes.size() >= but) {
      retirer_doubles(recolte);
      if (recolte.colonnes.size() < but) continue;
      if (auto facteur = facteur_des_relations(n, recolte)) return facteur;
      but = recolte.colonnes.size() + excedent;
    }
    if (suivi) {
      suivi(static_cast<double>(recolte.colonnes.size()) / static_cast<double>(but));
    }
  }
  return std::nullopt;
}

}  // namespace premiers
