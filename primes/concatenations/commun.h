// SPDX-License-Identifier: MIT
// What the numbers of all lengths of one search have in common: what is asked, who listens, what has been
// found, and how far the work is.
#pragma once

#include <cstdint>

#include "primes/concatenations/concatenations.h"
#include "primes/crible/decades.h"
#include "primes/suivi/suivi.h"

namespace premiers::concatenations {

struct Commun {
  const Recherche& recherche;
  const Gardes& gardes;
  const Examens& examens;
  const crible::Decades& decades;
  const Suivi& suivi;
  double dizaines_en_tout;

  std::uint64_t retenus = 0;
  /// The last number examined has left a start entry (report.h).
  bool report = false;

  double dizaines_faites = 0;
  unsigned travail = 0;

  /// Counts work, in some twentieths of a microsecond.
  void travailler(unsigned cout) {
    travail += cout;
    if (travail < une_milliseconde) return;
    travail = 0;
    dire_la_part();
  }

  void dire_la_part() const {
    if (suivi) suivi(dizaines_faites / dizaines_en_tout);
  }

  /// Sieving some more does not advance the search by itself: the same part again, as a sign of life.
  const Suivi pendant_un_crible = [this](double) { dire_la_part(); };

  /// Effect: how often progress is told, which is what `Suivi` asks for: every few milliseconds. A third
  /// or three times as much would do; the unit is rough as well.
  static constexpr unsigned une_milliseconde = 20'000;
};

}  // namespace premiers::concatenations
