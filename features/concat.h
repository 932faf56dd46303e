// SPDX-License-Identifier: MIT
// The concatenations of primes: their menu, the ways to cut one number, the search of a range.
#pragma once

#include "console/session.h"

namespace premiers {

/// The menu, until the operator leaves it.
void concat(Session& s);

/// Lists every way to cut the digits of N into consecutive primes, for N after N.
void concatN(Session& s);

/// Searches a range, once: for any numbers, or (`premiers_seuls`) for primes that are the concatenation
/// of at least two others.
void Nconcat(Session& s, bool premiers_seuls);

}  // namespace premiers
