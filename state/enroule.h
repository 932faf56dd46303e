// SPDX-License-Identifier: MIT
// Arithmetic that wraps around at 64 bits, as the operator's numbers do; the one place where it is
// done, on unsigned numbers.
#pragma once

#include <cstdint>

namespace premiers {

constexpr std::int64_t enroule(std::uint64_t v) { return static_cast<std::int64_t>(v); }

constexpr std::int64_t somme_enroulee(std::int64_t a, std::int64_t b) {
  return enroule(static_cast<std::uint64_t>(a) + static_cast<std::uint64_t>(b));
}

constexpr std::int64_t oppose_enroule(std::int64_t a) {
  return enroule(0 - static_cast<std::uint64_t>(a));
}

}  // namespace premiers
