// SPDX-License-Identifier: MIT
// The templates of ecm.h and ecm_seconde.h, made for the rings of any length.
#include "primes/facteurs/ecm_grand.h"

#include <array>
#include <cassert>
#include <span>
#include <vector>

#include "primes/arithmetique/montgomery_long.h"
#include "primes/facteurs/ecm.h"
#include "primes/facteurs/ecm_seconde.h"

namespace premiers::facteurs::ecm {
namespace {

/// One for each lane.
template <Anneau A>
std::array<std::uint64_t, A::voies> sigmas(std::uint64_t sigma) {
  std::array<std::uint64_t, A::voies> s;
  for (auto& x : s) x = sigma++;
  return s;
}

template <Anneau A>
NTL::ZZ essayer_courtes(const A& a, std::uint64_t sigma, std::size_t b1, std::size_t b2) {
  return essayer(a, sigmas<A>(sigma), b1, b2);
}

/// The curves of large bounds; what each lane finds.
template <Anneau A>
typename A::Nombres essayer_longues(const A& a, std::uint64_t sigma, const BornesLongues& bornes,
                                    const Suivi& suivi) {
  Trouves<A> trouves{a};
  Courbe<A> courbe;
  const auto depart = suyama(a, sigmas<A>(sigma), courbe);
  const auto q = phase_un(a, courbe, depart, b1_court, bornes.suite, suivi);
  trouves.noter(q.z);
  if (!trouves.tous()) {
    phase_deux_longue(courbe, q, bornes.rangees, Allure::rapide, trouves, suivi);
  }
  return trouves.g;
}

/// A curve once more, a gcd after each step, up to the first that finds anything.
NTL::ZZ reprendre(const MontgomeryLong& a, std::uint64_t sigma, const BornesLongues& bornes,
                  const Suivi& suivi) {
  Trouves<MontgomeryLong> trouves{a};
  Courbe<MontgomeryLong> courbe;
  const auto depart = suyama(a, {sigma}, courbe);
  Marche<MontgomeryLong> marche{a, courbe, depart};
  for (const Multiplicateur m : {Multiplicateur{3, 2}, {2, 0}, {2, 0}}) marche.multiplier(m);
  const std::vector<Multiplicateur> courts = multiplicateurs(1, b1_court);
  for (const std::span<const Multiplicateur> liste : {std::span{courts}, std::span{bornes.suite}}) {
    for (std::size_t i = 0; i < liste.size() && trouves.rien(); ++i) {
      if (suivi && i % 64 == 0) suivi(0);  // some ten thousand products
      marche.multiplier(liste[i]);
      trouves.noter(marche.point().z);
    }
  }
  if (trouves.rien()) {
    phase_deux_longue(courbe, marche.point(), bornes.rangees, Allure::pas_a_pas, trouves, suivi);
  }
  return trouves.propre();
}

}  // namespace

NTL::ZZ essayer_courbe_courte(const NTL::ZZ& n, std::uint64_t sigma, std::size_t b1,
                              std::size_t b2) {
  return essayer_courtes(MontgomeryLong{n}, sigma, b1, b2);
}

NTL::ZZ essayer_huit_courtes(const NTL::ZZ& n, std::uint64_t sigma, std::size_t b1, std::size_t b2,
                             Huit::NoyauxParLongueur noyaux) {
  return essayer_courtes(Huit{n, noyaux}, sigma, b1, b2);
}

BornesLongues::BornesLongues(std::uint64_t borne1, std::uint64_t borne2, const Suivi& suivi)
    : b1{borne1}, b2{borne2}, suite{multiplicateurs(b1_court, b1, suivi)}, rangees{b1, b2, suivi} {
  assert(b1 >= b1_court);
}

NTL::ZZ essayer_courbe(const NTL::ZZ& n, std::uint64_t sigma, const BornesLongues& bornes,
                       const Suivi& suivi) {
  const MontgomeryLong a{n};
  const NTL::ZZ g = essayer_longues(a, sigma, bornes, suivi)[0];
  return g == n ? reprendre(a, sigma, bornes, suivi) : g;
}

std::vector<NTL::ZZ> essayer_huit_courbes(const NTL::ZZ& n, std::uint64_t sigma,
                                          const BornesLongues& bornes,
                                          Huit::NoyauxParLongueur noyaux, const Suivi& suivi) {
  std::vector<NTL::ZZ> facteurs;
  for (NTL::ZZ g : essayer_longues(Huit{n, noyaux}, sigma, bornes, suivi)) {
    if (g == n) g = reprendre(MontgomeryLong{n}, sigma, bornes, suivi);
    if (g != 1) facteurs.push_back(g);
    ++sigma;
  }
  return facteurs;
}

}  // namespace premiers::facteurs::ecm
