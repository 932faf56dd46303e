// SPDX-License-Identifier: MIT
// Where a sieving prime starts: its first multiple by a cofactor coprime to 30 in a window.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "primes/arithmetique/roue.h"

namespace premiers::crible {

/// A multiple p * q, as the sieve needs it.
struct MultipleInitial {
  std::uint64_t place;    // its byte, counted from the start of the window
  std::size_t cofacteur;  // index of q mod 30 in `residus`
};

/// The first multiple p * q, q coprime to 30 and q >= p, at or after byte `octet`; 5 < p < 2^32 a
/// prime, octet <= 2^63 / 30 + 1.
inline MultipleInitial multiple_initial(std::uint32_t p, std::uint64_t octet) {
  const std::uint64_t debut = 30 * octet;
  std::uint64_t q = std::max<std::uint64_t>(p, (debut + p - 1) / p);
  const std::uint64_t reste = q % 30;
  const std::size_t i = indice_suivant[reste];
  q += residus[i] - reste;
  return {(p * q - debut) / 30, i};
}

}  // namespace premiers::crible
