// SPDX-License-Identifier: MIT
// The hard special leaves of the prime count: those that need phi itself, hence a sieve.
#pragma once

#include <cstdint>

#include "primes/compte/tables.h"
#include "primes/suivi/suivi.h"

namespace premiers::compte {

/// The sum of -mu(m) phi(x / (m q), pi(q) - 1), modulo 2^64, over all pairs of a prime q in ]19, y]
/// and an m <= z, m q > z, made of distinct primes in ]q, y], for which x / (m q) >= q^2.
/// Time that of sieving up to x / z with the primes up to x^(1/4), and O(z x^(1/4) / log^2 x)
/// leaves; memory 0.42 z bytes and 40 bytes for each prime up to x^(1/4).
std::uint64_t feuilles_difficiles(const Plan& plan, const Suivi& suivi = {});

}  // namespace premiers::compte
