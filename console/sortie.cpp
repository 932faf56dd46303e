// SPDX-License-Identifier: MIT
// When the buffer is emptied, and how texts and numbers come into it.
#include "console/sortie.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>
#include <utility>

#include "primes/arithmetique/zz.h"

namespace premiers {

Sortie::Sortie(Puits puits)
    : puits_(std::move(puits)),
      tampon_(std::make_unique_for_overwrite<char[]>(taille_tampon)),
      vide_a_(std::chrono::steady_clock::now()) {}

void Sortie::vider() {
  vide_a_ = std::chrono::steady_clock::now();
  const std::string_view tout(tampon_.get(), std::exchange(plein_, 0));
  vides_ += tout.size();
  if (!tout.empty() && !puits_(tout)) throw SortiePerdue();
}

void Sortie::vider_si_tard() {
  if (plein_ > 0 && std::chrono::steady_clock::now() - vide_a_ >= patience) vider();
}

Sortie& operator<<(Sortie& sortie, std::string_view texte) {
  constexpr std::size_t taille_max = Sortie::taille_tampon;
  while (!texte.empty()) {
    if (sortie.plein_ == taille_max) sortie.vider();
    const std::size_t n = std::min(texte.size(), taille_max - sortie.plein_);
    std::memcpy(sortie.tampon_.get() + sortie.plein_, texte.data(), n);
    sortie.plein_ += n;
    texte.remove_prefix(n);
  }
  return sortie;
}

Sortie& operator<<(Sortie& sortie, std::int64_t nombre) {
  std::array<char, 20> texte{};  // a sign and 19 digits
  const char* fin = std::to_chars(texte.data(), texte.data() + texte.size(), nombre).ptr;
  return sortie << std::string_view(texte.data(), static_cast<std::size_t>(fin - texte.data()));
}

Sortie& operator<<(Sortie& sortie, const NTL::ZZ& nombre) {
  if (NTL::NumBits(nombre) < 63) return sortie << NTL::conv<std::int64_t>(nombre);
  return sortie << en_decimal(nombre);
}

}  // namespace premiers
