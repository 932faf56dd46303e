// SPDX-License-Identifier: MIT
#include "features/premier.h"

#include <string_view>

#include "console/controle.h"
#include "console/ecran.h"
#include "console/entrees.h"
#include "console/suivre.h"
#include "features/affiche.h"
#include "features/listing.h"
#include "state/enroule.h"

namespace premiers {

namespace {

namespace texte {

// np is the rank of the last known prime, P that prime.
constexpr std::string_view accueil[] = {
    "\n"
    "______________________________________________________________________________________________"
    "_____________"
    "\n",
    " \n  \t  *****  CALCUL DE NOMBRES PREMIERS  ***** : ",
    " \n \n \t  Le dernier nombre premier calcule est  :    [ {np} : {P} ] .",
    " \n \n \t  K etant un entier positif, vous pouvez saisir au debut et en cours d'utilisation "
    ": ",
    " \n \n \t \t [K] :   Pour afficher les K nombres premiers suivants le dernier calcule. ",
    " \n \n \t \t [=K] :  Pour afficher le nombre premier de rang K. Ce rang, doit etre superieur "
    "a :  {np}",
    " \n \n \t \t [-K] :  Pour afficher tous les nombres premiers superieurs a  {P}  jusqu'a la "
    "valeur K . ",
    " \n \n \t \t [=-K] : Pour afficher le plus grand nombre premier superieur a  {P} et inferieur "
    "a K ",
    " \n \n \t \t [*] :   Cette option permet d'afficher des nombres premiers isoles ou des "
    "sequences de nombres premiers, tous inferieurs au dernier deja calcule.",
    " \n \t \t         Ce dernier nombre etant celui calcule depuis le premier lancement d'un des "
    "deux programmes : Decomposition et Liste.  ",
    " \n \t \t         En fin de consultation on peut reprendre le calcul, a partir du dernier "
    "nombre premier calcule. ",
    " \n \n \t \t [0] :   Pour arreter les calculs. \n ",
};

// Before a command; the first while only 2 and 3 are known.
constexpr std::string_view commande_au_debut =
    "\n \n \n \t [K]  ou  [-K]  ou  [=K]  ou   [=-K]  ou   [0]   ? : ";
constexpr std::string_view situation = " \n \n \t  Dernier nombre calcule  :    [ {np} : {P} ] .";
constexpr std::string_view commande =
    "\n \n \n \t [K]  ou  [-K]  ou  [=K]  ou  [=-K]   ou   [*]  ou   [0]  ? : ";

// Answers.
constexpr std::string_view isole = " \n \n \t {rang} eme nombre premier : ";
constexpr std::string_view liste_depuis_le_debut =
    " \n \n \t Liste des nombres premiers : "
    "  [ 1 : 2 ]   [ 2 : 3 ] ";
constexpr std::string_view liste_suivants = " \n \n \t Nombres premiers suivants :  ";

}  // namespace texte

/// The table holds 2 and 3 only, as at the start.
bool au_debut(const Table& Nprem) { return Nprem.np() == 2; }

/// Asks for a command; leaves it in `valeur`, `un` and `voir`.
void demander_commande(Session& s) {
  const Table& Nprem = s.etat.Nprem;
  if (au_debut(Nprem)) {
    controle(s, Cas::commande, texte::commande_au_debut);
  } else {
    dessiner(s.sortie, texte::situation, {{"np", Nprem.np()}, {"P", Nprem.dernier()}});
    controle(s, Cas::commande, texte::commande);
  }
}

/// A rank already passed (np itself is accepted), or an upper value below the last prime known.
bool deja_depassee(const Etat& etat) {
  const std::int64_t K = etat.valeur;
  return (etat.un && 0 < K && K < etat.Nprem.np()) || (-etat.Nprem.dernier() < K && K < 0);
}

/// Extends the table as far as the command needs: to rank K, or to the first prime above -K.
/// Gives the last rank to show; the first prime above -K is kept and not shown.
std::int64_t etendre(Session& s, std::int64_t K) {
  Table& Nprem = s.etat.Nprem;
  if (K > Nprem.np()) Nprem.etendre_au_rang(K, suivre(s, "calcul des nombres premiers"));
  if (K >= 0) return Nprem.np();
  const std::int64_t majorant = oppose_enroule(K);
  if (Nprem.dernier() <= majorant) {
    Nprem.etendre_au_dela(majorant, suivre(s, "calcul des nombres premiers"));
  }
  return Nprem.np() - 1;
}

/// Executes the command left in the state; gives its value.
std::int64_t executer(Session& s) {
  Etat& etat = s.etat;
  const std::int64_t np0 = etat.Nprem.np();
  const bool rang_suivant_demande = !etat.un && etat.valeur > 0;
  const std::int64_t K = rang_suivant_demande ? somme_enroulee(etat.valeur, np0) : etat.valeur;
  const bool debut = au_debut(etat.Nprem);
  const std::int64_t np1 = etendre(s, K);
  if (etat.un) {
    dessiner(s.sortie, texte::isole, {{"rang", np1}});
    EntreesRangees(s.sortie).ecrire(np1, etat.Nprem[np1]);
  } else {
    s.sortie << (debut ? texte::liste_depuis_le_debut : texte::liste_suivants);
    lister_rangs(s, np0 + 1, np1);
  }
  etat.un = false;
  return K;
}

}  // namespace

void premier(Session& s) {
  Etat& etat = s.etat;
  payer(etat.dette, etat.Nprem, suivre(s, "calcul des nombres premiers"));
  dessiner(s.sortie, texte::accueil, {{"np", etat.Nprem.np()}, {"P", etat.Nprem.dernier()}});
  for (;;) {
    demander_commande(s);
    if (etat.voir) {
      affiche(s);
    } else if (deja_depassee(etat)) {
      etat.un = false;
    } else if (executer(s) == 0) {
      return;
    }
  }
}

}  // namespace premiers
