// SPDX-License-Identifier: MIT
// Counting flags. The counting instruction of x86 is not part of its base set, so a copy of the
// loop is compiled for it and taken when the processor has it (about eight times faster).
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

#if defined(__x86_64__)
[[gnu::target("popcnt")]] std::uint64_t compter_popcnt(std::span<const std::uint8_t> octets) {
  return compter(octets);
}
#endif

}  // namespace

std::uint64_t compter_bits(std::span<const std::uint8_t> octets) {
#if defined(__x86_64__)
  if (__builtin_cpu_supports("popcnt")) return compter_popcnt(octets);
#endif
  return compter(octets);
}

}  // namespace premiers
