// SPDX-License-Identifier: MIT
// Curves and P - 1 on a modulus of any length up to 700 bits: one curve in the ring of
// primes/arithmetique/montgomery_long.h, or eight in that of huit.h. The method is told in ecm.h and
// ecm_seconde.h.
//
// The eight lanes are independent: each has its curve and its gcd. With large bounds nothing is lost:
// different lanes may find different factors, which are all given, and a curve that finds all of n at
// once is gone over again, alone and step by step.
#pragma once

#include <NTL/ZZ.h>

#include <cstddef>
#include <cstdint>
#include <vector>

#include "primes/facteurs/ecm_chaines.h"
#include "primes/facteurs/ecm_rangees.h"
#include "primes/facteurs/huit.h"
#include "primes/suivi/suivi.h"

namespace premiers::facteurs::ecm {

// ---- Small bounds --------------------------------------------------------------------------------

/// The curve `sigma` >= 6 on the odd n, 2^64 < n < 2^bits_facteur_long, without factors below 1000;
/// 2 <= b1 <= b1_court, b1 <= b2 <= paires_longues.portee. A proper factor of n, or 1.
NTL::ZZ essayer_courbe_courte(const NTL::ZZ& n, std::uint64_t sigma, std::size_t b1,
                              std::size_t b2);

/// The same for sigma .. sigma + 7. `noyaux` is no nullptr.
NTL::ZZ essayer_huit_courtes(const NTL::ZZ& n, std::uint64_t sigma, std::size_t b1, std::size_t b2,
                             Huit::NoyauxParLongueur noyaux);

// ---- Large bounds --------------------------------------------------------------------------------

/// A pair of bounds, with what all curves need for them. To make it takes as long as a fraction of a
/// curve; memory 0.11 b2 bits and 8 bytes a prime below b1: 2 MB for (10^6, 10^8).
struct BornesLongues {
  std::uint64_t b1, b2;
  std::vector<Multiplicateur> suite;  ///< from lcm(1..b1_court) to lcm(1..b1)
  Rangees rangees;

  /// b1_court <= b1 < b2, b1 < 2^31.
  BornesLongues(std::uint64_t borne1, std::uint64_t borne2, const Suivi& suivi = {});
};

/// The curve `sigma` on such an n. A proper factor of n, or 1. `suivi` hears nothing but 0, and may
/// throw.
NTL::ZZ essayer_courbe(const NTL::ZZ& n, std::uint64_t sigma, const BornesLongues& bornes,
                       const Suivi& suivi = {});

/// The same for sigma .. sigma + 7: proper factors of n, which need not be prime nor coprime; none if
/// no curve finds any.
std::vector<NTL::ZZ> essayer_huit_courbes(const NTL::ZZ& n, std::uint64_t sigma,
                                          const BornesLongues& bornes,
                                          Huit::NoyauxParLongueur noyaux, const Suivi& suivi = {});

}  // namespace premiers::facteurs::ecm
