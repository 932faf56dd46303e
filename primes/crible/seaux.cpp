// SPDX-License-Identifier: MIT
// How the store of blocks grows.
#include "primes/crible/seaux.h"

namespace premiers::crible {

namespace {

constexpr std::size_t taille_morceau = std::size_t{1} << 22;
static_assert(systeme::GrandesPages::taille_page % Blocs::taille_bloc == 0);

}  // namespace

void Blocs::agrandir() {
  morceaux_.emplace_back(taille_morceau);
  libres_.reserve(morceaux_.size() * (taille_morceau / taille_bloc));
  // From the last to the first, so that what is never used is never touched.
  for (std::size_t o = taille_morceau; o > 0; o -= taille_bloc) {
    libres_.push_back(morceaux_.back().data() + o - taille_bloc);
  }
}

}  // namespace premiers::crible
