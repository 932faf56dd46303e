// SPDX-License-Identifier: MIT
// The ways to cut the digits of one number into consecutive primes.
//
// The number of ways to finish from a cut depends on the cut alone, so they are counted by a sum
// from the last digit backward: n (n + 1) / 2 tests of pieces, and one addition for each prime one.
// The walk through all ways, shortest first piece first, never enters a branch from which there is
// no way to finish; its memory is one way.
#pragma once

#include <NTL/ZZ.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "primes/suivi/suivi.h"

namespace premiers::concatenations {

/// The value of a string of digits; 0 for the empty one. Leading zeros vanish.
NTL::ZZ valeur_des_chiffres(std::string_view chiffres);

struct Decoupe {
  std::string chiffres;
  /// longueurs[t]: the lengths, increasing, of the prime pieces that begin after t digits. If none
  /// begins at the first digit, no other has been sought.
  std::vector<std::vector<std::size_t>> longueurs;
  /// chemins[t]: how many ways lead from there to the end; chemins[0] is the number of ways.
  std::vector<NTL::ZZ> chemins;
};

/// Cuts N > 0; `suivi` hears the part of the pieces that is decided.
Decoupe decouper(const NTL::ZZ& N, const Suivi& suivi = {});

/// Calls f(text) for each way, in increasing order of the lengths of their pieces, first piece
/// first; the text is " ( 2 3 57 ) " and holds during the call.
template <typename F>
void parcourir_chemins(const Decoupe& decoupe, F f) {
  constexpr std::string_view ouvre = " ( ";
  constexpr std::string_view ferme = ") ";
  const std::string& chiffres = decoupe.chiffres;
  std::string texte(ouvre.size() + 2 * chiffres.size() + ferme.size(), ' ');
  ouvre.copy(texte.data(), ouvre.size());
  // The text of the pieces up to a cut stays while what follows is gone through.
  const auto continuer = [&](const auto& soi, std::size_t t, std::size_t place) -> void {
    if (t == chiffres.size()) {
      ferme.copy(texte.data() + place, ferme.size());
      f(std::string_view(texte.data(), place + ferme.size()));
      return;
    }
    for (const std::size_t longueur : decoupe.longueurs[t]) {
      if (NTL::IsZero(decoupe.chemins[t + longueur])) continue;
      chiffres.copy(texte.data() + place, longueur, t);
      texte[place + longueur] = ' ';
      soi(soi, t + longueur, place + longueur + 1);
    }
  };
  continuer(continuer, 0, ouvre.size());
}

}  // namespace premiers::concatenations
