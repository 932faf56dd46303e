// SPDX-License-Identifier: MIT
// A factor of a composite of up to 128 bits by the elliptic curve method, with an effort that is
// limited beforehand. Methods and costs are told in facteurs128.cpp.
#pragma once

#include <optional>

#include "primes/arithmetique/entier128.h"
#include "primes/arithmetique/processeur.h"

namespace premiers::facteurs {

/// A proper factor of n, not necessarily prime; nothing if `courbes` curves (rounded up to a
/// multiple of the number of curves that run side by side) did not find one. n must be odd,
/// composite, greater than 2^21 and should have no factor below 1000: ECM separates small factors
/// badly, because one curve finds them all. With a prime n nothing is found.
///
/// Means for products of two primes of equal size, in milliseconds on a Zen 4 core, with AVX-512
/// IFMA and without: 72 bits 0.07 and 0.32, 80 bits 0.15 and 0.84, 96 bits 0.6 and 3.4; 104 bits
/// 2.1 with. Beyond some 100 bits (30 digits), or 80 without, sieves are faster.
std::optional<Entier128> facteur_ecm(Entier128 n, unsigned courbes);
/// Does it run eight curves at once on this processor?
bool facteur_ecm_a_huit();
Versions<decltype(&facteur_ecm)> versions_de_facteur_ecm();

}  // namespace premiers::facteurs
