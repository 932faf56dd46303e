// SPDX-License-Identifier: MIT
// What the table of primes owes. Decided by trial division, a number would leave the table grown
// up to a point that the operator can see later. Numbers are decided without dividing here; the
// point is noted instead, and paid when the table is next shown. Since the table only grows, the
// notes of many decisions collapse into one bound, the largest.
//
// One convention: what decides knows no debt. Who asked and has the answer notes it, by one call of a
// function noter_...(dette, answer); a search of a range hears of its numbers before (recherche.h). The
// rules stand in this folder, and nothing of the engine is above
// it: those of one decision in decisions.h, of a number that was cut in morceaux.h (its long pieces:
// notes_par_etendue.h), of a range that was searched in recherche.h.
#pragma once

#include <cstdint>

#include "primes/suivi/suivi.h"
#include "primes/table.h"

namespace premiers::dette {

struct Dette {
  /// The table must hold the first prime greater than this. 2 obliges to nothing: 3 is known.
  std::uint64_t borne_due = 2;

  /// Obliges the table to hold the first prime greater than `borne`. Beyond `borne_max` nothing is
  /// noted.
  void noter(std::uint64_t borne) {
    if (borne > borne_due && borne <= borne_max) borne_due = borne;
  }

  /// Effect: what the operator sees of the table behind decisions on very large numbers, and how long
  /// paying may last: one count of primes up to here, about a second; with every four times as much it
  /// lasts two to three times as long. It is fixed with what can be seen: the roots of numbers below
  /// 2^100 are below it.
  static constexpr std::uint64_t borne_max = std::uint64_t{1} << 50U;
};

/// Pays: extends the table as far as it owes.
void payer(const Dette& dette, Table& table, const Suivi& suivi = {});

}  // namespace premiers::dette
