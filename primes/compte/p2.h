// SPDX-License-Identifier: MIT
// P2(x, a), a = pi(y): how many integers <= x are products of exactly two primes, both > y.
#pragma once

#include <cstdint>

#include "primes/arithmetique/processeur.h"
#include "primes/compte/tables.h"
#include "primes/suivi/suivi.h"

namespace premiers::compte {

/// The sum of pi(x / p) - pi(p) + 1 over the primes p in ]y, sqrt(x)].
/// Time that of sieving up to x / y; memory O(sqrt(x / y)).
std::uint64_t compte_p2(const Plan& plan, const Suivi& suivi = {});
Versions<decltype(&compte_p2)> versions_de_compte_p2();

}  // namespace premiers::compte
