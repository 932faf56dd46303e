// SPDX-License-Identifier: MIT
// How the large sieving primes are shared between the two ways to sieve by them, and with how much
// memory.
//
// A prime p that is kept (primes/crible/crible_garde.h) costs its start once. One that is looked for
// anew in each round of R integers (primes/crible/crible_tours.h) costs a look each time; and its
// multiples cost more, because of the odd ones more than half are found in vain. So in a window of W
// integers p is kept if
//
//     depart / W < regard / R + detour / p,
//
// which is: primes up to W / 12 or so in a window of one round, every prime in one of 12 rounds.
//
// Memory: 8 bytes for each prime that is kept, 4 bytes for each multiple in a round, and, where there
// are several rounds, a bit for each number prime to 30 up to the root, so that the primes are found
// only once. Where that is more than allowed, primes are left to the rounds, then the bits are left
// out, then the rounds are shortened, to 22 MB if need be.
#pragma once

#include <cstdint>

namespace premiers::crible {

/// What is done with the large primes of a window.
struct Partage {
  std::uint64_t borne;    // primes up to here are kept
  std::uint64_t tour;     // bytes of the longest round for the others
  bool notes;             // whether the others' bits are kept from round to round
  std::uint64_t memoire;  // bytes that all of that takes, about

  /// The longest round: longer ones go through the primes less often, but leave the caches.
  static constexpr std::uint64_t tour_max = std::uint64_t{1} << 25;
  /// The shortest that memory is saved by.
  static constexpr std::uint64_t tour_min = std::uint64_t{1} << 20;
};

/// For the window of bytes [octet, octet_fin), octet < octet_fin, with large primes from `plus_petit`
/// on, in `memoire` bytes.
Partage partager(std::uint64_t octet, std::uint64_t octet_fin, std::uint64_t plus_petit,
                 std::uint64_t memoire);

/// The same for a memory of `memoire` bytes or what the system can give now, whichever is less.
Partage partager_selon_le_systeme(std::uint64_t octet, std::uint64_t octet_fin,
                                  std::uint64_t plus_petit, std::uint64_t memoire);

}  // namespace premiers::crible
