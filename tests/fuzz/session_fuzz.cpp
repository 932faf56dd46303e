// SPDX-License-Identifier: MIT
// Fuzzes whole sessions: what is typed is played in memory by the program and by the reference
// model, which must show the same bytes. The model divides by every prime in turn, so inputs whose
// numbers are large are passed over.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <sstream>
#include <string>
#include <string_view>

#include "app/menu.h"
#include "tests/reference/etat.h"
#include "tests/session_en_memoire.h"

namespace {

struct FinDeSession {};

/// The last prompt comes twice at the end of the input.
void cesser_a_la_fin(int repetition) {
  if (repetition > 0) throw FinDeSession();
}

constexpr int pas_finie = -1;

struct Rendu {
  std::string ecran;
  int statut = pas_finie;
  friend bool operator==(const Rendu&, const Rendu&) = default;
};

Rendu jouer_premiers(std::string_view tape) {
  Rendu r;
  auto s = premiers::session_en_memoire(tape, r.ecran, cesser_a_la_fin);
  try {
    r.statut = premiers::menu(s);
  } catch (const FinDeSession&) {
  }
  return r;
}

Rendu jouer_reference(std::string_view tape) {
  std::istringstream clavier{std::string(tape)};
  std::ostringstream ecran;
  reference::Etat e(clavier, ecran, cesser_a_la_fin);
  Rendu r;
  try {
    r.statut = reference::menu(e);
  } catch (const FinDeSession&) {
  }
  r.ecran = ecran.str();
  return r;
}

/// Runs of digits are short and their sum is small, so the model takes milliseconds.
bool petits_nombres(std::string_view tape) {
  constexpr std::uint64_t somme_max = 12'000;
  std::uint64_t somme = 0;
  std::uint64_t n = 0;
  for (const char c : tape) {
    n = c >= '0' && c <= '9' ? 10 * n + static_cast<std::uint64_t>(c - '0') : 0;
    somme += n;
    if (somme > somme_max) return false;
  }
  return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* octets, std::size_t taille) {
  constexpr std::size_t taille_max = 400;
  const std::string_view tape(reinterpret_cast<const char*>(octets), taille);
  if (taille > taille_max || !petits_nombres(tape)) return 0;
  const Rendu attendu = jouer_reference(tape);
  const Rendu obtenu = jouer_premiers(tape);
  if (obtenu != attendu) {
    std::cerr << "typed: " << tape << "\nexpected (status " << attendu.statut << "):\n"
              << attendu.ecran << "\nobtained (status " << obtenu.statut << "):\n"
              << obtenu.ecran << "\n";
    std::abort();
  }
  return 0;
}
