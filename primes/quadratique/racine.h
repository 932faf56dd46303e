// SPDX-License-Identifier: MIT
// The square root: relations whose product is a square give U^2 = V^2 mod n, and gcd(U - V, n) is a
// proper factor for half of such sets or more.
#pragma once

#include <NTL/ZZ.h>

#include <cstdint>
#include <vector>

#include "primes/quadratique/relations.h"

namespace premiers::quadratique {

/// Does a relation hold: is u^2 the product of its primes, modulo n?
bool tient(const NTL::ZZ& n, const Recolte& recolte, const Relation& relation);

/// gcd(U - V, n) for relations, given by their indices, whose product is a square. 0 if it is none:
/// some prime, large or of the base, occurs an odd number of times.
NTL::ZZ pgcd_des_racines(const NTL::ZZ& n, const Recolte& recolte,
                         const std::vector<std::uint32_t>& indices);

}  // namespace premiers::quadratique
