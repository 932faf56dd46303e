// SPDX-License-Identifier: MIT
// Many short increasing lists of numbers, in little room.
//
// Of each number only the difference from the one before is kept, seven bits to a byte, the last
// byte of a number marked by bit 7. A relation of the quadratic sieve has some 25 factors, most of
// them small or close to each other: a byte and a quarter for each instead of four.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <vector>

namespace premiers::quadratique {

struct ListesSerrees {
  /// Appends a list; it may hold a number more than once. Gives its place.
  std::size_t ajouter(const std::vector<std::uint32_t>& croissante) {
    const std::size_t place = octets.size();
    std::uint32_t avant = 0;
    for (const std::uint32_t nombre : croissante) {
      std::uint32_t ecart = nombre - avant;
      for (; ecart >= 128; ecart /= 128) octets.push_back(static_cast<std::uint8_t>(ecart % 128));
      octets.push_back(static_cast<std::uint8_t>(128 + ecart));
      avant = nombre;
    }
    return place;
  }

  /// Calls f with each of the `combien` numbers of the list at that place.
  template <class F>
  void pour_chaque(std::size_t place, std::size_t combien, F f) const {
    std::uint32_t nombre = 0;
    for (; combien > 0; --combien) {
      unsigned bits = 0;
      for (; octets[place] < 128; ++place, bits += 7) {
        nombre += static_cast<std::uint32_t>(octets[place]) << bits;
      }
      nombre += static_cast<std::uint32_t>(octets[place++] - 128) << bits;
      f(nombre);
    }
  }

  std::deque<std::uint8_t> octets;  // which grows without being copied
};

}  // namespace premiers::quadratique
