// SPDX-License-Identifier: MIT
// The two large primes of a residue.
//
// What is left of a value after division by the base has no prime factor up to the largest of the
// base, P. Below P^2 it is a prime: one large prime. Above, it is a prime that is too large to ever
// meet again, or the product of two; and such a product is worth splitting, since two thirds of all
// that is gathered beyond 75 digits have two large primes (A. Lenstra and M. Manasse, "Factoring
// with two large primes", Mathematics of Computation 63, 1994).
//
// Cost: a primality test (0.3 microseconds), which most residues do not outlive, then one splitting
// (5 to 30 microseconds by elliptic curves at 40 to 56 bits).
#pragma once

#include <cstdint>
#include <optional>

namespace premiers::quadratique {

/// A function that gives a proper factor of m, or 0 if it finds none. m: odd, composite, no square,
/// below 2^64. The sieve stands below the elliptic curves, which do this best, and is handed one.
using Scission = std::uint64_t (*)(std::uint64_t m);

/// What a residue may be to be kept.
struct BornesDesRestes {
  std::uint64_t carre;    ///< P^2: below, a residue is 1 or a prime
  std::uint64_t premier;  ///< large primes are below; at most 2^32
  std::uint64_t produit;  ///< products of two large primes are below; 0: they are not used
};

/// The large primes of a relation, the smaller one first; 1 stands for none.
struct GrandsPremiers {
  std::uint32_t petit = 1;
  std::uint32_t grand = 1;
  friend bool operator==(const GrandsPremiers&, const GrandsPremiers&) = default;
};

/// The large primes of a residue without factor up to P; nothing if it is not to be kept.
std::optional<GrandsPremiers> grands_premiers(std::uint64_t reste, const BornesDesRestes& bornes,
                                              Scission scission);

}  // namespace premiers::quadratique
