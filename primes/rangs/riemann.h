// SPDX-License-Identifier: MIT
// Riemann's function R, which estimates how many primes there are up to x, and its inverse, which
// estimates the prime of a rank.
//
// R is summed by J. P. Gram's series (1884): R(x) = 1 + sum of (ln x)^k / (k k! zeta(k + 1)),
// k >= 1. The inverse is four of Newton's steps (R' is nearly 1 / ln x) from the asymptotic
// formula of M. Cipolla (1902). Cost: one to two microseconds. The prime of rank n is missed by
// some 0.2 sqrt(p) primes, 0.63 sqrt(p) at most of 400 ranks tried; the estimate need not be better
// than that, as a count corrects it.
#pragma once

#include <cstdint>

namespace premiers::rangs {

/// R(x), for 2 <= x < 2^64.
long double riemann(long double x);

/// About the prime of rank n >= 2: the x with R(x) = n, rounded, at most 2^63 - 1.
std::int64_t inverse_de_riemann(std::int64_t n);

/// About how many integers from v on hold n primes, rather more than fewer.
double largeur_pour(double n, double v);

}  // namespace premiers::rangs
