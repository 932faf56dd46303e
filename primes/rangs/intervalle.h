// SPDX-License-Identifier: MIT
// How many primes lie between two bounds, below 2^63. Three ways lead to the number, and the cheapest
// is taken (primes/rangs/couts.h): sieving the interval, deciding its numbers one by one where it is so
// narrow and high that the sieving primes would cost more, and the difference of two combinatorial
// counts. (The primes themselves: primes/rangs/lots_de_premiers.h.)
#pragma once

#include <cstdint>

#include "primes/crible/crible_grand.h"
#include "primes/suivi/suivi.h"

namespace premiers::rangs {

/// The integers from `debut` to `fin`, both included. What lies below 1 holds no prime.
struct Intervalle {
  std::int64_t debut;
  std::int64_t fin;
};

/// How many primes lie in the interval.
/// `memoire`: the budget of the sieve, in bytes.
std::int64_t compter_premiers(Intervalle bornes, const Suivi& suivi = {},
                              std::uint64_t memoire = crible::CribleGrand::memoire_max);

}  // namespace premiers::rangs
