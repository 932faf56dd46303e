// SPDX-License-Identifier: MIT
// The texts of the menu in the order of the screen, then where each choice leads.
#include "app/menu.h"

#include <string_view>

#include "app/explications.h"
#include "console/controle.h"
#include "console/ecran.h"
#include "features/concat.h"
#include "features/decomp.h"
#include "features/liste.h"
#include "features/premier.h"

namespace premiers {

namespace {

constexpr std::string_view ecran[] = {
    " \n   POUR MODIFIER LA TAILLE DU TEXTE ET DE LA FENETRE : [TOUCHE CTRL] + [MOLETTE DE LA "
    "SOURIS]. \n ",
    "\n____________________________________________________________________________________________"
    "_______________\n",
    "**********************************************************************************************"
    "*************\n",
    " \n  \t  *****  CALCUL DE NOMBRES PREMIERS  ***** : ",
    "\n \n \t Que voulez-vous faire ? : \n ",
    "\n \n \t \t [1] - Decomposer un nombre en facteurs premiers ? ",
    "\n \n \t \t [2] - Lister les nombres premiers avec leurs rangs ? ",
    "\n \n \t \t [3] - Afficher les nombres premiers compris entre deux bornes (sans leurs rangs) "
    "? ",
    "\n \n \t \t [4] - Concatenation de nombres premiers ? ",
    "\n \n \t \t [5] - Afficher des explications ? ",
    "\n \n \t \t [0] - Fermer le programme ? ",
};

constexpr std::string_view question = "\n \n \n \t Quel est votre choix ? : ";

/// The operator closed the program.
constexpr int statut_fermeture = 1;

}  // namespace

int menu(Session& s) {
  for (;;) {
    dessiner(s.sortie, ecran);
    switch (demander_choix(s, Cas::menu_principal, question)) {
      case 1:
        decomp(s);
        break;
      case 2:
        premier(s);
        break;
      case 3:
        liste(s);
        break;
      case 4:
        concat(s);
        break;
      case 5:
        expliquer(s.sortie);
        break;
      default:
        s.sortie.vider();
        return statut_fermeture;
    }
  }
}

}  // namespace premiers
