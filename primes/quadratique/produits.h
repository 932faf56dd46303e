// SPDX-License-Identifier: MIT
// A sparse matrix made ready to be multiplied by blocks of 64 columns of bits.
//
// The rows of the small primes are half full. Kept as bits, 64 rows to a word, they cost a look-up
// for eight entries instead of one access each; the other rows stay lists (P. Montgomery, 1995).
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "primes/quadratique/blocs.h"
#include "primes/quadratique/creuse.h"

namespace premiers::quadratique {

struct MatriceDeProduits {
  explicit MatriceDeProduits(const MatriceCreuse& matrice);
  /// B^T B x, for a word of x for each column.
  Mots gram(const Mots& x) const;
  /// B x: a word for each row, but in an order of its own.
  Mots image(const Mots& x) const;

  std::size_t colonnes;
  std::vector<Mots> denses;           // 64 rows each: a word for each column
  std::size_t legeres = 0;            // the other rows, numbered anew
  std::vector<std::size_t> debut;     // where each column begins in `lignes`, and the end
  std::vector<std::uint32_t> lignes;  // numbers of the other rows

 private:
  Mots image_legere(const Mots& x) const;
};

}  // namespace premiers::quadratique
