// SPDX-License-Identifier: MIT
// Pre-sieving: the multiples of the 35 primes 7 .. 163 repeat with the period of their product, so
// they are copied from patterns instead of being crossed off one by one. One pattern for all would
// be astronomically long; sixteen patterns for two or three primes each take 127 KB and are joined
// by AND (the idea is in K. Walisch, "primesieve: algorithms", 2022).
//
// Cost: 16 bytes read for each byte written, half a cycle a byte with AVX2. The patterns are
// computed by the compiler, so that a process that sieves little pays nothing for them.
#pragma once

#include <cstdint>
#include <span>

#include "primes/arithmetique/processeur.h"

namespace premiers::crible {

/// The largest prime whose multiples `precribler` crosses off.
inline constexpr std::uint32_t dernier_precrible = 163;

/// Fills `octets`, which start at byte `octet_initial`, with the flags of the integers that have
/// no prime factor up to 163 or are themselves one of these primes; 1 gets no flag.
void precribler(std::span<std::uint8_t> octets, std::uint64_t octet_initial);
Versions<decltype(&precribler)> versions_de_precribler();

}  // namespace premiers::crible
