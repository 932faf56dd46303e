// SPDX-License-Identifier: MIT
// The ranked listing: primes after their ranks, extending the table as each command needs.
#include "etat.h"

namespace reference {

namespace {

std::int64_t enrouler_somme(std::int64_t a, std::int64_t b) {
  return static_cast<std::int64_t>(static_cast<std::uint64_t>(a) + static_cast<std::uint64_t>(b));
}

std::int64_t enrouler_oppose(std::int64_t a) {
  return static_cast<std::int64_t>(0U - static_cast<std::uint64_t>(a));
}

std::int64_t dernier(const Etat& e) { return e.Nprem[static_cast<std::size_t>(e.np)]; }

void accueillir(Etat& e) {
  e.ecran << trait() << "\n"
          << " \n  \t  *****  CALCUL DE NOMBRES PREMIERS  ***** : "
          << " \n \n \t  Le dernier nombre premier calcule est  :    [ " << e.np << " : "
          << dernier(e) << " ] ."
          << " \n \n \t  K etant un entier positif, vous pouvez saisir au debut et en cours "
             "d'utilisation : "
          << " \n \n \t \t [K] :   Pour afficher les K nombres premiers suivants le dernier "
             "calcule. "
          << " \n \n \t \t [=K] :  Pour afficher le nombre premier de rang K. Ce rang, doit etre "
             "superieur a :  "
          << e.np << " \n \n \t \t [-K] :  Pour afficher tous les nombres premiers superieurs a  "
          << dernier(e) << "  jusqu'a la valeur K . "
          << " \n \n \t \t [=-K] : Pour afficher le plus grand nombre premier superieur a  "
          << dernier(e) << " et inferieur a K "
          << " \n \n \t \t [*] :   Cette option permet d'afficher des nombres premiers isoles ou "
             "des sequences de nombres premiers, tous inferieurs au dernier deja calcule."
          << " \n \t \t         Ce dernier nombre etant celui calcule depuis le premier lancement "
             "d'un des deux programmes : Decomposition et Liste.  "
          << " \n \t \t         En fin de consultation on peut reprendre le calcul, a partir du "
             "dernier nombre premier calcule. "
          << " \n \n \t \t [0] :   Pour arreter les calculs. \n ";
}

void demander(Etat& e) {
  if (e.np == 2) {
    e.message = "\n \n \n \t [K]  ou  [-K]  ou  [=K]  ou   [=-K]  ou   [0]   ? : ";
  } else {
    e.ecran << " \n \n \t  Dernier nombre calcule  :    [ " << e.np << " : " << dernier(e)
            << " ] .";
    e.message = "\n \n \n \t [K]  ou  [-K]  ou  [=K]  ou  [=-K]   ou   [*]  ou   [0]  ? : ";
  }
  controle(e, 7, e.message);
}

bool hors_limites(const Etat& e, std::int64_t K) {
  return (e.un == 1 && 0 < K && K < e.np) || (-dernier(e) < K && K < 0);
}

void entree_de_liste(Etat& e, std::int64_t rang) {
  e.ecran << "   [ " << rang << " : " << e.Nprem[static_cast<std::size_t>(rang)] << " ] ";
}

/// Executes a command of value K; gives K as it stands afterwards (a count has become a rank).
std::int64_t executer(Etat& e, std::int64_t K) {
  if (e.un == 0 && K > 0) K = enrouler_somme(K, e.np);
  const std::int64_t np0 = e.np;
  while ((K > 0 && K > e.np) || (K < 0 && dernier(e) <= enrouler_oppose(K))) Suiv(e);
  const std::int64_t np1 = K < 0 ? e.np - 1 : e.np;
  if (e.un == 1) {
    e.ecran << " \n \n \t " << np1 << " eme nombre premier : ";
    entree_de_liste(e, np1);
    return K;
  }
  if (np0 == 2) {
    e.ecran << " \n \n \t Liste des nombres premiers : "
            << "  [ 1 : 2 ]   [ 2 : 3 ] ";
  } else {
    e.ecran << " \n \n \t Nombres premiers suivants :  ";
  }
  for (std::int64_t t = np0 + 1; t <= np1; ++t) {
    if ((t - 1) % 100 == 0) e.ecran << " \n \n \n ";
    entree_de_liste(e, t);
  }
  return K;
}

}  // namespace

void premier(Etat& e) {
  e.xn = 0;
  e.i = 1;
  e.voir = 0;
  std::int64_t K = 0;
  int fois = 0;
  accueillir(e);
  while (K != 0 || fois == 0) {
    fois = 1;
    int refaire2 = 1;
    while (refaire2 == 1) {
      refaire2 = 0;
      demander(e);
      K = e.valeur;
      if (e.voir != 1 && hors_limites(e, K)) {
        refaire2 = 1;
        e.un = 0;
      }
    }
    if (e.voir == 1) {
      affiche(e);
      e.voir = 2;
      fois = 0;
    } else {
      K = executer(e, K);
      e.un = 0;
      e.voir = 0;
    }
  }
}

}  // namespace reference
