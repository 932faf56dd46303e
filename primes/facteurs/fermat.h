// SPDX-License-Identifier: MIT
// Fermat's method with multipliers: two factors whose ratio is nearly that of two small integers.
//
// If n = p q and u p is close to v q, then 4 u v n = (u p + v q)^2 - (u p - v q)^2 lies just below a
// square. So for each k = u v the first square from 4 k n on is asked whether it exceeds 4 k n by a
// square (R. S. Lehman, "Factoring large integers", Mathematics of Computation 28, 1974). Such numbers
// are rare by chance, but people make them: products of neighbouring primes, 2^(2 m) - 1.
//
// Cost: a square root for each k, some 30 microseconds at 80 digits for all of them.
#pragma once

#include <NTL/ZZ.h>

#include <optional>

namespace premiers::facteurs {

/// A proper factor of n > 1, if one is found: always where n = p q with
/// |u p - v q| < 2 (u v n)^(1/4) for some u v <= 64.
std::optional<NTL::ZZ> facteur_de_fermat(const NTL::ZZ& n);

}  // namespace premiers::facteurs
