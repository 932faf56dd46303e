// SPDX-License-Identifier: MIT
// How large everything in the quadratic sieve is taken, by the size of n.
#pragma once

#include <cstddef>
#include <cstdint>

namespace premiers::quadratique {

struct Reglages {
  std::size_t base;     ///< entries of the factor base
  std::uint32_t demi;   ///< polynomials are sieved over x in [-demi, demi); a multiple of 64
  std::uint32_t grand;  ///< a large prime may be this many times the largest of the base
  std::uint32_t petit;  ///< primes below are not sieved, only divided by
  double tolerance;     ///< bits by which a value may miss being smooth, to be looked at
  double exposant;  ///< two large primes: their product is below this power of the largest; 1: none
  double facteur;   ///< wished size of the primes in the leading coefficient a, in bits
};

/// The settings for a number of that many bits.
Reglages reglages(long bits);

}  // namespace premiers::quadratique
