// SPDX-License-Identifier: MIT
// The self-initialising quadratic sieve: the way to a factor when both factors are long.
//
// Method. C. Pomerance, "The quadratic sieve factoring algorithm" (1984): find many U with
// U^2 = (product of small primes) mod n, multiply some of them so that the right side becomes a
// square V^2, and hope that gcd(U - V, n) is a proper factor; it is, with probability 1/2 or more.
// R. Silverman, "The multiple polynomial quadratic sieve" (1987): many short polynomials instead
// of a long one. S. Contini, "Factoring integers with the self-initializing quadratic sieve"
// (1997): polynomials in families whose members follow from each other by one addition per prime.
//
// The pieces, in the order in which a factorisation lives them:
//   reglages    how large everything is taken, by the size of n
//   base        the multiplier k and the factor base
//   coefficients, famille, polynome
//               polynomials: which a, all b of one a, one after the other with their roots
//   tamis       the sieve array: where is a value probably smooth?
//   campagne    the first half, sieving and gathering, of all these and the next three:
//   division    dividing these values by the base
//   scission    the one or two large primes that are left
//   relations   what is kept, and, counted by graphe, what it is worth
//   resolution  the second half, of these three:
//   cycles      products of relations without large primes
//   noyau       those of them that multiply to a square: filtrage makes the matrix smaller, then
//               lanczos solves it, or algebre if it is small
//   racine      the square root and the gcd
// and below them entier, integers of 256 bits, and vecteurs, the loops that are worth vectors.
//
// Cost: exp((1 + o(1)) sqrt(ln n ln ln n)), whatever the factors; three digits more double it.
#pragma once

#include <NTL/ZZ.h>

#include <optional>

#include "primes/quadratique/reglages.h"
#include "primes/quadratique/scission.h"
#include "primes/suivi/suivi.h"

namespace premiers::quadratique {

/// A factor of n other than 1 and n; it need not be prime.
/// n: odd, composite, no perfect power (of a square the root is given), at least 2^49, below 2^380;
/// meant for numbers without a factor below 1000 (such a factor is found too, but there are cheaper
/// ways). nullopt for any other number and, which a composite n is not expected to meet, when a
/// generous limit of work is reached. The result depends on n only, not on the run. Memory: 16 MB
/// at 60 digits, 53 MB at 70. `suivi` may throw.
/// `scission` splits what is left of values with two large primes. The settings from 225 bits
/// on count on it: without it, larger numbers take longer than they need.
std::optional<NTL::ZZ> facteur_quadratique(const NTL::ZZ& n, const Suivi& suivi = {},
                                           quadratique::Scission scission = nullptr);

/// The same with other settings than those for its size.
std::optional<NTL::ZZ> facteur_quadratique(const NTL::ZZ& n, const quadratique::Reglages& reglages,
                                           const Suivi& suivi, quadratique::Scission scission);

}  // namespace premiers::quadratique
