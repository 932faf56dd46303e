// SPDX-License-Identifier: MIT
// The kernels of the ring of eight lanes (primes/facteurs/huit.h): which there are.
#pragma once

#include "primes/arithmetique/processeur.h"
#include "primes/facteurs/huit.h"

namespace premiers::facteurs::ecm {

#if defined(__x86_64__)

inline constexpr Instructions besoin_ifma = instructions::avx512f | instructions::avx512ifma;
Huit::Noyaux noyaux_ifma(std::size_t membres);

inline constexpr Instructions besoin_reels = instructions::avx512f;
Huit::Noyaux noyaux_reels(std::size_t membres);

#endif

}  // namespace premiers::facteurs::ecm
