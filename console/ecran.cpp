// SPDX-License-Identifier: MIT
// A text is copied up to each brace, and the number of that name written in its place.
#include "console/ecran.h"

#include <algorithm>

namespace premiers {

void dessiner(Sortie& sortie, std::string_view texte, std::initializer_list<Champ> champs) {
  for (;;) {
    const std::size_t ouvre = texte.find('{');
    sortie << texte.substr(0, ouvre);
    if (ouvre == std::string_view::npos) return;
    texte.remove_prefix(ouvre);
    const std::size_t longueur = std::min(texte.find('}'), texte.size() - 1) + 1;
    const std::string_view nom = texte.substr(1, longueur - 2);
    const auto* champ =
        std::find_if(champs.begin(), champs.end(), [&](const Champ& c) { return c.nom == nom; });
    if (champ == champs.end()) {
      sortie << texte.substr(0, longueur);
    } else {
      sortie << champ->valeur;
    }
    texte.remove_prefix(longueur);
  }
}

void dessiner(Sortie& sortie, std::span<const std::string_view> textes,
              std::initializer_list<Champ> champs) {
  for (const std::string_view texte : textes) dessiner(sortie, texte, champs);
}

}  // namespace premiers
