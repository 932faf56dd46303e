// SPDX-License-Identifier: MIT
// How far the elliptic curves go: level after level, each for factors of five digits more than the
// one before.
//
// The bounds B1 are those of P. Zimmermann and B. Dodson, "20 years of ECM", ANTS-VII (2006); the
// numbers of curves those that yafu (B. Buhrow) takes for Suyama's curves with B2 = 100 B1. After all
// curves of a level a factor of its length is missed once in e times. Beyond the last level its
// curves go on without end.
//
// P - 1 with larger bounds comes before some levels: it costs some percent of them.
#pragma once

#include <NTL/ZZ.h>

#include <cstdint>
#include <limits>
#include <vector>

#include "primes/suivi/suivi.h"

namespace premiers::facteurs {

/// How far the curves on a number have come. What is left of it when a factor has been found goes on
/// from there: every curve so far was one on this rest as well.
struct Echelle {
  unsigned niveau = 0;
  std::uint64_t courbe = 0;  ///< how many of this level are done
};

/// Without end.
inline constexpr double profondeur_sans_fin = std::numeric_limits<double>::infinity();

/// Proper factors of n, which need not be prime nor coprime; none when the curves for factors of so
/// many digits are done. Between two levels the curves of the next are taken in proportion: none at 15
/// digits, all of the first level at 20 (for shorter factors there is facteurs_longs.h). n: odd,
/// composite, above 64 bits, without factors below 1000; one of more than bits_facteur_long bits is
/// left as it is. `suivi` hears nothing but 0, and may throw.
std::vector<NTL::ZZ> facteurs_par_echelle(const NTL::ZZ& n, double profondeur, Echelle& etat,
                                          const Suivi& suivi = {});

}  // namespace premiers::facteurs
