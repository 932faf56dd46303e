// SPDX-License-Identifier: MIT
// A line of text put together without memory of the heap: a signal handler may write it, and so may
// what reports that there is no memory left.
#pragma once

#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <system_error>

namespace premiers {

/// What does not fit any more is left out.
struct Ligne {
  Ligne& operator<<(std::string_view texte) {
    longueur += texte.copy(octets.data() + longueur, octets.size() - longueur);
    return *this;
  }
  Ligne& operator<<(std::int64_t nombre) {
    char* debut = octets.data() + longueur;
    const auto fin = std::to_chars(debut, octets.data() + octets.size(), nombre);
    if (fin.ec == std::errc{}) longueur = static_cast<std::size_t>(fin.ptr - octets.data());
    return *this;
  }
  std::string_view texte() const { return {octets.data(), longueur}; }

  std::array<char, 250> octets{};
  std::size_t longueur = 0;
};

}  // namespace premiers
