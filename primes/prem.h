// SPDX-License-Identifier: MIT
// The thin routines that tie the engine to the table of primes: the next prime, and two tests that
// decide at once and note what division would have obliged the table to (primes/dette.h).
#pragma once

#include <NTL/ZZ.h>

#include <cstdint>

#include "primes/dette.h"
#include "primes/facteurs/etendue.h"
#include "primes/rangs/intervalle.h"
#include "primes/table.h"

namespace premiers {

/// Extends the table by exactly one prime, the next after the largest known.
void Suiv(Table& Nprem);

/// Whether S >= 0 is prime.
bool prem(const NTL::ZZ& S, Dette& dette);

/// Whether S3 >= 0 passes division by the primes up to its root in double precision, every one of
/// them tried: true for the primes but 2, and for 1.
bool prem1(std::int64_t S3, Dette& dette);

/// The note of `prem` without its answer: free where S is too small to raise the bound. A caller with
/// many numbers notes the primes among them first: behind a prime few composites can raise it.
/// From 2^`bits_borne_exacte` on a prime leaves no note, and a composite leaves one only if its smallest
/// factor is at most `plus_grand_diviseur` (primes/facteurs/etendue.h): finding a larger one would cost
/// more than it tells.
void noter_division(Dette& dette, const NTL::ZZ& S);

/// Notes S if it is prime and small enough for that, as `noter_division` would.
void noter_si_premier(Dette& dette, const NTL::ZZ& S);

/// What deciding the odd numbers from 5 on of the interval by `prem1` obliges the table to: the
/// largest prime with its root in double precision, and each composite above it with its smallest
/// factor. Those below the largest prime oblige to less.
void noter_intervalle(Dette& dette, Intervalle bornes);

/// 2^100: the root of a smaller number is below Dette::borne_max.
inline constexpr int bits_borne_exacte = 100;
/// A bound that no factor up to `plus_grand_diviseur` raises: 9999991 is the largest prime below.
inline constexpr std::uint64_t borne_des_diviseurs = 9'999'990;

}  // namespace premiers
