// SPDX-License-Identifier: MIT
// Sieving by large primes that are not kept: round by round.
//
// The window is taken in rounds of many segments. For each round all these primes are gone through
// once, and each of their multiples in the round is written, as a number of 4 bytes, into the bucket
// of its segment; when the segment's turn comes, its bucket is emptied onto it (sorting multiples by
// segment is T. Oliveira e Silva's idea, "Fast implementation of the segmented sieve of
// Eratosthenes", 2002). No prime is kept: memory depends on the length of a round only, neither on
// the width of the window nor on the number of sieving primes.
//
// Most large primes have no multiple at all in a narrow window; primes/crible/touches.h tells how
// those are dropped at a nanosecond each. It is so cheap that in a window of one round, beyond the
// width of it, numbers without a small factor serve instead of primes: to sieve them out completely
// would cost more than the few multiples crossed off in vain. Where there are more rounds than one,
// the primes are sieved out once, and their bits kept (`notes`).
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "primes/crible/seaux.h"
#include "primes/crible/touches.h"

namespace premiers::crible {

struct Crible;

/// The bits of the sieving primes from a byte on, sieved as far as they are asked for and kept.
struct CribleursNotes {
  /// Of bytes [octet, octet_fin) at most, octet_fin <= 2^32 / 30.
  CribleursNotes(std::uint64_t octet, std::uint64_t octet_fin);
  ~CribleursNotes();

  /// Bytes [octet, octet + n), not more than a stretch beyond what was asked for before.
  std::span<const std::uint8_t> lire(std::uint64_t octet, std::size_t n);

 private:
  std::uint64_t debut_;
  std::uint64_t connus_ = 0;  // bytes
  std::unique_ptr<Crible> crible_;
  std::unique_ptr<std::uint8_t[]> octets_;
};

/// The sieving primes from `octet_borne` on.
struct CribleTours {
  /// Hears up to which byte of the window the multiples are known.
  using Annonce = std::function<void(std::uint64_t octet)>;

  /// For primes from byte `octet_borne` to the root of byte `octet_fin`, the window's end; `notes`:
  /// keep their bits.
  CribleTours(std::uint64_t octet_borne, std::uint64_t octet_fin, bool notes);
  ~CribleTours();

  /// Begins the round of bytes [octet, octet_fin), octet_fin at most 2^25 farther. Only while
  /// all segments of the round before are done. `annoncer` (may be empty) is called every
  /// millisecond or so.
  void ouvrir(std::uint64_t octet, std::uint64_t octet_fin, const Annonce& annoncer);

  /// Crosses off in the next segment of the round: 2^19 bytes, but perhaps the last.
  void rayer(std::span<std::uint8_t> segment);

 private:
  template <class F>
  void pour_chaque_troncon(std::uint64_t octet_fin, F&& f);
  void prendre(std::span<const std::uint8_t> drapeaux, std::uint64_t octet);
  void jeter_multiples(std::span<const std::uint32_t> candidats);

  std::uint64_t octet_borne_;
  Fenetre tour_{};
  std::size_t segment_ = 0;  // the next one of the round
  std::optional<CribleursNotes> notes_;
  Seaux<std::uint32_t> seaux_;  // entries: 8 * (byte in the round) + bit
  std::vector<std::uint32_t> candidats_;
  std::vector<std::uint32_t> multiples_;
};

}  // namespace premiers::crible
