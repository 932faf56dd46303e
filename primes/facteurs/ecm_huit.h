// SPDX-License-Identifier: MIT
// Elliptic curves with large bounds, eight at a time: what ecm_phases.h does for one, in the ring of
// eight lanes (huit.h).
//
// The lanes are independent: each has its curve, and at the end of each stage its own gcd. Nothing is
// lost: different lanes may find different factors, which are all given, and the curve of a lane that
// finds all of n at once is gone over again by ecm_grand.h, step by step.
#pragma once

#include <NTL/ZZ.h>

#include <cstdint>
#include <vector>

#include "primes/facteurs/ecm.h"
#include "primes/facteurs/ecm_grand.h"
#include "primes/facteurs/huit.h"
#include "primes/suivi/suivi.h"

namespace premiers::ecm {

/// p + q and 2 p without a copy of a point: what the walk along chains (ecm_lucas.h) takes in this ring.
/// r is none of the others.
void ajouter_dans(const Huit& a, Point<Huit>& r, const Point<Huit>& p, const Point<Huit>& q,
                  const Point<Huit>& ecart);
void doubler_dans(const Huit& a, const Courbe<Huit>& c, Point<Huit>& r, const Point<Huit>& p);

/// Tries the curves sigma .. sigma + 7, sigma >= 6, on the odd n, 2^64 < n < 2^bits_facteur_long,
/// without factors below 1000: proper factors of n, which need not be prime nor coprime; none if no
/// curve finds any. `noyaux` is no nullptr. `suivi` hears nothing but 0, and may throw.
std::vector<NTL::ZZ> essayer_huit_courbes(const NTL::ZZ& n, std::uint64_t sigma,
                                          const BornesLongues& bornes,
                                          Huit::NoyauxParLongueur noyaux, const Suivi& suivi = {});

}  // namespace premiers::ecm
