// SPDX-License-Identifier: MIT
// One long integer modulo many small primes at once.
//
// The integer is cut into digits of 28 bits, and each prime takes them in turn by Horner's rule,
//     t = 2^28 r + digit,  r = t - p * nearest(t / p),
// in double precision, where nothing but the quotient is ever rounded (primes/arithmetique/quotient.h):
// |r| stays within p / 2 + 1 <= 2^23 + 1/2, so |t| < 2^51 + 2^29.
//
// Cost: one step for each digit and prime. Primes stand side by side in vectors, four vectors
// abreast since each step waits for the one before; with AVX-512 1.2 ns a prime for 20 digits of a
// decimal integer, 3 for 100; with AVX2 1.4 and 5, without 10 and 20. (Dividing by one prime after
// the other takes 7 to 24, by GMP.)
#pragma once

#include <NTL/ZZ.h>

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "primes/arithmetique/processeur.h"

namespace premiers::facteurs {

/// The primes are below this.
inline constexpr std::uint32_t borne_restes = 1U << 24;
/// The loops take whole groups of so many primes.
inline constexpr std::size_t largeur_restes = 32;

/// The digits of N >= 0 in base 2^28, the highest first; none for 0.
std::vector<double> chiffres_de_28_bits(const NTL::ZZ& N);

/// manques[i] = -N mod premiers[i], what N lacks to the next multiple, for `nombre` primes below
/// `borne_restes`, a multiple of `largeur_restes`.
using Restes = void (*)(std::span<const double> chiffres, const std::uint32_t* premiers,
                        std::uint32_t* manques, std::size_t nombre);
Versions<Restes> versions_de_restes();

}  // namespace premiers::facteurs
