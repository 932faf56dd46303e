// SPDX-License-Identifier: MIT
// The texts in the order of the screen, then the commands: K, -K, =K, =-K, * and a lone "=".
#include "features/premier.h"

#include <algorithm>
#include <string_view>

#include "console/controle.h"
#include "console/ecran.h"
#include "console/entrees.h"
#include "console/suivre.h"
#include "features/affiche.h"
#include "features/listing.h"
#include "primes/dette/dette.h"
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

// On standard error.
constexpr std::string_view au_dela_de_la_fin =
    "commande refusee : au-dela du dernier nombre premier inferieur a 2^63";

}  // namespace texte

/// The table holds 2 and 3 only, as at the start.
bool au_debut(const Table& Nprem) { return Nprem.np() == 2; }

/// Asks for a command; whether it began with "=" is left in `un`.
Reponse demander_commande(Session& s) {
  const Table& Nprem = s.etat.Nprem;
  if (au_debut(Nprem)) return controle(s, Cas::commande, texte::commande_au_debut);
  dessiner(s.sortie, texte::situation, {{"np", Nprem.np()}, {"P", Nprem.dernier()}});
  return controle(s, Cas::commande, texte::commande);
}

/// A rank already passed (np itself is accepted), or an upper value below the last prime known.
bool deja_depassee(const Etat& etat, std::int64_t K) {
  return (etat.un && 0 < K && K < etat.Nprem.np()) || (-etat.Nprem.dernier() < K && K < 0);
}

/// The value of the command as it will be executed: a plain count has become the rank that it leads
/// to, and wraps around like any sum.
std::int64_t valeur_a_executer(const Etat& etat, std::int64_t valeur) {
  const bool nombre_de_suivants = !etat.un && valeur > 0;
  return nombre_de_suivants ? somme_enroulee(valeur, etat.Nprem.np()) : valeur;
}

/// Whether the command can be executed: it needs no rank and no prime beyond the end of the numbers,
/// not even the prime that is kept behind an upper value and not shown. If it does, says so on
/// standard error. What extends nothing always can.
bool est_possible(Session& s, std::int64_t K) {
  const Table& Nprem = s.etat.Nprem;
  const std::int64_t borne = oppose_enroule(K);
  const bool extensible =
      K > 0 ? K <= Table::fin.rang : borne < Nprem.dernier() || borne < Table::fin.premier;
  if (extensible) return true;
  s.sortie.vider();
  s.monde.avertir(texte::au_dela_de_la_fin);
  return false;
}

/// Extends the table to what earlier decisions oblige it to.
void payer_la_dette(Session& s) {
  dette::payer(s.etat.dette, s.etat.Nprem, suivre(s, calcul_des_premiers));
}

/// Extends the table as far as the command needs, to rank K, or to the first prime above -K; gives
/// the place to show: the first prime above -K is kept and not shown.
Place etendre(Session& s, std::int64_t K) {
  Table& Nprem = s.etat.Nprem;
  const Suivi suivi = suivre(s, calcul_des_premiers);
  if (K >= 0) {
    Nprem.etendre_au_rang(K, suivi);
    return Nprem.lire(Nprem.np());
  }
  Nprem.etendre_au_dela(oppose_enroule(K), suivi);
  return Nprem.lire(Nprem.np() - 1);
}

void montrer_un_seul(Session& s, std::int64_t K) {
  const Place place = etendre(s, K);
  dessiner(s.sortie, texte::isole, {{"rang", place.rang}});
  EntreesRangees(s.sortie).ecrire(place.rang, place.premier);
}

/// Lists the primes behind the last known one, up to rank K or to the value -K, as they are found,
/// and extends the table with them.
void lister_les_suivants(Session& s, std::int64_t K) {
  Table& Nprem = s.etat.Nprem;
  const std::int64_t np = Nprem.np();
  const std::int64_t nombre = K >= 0 ? std::max<std::int64_t>(K - np, 0) : Table::fin.rang;
  const std::int64_t fin = K >= 0 ? Table::fin.premier : oppose_enroule(K);
  const std::string_view en_tete =
      au_debut(Nprem) ? texte::liste_depuis_le_debut : texte::liste_suivants;
  const Place derniere = lister(s, en_tete, np + 1, Nprem.suivants(nombre, fin));
  if (derniere.rang > np) Nprem.prolonger(derniere);
  if (K < 0) Nprem.etendre_au_dela(fin);
}

/// Executes the command of value K.
void executer(Session& s, std::int64_t K) {
  if (s.etat.un) {
    montrer_un_seul(s, K);
  } else {
    lister_les_suivants(s, K);
  }
}

}  // namespace

void premier(Session& s) {
  Etat& etat = s.etat;
  payer_la_dette(s);
  dessiner(s.sortie, texte::accueil, {{"np", etat.Nprem.np()}, {"P", etat.Nprem.dernier()}});
  for (;;) {
    const Reponse commande = demander_commande(s);
    if (commande.voir) {
      affiche(s);
      continue;
    }
    const std::int64_t K = valeur_a_executer(etat, commande.valeur);
    const bool acceptee = !deja_depassee(etat, commande.valeur) && est_possible(s, K);
    if (acceptee) executer(s, K);
    etat.un = false;
    if (acceptee && K == 0) return;
  }
}

}  // namespace premiers
