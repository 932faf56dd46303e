// SPDX-License-Identifier: MIT
// Listings of primes after their ranks, in blocks of a hundred.
#pragma once

#include <cstdint>

#include "console/session.h"

namespace premiers {

/// Prints the entries of the ranks r1 to r (both in the table; nothing if r < r1), with a break
/// before each entry that begins a block.
void lister_rangs(Session& s, std::int64_t r1, std::int64_t r);

}  // namespace premiers
