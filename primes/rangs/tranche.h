// SPDX-License-Identifier: MIT
// From a value to the n-th prime above it or below it, by sieving what lies between, or number by
// number where that is so little and so far out that the sieving primes would cost more.
//
// What is sieved is kept as bytes for as long as one stretch takes, so that the n-th flag can be
// looked for from either end. Cost: that of the cheaper way (primes/rangs/couts.h). Memory: 8 MiB
// for a stretch, and the sieve's own.
#pragma once

#include <cstdint>

#include "primes/suivi/suivi.h"

namespace premiers::rangs {

/// The n-th prime above v, n >= 1, v >= 7; it must be below 2^63.
std::int64_t premier_apres(std::int64_t v, std::int64_t n, const Suivi& suivi = {});

/// The n-th prime counted down from v, v among them: the largest prime <= v for n = 1. It must be
/// 7 at least.
std::int64_t premier_avant(std::int64_t v, std::int64_t n, const Suivi& suivi = {});

}  // namespace premiers::rangs
