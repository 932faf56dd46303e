// SPDX-License-Identifier: MIT
// One question, asked until it is answered, and the grammars of the answers.
#include "etat.h"

namespace reference {

namespace {

/// A word of this length or more is refused.
constexpr std::size_t taille_entree = 200;

std::int64_t fois_dix_plus(std::int64_t v, std::int64_t chiffre) {
  return static_cast<std::int64_t>(static_cast<std::uint64_t>(v) * 10U +
                                   static_cast<std::uint64_t>(chiffre));
}

/// Modes 1, 2, 3, 6, 8, 10: exactly one digit between two.
bool menu_accepte(Etat& e, char de, char a) {
  if (e.entree.size() != 1 || e.entree[0] < de || e.entree[0] > a) return false;
  e.valeur2 = e.entree[0] - '0';
  return true;
}

/// Modes 4, 11 (into `valeur`) and 9 (into `valeur0`): an unsigned number.
bool non_signe_accepte(Etat& e, bool grand) {
  const std::string& w = e.entree;
  if (w[0] == '-') return false;
  if (w[0] == '0' && w.size() > 1) return false;
  if (w[0] == '+' && w.size() == 1) return false;
  for (std::size_t a = 0; a < w.size(); ++a) {
    if (!valtest(e, w[a])) return false;
    if (a > 0 && (w[a] == '+' || w[a] == '-')) return false;
    if (a == 1 && w[0] == '+' && w[a] == '0') return false;
    if (a == 0 || (a == 1 && w[0] == '+')) {
      (grand ? void(e.valeur0 = e.valtest2) : void(e.valeur = e.valtest1));
    } else if (grand) {
      e.valeur0 = e.valeur0 * 10 + e.valtest2;
    } else {
      e.valeur = fois_dix_plus(e.valeur, e.valtest1);
    }
  }
  const bool nul = grand ? e.valeur0 == 0 : e.valeur == 0;
  return !(e.xn == 1 && nul);
}

/// Modes 5 and 7: a signed number, negative ones accumulated downward.
bool signe_accepte(Etat& e) {
  const std::string& w = e.entree;
  const bool signe = w[0] == '+' || w[0] == '-';
  if (w[0] == '0' && w.size() > 1) return false;
  if (signe && w.size() == 1) return false;
  for (std::size_t a = 0; a < w.size(); ++a) {
    if (!valtest(e, w[a])) return false;
    if (a > 0 && (w[a] == '+' || w[a] == '-')) return false;
    if (a == 1 && signe && w[a] == '0') return false;
    if (a == 0) {
      e.valeur = e.valtest1;
    } else if (a == 1 && signe) {
      e.valeur *= e.valtest1;
    } else {
      e.valeur = fois_dix_plus(e.valeur, w[0] == '-' ? -e.valtest1 : e.valtest1);
    }
  }
  return true;
}

enum class Prefixe { nombre, etoile, rien };

/// Mode 7: the lone "*" and the leading "=".
Prefixe prefixe(Etat& e) {
  if (e.entree == "*" && e.np > 2) {
    e.voir = 1;
    return Prefixe::etoile;
  }
  if (e.entree[0] != '=') return Prefixe::nombre;
  e.un = 1;
  e.entree.erase(0, 1);
  return e.entree.empty() ? Prefixe::rien : Prefixe::nombre;
}

bool accepte(Etat& e, int cas) {
  switch (cas) {
    case 1:
      return menu_accepte(e, '0', '1');
    case 2:
      return menu_accepte(e, '1', '2');
    case 3:
      return menu_accepte(e, '0', '2');
    case 6:
    case 8:
      return menu_accepte(e, '0', '5');
    case 10:
      return menu_accepte(e, '0', '3');
    case 4:
    case 11:
      return non_signe_accepte(e, false);
    case 9:
      return non_signe_accepte(e, true);
    case 5:
      return signe_accepte(e);
    case 7: {
      const Prefixe p = prefixe(e);
      return p == Prefixe::etoile || (p == Prefixe::nombre && signe_accepte(e));
    }
    default:
      return false;
  }
}

/// Reads one word. False if it is to be refused as too long or unfit; empty at the end of input.
bool lire_mot(Etat& e) {
  e.entree.clear();
  e.clavier >> e.entree;
  return e.entree.size() < taille_entree && e.entree.find('\0') == std::string::npos;
}

}  // namespace

bool valtest(Etat& e, char caract1) {
  e.valtest1 = 0;
  e.valtest2 = 0;
  if (caract1 >= '0' && caract1 <= '9') {
    e.valtest1 = caract1 - '0';
  } else if (caract1 == '+') {
    e.valtest1 = 1;
  } else if (caract1 == '-') {
    e.valtest1 = -1;
  } else {
    return false;
  }
  e.valtest2 = e.valtest1;
  return true;
}

void controle(Etat& e, int cas, const std::string& chaine) {
  e.clavier.clear();
  e.voir = 0;
  int fins = 0;
  for (;;) {
    e.ecran << chaine << std::flush;
    const bool lisible = lire_mot(e);
    if (e.entree.empty()) {
      e.fin_entree(fins++);
      continue;
    }
    if (lisible && accepte(e, cas)) return;
  }
}

}  // namespace reference
