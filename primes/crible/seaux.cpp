// SPDX-License-Identifier: MIT
// How the store of blocks grows.
#include "primes/crible/seaux.h"

#include "systeme/systeme.h"

namespace premiers {

namespace {

constexpr std::size_t taille_morceau = std::size_t{1} << 22;
constexpr std::align_val_t alignement{systeme::taille_grande_page};
static_assert(systeme::taille_grande_page % Blocs::taille_bloc == 0);

}  // namespace

void Blocs::Liberer::operator()(std::byte* morceau) const {
  ::operator delete(morceau, alignement);
}

void Blocs::agrandir() {
  auto* const morceau = static_cast<std::byte*>(::operator new(taille_morceau, alignement));
  morceaux_.emplace_back(morceau);
  systeme::demander_grandes_pages(morceau, taille_morceau);
  libres_.reserve(morceaux_.size() * (taille_morceau / taille_bloc));
  // From the last to the first, so that what is never used is never touched.
  for (std::size_t o = taille_morceau; o > 0; o -= taille_bloc) {
    libres_.push_back(morceau + o - taille_bloc);
  }
}

}  // namespace premiers
