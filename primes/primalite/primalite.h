// SPDX-License-Identifier: MIT
// Is n prime? Proven answers up to 3317044064679887385961981 (25 digits), Baillie-PSW beyond.
// Methods, sources and limits are told in primes/primalite/primalite.cpp.
//
// Which answers of the program rest on Baillie-PSW alone: those of the concatenations (choice 4)
// about numbers, and pieces of numbers, from there on, that they are prime. That they are composite
// is always proven. Every factor of a decomposition is proven prime (primes/facteurs/preuve.h), and
// whatever the other services list is below 2^63, where Baillie-PSW is a proof.
#pragma once

#include <NTL/ZZ.h>

#include <cstdint>

#include "primes/arithmetique/entier128.h"

namespace premiers::primalite {

/// True if and only if n is prime; proven for every 64-bit n. 0 and 1 are not prime.
/// Cost: 0.6 microseconds for a 64-bit prime, a third of that for a composite.
bool est_premier(std::uint64_t n);

/// The same for 128 bits. The answer is proven below 3317044064679887385961981; from there on
/// "false" is proven, "true" means that n passes Baillie-PSW, to which no counterexample is known
/// but which is not a proof.
bool est_premier(Entier128 n);

/// The same for an integer of any size; negative numbers are not prime. Proven below
/// 3317044064679887385961981, Baillie-PSW from there on (see above).
bool est_premier(const NTL::ZZ& n);

}  // namespace premiers::primalite
