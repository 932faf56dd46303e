// SPDX-License-Identifier: MIT
// Sieving by the large primes, those that miss most segments: buckets.
//
// The window is taken in rounds of several segments. For each round all large primes are gone
// through once, and each of their multiples in the round is written, as a number of 4 bytes, into
// the bucket of its segment; when the segment's turn comes, its bucket is emptied onto it (sorting
// multiples by segment is T. Oliveira e Silva's idea, "Fast implementation of the segmented sieve
// of Eratosthenes", 2002). No prime is kept: memory depends on the length of a round only, neither
// on the width of the window nor on the number of sieving primes.
//
// Most large primes have no multiple at all in a narrow window; primes/crible/touches.h tells how
// those are dropped at a fraction of a nanosecond each. It is so cheap that beyond the width of the
// round numbers without a small factor serve instead of primes: to sieve them out completely would
// cost more than the few multiples crossed off in vain.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <vector>

#include "primes/crible/seaux.h"

namespace premiers {

/// The large sieving primes, from `premier_grand` to the root of the end.
struct CribleGrand {
  /// Large primes start about here; a higher start leaves more work to the medium primes, whose
  /// state outgrows the cache. Flat from 2^19 to 2^21.
  static constexpr std::uint64_t premier_grand = std::uint64_t{1} << 20;

  /// Hears up to which byte of the window the multiples are known.
  using Annonce = std::function<void(std::uint64_t octet)>;

  /// Bytes that the buckets take for each byte of a round, at most.
  static constexpr std::uint64_t octets_par_octet = 17;
  /// Bytes of the longest round that pays: longer rounds go through the large primes less often, but
  /// leave the caches. Sensible are 2^22 to 2^25; 2^23 costs 20 % just below 2^63.
  static constexpr std::uint64_t tour_max = std::uint64_t{1} << 24;
  static constexpr std::uint64_t memoire_max = octets_par_octet * tour_max;

  /// For the window of bytes [octet, octet_fin), octet > 2^40 / 30, with rounds as long as `memoire`
  /// bytes allow.
  CribleGrand(std::uint64_t octet, std::uint64_t octet_fin, std::uint64_t memoire = memoire_max);

  /// Crosses off the multiples of the large primes in the segment at byte `octet`, where the last
  /// one ended. `annoncer` (may be empty) is called every millisecond or so of preparation.
  void cribler(std::span<std::uint8_t> segment, std::uint64_t octet, const Annonce& annoncer);

  /// The byte up to which the multiples are known.
  std::uint64_t prepare() const { return fin_tour_; }

 private:
  void ouvrir_tour(const Annonce& annoncer);
  void noter_multiples(std::uint64_t p);
  void noter_multiple(std::uint64_t p);
  std::size_t vider_seau(std::span<std::uint8_t> segment, std::size_t place);

  std::uint64_t fin_;         // end of the window
  std::uint64_t debut_tour_;  // the round: bytes [debut_tour_, fin_tour_)
  std::uint64_t fin_tour_;
  std::uint64_t tour_max_;            // the longest round that the memory allows
  std::uint64_t longueur_;            // of the next round
  Seaux seaux_;                       // entries: (byte in the round) * 8 + bit
  std::vector<std::uint32_t> tries_;  // of a bucket wanted in pieces: what is left, falling
};

}  // namespace premiers
