// SPDX-License-Identifier: MIT
// The second half of the quadratic sieve: from what has been gathered to a factor.
#pragma once

#include <NTL/ZZ.h>

#include <cstddef>
#include <functional>
#include <optional>

#include "primes/quadratique/creuse.h"
#include "primes/quadratique/relations.h"

namespace premiers::quadratique {

/// Row: entry of the base; column: cycle, the sum of its relations; 1: the exponent is odd.
MatriceCreuse matrice_des_exposants(const Recolte& recolte, const std::vector<Ensemble>& cycles,
                                    const std::function<void()>& signe_de_vie = {});

/// Removes relations that do not hold. There should be none: one wrong relation would make half of
/// all solutions worthless, so a fault, of the machine for instance, must not get that far.
/// Gives how many were removed.
std::size_t retirer_fausses(const NTL::ZZ& n, Recolte& recolte,
                            const std::function<void()>& signe_de_vie = {});

/// Solves the matrix of all cycles of the harvest and tries up to 64 of the solutions. nullopt if
/// none was lucky, or if there are too few cycles; the relations stay. `signe_de_vie`, if not
/// empty, is called now and then, ten times a second at least; it may throw.
std::optional<NTL::ZZ> facteur_des_relations(const NTL::ZZ& n, const Recolte& recolte,
                                             const std::function<void()>& signe_de_vie = {});

}  // namespace premiers::quadratique
