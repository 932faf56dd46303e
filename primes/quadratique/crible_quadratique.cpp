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

// Columns more than entries of the base, so that there are at least so many solutions of which
// each gives a factor with probability 1/2; three more come with them as a rule, because some
// entries never occur. More would cost more sieving than the rare second try does.
constexpr std::size_t excedent = 2;

// What is given up after: so many polynomials per entry of the base (200 times what is normal),
// and so many matrices without luck (a prime n would give infinitely many).
constexpr std::size_t polynomes_par_entree = 1000;
constexpr int matrices_au_plus = 12;

// Polynomials between two calls of the progress callback, 0.2 to 3 ms.
constexpr std::size_t cadence = 32;

// Part of the time that goes into sieving, about; the rest is linear algebra.
constexpr double part_du_crible = 0.95;

// The logarithm (to base 2) that the sieved primes have to reach: that of the largest |Q|, which
// is demi * sqrt(kn / 8), less that of a large prime and the tolerance. Small n would go below
// zero. From some 291 bits on a byte cannot hold it any more: the tolerance then grows by what is
// missing (half a bit for each bit of n), and the longer n is, the more values are divided in vain.
std::uint32_t seuil_du_crible(const Base& base, const Reglages& choix) {
  const double taille_q =
      std::log2(choix.demi) + (static_cast<double>(NTL::NumBits(base.kn)) - 3) / 2;
  return static_cast<std::uint32_t>(std::clamp(taille_q - choix.tolerance - std::log2(choix.grand),
                                               10.0, static_cast<double>(Tamis::seuil_max)));
}

// The part of the columns that has been found. They come faster towards the end, when more large
// primes meet, but not by so much that it would have to be corrected.
double avancement(const Recolte& recolte, std::size_t but) {
  return std::min(1.0, static_cast<double>(recolte.colonnes.size()) / static_cast<double>(but));
}

}  // namespace

std::optional<NTL::ZZ> facteur_quadratique(const NTL::ZZ& n, const Suivi& suivi) {
  const long bits = NTL::NumBits(n);
  if (n <= 0 || !NTL::IsOdd(n) || bits < 50 || bits > 380) return std::nullopt;
  if (const NTL::ZZ racine = NTL::SqrRoot(n); racine * racine == n) return racine;
  const Reglages choix = reglages(bits);
  const Base base = construire_base(n, choix.base);
  if (base.diviseur != 0) return NTL::to_ZZ(base.diviseur);

  Polynomes polynomes(base, choix);
  Tamis tamis(base, choix);
  polynomes.limite = tamis.fin;
  Recolte recolte(base, choix);
  Division division(base, tamis, std::log2(recolte.borne_grand));
  const std::uint32_t seuil = seuil_du_crible(base, choix);
  const auto signe_de_vie = [&suivi] {
    if (suivi) suivi(part_du_crible);
  };
  std::size_t but = base.taille + excedent;
  int matrices = 0;
  for (std::size_t i = 0; i < polynomes_par_entree * base.taille && polynomes.suivant(); ++i) {
    for (const Candidat candidat : tamis.cribler(polynomes, seuil)) {
      recolte.examiner(division, polynomes, candidat);
    }
    if (suivi && i % cadence == 0) suivi(part_du_crible * avancement(recolte, but));
    if (recolte.colonnes.size() < but) continue;
    retirer_doubles(recolte);
    if (recolte.colonnes.size() < but) continue;
    if (auto facteur = facteur_des_relations(n, recolte, signe_de_vie)) return facteur;
    if (++matrices == matrices_au_plus) break;
    but = recolte.colonnes.size() + excedent;
  }
  return std::nullopt;
}

}  // namespace premiers
