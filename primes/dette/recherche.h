// SPDX-License-Identifier: MIT
// What a search of a range for concatenations obliges the table of primes to.
//
// Where there is a prime in the range and all of it is below 2^100, the largest one tells nearly all: its
// root is enough for whatever is not above it, and a piece above it is a number of the range itself. This
// is known before the search. Otherwise the notes listen to the search, number by number (morceaux.h).
#pragma once

#include <optional>

#include "primes/concatenations/concatenations.h"
#include "primes/dette/dette.h"
#include "primes/dette/morceaux.h"

namespace premiers::dette {

using concatenations::Recherche;

/// The notes of one search, kept apart from the debt until the search is done: work that is abandoned
/// leaves none.
struct NotesDeRecherche {
  /// Begins with what is owed already. Takes the time of a few hundred tests at most.
  NotesDeRecherche(const Dette& dette, const Recherche& recherche);
  NotesDeRecherche(const NotesDeRecherche&) = delete;
  NotesDeRecherche& operator=(const NotesDeRecherche&) = delete;

  /// What the search is to call, valid as long as these notes; empty where all is noted before it.
  concatenations::Examens examens();
  const Dette& notees() const { return notees_; }

 private:
  Dette notees_;
  std::optional<DetteMorceaux> morceaux_;
};

/// The range was searched.
void noter_recherche(Dette& dette, const NotesDeRecherche& notes);

}  // namespace premiers::dette
