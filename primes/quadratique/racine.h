// SPDX-License-Identifier: MIT
// The last step of the quadratic sieve: relations whose product is a square give a factor.
#pragma once

#include <NTL/ZZ.h>

#include <functional>
#include <optional>

#include "primes/quadratique/relations.h"

namespace premiers::quadratique {

/// Solves the matrix of all columns of the harvest and tries up to 64 of the solutions: each gives
/// U^2 = V^2 mod n, and gcd(U - V, n) is a proper factor for half of them or more. nullopt if
/// none was lucky, or if there are too few columns. `signe_de_vie` as for noyau.
std::optional<NTL::ZZ> facteur_des_relations(const NTL::ZZ& n, const Recolte& recolte,
                                             const std::function<void()>& signe_de_vie = {});

}  // namespace premiers::quadratique
