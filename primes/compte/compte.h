// SPDX-License-Identifier: MIT
// The combinatorial prime count: pi(x) without knowing the primes up to x.
#pragma once

#include <cstdint>

#include "primes/arithmetique/suivi.h"

namespace premiers {

/// pi(x), the number of primes <= x, for any x. Time O(x^(2/3) / log^2 x), memory O(x^(1/3) log^3
/// x).
std::uint64_t nombre_premiers(std::uint64_t x, const Suivi& suivi = {});

}  // namespace premiers
