// SPDX-License-Identifier: MIT
// The exact integer square root of a 64-bit number.
#pragma once

#include <cmath>
#include <cstdint>

namespace premiers {

/// floor(sqrt(n)) for any n. The square root in double precision is off by at most one; what is
/// wrong is put right in integers.
inline std::uint64_t racine_entiere(std::uint64_t n) {
  auto r = static_cast<std::uint64_t>(std::sqrt(static_cast<double>(n)));
  constexpr std::uint64_t plus_grande = 0xFFFFFFFF;
  if (r > plus_grande) r = plus_grande;
  while (r * r > n) --r;
  while (r < plus_grande && (r + 1) * (r + 1) <= n) ++r;
  return r;
}

}  // namespace premiers
