// SPDX-License-Identifier: MIT
// Numbers where programs about primes go wrong: squares of primes and their neighbours, prime
// powers, products of two near primes, round numbers, digits with zeros and even ends, values that
// wrap around at 64 bits. Each is small enough for trial division by the primes up to a given limit.
#pragma once

#include <NTL/ZZ.h>

#include <cstdint>
#include <string>

#include "tests/differentiel/hasard.h"

namespace differentiel {

std::string texte(const NTL::ZZ& n);

/// By division; a large n by random Miller-Rabin tests, which is sure enough to draw numbers.
bool est_premier(std::int64_t n);
/// The smallest prime above n, n >= 1.
std::int64_t premier_apres(std::int64_t n);
/// A prime from 2 to about `limite`, large ones as likely as not.
std::int64_t premier_au_hasard(Hasard& hasard, std::int64_t limite);

/// A number >= 1 below about limite^2 that one of the families above likes; limite <= 3 * 10^9.
std::int64_t remarquable(Hasard& hasard, std::int64_t limite);

/// A number whose decomposition needs no division beyond `limite`; it may have hundreds of bits.
NTL::ZZ decomposable(Hasard& hasard, std::int64_t limite);

/// The digits of a number whose pieces need no division beyond `limite` to be decided: after the
/// first digits come only digits that end no prime of two digits or more.
std::string decoupable(Hasard& hasard, std::int64_t limite);

/// A power of ten up to `max` >= 1.
std::int64_t puissance_de_dix(Hasard& hasard, std::int64_t max);

/// A number of up to 190 digits near a power of ten; it and the two behind it are decided by division by
/// 2, 3 and 5, and all their pieces of more than three digits.
NTL::ZZ rond_et_long(Hasard& hasard);

/// The digits of a number (perhaps beyond 64 bits) that is v modulo 2^64; v itself mostly. A sign
/// only where v is negative and `signe` allows it: otherwise v comes wrapped.
std::string enroule(Hasard& hasard, std::int64_t v, bool signe);

}  // namespace differentiel
