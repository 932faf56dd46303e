// SPDX-License-Identifier: MIT
// The easy special leaves of the prime count: those whose phi is a plain pi, looked up in a table.
#pragma once

#include <cstdint>

#include "primes/arithmetique/processeur.h"
#include "primes/compte/tables.h"
#include "primes/suivi/suivi.h"

namespace premiers::compte {

/// The sum of -mu(m) phi(x / (m q), pi(q) - 1), modulo 2^64, over all pairs of a prime q in ]19, y]
/// and an m <= z, m q > z, made of distinct primes in ]q, y], for which x / (m q) < q^2.
/// Time O(x^(2/3) / log^2 x), memory 25 bytes for each prime up to y and half a megabyte.
std::uint64_t feuilles_faciles(const Plan& plan, const Suivi& suivi = {});
Versions<decltype(&feuilles_faciles)> versions_de_feuilles_faciles();

}  // namespace premiers::compte
