// SPDX-License-Identifier: MIT
// Words out of a buffer of 64 KB. It is filled only when it is empty, and only after the writer has
// been emptied, so that nobody waits before a prompt that is not there.
#include "console/entree.h"

#include <algorithm>
#include <memory>
#include <string>
#include <utility>

#include "console/sortie.h"

namespace premiers {

namespace {

constexpr std::size_t taille_tampon = std::size_t{1} << 16U;

/// The blanks of the C locale, whatever the environment says.
constexpr bool blanc(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

}  // namespace

Source source_texte(std::string_view texte) {
  auto position = std::make_shared<std::size_t>(0);
  return {[texte = std::string(texte), position](std::span<char> place) {
            const std::size_t n = texte.copy(place.data(), place.size(), *position);
            *position += n;
            return n;
          },
          [] { return true; }, false};
}

Entree::Entree(Source source)
    : source_(std::move(source)), tampon_(std::make_unique_for_overwrite<char[]>(taille_tampon)) {}

bool Entree::remplir(Sortie& sortie) {
  if (!fin_ && !source_.prete()) {
    attendue_ = true;
    sortie.vider();
  }
  position_ = 0;
  plein_ = fin_ ? 0 : source_.lire({tampon_.get(), taille_tampon});
  fin_ = plein_ == 0;
  if (fin_) sortie.vider();
  return !fin_;
}

bool Entree::passer_blancs(Sortie& sortie) {
  do {
    while (position_ < plein_ && blanc(tampon_[position_])) ++position_;
  } while (position_ == plein_ && remplir(sortie));
  return position_ < plein_;
}

Entree::Lecture Entree::lire_mot(Sortie& sortie) {
  l1_ = 0;
  attendue_ = false;
  if (!passer_blancs(sortie)) return Lecture::fin;
  bool convient = true;
  do {
    const char* const debut = tampon_.get() + position_;
    const char* const bout = tampon_.get() + plein_;
    const char* const fin_mot = std::find_if(debut, bout, blanc);
    const auto n = static_cast<std::size_t>(fin_mot - debut);
    convient = convient && l1_ + n <= longueur_max && std::find(debut, fin_mot, '\0') == fin_mot;
    if (convient) {
      std::copy(debut, fin_mot, entree_.data() + l1_);
      l1_ += n;
    }
    position_ += n;
  } while (position_ == plein_ && remplir(sortie));
  const bool ligne_finie = position_ + 1 == plein_ && tampon_[position_] == '\n';
  validee_ = source_.terminal && attendue_ && ligne_finie;
  total_ = sortie.total();
  return convient ? Lecture::mot : Lecture::mot_refuse;
}

}  // namespace premiers
