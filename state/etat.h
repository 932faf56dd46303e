// SPDX-License-Identifier: MIT
// Every value that outlives a routine, and nothing else: the answer to a question comes back as a value
// (`Reponse`, console/controle.h). Nothing is reset when a feature returns to the menu.
#pragma once

#include "primes/dette/dette.h"
#include "primes/table.h"

namespace premiers {

struct Etat {
  /// The primes known so far, by rank; it only grows.
  Table Nprem;
  /// How far the decisions taken since then oblige it to reach before it is shown.
  dette::Dette dette;

  /// "=" was typed for a command of the ranked listing. It outlives its word, which may be refused, and
  /// even a consultation: the next number is a rank all the same, until a command is executed or
  /// rejected.
  bool un = false;
};

}  // namespace premiers
