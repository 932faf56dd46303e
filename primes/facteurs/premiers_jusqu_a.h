// SPDX-License-Identifier: MIT
// The primes that the bounds of P - 1 and of the elliptic curves name, by the sieve.
#pragma once

#include <cstdint>
#include <vector>

#include "primes/arithmetique/bits.h"
#include "primes/crible/crible.h"
#include "primes/suivi/suivi.h"

namespace premiers {

/// Calls f(p) for the primes p in [a, b] in increasing order, 7 <= a; nothing if b < a. `suivi` hears
/// nothing but 0.
template <class F>
void pour_les_premiers(std::uint64_t a, std::uint64_t b, const Suivi& suivi, const F& f) {
  if (b < a) return;
  const std::uint64_t fin = b / 30 + 1;
  Crible crible{a / 30, fin};
  std::vector<std::uint8_t> octets(crible.taille());
  for (std::uint64_t octet = a / 30; octet < fin; octet += octets.size()) {
    if (fin - octet < octets.size()) octets.resize(fin - octet);
    crible.remplir(octets);
    if (suivi) suivi(0);
    pour_chaque_premier(octets, octet, [&](std::uint64_t p) {
      if (a <= p && p <= b) f(p);
    });
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

}  // namespace premiers
