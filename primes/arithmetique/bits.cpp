// SPDX-License-Identifier: MIT
// Counting flags. The counting instruction of x86 is not part of its base set; with it the loops are
// about eight times faster.
#include "primes/arithmetique/bits.h"

#include <array>

namespace premiers {
inline namespace arithmetique {

namespace {

[[gnu::always_inline]] inline std::uint64_t compter(std::span<const std::uint8_t> octets) {
  const std::uint8_t* o = octets.data();
  std::size_t reste = octets.size();
  std::uint64_t nombre = 0;
  for (; reste >= 8; reste -= 8, o += 8) {
    nombre += static_cast<std::uint64_t>(std::popcount(lire_mot(o)));
  }
  if (reste > 0) nombre += static_cast<std::uint64_t>(std::popcount(lire_mot(o, reste)));
  return nombre;
}

[[gnu::always_inline]] inline PlaceDuBit placer(const std::uint8_t* octets, std::uint32_t n) {
  std::size_t m = 0;
  std::uint64_t mot = lire_mot(octets);
  for (auto bits = static_cast<std::uint32_t>(std::popcount(mot)); bits < n;
       bits = static_cast<std::uint32_t>(std::popcount(mot))) {
    n -= bits;
    ++m;
    mot = lire_mot(octets + 8 * m);
  }
  for (; n > 1; --n) mot &= mot - 1;
  return {m, mot};
}

[[gnu::always_inline]] inline std::uint32_t compter_lignes(const std::uint8_t* octets,
                                                           std::span<std::uint32_t> avant) {
  constexpr std::size_t octets_par_ligne = 64;
  std::uint32_t nombre = 0;
  for (std::uint32_t& n : avant) {
    n = nombre;
    nombre += static_cast<std::uint32_t>(compter({octets, octets_par_ligne}));
    octets += octets_par_ligne;
  }
  return nombre;
}

constexpr Version<PlaceDuBit (*)(const std::uint8_t*, std::uint32_t)> versions_place[] = {
#if defined(__x86_64__)
    {instructions::popcnt | instructions::bmi, Pour<placer>::popcnt_bmi},
#endif
    {instructions::aucune, Pour<placer>::tous},
};

constexpr Version<std::uint32_t (*)(const std::uint8_t*, std::span<std::uint32_t>)>
    versions_lignes[] = {
#if defined(__x86_64__)
        {instructions::popcnt, Pour<compter_lignes>::popcnt},
#endif
        {instructions::aucune, Pour<compter_lignes>::tous},
};

constexpr Version<std::uint64_t (*)(std::span<const std::uint8_t>)> versions_bits[] = {
#if defined(__x86_64__)
    {instructions::popcnt, Pour<compter>::popcnt},
#endif
    {instructions::aucune, Pour<compter>::tous},
};

}  // namespace

Versions<decltype(&place_du_bit)> versions_de_place_du_bit() { return versions_place; }
Versions<decltype(&compter_par_ligne)> versions_de_compter_par_ligne() { return versions_lignes; }
Versions<decltype(&compter_bits)> versions_de_compter_bits() { return versions_bits; }

PlaceDuBit place_du_bit(const std::uint8_t* octets, std::uint32_t n) {
  static const auto boucle = choisir(versions_de_place_du_bit()).boucle;
  return boucle(octets, n);
}

std::uint32_t compter_par_ligne(const std::uint8_t* octets, std::span<std::uint32_t> avant) {
  static const auto boucle = choisir(versions_de_compter_par_ligne()).boucle;
  return boucle(octets, avant);
}

std::uint64_t compter_bits(std::span<const std::uint8_t> octets) {
  static const auto boucle = choisir(versions_de_compter_bits()).boucle;
  return boucle(octets);
}

}  // namespace arithmetique
}  // namespace premiers
