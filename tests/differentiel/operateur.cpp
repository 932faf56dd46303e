// SPDX-License-Identifier: MIT
#include "tests/differentiel/operateur.h"

#include <algorithm>
#include <array>
#include <sstream>
#include <string_view>

#include "tests/differentiel/hasard.h"
#include "tests/differentiel/nombres.h"
#include "tests/reference/etat.h"

namespace differentiel {

namespace {

enum class Question {
  menu,
  decomp_N,
  commande,
  consultation,
  rang,
  petit_rang,
  grand_rang,
  valeur,
  minorant,
  majorant,
  difference,
  minimum,
  borne_inferieure,
  borne_superieure,
  concat_menu,
  concat_N,
  concat_inferieure,
  concat_superieure,
  oui_non,
};

struct Repere {
  std::string_view texte;
  Question question;
};

/// What on the screen tells which question is being asked: of these, the one that stands last.
constexpr std::array reperes{
    Repere{"[0] - Fermer le programme", Question::menu},
    Repere{"[0] - Reprendre les calculs", Question::consultation},
    Repere{"[0] - Revenir au debut", Question::concat_menu},
    Repere{" N ? : ", Question::decomp_N},
    Repere{"[0]   ? : ", Question::commande},
    Repere{"[0]  ? : ", Question::commande},
    Repere{"Rang du nombre ? : ", Question::rang},
    Repere{"Plus petit rang ? : ", Question::petit_rang},
    Repere{"Plus grand rang ? : ", Question::grand_rang},
    Repere{"Majorant du nombre ? : ", Question::valeur},
    Repere{"Minorant ? : ", Question::minorant},
    Repere{"Majorant ? : ", Question::majorant},
    Repere{"cherches ? : ", Question::difference},
    Repere{"ait lieu ? : ", Question::minimum},
    Repere{"Limite inferieure ? : ", Question::borne_inferieure},
    Repere{"Limite superieure ? : ", Question::borne_superieure},
    Repere{"Nouvelle valeur de N ?", Question::oui_non},
    Repere{"Toute la liste", Question::oui_non},
};

/// Words that are refused by every question, whatever was typed before.
constexpr std::array<std::string_view, 18> refuses{"abc", "07",    "00", "+",    "-",        "+0",
                                                   "-0",  "+07",   "7+", "7-3",  "--1",      "++",
                                                   "1,",  "1.000", "/9", "0x10", "\xC3\xA9", "-07"};
/// Refused too, but in the ranked listing they leave a mark.
constexpr std::array<std::string_view, 6> refuses_avec_egal{"=", "==5", "=*", "=abc", "=07", "=-0"};

constexpr std::array<std::string_view, 8> separateurs{"\n",      "\n", "\n",   " ",
                                                      "\n\n \t", "\t", "\r\n", "\v\f"};

struct Operateur {
  explicit Operateur(std::uint64_t graine)
      : hasard(graine),
        visites(hasard.entre(1, 6)),
        limite(hasard.parmi(std::array{300, 2000, 2000, 2000, 2000, 15000, 15000, 100000})) {}

  /// The next words, for the question on the screen.
  std::string taper(const reference::Etat& e, const std::string& ecran);

 private:
  void reconnaitre(const std::string& ecran);
  std::string reponse(const reference::Etat& e);
  std::string intrus();

  std::string choisir_feature();
  std::string commande(const reference::Etat& e);
  std::int64_t rang_de_commande(const reference::Etat& e);
  std::string rang(const reference::Etat& e, std::int64_t depuis);
  std::string valeur(const reference::Etat& e, std::int64_t depuis);
  std::string borne_inferieure();
  std::string borne_superieure();
  std::string concat_N();
  std::string concat_inferieure();
  std::string concat_superieure();

  bool las() { return ++mots > 60 || hasard.une_fois_sur(4); }

  Hasard hasard;
  std::int64_t visites;
  std::int64_t limite;  // trial division goes up to about here
  Question question = Question::menu;
  bool concatenations = false;  // the menu of the concatenations was the last menu
  int mots = 0;
  std::int64_t depuis = 1;  // the lower one of two bounds
  NTL::ZZ concat_depuis = NTL::ZZ(1);
};

void Operateur::reconnaitre(const std::string& ecran) {
  std::size_t derniere = 0;
  for (const Repere& repere : reperes) {
    const std::size_t ou = ecran.rfind(repere.texte);
    if (ou == std::string::npos || ou < derniere) continue;
    derniere = ou;
    question = repere.question;
  }
  if (question == Question::concat_menu) concatenations = true;
  if (question == Question::menu) concatenations = false;
  if (!concatenations) return;
  if (question == Question::decomp_N) question = Question::concat_N;
  if (question == Question::borne_inferieure) question = Question::concat_inferieure;
  if (question == Question::borne_superieure) question = Question::concat_superieure;
}

std::string Operateur::intrus() {
  if (question == Question::commande && hasard.une_fois_sur(2)) {
    return std::string(hasard.parmi(refuses_avec_egal));
  }
  switch (hasard.entre(0, 12)) {
    case 0:
      return std::string(static_cast<std::size_t>(hasard.entre(200, 400)), '1');
    case 1:
      return std::string(static_cast<std::size_t>(hasard.entre(65000, 140000)), '7');
    case 2:
      return std::string("1\0", 2) + "2";
    case 3:
      return std::string(static_cast<std::size_t>(hasard.entre(198, 201)), '0');
    case 4:
      return question == Question::oui_non || question == Question::menu ? "7" : "-";
    default:
      return std::string(hasard.parmi(refuses));
  }
}

std::string Operateur::choisir_feature() {
  if (--visites < 0) return visites == -1 ? "2" : "0";
  static constexpr std::array choix{"1", "1", "1", "2", "2", "2", "3", "3", "3", "4", "4", "5"};
  return hasard.parmi(choix);
}

std::int64_t Operateur::rang_de_commande(const reference::Etat& e) {
  switch (hasard.entre(0, 5)) {
    case 0:
      return e.np + hasard.entre(-2, 2);
    case 5:
      return puissance_de_dix(hasard, e.np + 300) + hasard.entre(-1, 1);
    case 1:  // around the next block break
      return (e.np / 100 + 1) * 100 + hasard.entre(-1, 2);
    case 2:
      return hasard.entre(1, e.np);
    default:
      return e.np + hasard.etage(1, 300);
  }
}

std::string Operateur::commande(const reference::Etat& e) {
  if (visites < 0 || las()) return hasard.une_fois_sur(4) && visites >= 0 ? "=0" : "0";
  const std::string egal = e.un == 1 || hasard.une_fois_sur(2) ? "" : "=";
  const bool rang_voulu = e.un == 1 || !egal.empty();
  const std::int64_t P = e.Nprem.back();
  switch (hasard.entre(0, 10)) {
    case 0:
      return "-9223372036854775808";
    case 10: {
      const std::int64_t rond = puissance_de_dix(hasard, P + 2000) + hasard.entre(-2, 2);
      return egal + enroule(hasard, -std::max<std::int64_t>(1, rond), true);
    }
    case 1:
    case 2:
    case 3: {
      const std::int64_t cible = rang_de_commande(e);
      const std::int64_t compte = rang_voulu ? cible : cible - e.np;
      return egal + enroule(hasard, std::max<std::int64_t>(compte, 1), true);
    }
    case 4:
    case 5:
      return egal + enroule(hasard, -std::max<std::int64_t>(1, P + hasard.entre(-3, 6)), true);
    case 6:
      return egal + enroule(hasard, -(P + hasard.etage(1, 2000)), true);
    default:
      return "*";
  }
}

std::string Operateur::rang(const reference::Etat& e, std::int64_t a_partir_de) {
  const std::int64_t bas = std::max<std::int64_t>(1, a_partir_de);
  switch (hasard.entre(0, 7)) {
    case 0:
      return enroule(hasard, e.np + hasard.entre(-2, 1), false);
    case 7:
      return enroule(hasard, puissance_de_dix(hasard, e.np) + hasard.entre(-1, 1), false);
    case 1:
      return enroule(hasard, hasard.entre(-3, 3), false);
    case 2:
      return enroule(hasard, hasard.entre(1, e.np / 100 + 1) * 100 + hasard.entre(-1, 2), false);
    default:
      return enroule(hasard, hasard.entre(bas, std::min(e.np, bas + 400)), false);
  }
}

std::string Operateur::valeur(const reference::Etat& e, std::int64_t a_partir_de) {
  const std::int64_t P = e.Nprem.back();
  const std::int64_t bas = std::max<std::int64_t>(1, a_partir_de);
  const std::int64_t haut = std::min(P, bas + 3000);
  switch (hasard.entre(0, 7)) {
    case 0:
      return enroule(hasard, P + hasard.entre(-3, 1), false);
    case 7:
      return enroule(hasard, puissance_de_dix(hasard, P) + hasard.entre(-2, 2), false);
    case 1:
      return enroule(hasard, hasard.entre(-3, 4), false);
    case 2:  // a prime of the table or its neighbour
      return enroule(hasard, premier_apres(hasard.entre(bas, haut)) + hasard.entre(-1, 1), false);
    case 3:
      return enroule(hasard, bas + hasard.entre(-1, 4), false);
    default:
      return enroule(hasard, hasard.entre(bas, haut), false);
  }
}

std::string Operateur::borne_inferieure() {
  switch (hasard.entre(0, 9)) {
    case 0:
      depuis = hasard.entre(-5, 5);
      break;
    case 1:  // the smallest factors of the odd numbers that follow are 5 and 7
      depuis = INT64_MAX - hasard.entre(0, 3);
      break;
    case 2:
      depuis = hasard.une_fois_sur(2) ? INT64_MIN : INT64_MIN + hasard.etage(1, INT64_MAX);
      break;
    case 3: {  // up to the square of a prime and perhaps past it
      const std::int64_t p = premier_au_hasard(hasard, limite);
      depuis = std::max<std::int64_t>(1, p * p - hasard.etage(0, 300));
      break;
    }
    case 4:  // an interval without any prime
      depuis = premier_apres(remarquable(hasard, std::min<std::int64_t>(limite, 15000))) + 1;
      break;
    default:
      depuis = remarquable(hasard, limite);
  }
  return enroule(hasard, depuis, false);
}

std::string Operateur::borne_superieure() {
  std::int64_t jusqu = depuis;
  switch (hasard.entre(0, 6)) {
    case 0:
      break;
    case 1:
      jusqu = std::max<std::int64_t>(depuis, INT64_MIN + 9) - hasard.entre(1, 9);
      break;
    case 2:
      if (depuis >= 1 && depuis < 100'000'000'000) jusqu = premier_apres(depuis) - 1;
      break;
    case 3:
      if (depuis < 1) jusqu = hasard.entre(depuis, hasard.etage(1, 500));
      break;
    default:
      if (depuis >= 1) jusqu = depuis + std::min(hasard.etage(0, 600), INT64_MAX - depuis);
  }
  return enroule(hasard, jusqu, false);
}

std::string Operateur::concat_N() {
  if (hasard.une_fois_sur(40))
    return hasard.une_fois_sur(2) ? std::string("1") + std::string(198, '0') : "9";
  if (hasard.une_fois_sur(12)) return texte(rond_et_long(hasard));
  if (hasard.une_fois_sur(3)) {
    return std::to_string(remarquable(hasard, std::min<std::int64_t>(limite, 10000)));
  }
  return decoupable(hasard, limite);
}

std::string Operateur::concat_inferieure() {
  static constexpr std::array<std::int64_t, 6> seuils{10, 100, 1000, 10000, 100000, 1000000};
  const std::int64_t borne = std::min<std::int64_t>(limite, 3000);
  if (hasard.une_fois_sur(8)) {
    concat_depuis = rond_et_long(hasard);
  } else if (hasard.une_fois_sur(8)) {  // beyond 64 bits; the next numbers end in 5 and 6
    concat_depuis = NTL::conv<NTL::ZZ>((decoupable(hasard, borne) + "0000000000000004").c_str());
  } else if (hasard.une_fois_sur(4)) {
    concat_depuis = std::max<std::int64_t>(1, hasard.parmi(seuils) - hasard.entre(0, 30));
  } else {
    concat_depuis = remarquable(hasard, borne);
  }
  return texte(concat_depuis);
}

std::string Operateur::concat_superieure() {
  if (hasard.une_fois_sur(8)) return std::to_string(hasard.etage(1, 100));
  const bool grand = NTL::NumBits(concat_depuis) > 40;
  return texte(concat_depuis + hasard.entre(0, grand ? 2 : hasard.parmi(std::array{0, 5, 30, 60})));
}

std::string Operateur::reponse(const reference::Etat& e) {
  switch (question) {
    case Question::menu:
      return choisir_feature();
    case Question::decomp_N:
      return texte(decomposable(hasard, limite));
    case Question::commande:
      return commande(e);
    case Question::consultation:
      return las() ? "0" : std::to_string(hasard.entre(1, 5));
    case Question::rang:
    case Question::petit_rang:
      return rang(e, depuis = hasard.etage(1, e.np));
    case Question::grand_rang:
      return rang(e, depuis);
    case Question::valeur:
    case Question::minorant:
      return valeur(e, depuis = hasard.etage(1, e.Nprem.back()));
    case Question::majorant:
      return valeur(e, depuis);
    case Question::difference:
      return std::to_string(hasard.parmi(std::array{1, 2, 2, 2, 4, 4, 6, 6, 6, 3, 8, 12, 0}));
    case Question::minimum:
      return enroule(hasard, hasard.parmi(std::array{2, 2, 2, 3, 3, 4, 1, 0, -2}), false);
    case Question::borne_inferieure:
      return borne_inferieure();
    case Question::borne_superieure:
      return borne_superieure();
    case Question::concat_menu:
      return las() ? "0" : std::to_string(hasard.entre(1, 3));
    case Question::concat_N:
      return concat_N();
    case Question::concat_inferieure:
      return concat_inferieure();
    case Question::concat_superieure:
      return concat_superieure();
    case Question::oui_non:
      return las() ? "0" : "1";
  }
  return "0";
}

std::string Operateur::taper(const reference::Etat& e, const std::string& ecran) {
  reconnaitre(ecran);
  std::string frappe;
  if (hasard.une_fois_sur(60)) frappe += hasard.parmi(separateurs);
  frappe += hasard.une_fois_sur(7) && mots < 60 ? intrus() : reponse(e);
  frappe += hasard.parmi(separateurs);
  return frappe;
}

}  // namespace

std::string inventer_session(std::uint64_t graine) {
  Operateur operateur(graine);
  std::istringstream clavier;
  std::ostringstream ecran;
  std::string session;
  const reference::Etat* etat = nullptr;
  // The model finds nothing to read: the operator looks at the screen and types.
  const auto attendre = [&](int /*repetition*/) {
    const std::string frappe = operateur.taper(*etat, ecran.str());
    ecran.str("");
    session += frappe;
    clavier.clear();
    clavier.str(frappe);
  };
  reference::Etat e(clavier, ecran, attendre);
  etat = &e;
  reference::menu(e);
  return session;
}

}  // namespace differentiel
