// SPDX-License-Identifier: MIT
// The kernel of a sparse matrix over GF(2), by the way that is best for its size: made smaller
// (filtrage.h), then eliminated as bits (algebre.h) or, when it is large, by block Lanczos
// (lanczos.h). Every member that comes of a matrix made smaller is multiplied back before it is given; a
// small matrix is eliminated as it stands.
//
// Cost on a 2.5 GHz Xeon, for random matrices like those of the sieve: 25000 columns of 55 entries
// 1.2 s, 50000 of 65 5 s, 100000 of 70 27 s. The elimination alone takes 13 s at 25000 columns, some 90 s
// at 47000.
#pragma once

#include <functional>
#include <vector>

#include "primes/quadratique/creuse.h"

namespace premiers::quadratique {

/// Members of the kernel, independent, up to 64 of them: each a list of columns, increasing, whose
/// sum is zero. None only if there is none, or if all attempts on a large matrix failed; a few more
/// columns help then. `signe_de_vie`, if not empty, is called ten times a second at least.
std::vector<Ensemble> noyau(MatriceCreuse matrice, const std::function<void()>& signe_de_vie = {});

}  // namespace premiers::quadratique
