// SPDX-License-Identifier: MIT
// Eight curves of ECM at once on a long modulus, for processors with the AVX-512 IFMA instructions.
#pragma once

#include <NTL/ZZ.h>

#include <array>
#include <cstddef>
#include <cstdint>

namespace premiers::ecm {

/// The longest n that the lanes take.
inline constexpr long bits_huit_long = 412;

/// Tries the eight curves `sigma` on the odd n, 2^64 < n < 2^bits_huit_long, with the bounds b1 and
/// b2 of primes/facteurs/ecm.h. A proper factor of n, or 1. Only to be called where
/// `jouable(besoin_avx512)` (primes/facteurs/ecm_avx512.h).
NTL::ZZ essayer_huit_long(const NTL::ZZ& n, const std::array<std::uint32_t, 8>& sigma,
                          std::size_t b1, std::size_t b2);

}  // namespace premiers::ecm
