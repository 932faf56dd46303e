// SPDX-License-Identifier: MIT
// Which of the large sieving primes have a multiple in a narrow window at all?
//
// p has one in [s, e) if an integer lies between s / p and (e - 1) / p. Both quotients are computed
// in double precision and moved apart by a bound of their error: no touch is missed, and hardly any
// candidate too many is kept. Fast because the 64 candidates of a word share one division: with B
// the start of the word and x = (p - B) / B, 1 / p = (1 / B) (1 - x + x^2 - x^3 + ...).
// With AVX-512 eight candidates are decided at a time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "primes/arithmetique/processeur.h"

namespace premiers {

/// A window of integers [debut, fin), 0 < debut < fin <= 2^64.
struct Fenetre {
  std::uint64_t debut;
  std::uint64_t fin;
};

/// Writes those p flagged in `octets` (which start at byte `premier_octet`) that may have a
/// multiple in the window to `sortie`, in order, and returns how many; none that has one is left
/// out. All p are in [2^19, 2^32); `sortie` has room for 8 for each byte, and 8 more.
std::size_t touches(std::span<const std::uint8_t> octets, std::uint64_t premier_octet,
                    const Fenetre& fenetre, std::uint32_t* sortie);
Versions<decltype(&touches)> versions_de_touches();

}  // namespace premiers
