// SPDX-License-Identifier: MIT
// What cutting numbers into pieces obliges the table of primes to (primes/dette.h): dividing each
// piece by the primes in turn.
//
// Only a piece large enough to raise the bound costs anything. Of a number of 40 digits these are
// at first some dozens, once a long prime piece is noted next to none.
#pragma once

#include <NTL/ZZ.h>

#include <cstddef>
#include <string_view>

#include "primes/concatenations/decoupe.h"
#include "primes/dette.h"

namespace premiers {

/// Which pieces of a number are divided.
enum class Morceaux {
  nombre_entier,  ///< none but the number itself
  du_debut,       ///< those that begin at its first digit
  tous,
};

/// Notes the pieces of numbers that follow each other; those that a number shares with the one
/// before it, because their leading digits are the same, are passed over.
struct DetteMorceaux {
  explicit DetteMorceaux(Dette& dette) : dette_(dette) {}

  /// The digits after the first `communs` are no longer those of the number before.
  void changer(std::size_t communs);

  /// Notes the pieces of a number that are not noted yet.
  void noter(std::string_view chiffres, Morceaux morceaux);

 private:
  using Note = void (*)(Dette&, const NTL::ZZ&);
  void noter_longueur(std::string_view chiffres, std::size_t longueur, Morceaux morceaux,
                      Note note);

  Dette& dette_;
  // Among so many leading digits the first pieces are noted, and all pieces.
  std::size_t debuts_notes_ = 0;
  std::size_t tous_notes_ = 0;
};

/// The note of one number that has been cut.
void noter_morceaux(Dette& dette, const Decoupe& decoupe);

/// Notes the numbers debut .. fin and all their pieces, if there is a prime below 2^100 among them
/// and none of them is above 2^100; gives false, and notes nothing, if it is not so. It takes the
/// time of a few hundred tests at most.
bool noter_par_le_plus_grand_premier(Dette& dette, const NTL::ZZ& debut, const NTL::ZZ& fin);

}  // namespace premiers
