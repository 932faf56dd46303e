// SPDX-License-Identifier: MIT
// Integer square roots, and gcds, of one and two machine words.
#pragma once

#include <cstdint>

#include "primes/arithmetique/entier128.h"

namespace premiers {

/// floor(sqrt(n)), exact for every n.
std::uint64_t racine_carree(std::uint64_t n);
std::uint64_t racine_carree(Entier128 n);

/// Is n the square of an integer?
bool est_carre(std::uint64_t n);
bool est_carre(Entier128 n);

/// The greatest common divisor of a and n, for odd n; n if a is 0.
std::uint64_t pgcd(std::uint64_t a, std::uint64_t n);
Entier128 pgcd(Entier128 a, Entier128 n);

}  // namespace premiers
