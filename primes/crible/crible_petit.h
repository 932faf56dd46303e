// SPDX-License-Identifier: MIT
// Sieving by the small primes, those with many multiples in a segment: they do most of the work.
//
// The multiples of p by the 8 cofactors 30 j + c form a period of p bytes; every period looks the
// same, 8 crossings at fixed offsets. So nothing but the start of the current period is kept for a
// prime. Fast because:
// - the 8 offsets and masks follow from p mod 30 at compile time, a period is 8 instructions;
// - a stretch is worked off in blocks that stay in the L1 cache, pre-sieved just before;
// - whole periods need no bounds checks. The period that an end of the stretch cuts through is
//   crossed off with each multiple checked (without a branch), and once more for the next stretch:
//   crossing off twice does no harm and spares the bookkeeping of where in the wheel we stopped.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace premiers::crible {

/// The small sieving primes, one list for each residue of p mod 30.
struct CriblePetit {
  struct Cribleur {
    std::uint32_t k;     // p = 30 k + residue
    std::int32_t debut;  // start of the current period, in bytes from the start of the stretch
  };

  using Listes = std::array<std::vector<Cribleur>, 8>;

  /// Adds the prime p, 30 < p <= 2^16 (below a slice of the stretch), for stretches from byte `octet`
  /// on. Multiples below p * p are partly crossed off too: they are composite.
  void ajouter(std::uint32_t p, std::uint64_t octet);

  /// Pre-sieves the stretch that starts at byte `octet` and crosses off the multiples of all primes
  /// added; goes on to the next stretch. At most 2^30 bytes; a stretch of several segments costs
  /// less than the segments one by one, whose ends would each cut through every prime's period.
  void cribler(std::span<std::uint8_t> octets, std::uint64_t octet);

 private:
  Listes par_bloc_;     // the smaller ones
  Listes par_tranche_;  // the larger ones
};

}  // namespace premiers::crible
