// SPDX-License-Identifier: MIT
// Which of the large sieving primes have a multiple in a window, and where?
//
// Only odd multiples matter: p has one in [s, e) if an odd number lies between s / p and (e - 1) / p.
// First a filter, for windows that most primes miss: both quotients are computed in double
// precision and moved apart by a bound of their error, so that none is missed and hardly any
// candidate too many is kept. Then, for what is left, the multiples themselves, without those whose
// cofactor 3, 5 or 7 divides.
//
// Both take eight candidates at a time with AVX-512: some 1 ns for a candidate that misses, 3 ns for
// an odd multiple on a Xeon at 2.5 GHz. The portable filter shares one division among the candidates
// of a word: with B its start and x = (p - B) / B, 1 / p = (1 / B) (1 - x + x^2 - x^3 + ...).
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "primes/arithmetique/processeur.h"

namespace premiers::crible {

/// A window of integers [debut, fin), 0 < debut < fin < 2^64.
struct Fenetre {
  std::uint64_t debut;
  std::uint64_t fin;
};

/// Writes those p flagged in `octets` (which start at byte `octet_initial`) that may have an odd
/// multiple in the window to `sortie`, in order, and returns how many; none that has one is left
/// out. All p are in [2^19, 2^32); `sortie` has room for 8 for each byte, and 16 more.
std::size_t touches(std::span<const std::uint8_t> octets, std::uint64_t octet_initial,
                    const Fenetre& fenetre, std::uint32_t* sortie);
Versions<decltype(&touches)> versions_de_touches();

/// Writes, in any order, those odd multiples of the numbers `candidats` in the window whose cofactor
/// is prime to 210 to `sortie`, as 8 * byte + bit counted from the window's start, and returns how
/// many. The window starts at a multiple of 30, ends at 2^63 + 30 at most and is no wider than 2^30;
/// the candidates are prime to 30, in [2^19, 2^32). `sortie` has room for all odd multiples, and 8
/// more.
std::size_t multiples(std::span<const std::uint32_t> candidats, const Fenetre& fenetre,
                      std::uint32_t* sortie);
Versions<decltype(&multiples)> versions_de_multiples();

}  // namespace premiers::crible
