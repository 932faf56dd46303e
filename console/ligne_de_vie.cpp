// SPDX-License-Identifier: MIT
// What the line says at each width, longest first, then the bytes that draw it (ligne_de_vie.h).
#include "console/ligne_de_vie.h"

#include <algorithm>
#include <cstdint>

namespace premiers {

namespace {

/// Whole seconds. An estimate may exceed what an integer holds: from there on, one says as much.
std::int64_t en_secondes(std::chrono::duration<double> duree) {
  constexpr double trop = 1e15;
  return static_cast<std::int64_t>(std::min(duree.count(), trop));
}

namespace texte {
constexpr std::string_view courbe = ", courbe ";
constexpr std::string_view sur = " sur ";
constexpr std::string_view pour = " pour ";
constexpr std::string_view chiffres = " chiffres";
constexpr std::string_view moins_un = ", methode p - 1";
constexpr std::string_view crible = ", crible";
constexpr std::string_view algebre = ", algebre";
}  // namespace texte

void ecrire_etape(Ligne& ligne, const Etape& etape) {
  switch (etape.genre) {
    case Etape::Genre::aucun:
      return;
    case Etape::Genre::courbes:
      ligne << texte::courbe << std::int64_t{etape.numero};
      if (etape.nombre > 0) ligne << texte::sur << std::int64_t{etape.nombre};
      ligne << texte::pour << std::int64_t{etape.chiffres} << texte::chiffres;
      return;
    case Etape::Genre::moins_un:
      ligne << texte::moins_un;
      return;
    case Etape::Genre::crible:
      ligne << texte::crible;
      return;
    case Etape::Genre::algebre:
      ligne << texte::algebre;
      return;
  }
}

}  // namespace

Ligne texte_de_vie(std::string_view quoi, const Etape& etape, double part,
                   std::chrono::duration<double> duree, std::size_t colonnes) {
  Ligne court;
  if (part > 0) {
    court << static_cast<std::int64_t>(100 * part) << " %";
  } else {
    court << en_secondes(duree) << " s";
  }
  Ligne nomme;
  nomme << quoi << " : " << court.texte();
  Ligne precis;
  precis << quoi;
  ecrire_etape(precis, etape);
  precis << " : " << court.texte();
  Ligne entier = precis;
  if (part > 0) entier << ", encore " << en_secondes(duree * ((1 - part) / part)) << " s";
  if (colonnes >= colonnes_utiles) {
    for (const Ligne* texte : {&entier, &precis, &nomme, &court}) {
      if (texte->longueur < colonnes) return *texte;
    }
  }
  return {};
}

Ligne remplacer(std::size_t dessinees, std::string_view texte, std::size_t colonnes, bool obeit) {
  Ligne octets;
  octets << "\r";
  if (obeit) {
    if (dessinees > colonnes) {  // it was rewrapped: of its rows the last stays
      const auto de_trop = static_cast<std::int64_t>((dessinees - 1) / colonnes);
      octets << "\033[" << de_trop << "M";
    }
    octets << "\033[K" << texte;
  } else {
    octets << texte;
    const std::size_t fin = std::min(dessinees, colonnes - 1);
    for (std::size_t n = texte.size(); n < fin; ++n) octets << " ";
  }
  octets << "\r";
  return octets;
}

}  // namespace premiers
