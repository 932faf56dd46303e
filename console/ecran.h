// SPDX-License-Identifier: MIT
// Screens as data: texts in the order in which they are printed, with fields such as {np} where a
// number stands.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <span>
#include <string_view>

#include "console/sortie.h"

namespace premiers {

struct Champ {
  std::string_view nom;
  std::int64_t valeur;
};

/// Prints one text; each {nom} gives place to the value of that field. A field that is not in
/// `champs` stands as it is.
void dessiner(Sortie& sortie, std::string_view texte, std::initializer_list<Champ> champs);

/// Prints the texts one after the other, with nothing between them.
void dessiner(Sortie& sortie, std::span<const std::string_view> textes,
              std::initializer_list<Champ> champs = {});

}  // namespace premiers
