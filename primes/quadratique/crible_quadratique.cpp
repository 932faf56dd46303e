// SPDX-License-Identifier: MIT
// The two halves one after the other; where no factor comes of it, sieving goes on.
#include "primes/quadratique/crible_quadratique.h"

#include "primes/quadratique/avancement.h"
#include "primes/quadratique/campagne.h"
#include "primes/quadratique/resolution.h"

namespace premiers::quadratique {

namespace {

// Cycles more than entries of the base, so that there are at least so many solutions of which
// each gives a factor with probability 1/2; three more come with them as a rule, because some
// entries never occur. More would cost more sieving than the rare second try does.
constexpr std::size_t excedent = 2;

// What is given up after: so many polynomials per entry of the base (30 is normal at 75 digits),
// and so many matrices without luck (a prime n would give infinitely many).
constexpr std::size_t polynomes_par_entree = 20000;
constexpr int matrices_au_plus = 12;

// From so many bits on all relations are checked before a matrix: one that is wrong spoils it, and the
// matrix costs more than the check. Below, where the check is a tenth of the whole, they are checked
// after a matrix without luck.
constexpr long bits_controle = 160;

// Polynomials between two calls of the progress callback, 0.2 to 3 ms.
constexpr std::size_t cadence = 32;

}  // namespace

std::optional<NTL::ZZ> facteur_quadratique(const NTL::ZZ& n, const Suivi& suivi,
                                           Scission scission) {
  return facteur_quadratique(n, reglages(NTL::NumBits(n)), suivi, scission);
}

std::optional<NTL::ZZ> facteur_quadratique(const NTL::ZZ& n, const Reglages& choix,
                                           const Suivi& suivi, Scission scission) {
  const long bits = NTL::NumBits(n);
  if (n <= 0 || !NTL::IsOdd(n) || bits < 50 || bits > 380) return std::nullopt;
  if (const NTL::ZZ racine_entiere = NTL::SqrRoot(n); racine_entiere * racine_entiere == n)
    return racine_entiere;
  const Base base = construire_base(n, choix.base);
  if (base.diviseur != 0) return NTL::to_ZZ(base.diviseur);

  Campagne campagne(base, choix, scission);
  Recolte& recolte = campagne.recolte;
  Avancement avancement;
  const auto signe_de_vie = [&suivi] {
    if (suivi) suivi(0);
  };
  suivi.annoncer({.genre = Etape::Genre::crible});
  std::size_t but = base.taille + excedent;
  int matrices = 0;
  for (std::size_t i = 0; i < polynomes_par_entree * base.taille && campagne.avancer(); ++i) {
    if (suivi && i % cadence == 0) suivi(avancement.part(recolte, but));
    if (recolte.cycles() < but) continue;
    suivi.annoncer({.genre = Etape::Genre::algebre});
    if ((bits >= bits_controle || matrices > 0) && retirer_fausses(n, recolte, signe_de_vie) > 0) {
      suivi.annoncer({.genre = Etape::Genre::crible});
      continue;
    }
    recolte.alleger();
    if (auto facteur = facteur_des_relations(n, recolte, signe_de_vie)) return facteur;
    if (++matrices == matrices_au_plus) break;
    recolte.recompter();
    but = recolte.cycles() + excedent;
    suivi.annoncer({.genre = Etape::Genre::crible});
  }
  return std::nullopt;
}

}  // namespace premiers::quadratique
