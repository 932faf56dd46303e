// SPDX-License-Identifier: MIT
// How much memory the primes by rank may take, whatever is asked.
#pragma once

#include <cstdint>

namespace premiers {

/// Bytes that the sieve of one stretch or listing may take for its large primes. Half of it costs a
/// fifth more time at 10^15.
inline constexpr std::uint64_t memoire_des_rangs = std::uint64_t{100} << 20;

}  // namespace premiers
