// SPDX-License-Identifier: MIT
// The texts of the three choices in the order of the screen, then each choice.
#include "features/concat.h"

#include <algorithm>
#include <charconv>
#include <span>
#include <string_view>
#include <utility>

#include "console/controle.h"
#include "console/ecran.h"
#include "console/suivre.h"
#include "primes/concatenations/concatenations.h"
#include "primes/concatenations/decoupe.h"
#include "primes/dette/morceaux.h"
#include "primes/dette/recherche.h"

namespace premiers {

namespace {

namespace texte {

constexpr std::string_view menu[] = {
    " \n \n \t  *****  CONCATENATIONS DE NOMBRES PREMIERS  ***** : ",
    "\n \n \t Que voulez-vous faire ? : \n ",
    "\n \n \t \t [1] - Savoir si un nombre N est une concatenation de nombres premiers ",
    "\n \n \t \t [2] - Trouver tous ces nombres N quelconques, compris entre 2 valeurs ? ",
    "\n \n \t \t [3] - Trouver tous ces nombres N premiers, compris entre 2 valeurs ? ",
    "\n \n \t \t [0] - Revenir au debut du programme ? ",
};
constexpr std::string_view choix = "\n \n \n \t Quel est votre choix ? : ";

// One number.
constexpr std::string_view quel_N = " \n \n \n \t N ? : ";
constexpr std::string_view pour = "\n  Pour  ";
constexpr std::string_view deux_points = " : ";
constexpr std::string_view effectif =
    " \n \n \t  Effectif des concanetations differentes possibles = ";
constexpr std::string_view premier_comptabilise =
    " \n \n \t  Un nombre premier est comptabilise comme une concanetation de lui meme. \n \n ";
constexpr std::string_view autre_N = "\n \n \t Nouvelle valeur de N ? Oui [1] , Non [0] : ";

// A range.
constexpr std::string_view inferieure = "\n \t Limite inferieure ? : ";
constexpr std::string_view entre_les_deux = " \n  ";
constexpr std::string_view superieure = "\n \t Limite superieure ? : ";
constexpr std::string_view effectif_seulement =
    "\n \n \t  Afficher,  [1] L'effectif seulement / [0] Toute la liste : ? ";
constexpr std::string_view entre = " \n \n \t Entre ";
constexpr std::string_view et = " et ";
constexpr std::string_view conviennent = "   les  nombres qui convienent sont : ";
constexpr std::string_view il_y_a = " \n \n \t Il y a  ";
constexpr std::string_view nombres = "  nombres ";
constexpr std::string_view de_ce_type = "de ce type. \n ";
constexpr std::string_view premiers_de_ce_type =
    " premiers de ce type, chacun etant la concatenation d'au moins 2 autres.\n ";
constexpr std::string_view entre_crochet[] = {
    " \n \t Entre crochet apres chaque nombre : l'effectif des concanetations differentes "
    "possibles. ",
    " \n \t Un nombre premier etant comptabilise comme une concanetation de lui meme. \n \n  ",
};

/// The kept numbers follow one another on the same line: "N[ways]  ".
constexpr std::string_view ouvre = "[";
constexpr std::string_view ferme = "]  ";

// The work that lasts, in the line that tells of it.
constexpr std::string_view travail = "concatenations";

}  // namespace texte

/// Every way, as fast as the output takes them.
void ecrire_chemins(Session& s, const concatenations::Decoupe& decoupe) {
  constexpr unsigned entre_deux_regards = 1024;
  unsigned chemins = 0;
  concatenations::parcourir_chemins(decoupe, [&](std::string_view chemin) {
    s.sortie << chemin;
    if (++chemins % entre_deux_regards == 0) s.sortie.vider_si_tard();
  });
}

/// Asks the bounds until the first is not above the second.
concatenations::Recherche demander_recherche(Session& s, bool premiers_seuls) {
  for (;;) {
    NTL::ZZ debut = demander_grand_nombre(s, texte::inferieure);
    s.sortie << texte::entre_les_deux;
    NTL::ZZ fin = demander_grand_nombre(s, texte::superieure);
    if (debut <= fin) return {std::move(debut), std::move(fin), premiers_seuls};
  }
}

void ecrire_grands(Sortie& sortie, std::string_view tete, std::span<const NTL::ZZ, 10> effectifs) {
  char chiffre = '0';
  for (const NTL::ZZ& effectif : effectifs) {
    if (effectif != 0) {
      sortie << tete << std::string_view(&chiffre, 1) << texte::ouvre << effectif << texte::ferme;
    }
    ++chiffre;
  }
}

/// The same, formatted in place: a third of the time of a search would go into this.
void ecrire_petits(Sortie& sortie, std::string_view tete,
                   std::span<const std::uint64_t, 10> effectifs) {
  constexpr std::size_t longueur_max = 20;  // of a 64-bit number
  constexpr std::size_t un_nombre = 2 * longueur_max + texte::ouvre.size() + texte::ferme.size();
  static_assert(10 * un_nombre <= Sortie::place_max);
  char* place = sortie.reserver(10 * un_nombre);
  char chiffre = '0';
  for (const std::uint64_t effectif : effectifs) {
    if (effectif != 0) {
      place = std::copy(tete.begin(), tete.end(), place);
      *place++ = chiffre;
      place = std::copy(texte::ouvre.begin(), texte::ouvre.end(), place);
      place = std::to_chars(place, place + longueur_max, effectif).ptr;
      place = std::copy(texte::ferme.begin(), texte::ferme.end(), place);
    }
    ++chiffre;
  }
  sortie.avancer(place);
}

concatenations::Gardes ecrire_liste(Sortie& sortie) {
  return {[&sortie](auto tete, auto effectifs) { ecrire_petits(sortie, tete, effectifs); },
          [&sortie](auto tete, auto effectifs) { ecrire_grands(sortie, tete, effectifs); }};
}

}  // namespace

void concatN(Session& s) {
  do {
    const NTL::ZZ N = demander_grand_nombre(s, texte::quel_N);
    const concatenations::Decoupe decoupe = concatenations::decouper(N, suivre(s, texte::travail));
    dette::noter_morceaux(s.etat.dette, decoupe);
    s.sortie << texte::pour << N << texte::deux_points;
    ecrire_chemins(s, decoupe);
    s.sortie << texte::effectif << decoupe.chemins.front() << texte::premier_comptabilise;
  } while (demander_choix(s, Cas::oui_non, texte::autre_N) == 1);
}

void Nconcat(Session& s, bool premiers_seuls) {
  const concatenations::Recherche recherche = demander_recherche(s, premiers_seuls);
  const bool liste = demander_choix(s, Cas::oui_non, texte::effectif_seulement) == 0;
  if (liste) {
    s.sortie << texte::entre << recherche.debut << texte::et << recherche.fin << texte::conviennent;
  }
  dette::NotesDeRecherche notes(s.etat.dette, recherche);
  const std::uint64_t w2 = concatenations::chercher_concatenations(
      recherche, liste ? ecrire_liste(s.sortie) : concatenations::Gardes{}, notes.examens(),
      suivre(s, texte::travail));
  dette::noter_recherche(s.etat.dette, notes);
  s.sortie << texte::il_y_a << static_cast<std::int64_t>(w2) << texte::nombres
           << (recherche.premiers_seuls ? texte::premiers_de_ce_type : texte::de_ce_type);
  if (liste) dessiner(s.sortie, texte::entre_crochet);
}

void concat(Session& s) {
  for (;;) {
    dessiner(s.sortie, texte::menu);
    switch (demander_choix(s, Cas::menu_concatenation, texte::choix)) {
      case 1:
        concatN(s);
        break;
      case 2:
        Nconcat(s, false);
        break;
      case 3:
        Nconcat(s, true);
        break;
      default:
        return;
    }
  }
}

}  // namespace premiers
