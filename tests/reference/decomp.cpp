// SPDX-License-Identifier: MIT
// Decomposition of an integer into prime factors.
#include "etat.h"

namespace reference {

namespace {

/// Appends one slot to the lists of factors and exponents and fills slot nf.
void inscrire(Etat& e, std::size_t nf, std::int64_t facteur, int exposant) {
  e.Nexpo.push_back(0);
  e.Nfact.push_back(0);
  e.Nfact.at(nf) = facteur;
  e.Nexpo.at(nf) = exposant;
}

/// Splits S; gives the number of distinct factors. The mark -1 stands for the last one, in S2.
std::size_t decomposer(Etat& e) {
  std::size_t nf = 0;
  e.k = 0;
  e.i = 1;
  while (e.S != 1) {
    int expo = 0;
    e.k += 1;
    if (e.k >= 3 && e.k > e.np) Suiv(e);
    const std::int64_t p = e.Nprem.at(static_cast<std::size_t>(e.k));
    e.reste = e.S % p;
    int f = 0;
    e.rS = NTL::SqrRoot(e.S);
    if (e.rS < p) {
      e.reste = 1;
      nf += 1;
      inscrire(e, nf, -1, 1);
      e.S2 = e.S;
      e.S = 1;
    }
    while (e.reste == 0) {
      e.S /= p;
      f += 1;
      if (f == 1) {
        nf += 1;
        inscrire(e, nf, p, 0);
      }
      expo += 1;
      e.Nexpo.at(nf) = expo;
      e.reste = e.S % p;
    }
  }
  return nf;
}

void imprimer(Etat& e, std::size_t nf) {
  if (nf == 1 && e.Nexpo.at(1) == 1) {
    e.ecran << " \n \n \t " << e.S1 << "  est un nombre premier. ";
    return;
  }
  e.ecran << " \n \n \t " << e.S1 << " =  ";
  for (std::size_t t = 1; t <= nf; ++t) {
    e.ecran << "(";
    if (e.Nfact.at(t) == -1) {
      e.ecran << e.S2;
    } else {
      e.ecran << e.Nfact.at(t);
    }
    e.ecran << ")";
    if (e.Nexpo.at(t) != 1) e.ecran << "^" << e.Nexpo.at(t);
    if (t != nf) e.ecran << " X ";
  }
}

}  // namespace

void decomp(Etat& e) {
  e.xn = 0;
  e.recalc = 1;
  e.ecran << trait()
          << " \n \n \t *****  DECOMPOSITION D'UN ENTIER N EN FACTEURS PREMIERS.  ***** ";
  while (e.recalc == 1) {
    e.message = " \n \n \n \t N ? : ";
    e.xn = 1;
    controle(e, 9, e.message);
    e.S = e.valeur0;
    e.xn = 0;
    e.Nprem[1] = 2;
    e.Nprem[2] = 3;
    e.S1 = e.S;
    imprimer(e, decomposer(e));
    e.message = "\n \n \t Nouvelle valeur de N ? Oui [1] , Non [0] : ";
    controle(e, 1, e.message);
    e.recalc = e.valeur2;
  }
}

}  // namespace reference
