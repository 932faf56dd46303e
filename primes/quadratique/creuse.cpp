// SPDX-License-Identifier: MIT
// Sorted lists of rows, and what adding modulo 2 makes of them.
#include "primes/quadratique/creuse.h"

#include <algorithm>
#include <iterator>

namespace premiers::quadratique {

Ensemble difference_symetrique(const Ensemble& a, const Ensemble& b) {
  Ensemble r;
  r.reserve(a.size() + b.size());
  std::set_symmetric_difference(a.begin(), a.end(), b.begin(), b.end(), std::back_inserter(r));
  return r;
}

Ensemble somme(const std::vector<Ensemble>& ensembles, const Ensemble& numeros, std::size_t borne) {
  std::vector<std::uint8_t> impair(borne);
  for (const std::uint32_t k : numeros) {
    for (const std::uint32_t i : ensembles[k]) impair[i] ^= 1;
  }
  Ensemble r;
  for (std::uint32_t i = 0; i < borne; ++i) {
    if (impair[i] != 0) r.push_back(i);
  }
  return r;
}

void garder_impairs(Ensemble& nombres) {
  std::sort(nombres.begin(), nombres.end());
  std::size_t gardes = 0;
  for (std::size_t i = 0; i < nombres.size();) {
    if (i + 1 < nombres.size() && nombres[i] == nombres[i + 1]) {
      i += 2;
    } else {
      nombres[gardes++] = nombres[i++];
    }
  }
  nombres.resize(gardes);
}

}  // namespace premiers::quadratique
