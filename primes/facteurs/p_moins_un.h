// SPDX-License-Identifier: MIT
// The P - 1 method for a long n: finds p where p - 1 has all its prime powers below B1 but for one
// prime below B2.
//
// J. M. Pollard, "Theorems on factorization and primality testing", Proceedings of the Cambridge
// Philosophical Society 76 (1974). First stage: x = 3^lcm(1..B1), by GMP, one exponent of some
// sixty words after the other. Second stage (P. L. Montgomery, Mathematics of Computation 48,
// 1987): V(m) = x^m + x^-m is the same for m and -m, and V(k D) = V(j) modulo p when k D + j or
// k D - j is what is missing of p - 1; so it follows the rows and the loop of ECM (ecm_seconde.h).
//
// One run costs as much as 0.15 curves of the same bounds, and finds what curves do not care for.
// The order of 3 is a divisor of p - 1; 3 is not tried a second time with another base.
#pragma once

#include <NTL/ZZ.h>

#include <cstdint>

#include "primes/suivi/suivi.h"

namespace premiers::facteurs::ecm {

/// P - 1 on an odd n, 2^64 < n < 2^bits_facteur_long, without factors below 1000;
/// 2000 <= b1 < b2 < 2^40. A proper factor of n, or 1.
NTL::ZZ essayer_p_moins_un(const NTL::ZZ& n, std::uint64_t b1, std::uint64_t b2,
                           const Suivi& suivi = {});

}  // namespace premiers::facteurs::ecm
