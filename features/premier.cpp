// SPDX-License-Identifier: MIT
#include "features/premier.h"

#include <algorithm>
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

// On standard error.
constexpr std::string_view calcul = "calcul des nombres premiers";
constexpr std::string_view commande_trop_grande =
    "commande refusee : tant de nombres premiers ne tiendraient pas en memoire";
constexpr std::string_view dette_trop_grande =
    "les nombres premiers que les calculs precedents demandent ne tiendraient pas en memoire";

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

/// The value of the command as it will be executed: a plain count has become the rank that it leads
/// to, and wraps around like any sum.
std::int64_t valeur_a_executer(const Etat& etat) {
  const bool nombre_de_suivants = !etat.un && etat.valeur > 0;
  return nombre_de_suivants ? somme_enroulee(etat.valeur, etat.Nprem.np()) : etat.valeur;
}

/// Whether so many bytes more can be had; if not, says on standard error what they are wanted for.
bool tient_en_memoire(Session& s, double octets, std::string_view sinon) {
  constexpr double negligeable = 1 << 20;   // asking the system costs more than such a growth
  constexpr double reserve_max = 32 << 20;  // for everything else
  if (octets <= negligeable) return true;
  const auto libre = static_cast<double>(s.monde.memoire_libre());
  if (octets + std::min(reserve_max, libre / 2) <= libre) return true;
  s.sortie.vider();
  s.monde.avertir(sinon);
  return false;
}

/// Whether the table that the command needs fits into memory. What extends nothing always does.
bool est_possible(Session& s) {
  const Table& Nprem = s.etat.Nprem;
  const std::int64_t K = valeur_a_executer(s.etat);
  const double octets =
      K > 0 ? Nprem.octets_jusqu_au_rang(K) : Nprem.octets_jusqu_au_dela(oppose_enroule(K));
  return tient_en_memoire(s, octets, texte::commande_trop_grande);
}

/// Extends the table to what earlier decisions oblige it to. What does not fit into memory is
/// dropped; the table stays as it is.
void payer_la_dette(Session& s) {
  Etat& etat = s.etat;
  const auto borne = static_cast<std::int64_t>(etat.dette.borne_due);
  if (tient_en_memoire(s, etat.Nprem.octets_jusqu_au_dela(borne), texte::dette_trop_grande)) {
    payer(etat.dette, etat.Nprem, suivre(s, texte::calcul));
  } else {
    etat.dette = {};
  }
}

/// Extends the table as far as the command needs: to rank K, or to the first prime above -K.
/// Gives the last rank to show; the first prime above -K is kept and not shown.
std::int64_t etendre(Session& s, std::int64_t K) {
  Table& Nprem = s.etat.Nprem;
  if (K >= 0) {
    Nprem.etendre_au_rang(K, suivre(s, texte::calcul));
    return Nprem.np();
  }
  Nprem.etendre_au_dela(oppose_enroule(K), suivre(s, texte::calcul));
  return Nprem.np() - 1;
}

/// Executes the command left in the state; gives its value.
std::int64_t executer(Session& s) {
  Etat& etat = s.etat;
  const std::int64_t np0 = etat.Nprem.np();
  const bool debut = au_debut(etat.Nprem);
  const std::int64_t K = valeur_a_executer(etat);
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
  payer_la_dette(s);
  dessiner(s.sortie, texte::accueil, {{"np", etat.Nprem.np()}, {"P", etat.Nprem.dernier()}});
  for (;;) {
    demander_commande(s);
    if (etat.voir) {
      affiche(s);
    } else if (deja_depassee(etat) || !est_possible(s)) {
      etat.un = false;
    } else if (executer(s) == 0) {
      return;
    }
  }
}

}  // namespace premiers
