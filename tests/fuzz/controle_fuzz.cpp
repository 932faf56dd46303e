// SPDX-License-Identifier: MIT
// Fuzzes one question: its grammar against a table of regular expressions, its values against the
// number that the word spells, taken modulo 2^64 where the answer has 64 bits.
// Input: a byte for the case, one for what holds beforehand, then what is typed.
#include <NTL/ZZ.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <optional>
#include <regex>
#include <string>
#include <string_view>
#include <vector>

#include "console/controle.h"
#include "tests/session_en_memoire.h"

namespace {

struct FinDeSession {};

enum class Vers { valeur2, valeur, valeur0 };

/// What each case accepts, where the answer goes, and whether 0 can be refused.
struct Grammaire {
  const char* motif;
  Vers vers;
  bool zero_refusable;
};

constexpr const char* naturel = R"(0|\+?[1-9][0-9]*)";
constexpr const char* entier = R"(0|[+-]?[1-9][0-9]*)";
constexpr const char* commande = R"(=?(0|[+-]?[1-9][0-9]*))";  // and the lone star

constexpr std::array<Grammaire, 11> grammaires{{
    {"[01]", Vers::valeur2, false},
    {"[12]", Vers::valeur2, false},
    {"[012]", Vers::valeur2, false},
    {naturel, Vers::valeur, true},
    {entier, Vers::valeur, false},
    {"[0-5]", Vers::valeur2, false},
    {commande, Vers::valeur, false},
    {"[0-5]", Vers::valeur2, false},
    {naturel, Vers::valeur0, true},
    {"[0-3]", Vers::valeur2, false},
    {naturel, Vers::valeur, true},
}};
constexpr int cas_commande = 7;

/// What the operator can tell afterwards.
struct Rendu {
  int questions = 0;
  bool acceptee = false;
  bool voir = false;
  bool un = false;
  std::optional<NTL::ZZ> reponse;
  friend bool operator==(const Rendu&, const Rendu&) = default;
};

std::vector<std::string> mots(std::string_view tape) {
  constexpr std::string_view blancs = " \t\n\v\f\r";
  std::vector<std::string> resultat;
  for (std::size_t i = tape.find_first_not_of(blancs); i != std::string_view::npos;) {
    const std::size_t fin = std::min(tape.find_first_of(blancs, i), tape.size());
    resultat.emplace_back(tape.substr(i, fin - i));
    i = tape.find_first_not_of(blancs, fin);
  }
  return resultat;
}

/// n as a signed 64-bit number.
NTL::ZZ enroule(const NTL::ZZ& n) {
  const NTL::ZZ module = NTL::power2_ZZ(64);
  const NTL::ZZ r = n % module;
  return r >= NTL::power2_ZZ(63) ? r - module : r;
}

/// The number that a word spells which fits a grammar.
NTL::ZZ nombre(std::string_view mot) {
  const bool negatif = mot.find('-') != std::string_view::npos;
  const std::string chiffres(mot.substr(std::min(mot.find_first_of("0123456789"), mot.size())));
  const auto n = NTL::conv<NTL::ZZ>(chiffres.c_str());
  return negatif ? -n : n;
}

Rendu attendu(int cas, bool xn, bool etoile, std::string_view tape) {
  static const auto motifs = [] {
    std::vector<std::regex> r;
    for (const Grammaire& g : grammaires) r.emplace_back(g.motif);
    return r;
  }();
  const auto indice = static_cast<std::size_t>(cas - 1);
  const Grammaire& g = grammaires[indice];
  Rendu r;
  for (const std::string& mot : mots(tape)) {
    ++r.questions;
    if (mot.size() > 199 || mot.find('\0') != std::string::npos) continue;
    if (cas == cas_commande && mot[0] == '=') r.un = true;
    if (cas == cas_commande && mot == "*" && etoile) {
      r.acceptee = r.voir = true;
      return r;
    }
    if (!std::regex_match(mot, motifs[indice])) continue;
    NTL::ZZ n = nombre(mot);
    if (g.vers == Vers::valeur) n = enroule(n);
    if (g.zero_refusable && xn && n == 0) continue;
    r.acceptee = true;
    r.reponse = n;
    return r;
  }
  ++r.questions;
  return r;
}

Rendu obtenu(int cas, bool xn, bool etoile, std::string_view tape) {
  std::string ecran;
  auto s = premiers::session_en_memoire(tape, ecran, [](int) { throw FinDeSession(); });
  if (etoile) s.etat.Nprem.etendre_au_rang(3);
  Rendu r;
  premiers::Reponse reponse;
  try {
    reponse = premiers::controle(s, static_cast<premiers::Cas>(cas), "?", xn);
    r.acceptee = true;
    s.sortie.vider();
  } catch (const FinDeSession&) {
  }
  if (ecran.find_first_not_of('?') != std::string::npos) std::abort();
  r.questions = static_cast<int>(ecran.size());
  r.voir = reponse.voir;
  r.un = s.etat.un;
  if (r.acceptee && !r.voir) {
    switch (grammaires[static_cast<std::size_t>(cas - 1)].vers) {
      case Vers::valeur2:
        r.reponse = NTL::ZZ(reponse.valeur2);
        break;
      case Vers::valeur:
        r.reponse = NTL::ZZ(reponse.valeur);
        break;
      case Vers::valeur0:
        r.reponse = reponse.valeur0;
        break;
    }
  }
  return r;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* octets, std::size_t taille) {
  if (taille < 2) return 0;
  const int cas = 1 + octets[0] % static_cast<int>(grammaires.size());
  const bool xn = (octets[1] & 1U) != 0;
  const bool etoile = (octets[1] & 2U) != 0;
  const std::string_view tape(reinterpret_cast<const char*>(octets) + 2, taille - 2);
  const Rendu a = attendu(cas, xn, etoile, tape);
  const Rendu o = obtenu(cas, xn, etoile, tape);
  if (a != o) {
    std::cerr << "case " << cas << ": expected " << a.questions << " questions, "
              << (a.acceptee ? "an answer" : "no answer") << "; got " << o.questions << ", "
              << (o.acceptee ? "an answer" : "no answer") << "\n";
    std::abort();
  }
  return 0;
}
