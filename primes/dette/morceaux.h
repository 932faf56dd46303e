// SPDX-License-Identifier: MIT
// What cutting numbers into pieces obliges the table of primes to (dette.h): dividing each
// piece by the primes in turn.
//
// Only a piece large enough to raise the bound costs anything. Of a number of 40 digits these are
// at first some dozens, once a long prime piece is noted next to none. Where there is no such piece,
// as in round numbers, small factors of pieces beyond 2^100 are noted; those of a whole stretch of
// numbers are then found together (notes_par_etendue.h).
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "primes/concatenations/concatenations.h"
#include "primes/concatenations/decoupe.h"
#include "primes/dette/dette.h"
#include "primes/dette/notes_par_etendue.h"

namespace premiers::dette {

using concatenations::Morceaux;

/// Notes the pieces of numbers that follow each other; those that a number shares with the one
/// before it, because their leading digits are the same, are passed over.
struct DetteMorceaux {
  /// `largeur` > 0 numbers are going to be noted, or fewer.
  explicit DetteMorceaux(Dette& dette, std::uint64_t largeur = 1)
      : dette_(dette), etendues_(largeur) {}

  /// Notes these pieces of a number that are not noted yet. Its first `communs` digits are those of the
  /// number before.
  void noter(std::string_view chiffres, Morceaux morceaux, std::size_t communs = 0);

 private:
  template <typename F>
  void pour_les_morceaux(std::string_view chiffres, std::size_t longueur, Morceaux morceaux, F f);
  void noter_les_courts(std::string_view chiffres, Morceaux morceaux);
  void noter_les_longs(std::string_view chiffres, Morceaux morceaux);

  Dette& dette_;
  NotesParEtendue etendues_;
  // Among so many leading digits the first pieces are noted, and all pieces.
  std::size_t debuts_notes_ = 0;
  std::size_t tous_notes_ = 0;
};

/// One number was cut by `decouper`.
void noter_morceaux(Dette& dette, const concatenations::Decoupe& decoupe);

}  // namespace premiers::dette
