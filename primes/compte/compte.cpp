// SPDX-License-Identifier: MIT
// Legendre's formula takes a = pi(y) with cbrt(x) < y <= sqrt(x):
//     pi(x) = phi(x, a) + a - 1 - P2(x, a).
// phi(x, a), the integers <= x without a prime factor <= y, unfolds by phi(n, b) = phi(n, b - 1) -
// phi(n / p_b, b - 1) into leaves mu(n) phi(x / n, b). A branch stops at b = 8 (ordinary leaf) or
// as soon as n > z (special leaf); a special leaf is easy or hard by whether it needs a sieve.
// These are J. C. Lagarias, V. S. Miller, A. M. Odlyzko, "Computing pi(x): the Meissel-Lehmer
// method" (1985) and M. Deleglise, J. Rivat, "Computing pi(x): the Meissel, Lehmer, Lagarias,
// Miller, Odlyzko method" (1996); the second bound z and the halved sums are X. Gourdon's (2001).
//
//   part                   file                 work                share of the time at 10^14
//   ordinary leaves        phi                  O(z)                 1 %
//   easy special leaves    faciles              pairs of primes     30 %
//   hard special leaves    difficiles           sieve to x / z      53 %
//   P2                     p2                   sieve to x / y      16 %
//
// All sums are taken modulo 2^64; they are large and cancel, and the result is below 2^64.
#include "primes/compte/compte.h"

#include <algorithm>
#include <cmath>

#include "primes/arithmetique/racines.h"
#include "primes/compte/difficiles.h"
#include "primes/compte/faciles.h"
#include "primes/compte/lucy.h"
#include "primes/compte/p2.h"
#include "primes/compte/phi.h"

namespace premiers::compte {

namespace {

// Effect: below, the simple method is faster. Found by timing both: equal near 10^7.
constexpr std::uint64_t borne_lucy = 20'000'000;

// Effect: a larger y makes P2 cheaper and the hard leaves more. y = alpha cbrt(x) with the alpha
// that timed best: 2.5 at 10^10, 4.5 at 10^12, 9 at 10^14, 16 at 10^16, 27 at 10^18; flat within 30
// %. Below 2^63 it stays under 37; Plan takes up to 64.
std::uint64_t choisir_y(std::uint64_t x) {
  const auto reel = static_cast<double>(x);
  const double alpha = std::max(2.0, 4.5 * std::pow(reel / 1e12, 0.13));
  return std::min(static_cast<std::uint64_t>(alpha * std::cbrt(reel)), racine_carree(x));
}

}  // namespace

std::uint64_t nombre_premiers(std::uint64_t x, const Suivi& suivi) {
  if (x < borne_lucy) return compte_lucy(x);
  const std::uint64_t y = choisir_y(x);
  // z = y: a larger z, up to 2 y, gained nothing from 10^12 to 10^18
  const Plan plan(x, y, y);
  const std::uint64_t phi = feuilles_ordinaires(plan) +
                            feuilles_faciles(plan, etape(suivi, 0.0, 0.3)) +
                            feuilles_difficiles(plan, etape(suivi, 0.3, 0.84));
  return phi + plan.nombre() - 1 - compte_p2(plan, etape(suivi, 0.84, 1.0));
}

}  // namespace premiers::compte
