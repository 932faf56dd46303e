// SPDX-License-Identifier: MIT
// How far the table of primes has grown after one decision on a fresh start. In a long session the
// largest obligation hides the smaller ones; here each stands alone.
#pragma once

#include <cstdint>

namespace differentiel {

/// Plays every N from 1 to `jusqu` alone through the decomposition, the bounded listing and the
/// concatenation of one number, with the ranked listing opened behind it, on both sides. Gives the
/// number of differences; tells them on standard error.
int comparer_tous(std::int64_t jusqu);

/// Plays `nombre` larger squares, cubes, neighbours of squares, products of two primes and
/// intervals, about up to 10^13. The reference model works with a table that is there already, and
/// its last divisor tells how far a fresh one would have grown. Gives the number of differences.
int comparer_grands(std::uint64_t graine, int nombre);

/// The rounding of the square root: a prime S3 = q^2 - 2, q prime, whose root in double precision
/// is q while its exact root is q - 1. The bounded listing then needs the prime after q, the
/// decomposition and the concatenation q only. Gives the number of differences.
int comparer_arrondi();

}  // namespace differentiel
