// SPDX-License-Identifier: MIT
// What the table of primes owes. Decided by trial division, a number would leave the table grown
// up to a point that the operator can see later. Numbers are decided without dividing here; the
// point is noted instead, and paid when the table is next shown. Since the table only grows, the
// notes of many decisions collapse into one bound, the largest.
#pragma once

#include <NTL/ZZ.h>

#include <cstdint>
#include <span>

#include "primes/facteurs/facteurs.h"
#include "primes/suivi/suivi.h"
#include "primes/table.h"

namespace premiers {

struct Dette {
  /// The table must hold the first prime greater than this. 2 obliges to nothing: 3 is known.
  std::uint64_t borne_due = 2;

  /// Obliges the table to hold the first prime greater than `borne`. Beyond `borne_max` nothing is
  /// noted: the count that pays would take longer than an operator expects of a menu.
  void noter(std::uint64_t borne) {
    if (borne > borne_due && borne <= borne_max) borne_due = borne;
  }

  /// All decisions on numbers below 2^100 are below it; a count there takes about a second.
  static constexpr std::uint64_t borne_max = std::uint64_t{1} << 50U;
};

/// Pays: extends the table as far as it owes.
void payer(const Dette& dette, Table& table, const Suivi& suivi = {});

/// The note of a decomposition by division: for 1 none; for a prime its root; else, q being the
/// largest prime factor, q - 1 if it occurs more than once, and otherwise the larger of the next
/// smaller factor and the root of q.
void noter_decomposition(Dette& dette, std::span<const Facteur> facteurs);

/// The note of a number found prime: its root.
void noter_premier(Dette& dette, const NTL::ZZ& S);

}  // namespace premiers
