// SPDX-License-Identifier: MIT
// Concatenations of primes: the sub-menu, the ways of one number, the search of a range.
//
// A start is a position of a digit at which at least one prime piece begins. r0[1..k2] are the
// starts in increasing order, row k of l0 the lengths of the prime pieces that begin at r0[k]; both
// end with a 0. The enumeration keeps in i0, j0 the pieces chosen so far.
#include <array>

#include "etat.h"

namespace reference {

namespace {

struct Tableaux {
  explicit Tableaux(std::size_t n0)
      : a0(n0 + 2), r0(n0 + 2), i0(n0 + 2), j0(n0 + 2), l0(n0 + 2, std::vector<int>(n0 + 2)) {}
  std::vector<int> a0;
  std::vector<int> r0;
  std::vector<int> i0;
  std::vector<int> j0;
  std::vector<std::vector<int>> l0;
};

std::size_t z(int n) { return static_cast<std::size_t>(n); }

int compter_chiffres(ZZ P1) {
  int n0 = 0;
  while (P1 != 0) {
    n0 += 1;
    P1 /= 10;
  }
  return n0;
}

void separer_chiffres(Tableaux& x, ZZ P1, int n0) {
  for (int i1 = 1; i1 <= n0; ++i1) {
    x.a0.at(z(n0 - i1 + 1)) = static_cast<int>(P1 % 10);
    P1 /= 10;
  }
}

/// Scans the pieces of the n0 digits into r0 and l0. r0[1] keeps what it held until a start is
/// recorded.
void chercher_morceaux(Etat& e, Tableaux& x, int n0) {
  int k2 = 0;
  int stop = 0;
  for (int t1 = 1; t1 <= n0 && stop == 0; ++t1) {
    int j2 = 0;
    const int k3 = k2;
    for (int u1 = 1; u1 <= n0 - t1 + 1; ++u1) {
      ZZ P1(0);
      for (int d = t1; d <= t1 + u1 - 1; ++d) P1 = P1 * 10 + x.a0.at(z(d));
      e.S = P1;
      if (prem(e) == 1) {
        j2 += 1;
        if (j2 == 1) {
          k2 += 1;
          x.r0.at(z(k2)) = t1;
        }
        x.l0.at(z(k2)).at(z(j2)) = u1;
      }
    }
    if (k3 != k2) x.l0.at(z(k2)).at(z(j2 + 1)) = 0;
    if (x.r0.at(1) == 0) stop = 1;
  }
  x.r0.at(z(k2 + 1)) = 0;
}

/// The depth-first walk through every way, shortest first piece first.
struct Parcours {
  Tableaux& x;
  int k1;
  int L;

  explicit Parcours(Tableaux& tableaux) : x(tableaux), k1(tableaux.r0.at(1) == 0 ? 0 : 1), L(0) {
    L = x.l0.at(1).at(1);
    x.i0.at(z(k1)) = 1;
    x.j0.at(z(k1)) = 1;
  }

  int longueur(int niveau, int de_plus) const {
    return x.l0.at(z(x.i0.at(z(niveau)))).at(z(x.j0.at(z(niveau)) + de_plus));
  }

  void oter_dernier() {
    k1 -= 1;
    if (k1 > 0) L -= longueur(k1 + 1, 0);
  }

  void reculer() {
    while (k1 > 0 && longueur(k1, 1) == 0) oter_dernier();
    if (k1 > 0) {
      L = L - longueur(k1, 0) + longueur(k1, 1);
      x.j0.at(z(k1)) += 1;
    }
  }

  void avancer() {
    int i1 = x.i0.at(z(k1)) + 1;
    while (x.r0.at(z(i1)) != 0 && x.r0.at(z(i1)) <= L) i1 += 1;
    if (x.r0.at(z(i1)) == L + 1) {
      k1 += 1;
      x.i0.at(z(k1)) = i1;
      L += x.l0.at(z(i1)).at(1);
      x.j0.at(z(k1)) = 1;
    } else {
      reculer();
    }
  }
};

void imprimer_chemin(Etat& e, const Parcours& p) {
  e.ecran << " ( ";
  for (int k2 = 1; k2 <= p.k1; ++k2) {
    const int rang = p.x.r0.at(z(p.x.i0.at(z(k2))));
    const int lg = p.longueur(k2, 0);
    for (int i2 = rang; i2 <= rang + lg - 1; ++i2) e.ecran << p.x.a0.at(z(i2));
    e.ecran << " ";
  }
  e.ecran << ") ";
}

constexpr std::array textes_concat{
    " \n \n \t  *****  CONCATENATIONS DE NOMBRES PREMIERS  ***** : ",
    "\n \n \t Que voulez-vous faire ? : \n ",
    "\n \n \t \t [1] - Savoir si un nombre N est une concatenation de nombres premiers ",
    "\n \n \t \t [2] - Trouver tous ces nombres N quelconques, compris entre 2 valeurs ? ",
    "\n \n \t \t [3] - Trouver tous ces nombres N premiers, compris entre 2 valeurs ? ",
    "\n \n \t \t [0] - Revenir au debut du programme ? ",
};

ZZ demander(Etat& e, const char* prompt) {
  e.message = prompt;
  e.xn = 1;
  controle(e, 9, e.message);
  e.xn = 0;
  return e.valeur0;
}

/// Counts the ways of one number of a range; stops early when its exact number is not needed.
void compter_chemins(Etat& e, Tableaux& x, int n0, int& stop2) {
  Parcours p(x);
  while (p.k1 != 0 && stop2 == 0) {
    if (p.L == n0) {
      e.w1 += 1;
      p.oter_dernier();
      p.reculer();
      if (e.compter == 1 && ((e.w1 > 1 && e.choix0 == 3) || (e.w1 > 0 && e.choix0 == 2))) {
        stop2 = 1;
      }
    } else {
      p.avancer();
    }
  }
}

}  // namespace

void concat(Etat& e) {
  int re = 1;
  while (re == 1) {
    for (const char* texte : textes_concat) e.ecran << texte;
    e.message = "\n \n \n \t Quel est votre choix ? : ";
    controle(e, 10, e.message);
    e.choix0 = e.valeur2;
    if (e.choix0 == 1) concatN(e);
    if (e.choix0 == 2 || e.choix0 == 3) Nconcat(e);
    if (e.choix0 == 0) re = 0;
  }
}

void concatN(Etat& e) {
  e.recalc = 1;
  while (e.recalc == 1) {
    const ZZ P2 = demander(e, " \n \n \n \t N ? : ");
    e.w1 = 0;
    const int n0 = compter_chiffres(P2);
    Tableaux x(z(n0));
    separer_chiffres(x, P2, n0);
    chercher_morceaux(e, x, n0);
    e.ecran << "\n  Pour  " << P2 << " : ";
    Parcours p(x);
    while (p.k1 != 0) {
      if (p.L == n0) {
        e.w1 += 1;
        imprimer_chemin(e, p);
        p.oter_dernier();
        p.reculer();
      } else {
        p.avancer();
      }
    }
    e.ecran << " \n \n \t  Effectif des concanetations differentes possibles = " << e.w1
            << " \n \n \t  Un nombre premier est comptabilise comme une concanetation de lui meme. "
               "\n \n ";
    e.message = "\n \n \t Nouvelle valeur de N ? Oui [1] , Non [0] : ";
    controle(e, 1, e.message);
    e.recalc = e.valeur2;
  }
}

void Nconcat(Etat& e) {
  ZZ debu(1);
  ZZ fin(0);
  while (debu > fin) {
    debu = demander(e, "\n \t Limite inferieure ? : ");
    e.ecran << " \n  ";
    fin = demander(e, "\n \t Limite superieure ? : ");
  }
  e.message = "\n \n \t  Afficher,  [1] L'effectif seulement / [0] Toute la liste : ? ";
  controle(e, 1, e.message);
  e.compter = e.valeur2;
  Tableaux x(z(compter_chiffres(fin)));
  if (e.compter == 0) {
    e.ecran << " \n \n \t Entre " << debu << " et " << fin
            << "   les  nombres qui convienent sont : ";
  }
  std::int64_t w2 = 0;
  for (; debu <= fin; debu += 1) {
    int stop2 = 0;
    e.S = debu;
    const int premier = prem(e);
    if (e.choix0 == 2 || (premier == 1 && e.choix0 == 3)) {
      e.w1 = 0;
      const int n0 = compter_chiffres(debu);
      separer_chiffres(x, debu, n0);
      chercher_morceaux(e, x, n0);
      compter_chemins(e, x, n0, stop2);
      if ((e.w1 > 1 && e.choix0 == 3) || (e.w1 > 0 && e.choix0 == 2) || stop2 == 1) {
        w2 += 1;
        if (e.compter == 0) e.ecran << debu << "[" << e.w1 << "]  ";
      }
    }
  }
  e.ecran << " \n \n \t Il y a  " << w2 << "  nombres ";
  if (e.choix0 == 3) {
    e.ecran << " premiers de ce type, chacun etant la concatenation d'au moins 2 autres.\n ";
  } else {
    e.ecran << "de ce type. \n ";
  }
  if (e.compter == 0) {
    e.ecran << " \n \t Entre crochet apres chaque nombre : l'effectif des concanetations "
               "differentes possibles. "
            << " \n \t Un nombre premier etant comptabilise comme une concanetation de lui meme. "
               "\n \n  ";
  }
}

}  // namespace reference
