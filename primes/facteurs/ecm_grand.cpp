// SPDX-License-Identifier: MIT
#include "primes/facteurs/ecm_grand.h"

#include <cassert>

#include "primes/arithmetique/montgomery_long.h"
#include "primes/facteurs/ecm_phases.h"
#include "primes/facteurs/ecm_voies.h"
#include "primes/facteurs/p_moins_un.h"

namespace premiers::ecm {
namespace {

template <std::size_t L>
using Anneau = Voies<MontgomeryLong<L>, 1>;

/// n itself is no answer.
NTL::ZZ facteur_propre(const NTL::ZZ& g, const NTL::ZZ& n) { return g == n ? NTL::ZZ{1} : g; }

}  // namespace

BornesLongues::BornesLongues(std::uint64_t borne1, std::uint64_t borne2, const Suivi& suivi)
    : b1{borne1},
      b2{borne2},
      debut{multiplicateurs(2, b1_maximal, suivi)},
      liste{multiplicateurs(b1_maximal, b1, suivi)},
      rangees{b1, b2, suivi} {
  assert(b1 >= b1_maximal);
}

NTL::ZZ essayer_courbe(const NTL::ZZ& n, std::uint64_t sigma, const BornesLongues& bornes,
                       const Suivi& suivi) {
  return a_la_longueur(NTL::NumBits(n), [&]<std::size_t L>(Longueur<L>) {
    const Anneau<L> a{MontgomeryLong<L>{n}};
    const auto g = essayer_long(a, n, sigma, bornes.liste, bornes.rangees, suivi);
    return facteur_propre(premiers::en_zz(g), n);
  });
}

NTL::ZZ essayer_p_moins_un(const NTL::ZZ& n, std::uint64_t b1, std::uint64_t b2,
                           const Suivi& suivi) {
  const Rangees rangees{b1, b2, suivi};
  return a_la_longueur(NTL::NumBits(n), [&]<std::size_t L>(Longueur<L>) {
    const Anneau<L> a{MontgomeryLong<L>{n}};
    return facteur_propre(essayer_moins_un(a, n, b1, rangees, suivi), n);
  });
}

}  // namespace premiers::ecm
