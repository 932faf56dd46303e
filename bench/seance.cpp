// SPDX-License-Identifier: MIT
// One dialogue alone, on a table that reaches some place before the clock starts: the ranked listing
// or its consultation in the program, the consultation in the reference model. The reference model
// would need minutes to grow its table by trial division: it is filled from the program's.
//
//   seance premier|affiche|reference PLACE < ANSWERS > SCREEN
//
// PLACE is a rank, or -V for the first prime above V. The answers are those of the dialogue, its last
// 0 included. Its processor time goes to standard error, as "seance_s SECONDS".
#include <unistd.h>

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
#include "features/premier.h"
#include "systeme/flux.h"
#include "tests/reference/etat.h"
#include "tests/session_en_memoire.h"

namespace {

void fin_inattendue(int) { throw std::runtime_error("the answers end too early"); }

template <typename F>
void chronometrer(F f) {
  const std::clock_t debut = std::clock();
  f();
  const auto duree = static_cast<double>(std::clock() - debut) / CLOCKS_PER_SEC;
  std::fprintf(stderr, "seance_s %.6f\n", duree);
}

void jusqu_a_la_place(premiers::Table& table, std::int64_t place) {
  if (place >= 0) {
    table.etendre_au_rang(place);
  } else {
    table.etendre_au_dela(-place);
  }
}

void par_le_programme(const std::string& reponses, std::int64_t place,
                      void (*dialogue)(premiers::Session&)) {
  std::string ecran;
  premiers::Session s = premiers::session_en_memoire(reponses, ecran, fin_inattendue);
  s.sortie = premiers::Sortie(premiers::systeme::ecrire_sortie);
  jusqu_a_la_place(s.etat.Nprem, place);
  chronometrer([&] {
    dialogue(s);
    s.sortie.vider();
  });
}

void par_la_reference(const std::string& reponses, std::int64_t place) {
  premiers::Table table;
  jusqu_a_la_place(table, place);
  std::istringstream clavier(reponses);
  std::ostringstream ecran;
  reference::Etat e(clavier, ecran, fin_inattendue);
  e.np = table.np();
  e.Nprem.assign(1, 0);
  auto premiers = table.suite(2, premiers::rangs::SuiteDePremiers::sans_limite, table.dernier());
  for (auto lot = premiers.suivant(); !lot.empty(); lot = premiers.suivant()) {
    e.Nprem.insert(e.Nprem.end(), lot.begin(), lot.end());
  }
  chronometrer([&] { reference::affiche(e); });
  std::cout << ecran.str();
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  const std::string reponses(std::istreambuf_iterator<char>(std::cin), {});
  const std::int64_t place = std::atoll(argv[2]);
  const std::string_view dialogue = argv[1];
  if (dialogue == "reference") {
    par_la_reference(reponses, place);
  } else if (dialogue == "premier" || dialogue == "affiche") {
    par_le_programme(reponses, place,
                     dialogue == "premier" ? premiers::premier : premiers::affiche);
  } else {
    return 2;
  }
}
