// SPDX-License-Identifier: MIT
// Sieving primes on their way from multiple to multiple, sixteen at a time, or eight.
//
// A prime with few multiples in a segment costs less for these than for their number, which nobody can
// foretell: leaving a loop of its own is a jump that the processor has guessed wrong, at some twenty
// cycles. So sixteen primes of one residue mod 30 walk on together, those already beyond the end wait
// behind a mask, and the multiples are only written down; to cross them off afterwards takes no jump
// that could be guessed wrong.
//
// With p mod 30 fixed, all that a step on the wheel of 210 has to know is a number of 16 bits for each of
// 48 cofactors. That table fits into two registers of AVX-512, where one instruction looks up sixteen
// entries; with AVX2 it takes six registers, eight primes, and a dozen instructions. Cost: 0.6 ns for a
// multiple on a Xeon at 2.5 GHz, while a prime has one in each segment or more, with AVX2 about twice as
// much, and some 1.4 ns to cross it off.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "primes/arithmetique/processeur.h"
#include "primes/crible/cofacteurs.h"

namespace premiers::crible {

namespace roue_210 {

inline constexpr std::uint32_t module = 210;
inline constexpr std::uint32_t nombre = 48;

/// The cofactors below 210 that are coprime to it.
inline constexpr std::array<std::uint8_t, nombre> valeurs =
    cofacteurs<std::uint8_t, module, nombre>();
static_assert(valeurs.back() == module - 1);

/// By r < 210: the index of the first value >= r.
inline constexpr std::array<std::uint8_t, module> suivants = [] {
  std::array<std::uint8_t, module> t{};
  std::uint8_t i = 0;
  for (std::uint32_t r = 0; r < module; ++r) {
    if (valeurs[i] < r) ++i;
    t[r] = i;
  }
  return t;
}();

}  // namespace roue_210

/// Primes 30 k + r of one residue r, in rows: a block of 8 KB.
struct alignas(64) Marcheurs {
  static constexpr std::size_t places = 1024;
  /// Index of the next multiple's cofactor in `roue_210::valeurs`, and k from bit `ou_k` on.
  std::array<std::uint32_t, places> etat;
  /// The byte of that multiple, counted from the start of the segment, from bit `ou_octet` on.
  std::array<std::uint32_t, places> place;

  static constexpr unsigned ou_k = 6;
  static constexpr unsigned ou_octet = 9;
};

/// Lets the first `nombre` primes of `m`, of residue `residus[residu]` mod 30, all between 30 and 2^24,
/// walk to the end of a segment of `taille` bytes, at most 2^19, so that their places count from there.
/// Writes the multiples passed, in any order, to `sortie`: their byte from bit `ou_octet` on, and in the
/// lowest eight bits those of that byte that are to stay. Returns how many.
/// `sortie` has room for them and 16 more.
std::size_t marcher(Marcheurs& m, std::size_t nombre, std::size_t residu, std::uint32_t taille,
                    std::uint32_t* sortie);
Versions<decltype(&marcher)> versions_de_marcher();

}  // namespace premiers::crible
