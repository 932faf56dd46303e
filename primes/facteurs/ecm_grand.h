// SPDX-License-Identifier: MIT
// Curves and P - 1 with large bounds on a modulus of any length up to 700 bits: for each number of
// words a ring of its own (primes/arithmetique/montgomery_long.h), one curve after the other.
#pragma once

#include <NTL/ZZ.h>

#include <cstdint>
#include <vector>

#include "primes/arithmetique/suivi.h"
#include "primes/facteurs/ecm_lucas.h"
#include "primes/facteurs/ecm_rangees.h"

namespace premiers::ecm {

/// A pair of bounds, with what all curves need for them. To make it takes as long as a fraction of a
/// curve; memory 0.11 b2 bits and 8 bytes a prime below b1: 2 MB for (10^6, 10^8).
struct BornesLongues {
  std::uint64_t b1, b2;
  std::vector<Multiplicateur> debut;  ///< from 2 to lcm(1..b1_maximal)
  std::vector<Multiplicateur> liste;  ///< from there to lcm(1..b1)
  Rangees rangees;

  /// 2000 <= b1 < b2, b1 < 2^31.
  BornesLongues(std::uint64_t borne1, std::uint64_t borne2, const Suivi& suivi = {});
};

/// The curve `sigma` >= 6 on the odd n, 2^64 < n < 2^bits_facteur_long, without factors below 1000.
/// A proper factor of n, or 1.
NTL::ZZ essayer_courbe(const NTL::ZZ& n, std::uint64_t sigma, const BornesLongues& bornes,
                       const Suivi& suivi = {});

/// P - 1 on such an n, 2000 <= b1 < b2 < 2^40. A proper factor of n, or 1.
NTL::ZZ essayer_p_moins_un(const NTL::ZZ& n, std::uint64_t b1, std::uint64_t b2,
                           const Suivi& suivi = {});

}  // namespace premiers::ecm
