// SPDX-License-Identifier: MIT
// How much memory the primes by rank may take, whatever is asked.
#pragma once

#include <cstdint>

namespace premiers::rangs {

/// The bytes of one stretch that is sieved at once, and so of one round of the sieve. Each round goes
/// through all sieving primes: half of it costs 1.6 times as much just below 2^63.
inline constexpr std::uint64_t octets_par_tranche = std::uint64_t{1} << 23;

/// What the sieve of one stretch or listing may take for its large primes.
inline constexpr std::uint64_t memoire_des_rangs = std::uint64_t{100} << 20;

}  // namespace premiers::rangs
