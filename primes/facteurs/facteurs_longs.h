// SPDX-License-Identifier: MIT
// A factor of a composite of 65 to 700 bits by the elliptic curve method: the continuation of
// facteurs128.h. It finds factors of up to some 15 digits long before a sieve would.
#pragma once

#include <NTL/ZZ.h>

#include <cstddef>
#include <optional>

#include "primes/arithmetique/processeur.h"
#include "primes/suivi/suivi.h"

namespace premiers::facteurs {

/// The longest n that is tried.
inline constexpr long bits_facteur_long = 700;

/// How much ECM: so many curves with these bounds.
struct EffortEcm {
  unsigned courbes;  ///< where eight run at once; an eighth of them otherwise, which takes as long
  std::size_t b1;
  std::size_t b2;

  /// The bounds that there are tables for; beyond, the behaviour is undefined.
  static constexpr std::size_t b1_max = 2000;
  static constexpr std::size_t b2_max = 100800;
  constexpr bool a_portee() const { return 2 <= b1 && b1 <= b1_max && b1 <= b2 && b2 <= b2_max; }
};

/// Do eight curves run at once on such an n here?
bool huit_courbes_a_la_fois(const NTL::ZZ& n);

/// A proper factor of n, not necessarily prime; nothing if the curves did not find one, or if n is
/// longer than bits_facteur_long. n must be odd, composite, greater than 2^64, and should have no
/// factor below 1000. `debut` is the index of the first curve: another range of curves is
/// another chance.
std::optional<NTL::ZZ> facteur_ecm_long(const NTL::ZZ& n, const EffortEcm& effort,
                                        unsigned debut = 0, const Suivi& suivi = {});
Versions<decltype(&facteur_ecm_long)> versions_de_facteur_ecm_long();

}  // namespace premiers::facteurs
