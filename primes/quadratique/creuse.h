// SPDX-License-Identifier: MIT
// Sparse matrices over GF(2): of each column the rows in which it has a 1.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace premiers::quadratique {

/// A set of small numbers, each once, increasing.
using Ensemble = std::vector<std::uint32_t>;

struct MatriceCreuse {
  std::size_t lignes = 0;
  std::vector<Ensemble> colonnes;  // numbers below `lignes`
};

/// What is in one of the sets and not in the other: the sum of two columns.
Ensemble difference_symetrique(const Ensemble& a, const Ensemble& b);

/// The sum of those of the sets that have these numbers; all elements are below `borne`.
Ensemble somme(const std::vector<Ensemble>& ensembles, const Ensemble& numeros, std::size_t borne);

/// Puts the numbers into order and keeps those that occur an odd number of times, once.
void garder_impairs(Ensemble& nombres);

}  // namespace premiers::quadratique
