// SPDX-License-Identifier: MIT
// The wheel of 30: of 30 consecutive integers only 8 are coprime to 2, 3 and 5, so one byte holds
// the flags of 30 integers. Byte o stands for 30 o .. 30 o + 29, bit b for 30 o + residus[b].
//
// Everything that walks or crosses off such bytes reads the tables below; all of them follow from
// `residus` at compile time.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace premiers {
inline namespace arithmetique {

/// The residues coprime to 30, in increasing order; the index is the bit number in a byte.
inline constexpr std::array<std::uint8_t, 8> residus{1, 7, 11, 13, 17, 19, 23, 29};

/// ecarts[i]: from residus[i] to the next integer coprime to 30.
inline constexpr std::array<std::uint8_t, 8> ecarts = [] {
  std::array<std::uint8_t, 8> e{};
  for (std::size_t i = 0; i < 8; ++i) {
    const int suivant = i < 7 ? residus[i + 1] : 30 + residus[0];
    e[i] = static_cast<std::uint8_t>(suivant - residus[i]);
  }
  return e;
}();

/// indice_suivant[r], 0 <= r < 30: index of the first residue >= r. If r is itself coprime to 30,
/// this is its bit number.
inline constexpr std::array<std::uint8_t, 30> indice_suivant = [] {
  std::array<std::uint8_t, 30> t{};
  for (std::size_t r = 0; r < 30; ++r) {
    std::uint8_t i = 0;
    while (residus[i] < r) ++i;
    t[r] = i;
  }
  return t;
}();

/// All bits of a byte but the one for r, which is coprime to 30.
constexpr std::uint8_t sans_drapeau(std::uint64_t r) {
  return static_cast<std::uint8_t>(~(1U << indice_suivant[static_cast<std::size_t>(r % 30)]));
}

/// valeurs_bits[i]: what bit i of a 64-bit word (8 bytes, the first one lowest) stands for, counted
/// from the first integer of the word; 30 * 7 + 29 = 239 at most.
inline constexpr std::array<std::uint8_t, 64> valeurs_bits = [] {
  std::array<std::uint8_t, 64> t{};
  for (std::size_t i = 0; i < 64; ++i) {
    t[i] = static_cast<std::uint8_t>(30 * (i / 8) + residus[i % 8]);
  }
  return t;
}();

/// The bytes that a prime 30 k + r crosses off, r = residus[R]: its multiple by 30 j + c, c =
/// residus[C], lies `decalage` bytes after byte (30 k + r) j + k c, at the bit that `masque`
/// clears.
template <std::size_t R, std::size_t C>
struct Croix {
  static constexpr unsigned produit = unsigned{residus[R]} * residus[C];
  /// Bytes from (30 k + r) j + k c to the multiple.
  static constexpr unsigned decalage = produit / 30;
  /// All bits but the one of the multiple.
  static constexpr auto masque = sans_drapeau(produit);
  /// To the multiple by the next cofactor: k * ecarts[C] + retenue bytes.
  static constexpr unsigned retenue = (produit % 30 + unsigned{residus[R]} * ecarts[C]) / 30;
};

static_assert(sans_drapeau(1) == 0xFE && sans_drapeau(59) == 0x7F);
static_assert(ecarts[0] == 6 && ecarts[7] == 2 && valeurs_bits[63] == 239);

}  // namespace arithmetique
}  // namespace premiers
