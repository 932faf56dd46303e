// SPDX-License-Identifier: MIT
#include "primes/quadratique/crible_quadratique.h"

#include <algorithm>
#include <cmath>

#include "primes/quadratique/campagne.h"
#include "primes/quadratique/resolution.h"

namespace premiers {

namespace {

using namespace quadratique;

// Cycles more than entries of the base, so that there are at least so many solutions of which
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

// The part of the sieving that is done. Relations come evenly, cycles faster and faster, the more
// large primes there are to meet. Measured: with one large prime, at 65 digits, half of the cycles
// are there after 0.60 of the time, a fifth after 0.30; with two, at 70 digits, after 0.71 and 0.41.
// These powers are within 0.05 of that from a tenth of the cycles on.
double avancement(const Recolte& recolte, std::size_t but, bool deux_grands) {
  const double part = static_cast<double>(recolte.cycles()) / static_cast<double>(but);
  return std::pow(std::min(1.0, part), deux_grands ? 0.5 : 0.73);
}

}  // namespace

std::optional<NTL::ZZ> facteur_quadratique(const NTL::ZZ& n, const Suivi& suivi,
                                           Scission scission) {
  return facteur_quadratique(n, reglages(NTL::NumBits(n)), suivi, scission);
}

std::optional<NTL::ZZ> facteur_quadratique(const NTL::ZZ& n, const Reglages& choix,
                                           const Suivi& suivi, Scission scission) {
  const long bits = NTL::NumBits(n);
  if (n <= 0 || !NTL::IsOdd(n) || bits < 50 || bits > 380) return std::nullopt;
  if (const NTL::ZZ racine = NTL::SqrRoot(n); racine * racine == n) return racine;
  const Base base = construire_base(n, choix.base);
  if (base.diviseur != 0) return NTL::to_ZZ(base.diviseur);

  Campagne campagne(base, choix, scission);
  Recolte& recolte = campagne.recolte;
  const auto signe_de_vie = [&suivi] {
    if (suivi) suivi(part_du_crible);
  };
  std::size_t but = base.taille + excedent;
  int matrices = 0;
  for (std::size_t i = 0; i < polynomes_par_entree * base.taille && campagne.avancer(); ++i) {
    if (suivi && i % cadence == 0)
      suivi(part_du_crible * avancement(recolte, but, choix.exposant > 1));
    if (recolte.cycles() < but || retirer_fausses(n, recolte, signe_de_vie) > 0) continue;
    if (auto facteur = facteur_des_relations(n, recolte, signe_de_vie)) return facteur;
    if (++matrices == matrices_au_plus) break;
    but = recolte.cycles() + excedent;
  }
  return std::nullopt;
}

}  // namespace premiers
