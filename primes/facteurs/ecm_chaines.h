// SPDX-License-Identifier: MIT
// The first stage of ECM as a straight program, written by the compiler (once, in ecm_chaines.cpp:
// the search takes seconds).
//
// On a Montgomery curve P + Q can only be computed when P - Q is known, so k P goes along a Lucas
// chain. Where PRAC (P. L. Montgomery, "Evaluating recurrences of form X_(m+n) = f(X_m, X_n,
// X_(m-n)) via Lucas chains", 1983) searches such a chain while it runs, here the search is done at
// compile time, wider than one could afford at run time, and what is left is a list of
// instructions "slot = slot a + slot b, whose difference is in slot c" over four slots.
//
// The prime powers q = p^e stand in increasing order, each contributing one factor p. So the
// program for a bound B1 is a prefix of the program for any greater bound: one table serves all.
// Cost: 6 products an addition or doubling, about 9 products a bit of lcm(1..B1).
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace premiers::ecm {

/// slot[vers] = slot[a] + slot[b], where slot[ecart] = +-(slot[a] - slot[b]). A doubling has a ==
/// b, and then `ecart` means nothing.
struct Instruction {
  std::uint8_t vers, a, b, ecart;
};

/// The greatest first-stage bound that there is a program for.
inline constexpr int b1_maximal = 2000;

struct Programme {
  static constexpr std::size_t capacite = 5000;
  std::array<Instruction, capacite> instructions{};
  std::array<std::uint16_t, b1_maximal + 1> fin{};  ///< fin[B1]: where the prefix for B1 ends
};

extern const Programme programme;

}  // namespace premiers::ecm
