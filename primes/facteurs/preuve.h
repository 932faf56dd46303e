// SPDX-License-Identifier: MIT
// Proofs of primality for integers beyond the reach of proven bases.
#pragma once

#include <NTL/ZZ.h>

#include "primes/arithmetique/suivi.h"

namespace premiers {

/// Is n prime? Proven, both ways, for n of any size. Numbers up to 1 are not prime.
bool est_premier_prouve(const NTL::ZZ& n, const Suivi& suivi = {});

}  // namespace premiers
