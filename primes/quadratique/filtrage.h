// SPDX-License-Identifier: MIT
// Making a sparse matrix smaller before its kernel is looked for.
//
//  - A row with a single entry: its column is in no member of the kernel, and goes; other rows may
//    then have a single entry left.
//  - Columns beyond what is needed go, the heaviest first.
//  - A row with m entries: m - 1 of its columns get the lightest of them added, which then goes,
//    and the row with it. That takes a row and a column away and adds entries; it is done as long
//    as the whole work of block Lanczos becomes less.
//
// B. LaMacchia and A. Odlyzko, "Solving large sparse linear systems over finite fields", CRYPTO '90;
// S. Cavallar, "Strategies in filtering in the number field sieve", ANTS-IV (2000), for the order.
//
// Cost: some sorted merges of lists for each column: a second for 100000 of 60 entries.
#pragma once

#include <cstddef>
#include <functional>
#include <vector>

#include "primes/quadratique/creuse.h"

namespace premiers::quadratique {

struct MatriceReduite {
  MatriceCreuse matrice;           // every row has two entries or more
  std::vector<Ensemble> origines;  // of each column: the columns that it is the sum of
};

/// The members of the kernel of what comes back are, by their origins, such of `matrice`, and at least
/// as many as it has, or `surplus`, or their rest after rows without entries. `signe_de_vie`, if not
/// empty, is called every few milliseconds.
MatriceReduite filtrer(MatriceCreuse matrice, std::size_t surplus,
                       const std::function<void()>& signe_de_vie = {});

}  // namespace premiers::quadratique
