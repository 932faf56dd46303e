// SPDX-License-Identifier: MIT
// Perfect powers. The methods that split an integer fail, or take long, on squares and cubes of
// primes; here they are seen at once, by exact integer roots.
#pragma once

#include <NTL/ZZ.h>

#include <optional>

namespace premiers::facteurs {

struct PuissanceParfaite {
  NTL::ZZ base;
  long exposant;  ///< a prime, at least 2
};

/// n = base^exposant with a prime exponent, or nothing if n is no perfect power.
/// n > 1 must have no prime factor below 2^10: this bounds the exponents that are tried to a tenth
/// of the length of n. The base may be a power again. Cost: microseconds for 60 digits.
std::optional<PuissanceParfaite> puissance_parfaite(const NTL::ZZ& n);

}  // namespace premiers::facteurs
