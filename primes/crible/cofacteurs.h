// SPDX-License-Identifier: MIT
// What stands on a wheel: the numbers below its circumference that are coprime to it.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace premiers::crible {

/// Those of `module`, in increasing order; `nombre` is how many there are (else it does not compile).
/// The primes of `module` cross them off: as many gcds cost the compiler seconds.
template <typename Entier, std::uint32_t module, std::size_t nombre>
constexpr std::array<Entier, nombre> cofacteurs() {
  std::array<bool, module> raye{};
  for (std::uint32_t p = 2, reste = module; reste > 1; ++p) {
    if (reste % p != 0) continue;
    for (std::uint32_t n = 0; n < module; n += p) raye[n] = true;
    while (reste % p == 0) reste /= p;
  }
  std::array<Entier, nombre> t{};
  std::size_t i = 0;
  for (std::uint32_t n = 1; n < module; ++n) {
    if (!raye[n]) t.at(i++) = static_cast<Entier>(n);
  }
  return t;
}

}  // namespace premiers::crible
