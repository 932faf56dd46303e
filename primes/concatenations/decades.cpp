// SPDX-License-Identifier: MIT
#include "primes/concatenations/decades.h"

#include <algorithm>

#include "primes/crible/crible.h"

namespace premiers {

Decades::Decades(std::uint64_t limite, const Suivi& suivi) {
  const std::size_t taille = limite / 30 + 1;
  octets_ = std::make_unique_for_overwrite<std::uint8_t[]>(taille);
  Crible crible(0, taille);
  for (std::size_t o = 0; o < taille;) {
    const std::size_t segment = std::min(crible.taille(), taille - o);
    crible.remplir({octets_.get() + o, segment}, suivi);
    o += segment;
  }
  nombre_ = 3 * taille;
}

}  // namespace premiers
