// SPDX-License-Identifier: MIT
// The consultation of the primes already computed. It only reads the table.
#include "etat.h"

namespace reference {

namespace {

std::int64_t Nprem(const Etat& e, std::int64_t rang) {
  return e.Nprem.at(static_cast<std::size_t>(rang));
}

std::int64_t P(const Etat& e) { return Nprem(e, e.np); }

/// One number of at least 1 (or a wrapped negative one).
std::int64_t demander(Etat& e, const char* prompt) {
  e.message = prompt;
  e.xn = 1;
  controle(e, 4, e.message);
  e.xn = 0;
  return e.valeur;
}

std::int64_t demander_rang(Etat& e, const char* prompt) {
  for (;;) {
    const std::int64_t r = demander(e, prompt);
    if (r >= 1 && r <= e.np) return r;
  }
}

std::int64_t demander_borne(Etat& e, const char* prompt) {
  for (;;) {
    const std::int64_t maj = demander(e, prompt);
    if (maj <= P(e)) return maj;
  }
}

void resultat(Etat& e, std::int64_t r) {
  e.ecran << " \n \n \t [ " << r << " : " << Nprem(e, r) << " ] ";
}

void entree_de_liste(Etat& e, std::int64_t t) {
  e.ecran << "   [ " << t << " : " << Nprem(e, t) << " ] ";
}

void liste_des_rangs(Etat& e, std::int64_t r1, std::int64_t r) {
  e.ecran << " \n \n ";
  for (std::int64_t t = r1; t <= r; ++t) {
    if ((t - 1) % 100 == 0) e.ecran << " \n \n \n ";
    entree_de_liste(e, t);
  }
}

struct Rangs {
  std::int64_t r1;
  std::int64_t r;
};

/// Asks two bounds as values and gives the ranks of the primes between them.
Rangs demander_bornes(Etat& e) {
  std::int64_t maj1 = 0;
  std::int64_t maj = 0;
  do {
    maj1 = demander_borne(e, "\n \n \t Minorant ? : ");
    e.ecran << " \n  ";
    maj = demander_borne(e, "\n \n \t Majorant ? : ");
  } while (maj1 > maj);
  return {maj1, maj};
}

Rangs rangs_entre(const Etat& e, Rangs bornes) {
  std::int64_t r1 = 1;
  while (Nprem(e, r1) < bornes.r1) ++r1;
  std::int64_t r = r1;
  while (r <= e.np && Nprem(e, r) <= bornes.r) ++r;
  return {r1, r - 1};
}

void rang_donne(Etat& e) { resultat(e, demander_rang(e, " \n \n \t Rang du nombre ? : ")); }

void plus_grand_majore(Etat& e) {
  const std::int64_t maj = demander_borne(e, "\n \n \t Majorant du nombre ? : ");
  std::int64_t r = 1;
  while (r <= e.np && Nprem(e, r) <= maj) ++r;
  resultat(e, r - 1);
}

void entre_deux_rangs(Etat& e) {
  std::int64_t r1 = 0;
  std::int64_t r = 0;
  do {
    r1 = demander_rang(e, "\n \n \t Plus petit rang ? : ");
    e.ecran << " \n  ";
    r = demander_rang(e, "\n \t Plus grand rang ? : ");
  } while (r1 > r);
  liste_des_rangs(e, r1, r);
}

void entre_deux_bornes(Etat& e) {
  const Rangs rangs = rangs_entre(e, demander_bornes(e));
  liste_des_rangs(e, rangs.r1, rangs.r);
}

void suites_de_difference(Etat& e) {
  const Rangs bornes = demander_bornes(e);
  const std::int64_t dif =
      demander(e, "\n \n \t Difference entre les nombres premiers consecutifs cherches ? : ");
  std::int64_t doub = 0;
  while (doub < 2) {
    doub = demander(e,
                    " \n \n \t Minimum de nombres premiers consecutifs pour que l'affichage ait "
                    "lieu ? : ");
  }
  const Rangs rangs = rangs_entre(e, bornes);
  e.ecran << " \n \n ";
  std::int64_t v = 0;
  std::int64_t db = 1;
  for (std::int64_t t = rangs.r1 + 1; t <= rangs.r; ++t) {
    if (Nprem(e, t) - Nprem(e, t - 1) != dif) {
      db = 1;
      continue;
    }
    db += 1;
    v += 1;
    if (db == doub) {
      e.ecran << " \n    " << v - doub + 2 << "  :  ";
      for (std::int64_t w = doub - 1; w >= 0; --w) entree_de_liste(e, t - w);
    } else if (db > doub) {
      entree_de_liste(e, t);
    }
  }
}

void dessiner(Etat& e) {
  e.ecran << " \n \n \n \t AFFICHAGE DE SELECTIONS DES NOMBRES PREMIERS DEJA CALCULES. "
          << " \n \n \t Le dernier nombre premier calcule est \t [ " << e.np << " : " << P(e)
          << " ] ."
          << " \n \n \t Voulez vous faire : "
          << " \n \n \t \t [1] - Voir un nombre premier dont le rang donne est inferieur a " << e.np
          << " ? "
          << " \n \n \t \t [2] - Voir le plus grand nombre premier majore par un nombre inferieur "
             "a "
          << P(e) << " ? "
          << " \n \n \t \t [3] - Voir tous les nombres premiers dont les rangs sont compris entre "
             "deux limites inferieures a "
          << e.np << " ? "
          << " \n \n \t \t [4] - Voir tous les nombres premiers compris entre deux bornes "
             "inferieures a "
          << P(e) << " ? "
          << " \n \n \t \t [5] - Chercher les nombres premiers consecutifs de difference fixee, "
             "compris entre deux bornes inferieures a "
          << P(e) << " ? "
          << " \n \n \t \t [0] - Reprendre les calculs des nombres premiers superieurs a " << P(e)
          << " de rang  " << e.np << " ? ";
}

}  // namespace

void affiche(Etat& e) {
  int choix2 = 5;
  while (choix2 != 0) {
    dessiner(e);
    e.message = "\n \n \n \t Quel est votre choix ? : ";
    controle(e, 8, e.message);
    choix2 = e.valeur2;
    if (choix2 == 1) rang_donne(e);
    if (choix2 == 2) plus_grand_majore(e);
    if (choix2 == 3) entre_deux_rangs(e);
    if (choix2 == 4) entre_deux_bornes(e);
    if (choix2 == 5) suites_de_difference(e);
  }
}

}  // namespace reference
