// SPDX-License-Identifier: MIT
// The consultation alone, in the program and in the reference model, on a table that both have
// before the clock starts. The reference model would need minutes to grow it by trial division: its
// table is filled from the program's.
//
//   consultation premiers|reference RANK < ANSWERS > SCREEN
//
// The answers are those of the consultation, its last 0 included. The processor time of the
// selections goes to standard error, as "selections_s SECONDS".
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <iostream>
#include <iterator>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>

#include "features/affiche.h"
#include "tests/reference/etat.h"
#include "tests/session_en_memoire.h"

namespace {

void fin_inattendue(int) { throw std::runtime_error("the answers end too early"); }

template <typename F>
void chronometrer(F f) {
  const std::clock_t debut = std::clock();
  f();
  const auto duree = static_cast<double>(std::clock() - debut) / CLOCKS_PER_SEC;
  std::fprintf(stderr, "selections_s %.6f\n", duree);
}

std::string par_le_programme(const std::string& reponses, std::int64_t rang) {
  std::string ecran;
  premiers::Session s = premiers::session_en_memoire(reponses, ecran, fin_inattendue);
  s.etat.Nprem.etendre_au_rang(rang);
  chronometrer([&] {
    premiers::affiche(s);
    s.sortie.vider();
  });
  return ecran;
}

std::string par_la_reference(const std::string& reponses, std::int64_t rang) {
  premiers::Table table;
  table.etendre_au_rang(rang);
  std::istringstream clavier(reponses);
  std::ostringstream ecran;
  reference::Etat e(clavier, ecran, fin_inattendue);
  e.Nprem.resize(static_cast<std::size_t>(rang) + 1);
  table.parcourir(1, rang, [&](std::int64_t r, std::int64_t premier) {
    e.Nprem[static_cast<std::size_t>(r)] = premier;
  });
  e.np = rang;
  chronometrer([&] { reference::affiche(e); });
  return ecran.str();
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  const std::string reponses(std::istreambuf_iterator<char>(std::cin), {});
  const std::int64_t rang = std::atoll(argv[2]);
  const bool reference = std::string_view(argv[1]) == "reference";
  std::cout << (reference ? par_la_reference(reponses, rang) : par_le_programme(reponses, rang));
}
