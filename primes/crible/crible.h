// SPDX-License-Identifier: MIT
// The segmented sieve of Eratosthenes on the wheel of 30, anywhere below 2^63.
//
// The window is sieved segment by segment, each small enough for the L2 cache. The sieving primes
// fall into three classes by how many multiples they have in a segment, each with a method of its
// own: small (primes/crible/crible_petit.h), medium (primes/crible/crible_moyen.h), large
// (primes/crible/crible_grand.h). Where the processor allows it, the larger medium and the smaller large
// ones share a fourth (primes/crible/crible_seize.h).
//
// Cost: about n log log n crossings for n integers, plus the sieving primes up to the root of the
// end, which a narrow window pays as well (0.3 s just below 2^63). Memory: some 2 MB below 10^12;
// beyond, what its caller allows it and the system can give, 400 MB at most, whatever the width
// (primes/crible/partage.h).
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

#include "primes/crible/crible_grand.h"
#include "primes/crible/crible_moyen.h"
#include "primes/crible/crible_petit.h"
#include "primes/crible/crible_seize.h"
#include "primes/crible/premiers_cribleurs.h"
#include "primes/suivi/suivi.h"

namespace premiers::crible {

/// Sieve of Eratosthenes over consecutive segments of bytes (primes/arithmetique/roue.h): bit set =
/// prime. 2, 3, 5 have no bit; 1 is not prime (bit 0 of byte 0 is clear).
struct Crible {
  /// The windows end at this byte at the latest: 2^63 is in the byte before.
  static constexpr std::uint64_t octet_max = (std::uint64_t{1} << 63) / 30 + 1;

  /// Prepares the window of bytes [octet, octet_fin), octet <= octet_fin <= octet_max (else
  /// std::invalid_argument). octet_fin may be far beyond what is really going to be sieved: cost is
  /// paid only as segments are asked for.
  ///
  /// Sieving primes above `plafond` are left out: bit set then means no prime factor up to
  /// max(plafond, 163), or prime.
  ///
  /// `memoire` is the budget of the large primes, in bytes: what they take stays below it (but for
  /// the least they can do with, 22 MB). Less of it costs time above 10^15 or so.
  Crible(std::uint64_t octet, std::uint64_t octet_fin, std::uint64_t plafond = ~std::uint64_t{0},
         std::uint64_t memoire = CribleGrand::memoire_max);

  /// What to give `remplir` where the bytes are looked at and forgotten: the size, a multiple of
  /// 64, that stays in the L2 cache. Smaller for windows that are themselves smaller.
  std::size_t taille() const;

  /// Sieves the next octets.size() bytes of the window, 2^30 at most, which must not go beyond
  /// octet_fin (else std::invalid_argument); none have no effect. Where they are kept, several times
  /// `taille()` at once costs some 3 % less. `suivi` hears the part of the whole window that is
  /// done. If it throws, the sieve must not be used any more.
  void remplir(std::span<std::uint8_t> octets, const Suivi& suivi = {});

 private:
  void admettre(std::uint64_t octet_suivant);

  std::uint64_t debut_;  // the window
  std::uint64_t fin_;
  std::uint64_t octet_;  // where the next segment starts
  std::uint64_t plafond_;
  std::uint64_t memoire_;
  PremiersCribleurs cribleurs_;
  CriblePetit petits_;
  CribleMoyen moyens_;
  CribleSeize seize_;  // the larger medium primes, where it pays
  std::unique_ptr<CribleGrand> grands_;
};

/// Number of primes in [a, b] by sieving, 0 if a > b. b < 30 * Crible::octet_max, a little more
/// than 2^63 (else std::invalid_argument).
/// `memoire`: the budget of the large primes, in bytes.
std::uint64_t compter_par_crible(std::uint64_t a, std::uint64_t b, const Suivi& suivi = {},
                                 std::uint64_t memoire = CribleGrand::memoire_max);

}  // namespace premiers::crible
