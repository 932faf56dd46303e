// SPDX-License-Identifier: MIT
// Reading sieved bytes: eight at a time, as one word whose set bits are the primes in order.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

#include "primes/arithmetique/processeur.h"
#include "primes/arithmetique/roue.h"

namespace premiers {
inline namespace arithmetique {

/// The `n` bytes (1 to 8) at `octets` as a word, first byte lowest, missing bytes 0.
inline std::uint64_t lire_mot(const std::uint8_t* octets, std::size_t n = 8) {
  std::uint64_t mot = 0;
  if constexpr (std::endian::native == std::endian::little) {
    std::memcpy(&mot, octets, n);
  } else {
    for (std::size_t i = 0; i < n; ++i) mot |= std::uint64_t{octets[i]} << (8 * i);
  }
  return mot;
}

/// The flags of a byte for the residues >= r, and for those <= r, 0 <= r < 30.
constexpr std::uint8_t drapeaux_a_partir_de(std::uint64_t r) {
  return static_cast<std::uint8_t>(0xFFU << indice_suivant[r]);
}
constexpr std::uint8_t drapeaux_jusqu_a(std::uint64_t r) {
  return r == 29 ? std::uint8_t{0xFF} : static_cast<std::uint8_t>(~drapeaux_a_partir_de(r + 1));
}

static_assert(drapeaux_a_partir_de(7) == 0xFE && drapeaux_jusqu_a(7) == 0x03 &&
              drapeaux_jusqu_a(29) == 0xFF);

/// masques_jusqu_a[r], 0 <= r < 240: the bits of a word that stand for integers <= r, counted from
/// the first integer of the word.
inline constexpr std::array<std::uint64_t, 240> masques_jusqu_a = [] {
  std::array<std::uint64_t, 240> t{};
  for (std::size_t r = 0; r < 240; ++r) {
    for (unsigned o = 0; o <= r / 30; ++o) {
      const std::uint64_t ici = o < r / 30 ? 0xFF : drapeaux_jusqu_a(r % 30);
      t[r] |= ici << (8 * o);
    }
  }
  return t;
}();

static_assert(masques_jusqu_a[0] == 0 && masques_jusqu_a[29] == 0xFF &&
              masques_jusqu_a[30 + 7] == 0x3FF && masques_jusqu_a[239] == ~std::uint64_t{0});

/// The number of flags of a word for integers <= r, 0 <= r < 240.
[[gnu::always_inline]] inline std::uint64_t compter_jusqu_a(std::uint64_t mot, std::size_t r) {
  return static_cast<std::uint64_t>(std::popcount(mot & masques_jusqu_a[r]));
}

/// Clears the flags of what is below a and above b; `octets` are those of a / 30 to b / 30.
inline void limiter(std::span<std::uint8_t> octets, std::uint64_t a, std::uint64_t b) {
  octets.front() &= drapeaux_a_partir_de(a % 30);
  octets.back() &= drapeaux_jusqu_a(b % 30);
}

/// Calls f(p) for each set bit of `mot` in increasing order; `origine` is the integer that the
/// word starts at.
template <class F>
inline void pour_chaque_bit(std::uint64_t mot, std::uint64_t origine, F&& f) {
  for (; mot != 0; mot &= mot - 1) {
    f(origine + valeurs_bits[static_cast<std::size_t>(std::countr_zero(mot))]);
  }
}

/// Calls f(p) for each p flagged in `octets` in increasing order; `octet_initial` is the number of
/// the first byte. 2, 3 and 5 have no flag.
template <class F>
inline void pour_chaque_premier(std::span<const std::uint8_t> octets, std::uint64_t octet_initial,
                                F&& f) {
  std::uint64_t origine = octet_initial * 30;
  const std::uint8_t* o = octets.data();
  std::size_t reste = octets.size();
  for (; reste >= 8; reste -= 8, o += 8, origine += 240) pour_chaque_bit(lire_mot(o), origine, f);
  if (reste > 0) pour_chaque_bit(lire_mot(o, reste), origine, f);
}

/// Where the n-th set bit of some bytes lies, n >= 1: in which word of eight bytes, and that word
/// without the bits before it. There must be as many, in whole words.
struct PlaceDuBit {
  std::size_t mot;
  std::uint64_t reste;
};
PlaceDuBit place_du_bit(const std::uint8_t* octets, std::uint32_t n);
Versions<decltype(&place_du_bit)> versions_de_place_du_bit();

/// The integer that this bit stands for, where the bytes begin with number `octet_initial`.
inline std::uint64_t valeur(std::uint64_t octet_initial, const PlaceDuBit& place) {
  return (octet_initial + 8 * place.mot) * 30 +
         valeurs_bits[static_cast<std::size_t>(std::countr_zero(place.reste))];
}

/// Counts line by line, 64 bytes each: `avant[l]` becomes the number of set bits before line l, as
/// many lines as `avant` has places; gives the number in all.
std::uint32_t compter_par_ligne(const std::uint8_t* octets, std::span<std::uint32_t> avant);
Versions<decltype(&compter_par_ligne)> versions_de_compter_par_ligne();

/// Number of set bits. Costs about one cycle for 8 bytes where the processor counts bits itself.
std::uint64_t compter_bits(std::span<const std::uint8_t> octets);
Versions<decltype(&compter_bits)> versions_de_compter_bits();

}  // namespace arithmetique
}  // namespace premiers
