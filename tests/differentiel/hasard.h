// SPDX-License-Identifier: MIT
// Chance that can be repeated: the same seed gives the same draws with every compiler and library,
// which the distributions of the standard library do not promise. SplitMix64 (G. Steele, D. Lea,
// C. Flood, "Fast splittable pseudorandom number generators", 2014).
#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>

namespace differentiel {

struct Hasard {
  explicit Hasard(std::uint64_t graine) : etat_(graine) {}

  std::uint64_t tirer() {
    etat_ += 0x9E3779B97F4A7C15U;
    std::uint64_t z = etat_;
    z = (z ^ (z >> 30U)) * 0xBF58476D1CE4E5B9U;
    z = (z ^ (z >> 27U)) * 0x94D049BB133111EBU;
    return z ^ (z >> 31U);
  }

  /// From a to b, both included; a if b < a. The bias of the remainder does no harm here.
  std::int64_t entre(std::int64_t a, std::int64_t b) {
    if (b <= a) return a;
    const std::uint64_t largeur = static_cast<std::uint64_t>(b) - static_cast<std::uint64_t>(a) + 1;
    return static_cast<std::int64_t>(static_cast<std::uint64_t>(a) + tirer() % largeur);
  }

  /// From a to b, small values as likely as large ones: each number of digits has its chance.
  std::int64_t etage(std::int64_t a, std::int64_t b) {
    std::int64_t largeur = b - a;
    std::int64_t chiffres = 0;
    for (std::int64_t reste = largeur; reste > 9; reste /= 10) ++chiffres;
    for (std::int64_t n = entre(0, chiffres); n > 0; --n) largeur /= 10;
    return entre(a, a + largeur);
  }

  /// True once in n times.
  bool une_fois_sur(std::int64_t n) { return entre(1, n) == 1; }

  /// One element of a table.
  template <class T>
  const auto& parmi(const T& table) {
    return *(std::begin(table) + entre(0, static_cast<std::int64_t>(std::size(table)) - 1));
  }

 private:
  std::uint64_t etat_;
};

}  // namespace differentiel
