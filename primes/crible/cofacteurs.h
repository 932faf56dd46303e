// SPDX-License-Identifier: MIT
// What stands on a wheel: the numbers below its circumference that are coprime to it.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <numeric>

namespace premiers::crible {

/// Those of `module`, in increasing order; `nombre` is how many there are (else it does not compile).
template <typename Entier, std::uint32_t module, std::size_t nombre>
constexpr std::array<Entier, nombre> cofacteurs() {
  std::array<Entier, nombre> t{};
  std::size_t i = 0;
  for (std::uint32_t n = 1; n < module; ++n) {
    if (std::gcd(n, module) == 1) t.at(i++) = static_cast<Entier>(n);
  }
  return t;
}

}  // namespace premiers::crible
