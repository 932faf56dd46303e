// SPDX-License-Identifier: MIT
// The primes between two bounds, without ranks.
#include "etat.h"

namespace reference {

namespace {

std::int64_t demander_borne(Etat& e, const char* prompt) {
  e.message = prompt;
  e.xn = 1;
  controle(e, 11, e.message);
  e.xn = 0;
  return e.valeur;
}

void retenir(Etat& e, std::int64_t p) {
  e.w1 += 1;
  if (e.compter == 0) e.ecran << " " << p << " , ";
}

}  // namespace

void liste(Etat& e) {
  std::int64_t debu1 = 1;
  std::int64_t fin1 = 0;
  e.ecran << " \n ";
  while (fin1 < debu1) {
    debu1 = demander_borne(e, "\n \t Limite inferieure ? : ");
    e.ecran << " \n  ";
    fin1 = demander_borne(e, "\n \t Limite superieure ? : ");
  }
  e.message = "\n \n \t Afficher,  [1] L'effectif seulement / [0] Toute la liste : ? ";
  controle(e, 1, e.message);
  e.compter = e.valeur2;
  if (e.compter == 0) {
    e.ecran << " \n \n \t  Entre ces limites, les nombres premiers sont : ";
  }
  e.w1 = 0;
  if (debu1 < 1) debu1 = 1;  // a wrapped lower bound is passed over at once
  while (debu1 <= fin1 && debu1 <= 3) {
    if (debu1 >= 2) retenir(e, debu1);
    debu1 += 1;
  }
  if (debu1 <= fin1) {
    if (debu1 % 2 == 0) debu1 += 1;
    while (debu1 <= fin1) {
      e.S3 = debu1;
      if (prem1(e) == 1) retenir(e, debu1);
      if (fin1 - debu1 < 2) break;  // the scan ends at the bound, 2^63 - 1 included
      debu1 += 2;
    }
  }
  e.ecran << " \n \n \t  Il y a  " << e.w1 << "  nombres premiers entre ces limites. \n \n \n ";
}

}  // namespace reference
