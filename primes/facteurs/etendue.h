// SPDX-License-Identifier: MIT
// The smallest prime factors, up to 10^7, of integers of any size that follow each other.
//
// Where the first multiple of each prime lies behind the first integer is found for many primes at
// once (restes.h), then multiples are crossed off: whoever comes first leaves its name. It ends as
// soon as every integer has one.
//
// Cost: 1 to 6 ms for 664,579 primes (20 to 199 digits, with AVX-512), and some 20 ns for each
// integer. The work for one integer is the same as for a thousand; but most single integers have a
// factor among the first few primes, and are done in a microsecond. Memory: 4 bytes for each integer,
// and 2.7 MB for the primes, which are kept.
#pragma once

#include <NTL/ZZ.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace premiers::facteurs {

/// Factors are sought up to here. Effect: what a composite above 2^100 leaves in the table, where the
/// operator can see it, and the milliseconds that one number without such a factor takes: with ten times as
/// much there are nine times as many primes. So it is fixed with what can be seen (docs/architecture.md).
inline constexpr std::uint64_t plus_grand_diviseur = 10'000'000;

struct Etendue {
  /// `nombre` < 2^31 integers from `debut` > 0 on; primes up to `au_dela_de` are left out.
  Etendue(const NTL::ZZ& debut, std::size_t nombre, std::uint64_t au_dela_de = 0);

  /// Of debut + i the smallest prime factor in ]au_dela_de, `plus_grand_diviseur`]; 0 if there is
  /// none. A prime in there has itself.
  std::uint32_t operator[](std::size_t i) const { return facteurs_[i]; }

  std::size_t nombre() const { return facteurs_.size(); }

 private:
  std::size_t rayer(std::uint32_t p, std::uint32_t manque);

  std::vector<std::uint32_t> facteurs_;
};

}  // namespace premiers::facteurs
