// SPDX-License-Identifier: MIT
// Eight curves of ECM at once, for processors with the AVX-512 IFMA instructions.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "primes/arithmetique/entier128.h"
#include "primes/arithmetique/processeur.h"

namespace premiers::facteurs::ecm {

inline constexpr std::size_t voies_avx512 = 8;
inline constexpr int bits_maximum_avx512 = 126;

/// What the eight lanes need of the processor; there are none on processors other than x86-64.
inline constexpr Instructions besoin_avx512 = instructions::avx512f | instructions::avx512ifma;

/// Tries the eight curves sigma[0..7] < 2^52 on the odd n, 2^21 < n < 2^126. A proper factor of n, or 1.
/// Only to be called where `jouable(besoin_avx512)`. b1 and b2 as in primes/facteurs/ecm.h.
Entier128 essayer_huit(Entier128 n, const std::array<std::uint64_t, voies_avx512>& sigma,
                       std::size_t b1, std::size_t b2);

}  // namespace premiers::facteurs::ecm
