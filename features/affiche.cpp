// SPDX-License-Identifier: MIT
// The texts of the consultation in the order of the screen, then its five selections.
#include "features/affiche.h"

#include <string_view>

#include "console/controle.h"
#include "console/ecran.h"
#include "console/entrees.h"
#include "console/suivre.h"
#include "features/listing.h"
#include "primes/suites.h"

namespace premiers {

namespace {

namespace texte {

// np is the rank of the last known prime, P that prime.
constexpr std::string_view menu[] = {
    " \n \n \n \t AFFICHAGE DE SELECTIONS DES NOMBRES PREMIERS DEJA CALCULES. ",
    " \n \n \t Le dernier nombre premier calcule est \t [ {np} : {P} ] .",
    " \n \n \t Voulez vous faire : ",
    " \n \n \t \t [1] - Voir un nombre premier dont le rang donne est inferieur a {np} ? ",
    " \n \n \t \t [2] - Voir le plus grand nombre premier majore par un nombre inferieur a {P} ? ",
    " \n \n \t \t [3] - Voir tous les nombres premiers dont les rangs sont compris entre deux "
    "limites inferieures a {np} ? ",
    " \n \n \t \t [4] - Voir tous les nombres premiers compris entre deux bornes inferieures a {P} "
    "? ",
    " \n \n \t \t [5] - Chercher les nombres premiers consecutifs de difference fixee, compris "
    "entre deux bornes inferieures a {P} ? ",
    " \n \n \t \t [0] - Reprendre les calculs des nombres premiers superieurs a {P} de rang  {np} "
    "? ",
};
constexpr std::string_view choix = "\n \n \n \t Quel est votre choix ? : ";

constexpr std::string_view resultat = " \n \n \t [ {rang} : {premier} ] ";
constexpr std::string_view entre_les_deux = " \n  ";
constexpr std::string_view debut_de_liste = " \n \n ";

// [1] and [2]
constexpr std::string_view rang = " \n \n \t Rang du nombre ? : ";
constexpr std::string_view majorant_du_nombre = "\n \n \t Majorant du nombre ? : ";

// [3]
constexpr std::string_view plus_petit_rang = "\n \n \t Plus petit rang ? : ";
constexpr std::string_view plus_grand_rang = "\n \t Plus grand rang ? : ";

// [4] and [5]
constexpr std::string_view minorant = "\n \n \t Minorant ? : ";
constexpr std::string_view majorant = "\n \n \t Majorant ? : ";

// [5]
constexpr std::string_view difference =
    "\n \n \t Difference entre les nombres premiers consecutifs cherches ? : ";
constexpr std::string_view minimum =
    " \n \n \t Minimum de nombres premiers consecutifs pour que l'affichage ait lieu ? : ";
constexpr std::string_view suite = " \n    {numero}  :  ";

}  // namespace texte

/// A rank of the table.
std::int64_t demander_rang(Session& s, std::string_view question) {
  for (;;) {
    const std::int64_t r = demander_nombre(s, Cas::nombre, question);
    if (1 <= r && r <= s.etat.Nprem.np()) return r;
  }
}

/// A value not above the last known prime.
std::int64_t demander_valeur(Session& s, std::string_view question) {
  for (;;) {
    const std::int64_t maj = demander_nombre(s, Cas::nombre, question);
    if (maj <= s.etat.Nprem.dernier()) return maj;
  }
}

/// Two limits, the smaller first.
struct Limites {
  std::int64_t petite;
  std::int64_t grande;
};

/// Asks two ranks, until they are in order.
Limites demander_rangs(Session& s) {
  for (;;) {
    const std::int64_t r1 = demander_rang(s, texte::plus_petit_rang);
    s.sortie << texte::entre_les_deux;
    const std::int64_t r = demander_rang(s, texte::plus_grand_rang);
    if (r1 <= r) return {r1, r};
  }
}

/// Asks two bounds, until they are in order.
Limites demander_bornes(Session& s) {
  for (;;) {
    const std::int64_t maj1 = demander_valeur(s, texte::minorant);
    s.sortie << texte::entre_les_deux;
    const std::int64_t maj = demander_valeur(s, texte::majorant);
    if (maj1 <= maj) return {maj1, maj};
  }
}

/// A single prime; below 2 there is none, which shows as [ 0 : 0 ].
void imprimer_seul(Session& s, Place place) {
  dessiner(s.sortie, texte::resultat, {{"rang", place.rang}, {"premier", place.premier}});
}

void premier_de_rang(Session& s) {
  const std::int64_t r = demander_rang(s, texte::rang);
  imprimer_seul(s, s.etat.Nprem.lire(r, suivre(s, calcul_des_premiers)));
}

void plus_grand_majore(Session& s) {
  const std::int64_t maj = demander_valeur(s, texte::majorant_du_nombre);
  imprimer_seul(s, s.etat.Nprem.jusqu_a(maj, suivre(s, calcul_des_premiers)));
}

void entre_deux_rangs(Session& s) {
  Table& Nprem = s.etat.Nprem;
  const auto [r1, r] = demander_rangs(s);
  const Place debut = Nprem.lire(r1, suivre(s, calcul_des_premiers));
  lister(s, texte::debut_de_liste, r1, Nprem.suite(debut.premier, r - r1 + 1, Nprem.dernier()));
}

/// The rank of the smallest prime >= v, for v not above the last known prime.
std::int64_t rang_a_partir_de(Session& s, std::int64_t v) {
  if (v <= 2) return 1;
  return s.etat.Nprem.jusqu_a(v - 1, suivre(s, calcul_des_premiers)).rang + 1;
}

void entre_deux_bornes(Session& s) {
  const auto [maj1, maj] = demander_bornes(s);
  const std::int64_t r1 = rang_a_partir_de(s, maj1);
  lister(s, texte::debut_de_liste, r1,
         s.etat.Nprem.suite(maj1, rangs::SuiteDePremiers::sans_limite, maj));
}

/// The entries of the last `nombre` primes of a run that ends with `fin`.
void imprimer_suite(Session& s, Place fin, std::int64_t nombre, std::int64_t dif) {
  EntreesRangees entrees(s.sortie);
  for (std::int64_t w = nombre - 1; w >= 0; --w)
    entrees.ecrire(fin.rang - w, fin.premier - w * dif);
}

void suites_de_difference(Session& s) {
  const auto [maj1, maj] = demander_bornes(s);
  const std::int64_t dif = demander_nombre(s, Cas::nombre, texte::difference);
  std::int64_t doub = 0;
  while (doub < 2) doub = demander_nombre(s, Cas::nombre, texte::minimum);

  Place place{rang_a_partir_de(s, maj1) - 1, 0};
  Suites suites(dif, doub);
  EnTete avant(s, texte::debut_de_liste);
  rangs::SuiteDePremiers premiers =
      s.etat.Nprem.suite(maj1, rangs::SuiteDePremiers::sans_limite, maj);
  for (auto lot = premiers.suivant(avant.suivi()); !lot.empty();
       lot = premiers.suivant(avant.suivi())) {
    for (const std::uint64_t premier : lot) {
      place = {place.rang + 1, static_cast<std::int64_t>(premier)};
      const std::int64_t a_montrer = suites.suivant(place.premier);
      if (a_montrer == 0) continue;
      avant.imprimer();
      if (a_montrer == doub) dessiner(s.sortie, texte::suite, {{"numero", suites.numero()}});
      imprimer_suite(s, place, a_montrer, dif);
    }
  }
  avant.imprimer();
}

}  // namespace

void affiche(Session& s) {
  for (;;) {
    const Table& Nprem = s.etat.Nprem;
    dessiner(s.sortie, texte::menu, {{"np", Nprem.np()}, {"P", Nprem.dernier()}});
    switch (demander_choix(s, Cas::menu_consultation, texte::choix)) {
      case 1:
        premier_de_rang(s);
        break;
      case 2:
        plus_grand_majore(s);
        break;
      case 3:
        entre_deux_rangs(s);
        break;
      case 4:
        entre_deux_bornes(s);
        break;
      case 5:
        suites_de_difference(s);
        break;
      default:
        return;
    }
  }
}

}  // namespace premiers
