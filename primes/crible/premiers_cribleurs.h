// SPDX-License-Identifier: MIT
// The supply of sieving primes, in increasing order, as they are needed.
//
// Up to 65550 they are read from a bitmap of 2 KB that the compiler has made; a window below 2^32
// needs no others. Beyond, a nested sieve makes them: its window lies below 2^32, so its own
// sieving primes come from the bitmap and the nesting ends there. Nothing is stored but one small
// segment.
#pragma once

#include <cstdint>
#include <memory>
#include <span>

namespace premiers::crible {

struct Fenetres;

/// Hands out the primes from 7 on, by bytes (primes/arithmetique/roue.h).
struct PremiersCribleurs {
  PremiersCribleurs();
  ~PremiersCribleurs();

  /// The flags of the next bytes, at least one and none at or after byte `octet_fin`; empty if all
  /// these have been handed out. octet_fin <= 2^32 / 30 + 1. The span holds until the next call.
  std::span<const std::uint8_t> suivants(std::uint64_t octet_fin);

  std::uint64_t octet = 0;  // the next byte to hand out
  std::unique_ptr<Fenetres> fenetres;
};

}  // namespace premiers::crible
