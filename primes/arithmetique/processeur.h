// SPDX-License-Identifier: MIT
// Which version of a loop for this processor? Decided here, and nowhere else.
//
// A loop that is worth more than one version has a table of them, best first, each beside the
// instructions that it needs; the last needs none and is the yardstick of the others. `choisir`
// takes the first that the processor can run, and whoever calls the loop keeps that choice. Tests
// ask the same table for every version. primes/boucles.h lists all such loops.
//
// Most versions are one plain function, inlined into functions with a target of their own (`Pour`).
// What the compiler does not find in it is written with intrinsics, under [[gnu::target]] with the
// names that stand in the table.
#pragma once

#include <cassert>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace premiers {
inline namespace arithmetique {

/// A set of instructions beyond those that all processors of the family have: one bit each.
using Instructions = std::uint32_t;

namespace instructions {
inline constexpr Instructions aucune = 0;
inline constexpr Instructions popcnt = 1U << 0;
inline constexpr Instructions bmi = 1U << 1;
inline constexpr Instructions avx2 = 1U << 2;
inline constexpr Instructions avx512f = 1U << 3;
inline constexpr Instructions avx512bw = 1U << 4;
inline constexpr Instructions avx512dq = 1U << 5;
inline constexpr Instructions avx512vl = 1U << 6;
inline constexpr Instructions avx512ifma = 1U << 7;
inline constexpr Instructions avx512vbmi2 = 1U << 8;
inline constexpr Instructions avx512vpopcntdq = 1U << 9;
inline constexpr Instructions fma = 1U << 10;
}  // namespace instructions

/// What this processor has; nothing on processors other than x86-64.
Instructions instructions_presentes();

/// What of it the loops may use: less where the build has the option PREMIERS_PROCESSEUR_MAX.
Instructions instructions_utilisables();

/// "popcnt+bmi"; "portable" for none.
std::string nommer(Instructions ensemble);

/// One version of a loop. F is a pointer to a function, or a struct of such.
template <class F>
struct Version {
  Instructions besoin;
  F boucle;
};

/// The versions of a loop, best first; the last needs nothing.
template <class F>
using Versions = std::span<const Version<F>>;

/// May a version with this need run here?
inline bool jouable(Instructions besoin) { return (besoin & ~instructions_utilisables()) == 0; }

/// The best one for this processor. Callers keep it: `static const auto boucle = choisir(...).boucle`.
template <class F>
const Version<F>& choisir(Versions<F> versions) {
  assert(!versions.empty() && versions.back().besoin == instructions::aucune);
  std::size_t i = 0;
  while (!jouable(versions[i].besoin)) ++i;
  return versions[i];
}

/// The function `corps`, always inlined, compiled for any processor and for some.
template <auto corps>
struct Pour;

template <class R, class... A, R (*corps)(A...)>
struct Pour<corps> {
  static R tous(A... a) { return corps(a...); }
#if defined(__x86_64__)
  [[gnu::target("popcnt")]] static R popcnt(A... a) { return corps(a...); }
  [[gnu::target("popcnt,bmi")]] static R popcnt_bmi(A... a) { return corps(a...); }
  [[gnu::target("avx2")]] static R avx2(A... a) { return corps(a...); }
  [[gnu::target("avx512f,avx512bw,avx512dq,avx512vl")]] static R avx512(A... a) {
    return corps(a...);
  }
#endif
};

}  // namespace arithmetique
}  // namespace premiers
