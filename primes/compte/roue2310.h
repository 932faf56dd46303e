// SPDX-License-Identifier: MIT
// The wheel of 2310 = 2 * 3 * 5 * 7 * 11: the integers coprime to it, one in 4.8, in order.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace premiers::compte {

/// The integers coprime to 2310, numbered from 0 (for 1) on.
struct Roue2310 {
  static constexpr std::uint64_t tour = 2310;
  static constexpr std::uint64_t par_tour = 480;

  /// The integer of a number.
  static constexpr std::uint64_t valeur(std::uint64_t i) {
    return i / par_tour * tour + valeurs[i % par_tour];
  }
  /// How many integers of the wheel are <= n.
  static constexpr std::uint64_t nombre(std::uint64_t n) {
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

}  // namespace premiers::compte
