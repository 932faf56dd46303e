// SPDX-License-Identifier: MIT
// A prime and how often it divides: what every way to split an integer gives, for words and for long
// integers.
#pragma once

#include <NTL/ZZ.h>

#include <cstdint>

namespace premiers::facteurs {

/// premier^exposant, exposant >= 1.
template <typename Entier>
struct FacteurDe {
  Entier premier;
  std::int64_t exposant;
  friend bool operator==(const FacteurDe&, const FacteurDe&) = default;
};

using Facteur64 = FacteurDe<std::uint64_t>;
using Facteur = FacteurDe<NTL::ZZ>;

}  // namespace premiers::facteurs
