// SPDX-License-Identifier: MIT
// The text of the screen, as it stands there (explications.h).
#include "app/explications.h"

#include <string_view>

#include "console/ecran.h"

namespace premiers {

namespace {

constexpr std::string_view ecran[] = {
    " \n \n \t  NOMBRES PREMIERS : ",
    " \n \n \t  La taille des nombres premiers est limitee a  (2^63 - 1), soit environ 9 milliards "
    "de milliards. ",
    " \n \n \t  Quand un nombre premier est affiche, il l'est apres son rang. Tous les precedents "
    "ont ete calcules et memorises. ",
    " \n \t  Ils sont memorises en memore vive depuis le lancement d'un des deux programmes : "
    "Decomposition ou Liste. ",
    " \n \t  A la fermeture du programme principal, la liste des nombres premiers memorises est "
    "effacee. ",
    " \n  \t  Cette version ne met que quelques secondes pour calculer et memoriser les nombres "
    "premiers jusqu'aux millioniemes. ",
    " \n  \t  Pour aller jusqu'au dix millionieme il faut 6 mn et 3 heures pour le cent "
    "millionieme. ",
    " \n  \t  Pour le dix millionieme et au-dela, preferer les autres editions du programme, qui "
    "lisent des fichiers de nombres premiers deja calcules. ",
    " \n  \n \t  Une option permet d'afficher rapidement tous les nombres premiers entre deux "
    "bornes, mais sans leurs rangs.",
    " \n  \t  Dans ce cas, pour afficher les rangs, il faut se servir de 'lister les nombres "
    "premiers'. ",
    " \n  \n \t  Lancer 'lister les nombres premiers' pour voir les details du fonctionement. ",
    " \n \n \n \t  DECOMPOSITION EN FACTEURS PREMIERS : ",
    " \n  \n \t  En entree, un nombre N entier positif quelconque convient meme superieur a (2^63 "
    "- 1). ",
    " \n  \t  Ces programmes utilisent la librairie NTL du C++. Cela permet de factoriser des "
    "nombres superieurs a (2^63 - 1). ",
    " \n  \t  Neanmoins les facteurs premiers doivent etre inferieurs a (2^63 - 1). ",
    " \n  \t  Apres calculs, le logiciel affiche sa decomposition avec la puissance de chaque "
    "facteur. ",
    " \n  \t  Si cette decomposition comprend des nombres premiers tres grands, le calcul "
    "peut-etre long, voir tres long ! ",
    " \n  \n  \t  Les nombres premiers calcules a chaque etape, restent memorises et servent pour "
    "la suite du deroulement du programme. ",
    " \n \n \n \t  NOMBRES PREMIERS JUMEAUX et GENERALISATION: ",
    " \n \n \t  On peut afficher parmi les nombres deja calcules, tous les couples de nombres "
    "jumeaux ou ceux ayant un ecart choisi.",
    " \n \n \n \t  CONCATENATION DE NOMBRES PREMIERS : ",
    " \n \n \t  Cette option permet de determiner si un nombre est la concatenation de nombres "
    "premiers et d'afficher toutes les possibilites.",
    " \n \t  Elle permet egalement de determiner tous les nombres de ce type entre 2 valeurs.",
    " \n \t  On peut aussi determiner uniquement les nombres premiers de ce type entre 2 bornes. "
    "\n \n",
    "\n",
    " \n \t L'equipe du projet premiers. Derniere modification : decembre 2024. ",
    "\n",
    "\n",
};

}  // namespace

void expliquer(Sortie& sortie) { dessiner(sortie, ecran); }

}  // namespace premiers
