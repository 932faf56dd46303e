// SPDX-License-Identifier: MIT
// The reference model: the program in its plain form, trial division and all. It is the yardstick
// that the shipped program is compared with, byte for byte, and is kept simple; it shares no code
// with the shipped program.
//
// This file: every variable that outlives a routine, with its initial value, and the routines.
#pragma once

#include <NTL/ZZ.h>

#include <cstdint>
#include <functional>
#include <istream>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace reference {

using NTL::ZZ;

struct Etat {
  Etat(std::istream& istream, std::ostream& ostream, std::function<void(int)> fin)
      : clavier(istream), ecran(ostream), fin_entree(std::move(fin)) {}

  std::istream& clavier;
  std::ostream& ecran;
  /// Called each time a question finds the input at its end, with 0, 1, 2 ... within one question.
  /// A test throws from it; the program pauses.
  std::function<void(int repetition)> fin_entree;

  // The table of primes by rank.
  std::vector<std::int64_t> Nprem = std::vector<std::int64_t>(3, 0);
  std::int64_t np = 0;
  std::int64_t i = 0;
  std::int64_t j = 0;

  // Questions and answers.
  std::string message;
  std::string entree;
  int valeur2 = 0;
  std::int64_t valeur = 0;
  ZZ valeur0;
  std::int64_t valtest1 = 0;
  ZZ valtest2;
  int xn = 0;
  int voir = 0;
  int un = 0;

  // Primality tests.
  ZZ S;
  std::int64_t S3 = 0;
  ZZ reste;
  ZZ rS;
  std::int64_t reste1 = 0;
  std::int64_t rS1 = 0;
  std::int64_t k = 0;

  // Decomposition.
  ZZ S1;
  ZZ S2;
  std::vector<std::int64_t> Nfact = std::vector<std::int64_t>(1, 0);
  std::vector<int> Nexpo = std::vector<int>(1, 0);

  int recalc = 1;
  int choix0 = 0;
  int compter = 0;
  std::int64_t w1 = 0;
};

bool valtest(Etat& e, char caract1);
void controle(Etat& e, int cas, const std::string& chaine);
void Suiv(Etat& e);
int prem(Etat& e);
int prem1(Etat& e);
void premier(Etat& e);
void affiche(Etat& e);
void liste(Etat& e);
void decomp(Etat& e);
void concat(Etat& e);
void concatN(Etat& e);
void Nconcat(Etat& e);

/// The main menu, from the start to choice 0. Returns the exit status, 1.
int menu(Etat& e);

/// The 107 characters wide rule of the screens: a line break, underscores, and no line break.
std::string trait();

}  // namespace reference
