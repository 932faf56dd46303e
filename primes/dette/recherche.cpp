// SPDX-License-Identifier: MIT
// The two ways to note a range that recherche.h tells of, and which of them is taken.
#include "primes/dette/recherche.h"

#include "primes/arithmetique/zz.h"
#include "primes/dette/decisions.h"
#include "primes/primalite/primalite.h"

namespace premiers::dette {

namespace {

/// Notes the numbers of the range and all their pieces, if there is a prime among them and none of them
/// is above 2^100; gives false, and notes nothing, if it is not so.
bool noter_par_le_plus_grand_premier(Dette& dette, const Recherche& recherche) {
  if (NTL::NumBits(recherche.fin) > bits_borne_exacte) return false;
  NTL::ZZ P = recherche.fin;
  while (P >= recherche.debut && !primalite::est_premier(P)) --P;
  if (P < recherche.debut) return false;
  for (NTL::ZZ N = P; N <= recherche.fin; ++N) noter_prem(dette, N);
  return true;
}

/// How many numbers there are; 2^63 if there are more.
std::uint64_t largeur_au_plus_64_bits(const Recherche& recherche) {
  const NTL::ZZ largeur = recherche.fin - recherche.debut + 1;
  return NTL::NumBits(largeur) > 63 ? std::uint64_t{1} << 63 : en_entier64(largeur);
}

}  // namespace

NotesDeRecherche::NotesDeRecherche(const Dette& dette, const Recherche& recherche)
    : notees_(dette) {
  if (noter_par_le_plus_grand_premier(notees_, recherche)) return;
  morceaux_.emplace(notees_, largeur_au_plus_64_bits(recherche));
}

concatenations::Examens NotesDeRecherche::examens() {
  if (!morceaux_) return {};
  return [this](std::string_view chiffres, std::size_t communs, Morceaux morceaux) {
    morceaux_->noter(chiffres, morceaux, communs);
  };
}

void noter_recherche(Dette& dette, const NotesDeRecherche& notes) {
  dette.noter(notes.notees().borne_due);
}

}  // namespace premiers::dette
