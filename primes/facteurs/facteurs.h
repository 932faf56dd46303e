// SPDX-License-Identifier: MIT
// The decomposition of a positive integer of any size into prime powers.
#pragma once

#include <NTL/ZZ.h>

#include <vector>

#include "primes/facteurs/facteur.h"
#include "primes/suivi/suivi.h"

namespace premiers::facteurs {

/// Prime powers in increasing order of the primes.
using Facteurs = std::vector<Facteur>;

/// The prime powers whose product is N, 1 <= N < 2^700 (std::length_error beyond); none for 1. Every
/// factor is proven prime.
Facteurs decomposer(const NTL::ZZ& N, const Suivi& suivi = {});

}  // namespace premiers::facteurs
