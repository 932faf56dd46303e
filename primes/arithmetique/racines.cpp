// SPDX-License-Identifier: MIT
// Square roots start from the floating-point root, whose error is then removed in integers. The gcd
// is the binary one (J. Stein, "Computational problems associated with Racah algebra", Journal of
// Computational Physics 1, 1967): shifts and subtractions, no division, about one step per bit.
#include "primes/arithmetique/racines.h"

#include <cmath>

namespace premiers {
inline namespace arithmetique {
namespace {

template <class Entier>
Entier pgcd_binaire(Entier a, Entier n) {
  if (a == 0) return n;
  a >>= zeros_finals(a);
  while (a != n) {
    const Entier ecart = a > n ? a - n : n - a;
    n = a < n ? a : n;
    a = ecart >> zeros_finals(ecart);
  }
  return n;
}

}  // namespace

std::uint64_t racine_carree(Entier128 n) {
  if (haut(n) == 0) return racine_carree(bas(n));
  // One Newton step from the double root (53 good bits) leaves an error of a few units at most; it
  // lands on the root or above it.
  constexpr double plafond = 18446744073709549568.0;  // the largest double below 2^64
  double depart = std::sqrt(static_cast<double>(n));
  if (depart > plafond) depart = plafond;
  const auto x = static_cast<std::uint64_t>(depart);
  Entier128 r = (Entier128{x} + n / x) / 2;
  if (haut(r) != 0) r = ~std::uint64_t{0};
  while (r * r > n) --r;
  while (r < ~std::uint64_t{0} && (r + 1) * (r + 1) <= n) ++r;
  return bas(r);
}

bool est_carre(std::uint64_t n) {
  const std::uint64_t r = racine_carree(n);
  return r * r == n;
}

bool est_carre(Entier128 n) {
  const Entier128 r = racine_carree(n);
  return r * r == n;
}

std::uint64_t pgcd(std::uint64_t a, std::uint64_t n) { return pgcd_binaire(a, n); }
Entier128 pgcd(Entier128 a, Entier128 n) { return pgcd_binaire(a, n); }

}  // namespace arithmetique
}  // namespace premiers
