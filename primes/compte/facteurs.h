// SPDX-License-Identifier: MIT
// For each m <= z coprime to 2310, in two bytes: its Möbius value, its smallest prime factor, and
// whether all of its prime factors are <= y. It is what the hard leaves ask of an m.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace premiers {

/// The wheel of 2310 = 2 * 3 * 5 * 7 * 11: the integers coprime to it, numbered from 0 (for 1) on.
struct Roue2310 {
  static constexpr std::uint64_t tour = 2310;
  static constexpr std::uint64_t par_tour = 480;

  /// The integer of a number.
  static std::uint64_t valeur(std::uint64_t i) {
    return i / par_tour * tour + valeurs[i % par_tour];
  }
  /// How many integers of the wheel are <= n.
  static std::uint64_t nombre(std::uint64_t n) {
    return n / tour * par_tour + nombres[static_cast<std::size_t>(n % tour)];
  }

 private:
  static constexpr std::array<std::uint16_t, par_tour> valeurs = [] {
    std::array<std::uint16_t, par_tour> t{};
    std::size_t i = 0;
    for (std::size_t n = 1; n < tour; ++n) {
      if (n % 2 && n % 3 && n % 5 && n % 7 && n % 11) t[i++] = static_cast<std::uint16_t>(n);
    }
    return t;
  }();
  static constexpr std::array<std::uint16_t, tour> nombres = [] {
    std::array<std::uint16_t, tour> t{};
    std::uint16_t nombre = 0;
    for (std::size_t n = 1; n < tour; ++n) {
      if (n % 2 && n % 3 && n % 5 && n % 7 && n % 11) ++nombre;
      t[n] = nombre;
    }
    return t;
  }();
};

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
  /// m is not squarefree or has a prime factor > y.
  std::vector<std::uint16_t> entrees;
};

}  // namespace premiers
