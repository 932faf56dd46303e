// SPDX-License-Identifier: MIT
// Sieving by the large primes, those that miss most segments: the two ways put together.
//
// The smaller ones are kept and wait for their next multiple (primes/crible/crible_garde.h; the smallest
// in rows, primes/crible/crible_seize.h, where the processor allows it), the
// larger ones are gone through anew for each round of many segments (primes/crible/crible_tours.h);
// primes/crible/partage.h draws the border.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "primes/crible/crible_garde.h"
#include "primes/crible/crible_seize.h"
#include "primes/crible/crible_tours.h"
#include "primes/crible/partage.h"

namespace premiers::crible {

struct Fenetres;

/// The large sieving primes, from `debut_des_grands` to the root of the end.
struct CribleGrand {
  /// Large primes start about here; a higher start leaves more work to the medium primes, whose
  /// state outgrows the cache. Flat from 2^19 to 2^21.
  static constexpr std::uint64_t debut_des_grands = std::uint64_t{1} << 20;

  using Annonce = CribleTours::Annonce;

  /// What the widest windows can use just below 2^63.
  static constexpr std::uint64_t memoire_max = std::uint64_t{400} << 20;

  /// For the window of bytes [octet, octet_fin), octet_fin > 2^40 / 30, in `memoire` bytes and no more
  /// than the system can give (but 22 MB whatever they are).
  CribleGrand(std::uint64_t octet, std::uint64_t octet_fin, std::uint64_t memoire);
  CribleGrand(std::uint64_t octet, std::uint64_t octet_fin, const Partage& partage);
  ~CribleGrand();

  /// Crosses off the multiples of the large primes in the next bytes of the window. `annoncer` (may
  /// be empty) is called every millisecond or so of preparation.
  void cribler(std::span<std::uint8_t> octets, const Annonce& annoncer);

  /// The byte up to which the multiples are known.
  std::uint64_t prepare() const { return fin_tour_; }

 private:
  void rayer_segment(std::span<std::uint8_t> segment, const Annonce& annoncer);
  void ouvrir_tour(const Annonce& annoncer);
  void garder_jusqu_a(std::uint64_t racine, const Annonce& annoncer);

  std::uint64_t fin_;          // end of the window
  std::uint64_t octet_;        // what is asked for next
  std::uint64_t fin_segment_;  // of the segment it lies in; octet_ if that one is yet to be sieved
  std::uint64_t fin_tour_;
  std::uint64_t longueur_;  // of the next round
  Partage partage_;
  std::unique_ptr<Fenetres> cribleurs_;  // those that are kept already are behind its window
  CribleSeize seize_;   // the kept primes with a multiple in most segments, where it pays
  CribleGarde gardes_;  // the others
  CribleTours tours_;
  std::vector<std::uint8_t> masque_;  // of a segment that is asked for in pieces
};

}  // namespace premiers::crible
