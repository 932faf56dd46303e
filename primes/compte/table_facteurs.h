// SPDX-License-Identifier: MIT
// For each m <= z coprime to 2310, in two bytes: its Möbius value, its smallest prime factor, and
// whether all of its prime factors are <= y. It is what the hard leaves ask of an m.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace premiers::compte {

/// The entries. Memory 0.42 z bytes, time O(z log log z).
struct TableFacteurs {
  /// `premiers` by rank, up to y < 2^32; y <= z < 13 y.
  TableFacteurs(const std::vector<std::uint32_t>& premiers, std::uint64_t z);

  /// Whether the i-th m is squarefree with all prime factors in ]q, y]; 13 <= q < 65535 prime, m
  /// > 1.
  bool convient(std::size_t i, std::uint32_t q) const { return entrees[i] > q; }
  /// Möbius value of an m that suits: true for +1, false for -1.
  bool pair(std::size_t i) const { return (entrees[i] & 1) != 0; }

  /// With l the smallest prime factor, at most 65535: l (odd) for mu = +1, l - 1 for mu = -1, 0 if
  /// m is not squarefree or has a prime factor > y. At the end as many 0 as fill a group of 16.
  std::vector<std::uint16_t> entrees;
};

}  // namespace premiers::compte
