// SPDX-License-Identifier: MIT
// NTL's integers to and from the machine's. NTL's own conversions stop at the width of `long`,
// which has a sign and need not have 64 bits; these go through bytes and have neither limit.
#pragma once

#include <NTL/ZZ.h>

#include <cstdint>
#include <string>
#include <type_traits>

#include "primes/arithmetique/entier128.h"

namespace premiers {
inline namespace arithmetique {

/// The integer n as a ZZ.
NTL::ZZ en_zz(std::uint64_t n);
NTL::ZZ en_zz(Entier128 n);

/// The absolute value of n, modulo 2^64 and modulo 2^128. Ask `NTL::NumBits(n)` first whether it
/// fits.
std::uint64_t en_entier64(const NTL::ZZ& n);
Entier128 en_entier128(const NTL::ZZ& n);

/// A small integer as one of the type `Entier`: a ZZ or one of the machine's.
template <class Entier>
Entier entier(std::uint64_t x) {
  if constexpr (std::is_same_v<Entier, NTL::ZZ>) {
    return en_zz(x);
  } else {
    return x;
  }
}

/// As for the machine's integers (primes/arithmetique/racines.h).
inline NTL::ZZ pgcd(const NTL::ZZ& a, const NTL::ZZ& n) { return NTL::GCD(a, n); }

/// The decimal digits of n, after a minus sign if it is negative.
std::string en_decimal(const NTL::ZZ& n);

}  // namespace arithmetique
}  // namespace premiers
