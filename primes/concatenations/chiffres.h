// SPDX-License-Identifier: MIT
// Sets of digits, and what the four answers about a decade (primes/crible/decades.h) say of the ten
// numbers that end in them: one look-up each.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "primes/crible/decades.h"

namespace premiers::concatenations {

/// Sets of digits, as ten bits.
using Chiffres = unsigned;
inline constexpr Chiffres premiers_a_un_chiffre = 1U << 2 | 1U << 3 | 1U << 5 | 1U << 7;

/// The set of digits behind four bits of a decade.
inline constexpr auto en_chiffres = [] {
  std::array<std::uint16_t, 16> t{};
  for (std::size_t touches = 0; touches < 16; ++touches) {
    for (std::size_t i = 0; i < 4; ++i) {
      if ((touches >> i & 1) != 0)
        t[touches] |= static_cast<std::uint16_t>(1U << crible::finales[i]);
    }
  }
  return t;
}();

/// masques[touches][i]: all bits, if number i of the decade is prime.
inline constexpr auto masques = [] {
  std::array<std::array<std::uint64_t, 4>, 16> t{};
  for (std::size_t touches = 0; touches < 16; ++touches) {
    for (std::size_t i = 0; i < 4; ++i) t[touches][i] = 0 - (std::uint64_t{touches} >> i & 1);
  }
  return t;
}();

}  // namespace premiers::concatenations
