// SPDX-License-Identifier: MIT
// Integer square roots, and gcds, of one and two machine words.
#pragma once

#include <cmath>
#include <cstdint>

#include "primes/arithmetique/entier128.h"

namespace premiers {
inline namespace arithmetique {

/// floor(sqrt(n)), exact for every n.
inline std::uint64_t racine_carree(std::uint64_t n) {
  // The double root is at most one too large or too small: relative error 2^-52 on a number < 2^32.
  constexpr std::uint64_t racine_maximale = 0xffffffff;
  auto r = static_cast<std::uint64_t>(std::sqrt(static_cast<double>(n)));
  if (r > racine_maximale) r = racine_maximale;
  while (r * r > n) --r;
  while (r < racine_maximale && (r + 1) * (r + 1) <= n) ++r;
  return r;
}
std::uint64_t racine_carree(Entier128 n);

/// Is n the square of an integer?
bool est_carre(std::uint64_t n);
bool est_carre(Entier128 n);

/// The greatest common divisor of a and n, for odd n; n if a is 0.
std::uint64_t pgcd(std::uint64_t a, std::uint64_t n);
Entier128 pgcd(Entier128 a, Entier128 n);

}  // namespace arithmetique
}  // namespace premiers
