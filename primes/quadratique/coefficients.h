// SPDX-License-Identifier: MIT
// The choice of the leading coefficients a: products of primes of the base, near the size that is wished,
// and each of them once only.
//
// All primes of a but one are drawn from a reserve in the middle of the base, the last one is taken to fit.
// They do not run out: of some 70 primes in reserve 13 or 14 make a coefficient at 105 digits, which
// makes 2^12 or 2^13 polynomials.
#pragma once

#include <cstddef>
#include <cstdint>
#include <set>
#include <vector>

#include "primes/quadratique/base.h"
#include "primes/quadratique/reglages.h"

namespace premiers::quadratique {

struct Coefficients {
  Coefficients(const Base& base, const Reglages& reglages);

  /// The primes of the next coefficient, as indices into the base, increasing and below `limite`; empty
  /// if none is left.
  std::vector<std::size_t> suivant(std::size_t limite);

  double taille;       ///< wished log2 of a
  std::size_t nombre;  ///< of primes in a

 private:
  std::vector<std::size_t> tirer(double& ecart, std::size_t limite);

  const Base& base_;
  std::size_t reserve_debut_, reserve_fin_;  // of the base: where most of the primes come from
  std::set<std::vector<std::size_t>> deja_;  // what has been used
  std::uint64_t alea_ = 1;                   // state of the random choice
};

}  // namespace premiers::quadratique
