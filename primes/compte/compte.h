// SPDX-License-Identifier: MIT
// The combinatorial prime count: pi(x) without knowing the primes up to x.
#pragma once

#include <cstdint>

#include "primes/suivi/suivi.h"

namespace premiers::compte {

/// pi(x), the number of primes <= x, for x < 2^63 (else std::invalid_argument).
/// Time O(x^(2/3) / log^2 x), memory O(x^(1/3) log^3 x): 70 µs at 10^7, 8 ms at 10^12, 0.13 s at
/// 10^14, 35 s at 10^18, 140 s and 77 MB at 2^63 - 1, on one thread of a Zen 4. `suivi` hears of it
/// every few milliseconds from 2 * 10^7 on; below, never.
std::uint64_t nombre_premiers(std::uint64_t x, const Suivi& suivi = {});

}  // namespace premiers::compte
