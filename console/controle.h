// SPDX-License-Identifier: MIT
// One question, asked until it is answered. A refused answer is never explained: the prompt alone
// comes again.
#pragma once

#include <NTL/ZZ.h>

#include <cstdint>
#include <optional>
#include <string_view>

#include "console/session.h"

namespace premiers {

/// What a question accepts, and the field of `Reponse` that takes it.
enum class Cas {
  oui_non = 1,              ///< "0" or "1": `valeur2`
  un_deux = 2,              ///< "1" or "2": `valeur2`
  zero_a_deux = 3,          ///< "0" to "2": `valeur2`
  nombre = 4,               ///< unsigned number: `valeur`
  nombre_signe = 5,         ///< signed number: `valeur`
  menu_principal = 6,       ///< "0" to "5": `valeur2`
  commande = 7,             ///< signed number or "*", perhaps after "=": `valeur`, `voir`
  menu_consultation = 8,    ///< "0" to "5": `valeur2`
  grand_nombre = 9,         ///< unsigned number of any size: `valeur0`
  menu_concatenation = 10,  ///< "0" to "3": `valeur2`
  borne = 11,               ///< unsigned number: `valeur`
};

/// An answer.
struct Reponse {
  int valeur2 = 0;
  std::int64_t valeur = 0;
  NTL::ZZ valeur0{};
  bool voir = false;  // the command "*"
};

/// The value of a character of a number: its digit, 1 for '+', -1 for '-'; nothing for any other.
std::optional<int> valtest(char caract1);

/// Prints `chaine`, reads one word, and again, until the word is an answer to `cas`. 64-bit numbers wrap
/// around beyond their range. In the cases nombre, borne and grand_nombre zero is refused if `xn`. A
/// leading "=" of a command sets `un` in the state. At the end of input the prompt is repeated for ever,
/// at the pace of `fin_entree`.
Reponse controle(Session& s, Cas cas, std::string_view chaine, bool xn = false);

/// The questions of the features.
int demander_choix(Session& s, Cas cas, std::string_view chaine);
/// A 64-bit number, not 0 (a wrapped one can be negative).
std::int64_t demander_nombre(Session& s, Cas cas, std::string_view chaine);
/// A positive number of any size.
NTL::ZZ demander_grand_nombre(Session& s, std::string_view chaine);

}  // namespace premiers
