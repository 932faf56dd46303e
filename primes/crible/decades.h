// SPDX-License-Identifier: MIT
// Sieved primality, looked up ten numbers at a time. Of the numbers 10 d .. 10 d + 9 of a decade
// d > 0 only those that end in 1, 3, 7 or 9 can be prime; a sieved byte
// (primes/arithmetique/roue.h) holds three decades, so a table of 256 * 3 entries turns it into the
// four answers.
//
// Cost: the sieve of the window, then a nanosecond for each decade. Memory: 1/30 byte for each
// number of the window, 33 MB up to 10^9.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>

#include "primes/arithmetique/roue.h"
#include "primes/crible/crible.h"
#include "primes/crible/fenetres.h"
#include "primes/suivi/suivi.h"

namespace premiers::crible {

/// The last digits of the primes above 5. A set of them is four bits, in this order.
inline constexpr std::array<std::uint8_t, 4> finales{1, 3, 7, 9};

/// drapeaux_de_decade[octet][r]: which numbers 30 o + 10 r + finales[i] are flagged in a byte.
inline constexpr auto drapeaux_de_decade = [] {
  std::array<std::array<std::uint8_t, 3>, 256> t{};
  for (std::size_t octet = 0; octet < 256; ++octet) {
    for (std::size_t b = 0; b < 8; ++b) {
      if ((octet >> b & 1) == 0) continue;
      for (std::size_t i = 0; i < 4; ++i) {
        const bool ici = residus[b] % 10 == finales[i];
        if (ici) t[octet][residus[b] / 10] |= static_cast<std::uint8_t>(1U << i);
      }
    }
  }
  return t;
}();

static_assert(drapeaux_de_decade[0xFF] == std::array<std::uint8_t, 3>{0b0101, 0b1111, 0b1010});

/// The decades from 0 to some limit, sieved beforehand.
struct Decades {
  /// No decade at all.
  Decades() = default;
  /// All decades with numbers up to `limite`, and a few more; limite < 2^63. If `suivi` throws,
  /// nothing is left behind.
  explicit Decades(std::uint64_t limite, const Suivi& suivi = {});

  /// The decades below this are known.
  std::uint64_t nombre() const { return nombre_; }

  /// Which of 10 d + 1, 3, 7, 9 are prime; 0 < d < nombre().
  unsigned operator[](std::uint64_t d) const { return drapeaux_de_decade[octets_[d / 3]][d % 3]; }

 private:
  std::uint64_t nombre_ = 0;
  std::unique_ptr<std::uint8_t[]> octets_;
};

/// Decades sieved window after window as they are asked for. Made for askers that go upward, in
/// small steps; one that starts again from below costs a new sieve.
struct DecadesGlissantes {
  /// No decade above `derniere` <= derniere_max is going to be asked for.
  explicit DecadesGlissantes(std::uint64_t derniere) : derniere_(derniere) {}

  static constexpr std::uint64_t derniere_max = 3 * Crible::octet_max - 1;

  /// Which of 10 d + 1, 3, 7, 9 are prime; 0 < d <= derniere. `suivi` is called if that sieves.
  unsigned demander(std::uint64_t d, const Suivi& suivi) {
    if (d < debut_ || d >= fin_) glisser(d, suivi);
    return drapeaux_de_decade[octets_[(d - debut_) / 3]][(d - debut_) % 3];
  }

 private:
  void glisser(std::uint64_t d, const Suivi& suivi);

  std::uint64_t derniere_;
  std::optional<Fenetres> fenetres_;
  std::span<const std::uint8_t> octets_;
  std::uint64_t debut_ = 0;  // the decades of the window: debut_ .. fin_ - 1
  std::uint64_t fin_ = 0;
};

}  // namespace premiers::crible
