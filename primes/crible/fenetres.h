// SPDX-License-Identifier: MIT
// Walking through sieved bytes: the flags of an interval of integers, window after window, upward.
//
// All windows are sieved into the same bytes, which stay in the L2 cache while they are looked at;
// in the first and the last of them what lies outside of the interval is cleared. Whatever looks at
// flags and forgets them goes this way. What keeps them (primes/crible/decades.h, the notes of
// primes/crible/crible_tours.h, primes/rangs/tranche.h and bits_gardes.h) calls Crible::remplir on
// bytes of its own, and the
// rounds and segments inside the sieve are no such walk: they cross off, and have no flags to show
// before all primes have passed.
//
// Cost: that of the sieve. Memory: one window, a large page of 2 MB at most, beside the sieve's own.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "primes/crible/crible.h"
#include "primes/suivi/suivi.h"
#include "systeme/grandes_pages.h"

namespace premiers::crible {

/// How the windows are sieved; what is not said is left to the sieve.
struct ChoixDesFenetres {
  std::uint64_t plafond = ~std::uint64_t{0};         // of the sieving primes (Crible)
  std::uint64_t memoire = CribleGrand::memoire_max;  // budget of the large ones, in bytes
  std::uint64_t taille = ~std::uint64_t{0};          // of a window, if it should be a small one
};

struct Fenetres {
  /// The integers from `debut` to `fin`, both included; none if debut > fin. 2, 3 and 5 have no
  /// flag. fin < 30 * Crible::octet_max (else std::invalid_argument).
  Fenetres(std::uint64_t debut, std::uint64_t fin, const ChoixDesFenetres& choix = {});
  /// The same from bytes that are sieved already: those of 0 .. 29 and on, up to fin / 30 at least.
  Fenetres(std::uint64_t debut, std::uint64_t fin, std::span<const std::uint8_t> cribles);

  /// Sieves the next window; false once the interval is done, and the window stays. `suivi` hears
  /// the part of the interval that is done; if it throws, no window may be asked for any more.
  bool suivante(const Suivi& suivi = {}) { return suivante_avant(octet_fin_, suivi); }
  /// The same for a window without byte `arret` or any after it; false while there is none.
  bool suivante_avant(std::uint64_t arret, const Suivi& suivi = {});

  /// The window, empty before the first.
  std::span<const std::uint8_t> octets() const { return {tampon_.data(), taille_}; }
  /// The number of its first byte (primes/arithmetique/roue.h).
  std::uint64_t octet_initial() const { return octet_; }

 private:
  std::uint64_t debut_;
  std::uint64_t fin_;
  std::uint64_t octet_;
  std::uint64_t octet_fin_;
  std::size_t taille_ = 0;
  std::optional<Crible> crible_;
  std::span<const std::uint8_t> cribles_;
  systeme::GrandesPages tampon_;
};

}  // namespace premiers::crible
