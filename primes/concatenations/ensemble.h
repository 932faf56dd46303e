// SPDX-License-Identifier: MIT
// A set of small integers, one bit each, that is quick to go through: only its members are met.
// With one word of 64 bits all loops over words vanish.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

namespace premiers::concatenations {

/// A set of integers below `capacite`.
template <std::size_t capacite>
struct Ensemble {
  /// What `plus_petit` gives if there is no member.
  static constexpr std::size_t aucun = capacite;

  void ajouter(std::size_t i) { mots[i / 64] |= std::uint64_t{1} << i % 64; }
  bool contient(std::size_t i) const { return (mots[i / 64] >> i % 64 & 1) != 0; }

  /// The smallest member, or `aucun`.
  std::size_t plus_petit() const {
    for (std::size_t m = 0; m < mots.size(); ++m) {
      if (mots[m] != 0) return 64 * m + static_cast<std::size_t>(std::countr_zero(mots[m]));
    }
    return aucun;
  }

  /// Calls f(i) for the members i >= `debut` in increasing order; debut < capacite.
  template <typename F>
  void pour_chaque(std::size_t debut, F f) const {
    std::uint64_t masque = ~std::uint64_t{0} << debut % 64;
    for (std::size_t m = debut / 64; m < mots.size(); ++m) {
      for (std::uint64_t mot = mots[m] & masque; mot != 0; mot &= mot - 1) {
        f(64 * m + static_cast<std::size_t>(std::countr_zero(mot)));
      }
      masque = ~std::uint64_t{0};
    }
  }

  std::array<std::uint64_t, (capacite + 63) / 64> mots{};
};

}  // namespace premiers::concatenations
