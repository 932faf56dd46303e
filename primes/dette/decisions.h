// SPDX-License-Identifier: MIT
// The notes of single decisions: how far division, prime after prime, would have made the table grow.
// One rule for each kind of decision (the table in docs/architecture.md), and the interval, whose
// numbers are decided one by one.
#pragma once

#include <NTL/ZZ.h>

#include <cstdint>
#include <span>

#include "primes/dette/dette.h"
#include "primes/facteurs/facteur.h"
#include "primes/rangs/intervalle.h"

namespace premiers::dette {

/// S >= 0 was decided by `prem`: a prime obliges to its root, a composite to its smallest factor less
/// one. Free where S is too small to raise the bound. A caller with many numbers notes the primes among
/// them first: behind a prime few composites can raise it. From 2^`bits_borne_exacte` on a prime leaves
/// no note, and a composite leaves one only if its smallest factor is at most `plus_grand_diviseur`
/// (primes/facteurs/etendue.h): finding a larger one would cost more than it tells.
void noter_prem(Dette& dette, const NTL::ZZ& S);

/// The same if S is prime and small enough for a note; else nothing.
void noter_si_premier(Dette& dette, const NTL::ZZ& S);

/// S3 >= 0 was decided by `prem1`: the root is the one in double precision.
void noter_prem1(Dette& dette, std::int64_t S3, bool premier);

/// The odd numbers from 5 on of the interval were decided by `prem1`: the largest prime is noted, and
/// each composite above it. Those below the largest prime oblige to less.
void noter_intervalle(Dette& dette, rangs::Intervalle bornes);

/// A number was decomposed: for 1 no note; for a prime its root; else, q being the largest prime factor,
/// q - 1 if it occurs more than once, and otherwise the larger of the next smaller factor and the root
/// of q.
void noter_decomposition(Dette& dette, std::span<const facteurs::Facteur> facteurs);

/// Numbers below 2^100 have exact notes. Effect: above it a composite would have to be factored for
/// nothing but its note. It follows from `Dette::borne_max`, which is the root.
inline constexpr int bits_borne_exacte = 100;
static_assert(Dette::borne_max == std::uint64_t{1} << (bits_borne_exacte / 2));

/// A bound that no factor up to `plus_grand_diviseur` (10^7) raises: 9999991 is the largest prime below.
/// Effect: once it is reached, nothing above 2^100 is looked at. It follows from that 10^7, which the
/// operator can see in the table, and moves with it only.
inline constexpr std::uint64_t borne_des_diviseurs = 9'999'990;

}  // namespace premiers::dette
