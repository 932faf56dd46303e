// SPDX-License-Identifier: MIT
// Vectors of 64 columns of bits at a time: the arithmetic of block methods over GF(2).
//
// A column of n words is a matrix of n x 64 bits; a block is one of 64 x 64. The two products that
// cost, n x 64 by 64 x 64 and (n x 64)^T by n x 64, take eight bits of a word at a time: the sums
// that the 256 patterns of a byte stand for are looked up, or gathered and combined at the end. So
// a word costs eight look-ups of a table that lies in the first-level cache (16 KB), not 64 steps
// (D. Coppersmith, "Solving homogeneous linear equations over GF(2) via block Wiedemann algorithm",
// Mathematics of Computation 62, 1994).
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace premiers::quadratique {

using Mots = std::vector<std::uint64_t>;     // n x 64 bits
using Bloc = std::array<std::uint64_t, 64>;  // 64 x 64 bits, a word for each row
inline constexpr std::uint64_t tous = ~std::uint64_t{0};

/// x^T y.
Bloc produit_interieur(const Mots& x, const Mots& y);

/// r += x * m.
void ajouter_produit(Mots& r, const Mots& x, const Bloc& m);

/// a * b, a + b, the unit, and a with those columns alone that have a bit in the mask.
Bloc produit(const Bloc& a, const Bloc& b);
Bloc somme(const Bloc& a, const Bloc& b);
Bloc unite();
Bloc colonnes_de(const Bloc& a, std::uint64_t masque);

}  // namespace premiers::quadratique
