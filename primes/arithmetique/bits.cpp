// SPDX-License-Identifier: MIT
// Counting flags. The counting instruction of x86 is not part of its base set, so copies of the
// loops are compiled for it and taken when the processor has it (about eight times faster).
#include "primes/arithmetique/bits.h"

namespace premiers {

namespace {

#if defined(__GNUC__)
[[gnu::always_inline]]
#endif
inline std::uint64_t
compter(std::span<const std::uint8_t> octets) {
  const std::uint8_t* o = octets.data();
  std::size_t reste = octets.size();
  std::uint64_t nombre = 0;
  for (; reste >= 8; reste -= 8, o += 8) {
    nombre += static_cast<std::uint64_t>(std::popcount(lire_mot(o)));
  }
  if (reste > 0) nombre += static_cast<std::uint64_t>(std::popcount(lire_mot(o, reste)));
  return nombre;
}

#if defined(__GNUC__)
[[gnu::always_inline]]
#endif
inline PlaceDuBit
placer(const std::uint8_t* octets, std::uint32_t n) {
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

#if defined(__GNUC__)
[[gnu::always_inline]]
#endif
inline std::uint32_t
compter_lignes(const std::uint8_t* octets, std::span<std::uint32_t> avant) {
  constexpr std::size_t octets_par_ligne = 64;
  std::uint32_t nombre = 0;
  for (std::uint32_t& n : avant) {
    n = nombre;
    nombre += static_cast<std::uint32_t>(compter({octets, octets_par_ligne}));
    octets += octets_par_ligne;
  }
  return nombre;
}

#if defined(__x86_64__)
[[gnu::target("popcnt,bmi")]] PlaceDuBit placer_popcnt(const std::uint8_t* octets,
                                                       std::uint32_t n) {
  return placer(octets, n);
}
[[gnu::target("popcnt")]] std::uint64_t compter_popcnt(std::span<const std::uint8_t> octets) {
  return compter(octets);
}
[[gnu::target("popcnt")]] std::uint32_t compter_lignes_popcnt(const std::uint8_t* octets,
                                                              std::span<std::uint32_t> avant) {
  return compter_lignes(octets, avant);
}
#endif

}  // namespace

PlaceDuBit place_du_bit(const std::uint8_t* octets, std::uint32_t n) {
#if defined(__x86_64__)
  if (__builtin_cpu_supports("popcnt") && __builtin_cpu_supports("bmi")) {
    return placer_popcnt(octets, n);
  }
#endif
  return placer(octets, n);
}

std::uint32_t compter_par_ligne(const std::uint8_t* octets, std::span<std::uint32_t> avant) {
#if defined(__x86_64__)
  if (__builtin_cpu_supports("popcnt")) return compter_lignes_popcnt(octets, avant);
#endif
  return compter_lignes(octets, avant);
}

std::uint64_t compter_bits(std::span<const std::uint8_t> octets) {
#if defined(__x86_64__)
  if (__builtin_cpu_supports("popcnt")) return compter_popcnt(octets);
#endif
  return compter(octets);
}

}  // namespace premiers
