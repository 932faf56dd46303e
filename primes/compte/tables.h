// SPDX-License-Identifier: MIT
// What the parts of the combinatorial prime count share: the choice of y and z, the primes up to y,
// and tables of pi(n) at two bits for each integer coprime to 30.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "primes/arithmetique/bits.h"
#include "primes/arithmetique/roue.h"
#include "primes/crible/fenetres.h"

namespace premiers::compte {

/// pi(n) for n in a window of integers, from a word of flags and the count before it for every 240
/// integers: 16 bytes for 240 integers, one cache line touched by a look-up.
struct TablePi {
  /// A table that covers nothing yet; `avancer` fills it with what `fenetres`, which start at byte
  /// 0 and end with a word, give next.
  TablePi() = default;
  /// The table of all n <= borne.
  explicit TablePi(std::uint64_t borne);

  /// Moves the window on to the next `nombre` words, right after the present window.
  void avancer(crible::Fenetres& fenetres, std::size_t nombre);

  /// The window is [debut(), fin()).
  std::uint64_t debut() const { return debut_; }
  std::uint64_t fin() const { return debut_ + 240 * cases_.size(); }

  /// pi(n) for n >= 5 in the window.
  [[gnu::always_inline]] std::uint64_t operator()(std::uint64_t n) const {
    const auto i = static_cast<std::uint32_t>(n - debut_);
    const Case& c = cases_[i / 240];
    return c.avant + compter_jusqu_a(c.drapeaux, i % 240);
  }

 private:
  struct Case {
    std::uint64_t drapeaux;
    std::uint64_t avant;  // pi of the last integer before the case
  };
  std::uint64_t debut_ = 0;
  std::uint64_t total_ = 3;  // 2, 3 and 5 have no flag
  std::vector<Case> cases_;
};

/// Clears the flags of the odd multiples of p > 5 in words that start at 0, 240 integers to a word.
inline void effacer_multiples(std::span<std::uint64_t> mots, std::uint64_t p) {
  for (std::uint64_t n = p; n < 240 * mots.size(); n += 2 * p) {
    const std::uint8_t i = indice_suivant[static_cast<std::size_t>(n % 30)];
    if (residus[i] == n % 30) mots[n / 240] &= ~(std::uint64_t{1} << (8 * (n % 240 / 30) + i));
  }
}

/// The primes up to `borne` in increasing order, at their rank: [0] is 0, [1] is 2.
/// borne < 2^32.
std::vector<std::uint32_t> premiers_par_rang(std::uint64_t borne);

/// The bounds of a count and the tables every part of it reads.
struct Plan {
  /// 10^4 <= x < 2^63; cbrt(x) < y <= 64 cbrt(x); y <= z <= sqrt(x); y >= 23; z < 13 y (else
  /// std::invalid_argument).
  Plan(std::uint64_t x, std::uint64_t y, std::uint64_t z);

  std::uint64_t x;
  std::uint64_t y;
  std::uint64_t z;
  std::vector<std::uint32_t> premiers;  // up to y
  TablePi pi;                           // up to y

  std::uint64_t nombre() const { return premiers.size() - 1; }  // pi(y)
};

}  // namespace premiers::compte
