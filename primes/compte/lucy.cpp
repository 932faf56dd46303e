// SPDX-License-Identifier: MIT
// Lucy_Hedgehog's sieve of floor values (Project Euler forum, problem 10, 2011; it is Legendre's
// formula with all of its intermediate values kept). S(v, p) counts 2 and the odd integers 3 .. v
// that survive the sieve of Eratosthenes with the primes up to p, and is wanted for the
// v = floor(x / i) only:
//     S(v, p) = S(v, p - 1) - (S(v / p, p - 1) - S(p - 1, p - 1))    for p prime, p * p <= v.
// Only odd v / i matter once the even numbers are gone, so half of the values are never touched.
// The divisions are done in double precision (primes/arithmetique/quotient.h).
#include "primes/compte/lucy.h"

#include <algorithm>
#include <vector>

#include "primes/arithmetique/quotient.h"
#include "primes/arithmetique/racines.h"

namespace premiers::compte {

std::uint64_t compte_lucy(std::uint64_t x) {
  if (x < 3) return x == 2;
  const std::uint64_t racine = racine_carree(x);
  // petits[v] = S(v) for v <= racine; grands[i / 2] = S(x / i) for i odd
  std::vector<std::uint32_t> petits(racine + 1);
  std::vector<std::uint64_t> grands((racine + 1) / 2);
  for (std::uint64_t v = 0; v <= racine; ++v) petits[v] = static_cast<std::uint32_t>((v + 1) / 2);
  for (std::uint64_t i = 1; i <= racine; i += 2) grands[i / 2] = (x / i + 1) / 2;
  for (std::uint64_t p = 3; p * p <= x; p += 2) {
    const std::uint32_t avant = petits[p - 1];
    if (petits[p] == avant) continue;
    const std::uint64_t fin = std::min(racine, x / (p * p));
    const std::uint64_t fin_grands = std::min(fin, racine / p);
    std::uint64_t i = 1;
    for (; i <= fin_grands; i += 2) grands[i / 2] -= grands[i * p / 2] - avant;
    for (; i <= fin; i += 2) grands[i / 2] -= petits[quotient_direct(x, i * p)] - avant;
    // v / p = k for p values v in a row
    for (std::uint64_t k = racine / p, v = racine; k >= p; --k) {
      const std::uint32_t retrait = petits[k] - avant;
      for (; v >= k * p; --v) petits[v] -= retrait;
    }
  }
  return grands[0];
}

}  // namespace premiers::compte
