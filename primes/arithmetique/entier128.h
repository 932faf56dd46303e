// SPDX-License-Identifier: MIT
// The 128-bit unsigned integer of the compilers (gcc, clang), under a name that compiles without a
// pedantic warning, and its halves.
#pragma once

#include <bit>
#include <cstdint>

namespace premiers {
inline namespace arithmetique {

__extension__ typedef unsigned __int128 Entier128;

/// The low and the high 64 bits of x.
constexpr std::uint64_t bas(Entier128 x) { return static_cast<std::uint64_t>(x); }
constexpr std::uint64_t haut(Entier128 x) { return static_cast<std::uint64_t>(x >> 64); }

/// haut * 2^64 + bas.
constexpr Entier128 assembler(std::uint64_t haut, std::uint64_t bas) {
  return (Entier128{haut} << 64) | bas;
}

/// x & masque in every limb of x.
constexpr std::uint64_t masquer(std::uint64_t x, std::uint64_t masque) { return x & masque; }
constexpr Entier128 masquer(Entier128 x, std::uint64_t masque) {
  return assembler(haut(x) & masque, bas(x) & masque);
}

/// Number of bits of x: 0 for 0.
constexpr int bits(std::uint64_t x) { return static_cast<int>(std::bit_width(x)); }
constexpr int bits(Entier128 x) { return haut(x) != 0 ? 64 + bits(haut(x)) : bits(bas(x)); }

/// Number of zero bits at the low end of x > 0.
constexpr int zeros_finals(std::uint64_t x) { return std::countr_zero(x); }
constexpr int zeros_finals(Entier128 x) {
  return bas(x) != 0 ? zeros_finals(bas(x)) : 64 + zeros_finals(haut(x));
}

}  // namespace arithmetique
}  // namespace premiers
