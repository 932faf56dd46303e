// SPDX-License-Identifier: MIT
// The small prime factors of a long integer.
//
// Dividing a long integer by every small prime means walking its words again and again. Here the
// primes are multiplied together as far as the products fit a word; one walk gives the remainder by
// a product, and what divides the integer divides the remainder, which takes one multiplication to
// tell (petits_diviseurs.h). 300 primes cost 50 walks.
#pragma once

#include <NTL/ZZ.h>

#include <cstdint>
#include <vector>

#include "primes/facteurs/facteur.h"

namespace premiers::facteurs {

/// Every prime factor below this is taken out: 304 primes in a microsecond for 20 to 40 digits.
/// ECM, which comes next, needs it above 1000 or so; at ten times as many primes the division takes
/// as long as several of its curves.
inline constexpr std::uint64_t borne_petits_facteurs = 2011;

/// Divides n >= 1 by its prime factors below borne_petits_facteurs, as often as they go, and gives
/// them by increasing prime.
std::vector<Facteur64> retirer_petits_facteurs(NTL::ZZ& n);

}  // namespace premiers::facteurs
