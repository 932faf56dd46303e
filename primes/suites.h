// SPDX-License-Identifier: MIT
// Runs of consecutive primes with a fixed difference (twin primes for 2), found in one walk.
#pragma once

#include <cstdint>

namespace premiers {

struct Suites {
  /// Runs of at least `minimum` >= 2 primes, each `difference` above the one before.
  Suites(std::int64_t difference, std::int64_t minimum)
      : difference_(difference), minimum_(minimum) {}

  /// Takes the next consecutive prime. Gives how many primes, this one the last, have to be shown
  /// now: `minimum` when its run has just grown to that, 1 when it grows further, else 0.
  std::int64_t suivant(std::int64_t premier) {
    const bool prolonge = longueur_ > 0 && premier - precedent_ == difference_;
    precedent_ = premier;
    longueur_ = prolonge ? longueur_ + 1 : 1;
    paires_ += prolonge ? 1 : 0;
    if (longueur_ < minimum_) return 0;
    return longueur_ == minimum_ ? minimum_ : 1;
  }

  /// The ordinal, among all pairs with the difference met so far, of the first pair of the run
  /// that has just grown to `minimum`. Pairs of runs too short to be shown count too.
  std::int64_t numero() const { return paires_ - minimum_ + 2; }

 private:
  std::int64_t difference_;
  std::int64_t minimum_;
  std::int64_t precedent_ = 0;
  std::int64_t longueur_ = 0;
  std::int64_t paires_ = 0;
};

}  // namespace premiers
