// SPDX-License-Identifier: MIT
// The sieving behind the look-ups: once and kept, or window after window.
#include "primes/crible/decades.h"

#include <algorithm>

namespace premiers::crible {

Decades::Decades(std::uint64_t limite, const Suivi& suivi) {
  const std::size_t taille = limite / 30 + 1;
  octets_ = std::make_unique_for_overwrite<std::uint8_t[]>(taille);
  Crible crible(0, taille);
  // All bytes are kept, where they are sieved: in pieces, so that `suivi` hears of it.
  for (std::size_t o = 0; o < taille;) {
    const std::size_t segment = std::min(crible.taille(), taille - o);
    crible.remplir({octets_.get() + o, segment}, suivi);
    o += segment;
  }
  nombre_ = 3 * taille;
}

void DecadesGlissantes::glisser(std::uint64_t d, const Suivi& suivi) {
  try {
    if (!fenetres_ || d < debut_) {
      fin_ = d / 3 * 3;
      fenetres_.emplace(10 * fin_, derniere_ / 3 * 30 + 29);
    }
    while (fin_ <= d && fenetres_->suivante(suivi)) {
      debut_ = 3 * fenetres_->octet_initial();
      fin_ = debut_ + 3 * fenetres_->octets().size();
    }
  } catch (...) {
    fenetres_.reset();  // what it holds is half done
    debut_ = fin_ = 0;
    octets_ = {};
    throw;
  }
  octets_ = fenetres_->octets();
}

}  // namespace premiers::crible
