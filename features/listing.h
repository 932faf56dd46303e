// SPDX-License-Identifier: MIT
// Listings of primes after their ranks, in blocks of a hundred.
#pragma once

#include <cstdint>
#include <string_view>

#include "console/session.h"
#include "primes/rangs/suite_de_premiers.h"
#include "primes/suivi/suivi.h"
#include "primes/table.h"

namespace premiers {

/// A text that stands before a list, held back until there is something to list: until then the line
/// that tells of long work can stand where the cursor is. From then on the entries are the life.
struct EnTete {
  EnTete(Session& s, std::string_view texte);

  /// What the engine is to call while it looks for more.
  const Suivi& suivi() const { return suivi_; }
  /// Prints the text, if it is not printed yet.
  void imprimer();

 private:
  Session& s_;
  std::string_view texte_;
  Suivi suivi_;
  bool imprime_ = false;
};

/// Prints the text and the entries of the primes of the suite, the first of rank `rang`, with a break
/// before each entry that begins a block. Gives the last entry, rank - 1 and 0 if there is none.
Place lister(Session& s, std::string_view en_tete, std::int64_t rang, rangs::SuiteDePremiers suite);

/// On standard error, while primes and their ranks are looked for.
inline constexpr std::string_view calcul_des_premiers = "calcul des nombres premiers";

}  // namespace premiers
