// SPDX-License-Identifier: MIT
// The slow half: the digits that are kept from now on, and a number that is too long to be kept.
#include "console/chiffres.h"

#include <algorithm>
#include <charconv>

namespace premiers {

NombreCroissant NombreCroissant::autour_de(std::uint64_t n, std::string_view avant) {
  NombreCroissant nombre(avant);
  const std::uint64_t tete = n / groupes_de_quatre.size();
  nombre.base_ = tete * groupes_de_quatre.size();
  if (tete == 0) return nombre;
  std::array<char, place> texte{};
  const char* fin = ecrire_tout(texte.data(), tete, avant);
  const auto longueur = static_cast<std::size_t>(fin - texte.data());
  if (longueur > nombre.tete_.size()) return nombre;
  std::copy_n(texte.data(), longueur, nombre.tete_.data());
  nombre.longueur_ = longueur;
  return nombre;
}

char* NombreCroissant::ecrire_tout(char* ou, std::uint64_t n, std::string_view avant) {
  char* debut = std::copy(avant.begin(), avant.end(), ou);
  return std::to_chars(debut, ou + place, n).ptr;
}

}  // namespace premiers
