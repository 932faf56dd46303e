// SPDX-License-Identifier: MIT
// phi(x, a), the number of integers 1 .. x without a prime factor among the first a primes, for the
// first eight primes, and the ordinary leaves of the prime count, which need it.
#pragma once

#include <cstdint>

#include "primes/compte/tables.h"

namespace premiers::compte {

/// The ordinary leaves stop at the first eight primes (2 .. 19). Sensible: 7 to 10. One more halves
/// the speed of phi and takes about z / 7 leaves from the hard ones; 8 and 9 measured equal.
inline constexpr std::uint64_t rang_phi = 8;

/// phi(x, 8), any x: two look-ups in a table of 34 KB, made at the first call.
std::uint64_t phi_8(std::uint64_t x);

/// The ordinary leaves: sum of mu(n) phi(x / n, 8) over the n <= z whose prime factors all lie in
/// ]19, y], modulo 2^64. Time O(z).
std::uint64_t feuilles_ordinaires(const Plan& plan);

}  // namespace premiers::compte
