// SPDX-License-Identifier: MIT
// Sieving by large primes that are kept: each waits in the bucket of the segment that its next
// multiple is in.
//
// When a segment's turn comes, its bucket is gone through: for each entry one bit is crossed off,
// and the prime moves on to the bucket of its next multiple, on the wheel of 30030
// (primes/crible/roue_30030.h). A prime that has no further multiple in the window is dropped. So a
// prime costs nothing but its start and its multiples, however wide the window (T. Oliveira e Silva,
// "Fast implementation of the segmented sieve of Eratosthenes", 2002).
//
// An entry is 8 bytes; memory is 8 bytes for each prime, and a block for each segment that a prime
// can reach. Cost: some 13 ns to start a prime, 5 ns for a multiple on a Xeon at 2.5 GHz, half of
// it for the one miss of the L1 cache that the bit costs; asking for its line sixteen entries ahead
// saves a tenth. Several multiples decided at a time with AVX-512 (gathered table, multiplication)
// saved nothing: what costs is what cannot be done eight at a time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "primes/crible/seaux.h"

namespace premiers::crible {

/// The kept sieving primes.
struct CribleGarde {
  /// Segments of 2^19 bytes, but perhaps the last: should be the segment that fits the L2 cache.
  /// 2^18 is as fast for a few million primes and a tenth slower beyond, 2^20 costs half more.
  static constexpr unsigned log_segment = 19;
  static constexpr std::size_t taille_segment = std::size_t{1} << log_segment;

  /// For the window of bytes [octet, octet_fin) and primes up to `borne` < 2^32.
  CribleGarde(std::uint64_t octet, std::uint64_t octet_fin, std::uint64_t borne);

  /// Adds the prime p, 2^19 < p <= borne, from the next segment on.
  void ajouter(std::uint32_t p);

  /// Crosses off the multiples of the primes added in the next segment, which `segment` is.
  void rayer(std::span<std::uint8_t> segment);

  /// Bytes that `nombre` primes up to `borne` take at most.
  static std::uint64_t memoire(double nombre, std::uint64_t borne);

 private:
  std::uint64_t debut_;       // the first byte of the next segment
  std::uint64_t fin_;         // of the window
  std::uint64_t segment_;     // the number of the next one
  std::uint64_t masque_ = 0;  // buckets are taken again in a circle
  Seaux<std::uint64_t> seaux_;
};

}  // namespace premiers::crible
