// SPDX-License-Identifier: MIT
// Eight curves of ECM at once, for processors with the AVX-512 IFMA instructions.
#pragma once

#include <cstddef>
#include <cstdint>

#include "primes/arithmetique/entier128.h"

namespace premiers::ecm {

inline constexpr std::size_t voies_avx512 = 8;
inline constexpr int bits_maximum_avx512 = 126;

/// Can this processor run `essayer_huit`? Never on processors other than x86-64.
bool avx512_disponible();

/// Tries the eight curves sigma[0..7] on the odd n, 2^22 < n < 2^126. A proper factor of n, or 1.
/// Only to be called where `avx512_disponible()`. b1 and b2 as in primes/facteurs/ecm.h.
Entier128 essayer_huit(Entier128 n, const std::uint32_t* sigma, std::size_t b1, std::size_t b2);

}  // namespace premiers::ecm
