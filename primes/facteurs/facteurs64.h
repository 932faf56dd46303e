// SPDX-License-Identifier: MIT
// The complete factorisation of a 64-bit integer. Methods and costs are told in facteurs64.cpp.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "primes/facteurs/facteur.h"

namespace premiers::facteurs {

/// The prime powers of an integer, by increasing prime.
struct Facteurs64 {
  static constexpr std::size_t capacite = 15;
  std::array<Facteur64, capacite> puissances{};
  std::size_t nombre = 0;

  const Facteur64* begin() const { return puissances.data(); }
  const Facteur64* end() const { return puissances.data() + nombre; }
  const Facteur64& operator[](std::size_t i) const { return puissances[i]; }
};

/// All prime factors of n, with certainty, for every n. Empty for 0 and 1.
Facteurs64 facteurs(std::uint64_t n);

/// The same as if all elliptic curves failed: so slow that only tests want it.
Facteurs64 facteurs_sans_courbes(std::uint64_t n);

/// The smallest prime factor of n: n itself when n is prime. 0 and 1 are given back as they are.
std::uint64_t plus_petit_facteur(std::uint64_t n);

}  // namespace premiers::facteurs
