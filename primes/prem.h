// SPDX-License-Identifier: MIT
// The plain program's routines by name, on the engine: the next prime, and its two tests by division,
// which decide here at once. What division would have obliged the table to is noted by those who ask for
// it (primes/dette/decisions.h).
#pragma once

#include <NTL/ZZ.h>

#include <cstdint>

#include "primes/table.h"

namespace premiers {

/// Extends the table by exactly one prime, the next after the largest known.
void Suiv(Table& Nprem);

/// Whether S >= 0 is prime.
bool prem(const NTL::ZZ& S);

/// Whether S3 >= 0 passes division by the primes up to its root in double precision, every one of
/// them tried: true for the primes but 2, and for 1.
bool prem1(std::int64_t S3);

}  // namespace premiers
