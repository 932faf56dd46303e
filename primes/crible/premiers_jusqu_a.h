// SPDX-License-Identifier: MIT
// The primes up to a bound, as a list: factor bases, the bounds of P - 1 and of the elliptic curves,
// the primes by rank of a count. Whoever needs "all primes up to n" at run time has them from here.
//
// (What the compiler makes, primes/facteurs/petits_diviseurs.h and the bitmap of
// primes/crible/premiers_cribleurs.cpp, cannot wait for a sieve that runs.)
//
// Cost: that of the sieve, half a nanosecond for each integer, and a nanosecond for each prime.
#pragma once

#include <cstdint>
#include <vector>

#include "primes/arithmetique/bits.h"
#include "primes/crible/fenetres.h"
#include "primes/suivi/suivi.h"

namespace premiers::crible {

/// Calls f(p) for the primes p in [a, b] in increasing order, 7 <= a; nothing if b < a. `suivi` hears
/// nothing but 0.
template <class F>
void pour_les_premiers(std::uint64_t a, std::uint64_t b, const Suivi& suivi, const F& f) {
  if (b < a) return;
  Fenetres fenetres(a, b);
  while (fenetres.suivante()) {
    if (suivi) suivi(0);
    pour_chaque_premier(fenetres.octets(), fenetres.octet_initial(), f);
  }
}

/// All primes up to b, b < 2^32. Memory: 4 bytes a prime.
inline std::vector<std::uint32_t> premiers_jusqu_a(std::uint64_t b, const Suivi& suivi = {}) {
  std::vector<std::uint32_t> liste;
  for (const std::uint32_t p : {2U, 3U, 5U}) {
    if (p <= b) liste.push_back(p);
  }
  pour_les_premiers(7, b, suivi,
                    [&](std::uint64_t p) { liste.push_back(static_cast<std::uint32_t>(p)); });
  return liste;
}

}  // namespace premiers::crible
