// SPDX-License-Identifier: MIT
// Block Lanczos: the kernel of a large sparse matrix over GF(2).
//
// P. Montgomery, "A block Lanczos algorithm for finding dependencies over GF(2)", EUROCRYPT '95.
// With A = B^T B, symmetric, and a random Y of 64 columns one looks for X with A X = A Y: then
// X - Y is in the kernel of A, and sums of its columns are in that of B. X is built from blocks
// V_0 = A Y, V_1, V_2, ... that are orthogonal with respect to A. Over GF(2) a vector can be
// orthogonal to itself, so of each block only as many columns are used as have an invertible
// V_i^T A V_i (62.4 to 63.2 of 64); the others get their turn with the next block, and V_{i+1}
// depends on the last three blocks.
//
// Cost: n / 63 rounds for n columns of w entries, each with two products by B and some by blocks,
// in all 2 n (w + 30) nanoseconds a round as long as a word for each column fits the second-level
// cache. Memory: B, and ten words for a column. The dense elimination (algebre.h) takes the cube of
// n instead, and n^2 / 8 bytes.
//
// Limits: the last block is of less rank than 64, and a column can then be left out for a second time
// running. Often that is taken for a failure and columns to spare are asked for; here the rounds go
// on until V_i^T A V_i is zero, and an elimination of 128 columns (`membres`) sorts out what of X - Y
// and V_i is in the kernel. So 120 of 120 random matrices of 200 to 5000 rows, with 5 or 40 columns
// more, gave members.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

#include "primes/quadratique/creuse.h"

namespace premiers::quadratique {

/// Independent members of the kernel, up to 64: each a list of columns, increasing, whose sum is zero. None
/// if the method failed, which another seed may mend. The same seed gives the same members.
/// `signe_de_vie`, if not empty, is called once a round, some ten milliseconds for 60000 columns.
std::vector<Ensemble> noyau_lanczos(const MatriceCreuse& matrice, std::uint64_t graine,
                                    const std::function<void()>& signe_de_vie = {});

}  // namespace premiers::quadratique
