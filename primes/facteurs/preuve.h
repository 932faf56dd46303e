// SPDX-License-Identifier: MIT
// Proofs of primality, for integers beyond the reach of proven bases. The methods are told in
// preuve.cpp.
#pragma once

#include <NTL/ZZ.h>

#include "primes/suivi/suivi.h"

namespace premiers::facteurs {

/// Is n prime? Proven, both ways, for n of any size. Numbers up to 1 are not prime.
/// Cost: up to 24 digits as much as `est_premier`; 0.2 ms at 30 digits and 10 at 50; 25 at 100 and
/// 0.6 s at 200 for a prime n of no special form. `suivi` is called before work that takes longer
/// than some milliseconds; it may throw.
bool est_premier_prouve(const NTL::ZZ& n, const Suivi& suivi = {});

}  // namespace premiers::facteurs
