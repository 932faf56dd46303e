// SPDX-License-Identifier: MIT
// The two sizes of numbers that the search of a range is written for: those that fit words, and all
// others. Everything that is a template here is made for these two, once, in its own file.
#pragma once

#include <NTL/ZZ.h>

#include <cstddef>
#include <cstdint>

#include "primes/concatenations/concatenations.h"
#include "primes/concatenations/ensemble.h"

namespace premiers::concatenations {

/// 10^19 < 2^64, and a number of 19 digits has at most 2^18 ways.
struct Petits {
  using Valeur = std::uint64_t;
  using Compte = std::uint64_t;
  static constexpr std::size_t chiffres_max = 19;
};

struct Grands {
  using Valeur = NTL::ZZ;
  using Compte = NTL::ZZ;
  static constexpr std::size_t chiffres_max = Recherche::chiffres_max;
};

/// A set of cuts, each told by the number of digits before it.
template <typename Taille>
using Coupures = Ensemble<Taille::chiffres_max + 1>;

}  // namespace premiers::concatenations
