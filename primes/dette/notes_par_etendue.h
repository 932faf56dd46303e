// SPDX-License-Identifier: MIT
// The notes of pieces above 2^100: what is noted of such a piece is its smallest factor, if that is
// at most 10^7 (decisions.h). Looking for it takes a thousand times as long as deciding a piece
// that has none, so it is looked for only where it can raise the bound, and then for a whole stretch
// of pieces at once.
//
// In a range the pieces between two places of the digits count upward: by one each time the digit at
// their end changes. Of such a stretch, up to where the digit before the last five changes, the
// factors above the present bound are sought together (primes/facteurs/etendue.h). A piece without one
// can raise nothing. One that has one is a candidate: it may have a smaller factor besides, and is
// divided by itself. As the bound rises there are ever fewer of both: primes to be sought, and
// candidates.
//
// Cost: some milliseconds for a stretch, and 40 ns a piece; nothing once the bound is above all
// factors. Memory: 4 bytes a number of the stretch that each pair of places is in: 0.4 MB at most, and
// 90 MB for a hundred thousand numbers of 199 digits in which every place begins a piece.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <utility>

#include "primes/dette/dette.h"
#include "primes/facteurs/etendue.h"

namespace premiers::dette {

struct NotesParEtendue {
  /// `largeur` > 0 numbers are going to be noted, or fewer.
  explicit NotesParEtendue(std::uint64_t largeur) : largeur_(largeur) {}

  /// Notes the piece of `longueur` digits that ends with digit `fin` of the number; it is above 2^100
  /// and has no leading zero.
  void noter(Dette& dette, std::string_view chiffres, std::size_t fin, std::size_t longueur);

 private:
  /// Effect: a stretch is 10^5 pieces at most. With fewer digits the primes up to 10^7 are gone
  /// through more often, some milliseconds each time; with more, a stretch takes more memory than a cache
  /// has. Sensible: 4 to 6. Searches of 10^5 numbers from 10^36, 10^40 and 10^60 on take 1.1 of the time
  /// with 3 digits, 1.0 to 1.1 with 4, and 1.0 to 1.3 with 6.
  static constexpr std::size_t chiffres_mobiles = 5;
  /// The factors of the pieces with these leading digits, the last five being `debut` and so on.
  struct Tranche {
    std::string tete;
    std::uint32_t debut;
    facteurs::Etendue facteurs;

    bool contient(std::string_view autre_tete, std::uint32_t mobile) const {
      return mobile >= debut && mobile - debut < facteurs.nombre() && tete == autre_tete;
    }
  };

  /// Where a piece stands: its length, and the digits behind it.
  using Places = std::pair<std::size_t, std::size_t>;

  const Tranche& trouver(const Dette& dette, Places places, std::string_view morceau,
                         std::uint32_t mobile, std::uint64_t combien);

  std::uint64_t largeur_;
  std::map<Places, Tranche> tranches_;  // the last one of each
};

}  // namespace premiers::dette
