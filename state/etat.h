// SPDX-License-Identifier: MIT
// Every value that outlives a routine. Nothing is reset when a feature returns to the menu.
#pragma once

#include <NTL/ZZ.h>

#include <cstdint>

#include "primes/dette.h"
#include "primes/table.h"

namespace premiers {

struct Etat {
  /// The primes known so far, by rank; it only grows.
  Table Nprem;
  /// How far the decisions taken since then oblige it to reach before it is shown.
  Dette dette;

  /// The last answers: of a menu or a yes/no question, of a 64-bit number, of a big number.
  int valeur2 = 0;
  std::int64_t valeur = 0;
  NTL::ZZ valeur0;

  /// Set by the caller of a question: 0 is to be refused.
  bool xn = false;
  /// Left by the question for a command of the ranked listing: "*" was typed; "=" was typed.
  bool voir = false;
  bool un = false;

  /// The choice made in the menu of the concatenations.
  int choix0 = 0;
};

}  // namespace premiers
