// SPDX-License-Identifier: MIT
#include "primes/concatenations/dette_morceaux.h"

#include <algorithm>

#include "primes/arithmetique/entier128.h"
#include "primes/prem.h"
#include "primes/primalite/primalite.h"

namespace premiers {

namespace {

/// Longer pieces are beyond `bits_borne_exacte`, or have leading zeros and are met as shorter ones.
constexpr std::size_t longueur_exacte = 31;

/// No number of so many digits has a root above the bound.
bool sans_effet(const Dette& dette, std::size_t longueur) {
  Entier128 suivant = 1;
  for (std::size_t i = 0; i < longueur; ++i) suivant *= 10;
  const Entier128 borne = Entier128{dette.borne_due} + 1;
  return suivant <= borne * borne;
}

}  // namespace

void DetteMorceaux::changer(std::size_t communs) {
  debuts_notes_ = std::min(debuts_notes_, communs);
  tous_notes_ = std::min(tous_notes_, communs);
}

void DetteMorceaux::noter_longueur(std::string_view chiffres, std::size_t longueur,
                                   Morceaux morceaux, Note note) {
  const std::size_t notes = morceaux == Morceaux::tous ? tous_notes_ : debuts_notes_;
  const std::size_t derniere = morceaux == Morceaux::tous ? chiffres.size() : longueur;
  for (std::size_t fin = std::max(longueur, notes + 1); fin <= derniere; ++fin) {
    note(dette_, valeur_des_chiffres(chiffres.substr(fin - longueur, longueur)));
  }
}

void DetteMorceaux::noter(std::string_view chiffres, Morceaux morceaux) {
  const std::size_t n = chiffres.size();
  if (morceaux == Morceaux::nombre_entier) {
    noter_division(dette_, valeur_des_chiffres(chiffres));
    return;
  }
  // The primes first: what a composite obliges to must be looked for only above the largest of them.
  for (const Note note : {noter_si_premier, noter_division}) {
    for (std::size_t u = std::min(n, longueur_exacte); u > 0 && !sans_effet(dette_, u); --u) {
      noter_longueur(chiffres, u, morceaux, note);
    }
  }
  for (std::size_t u = longueur_exacte + 1; u <= n; ++u) {
    if (dette_.borne_due >= plus_grand_diviseur) break;
    noter_longueur(chiffres, u, morceaux, noter_division);
  }
  debuts_notes_ = n;
  if (morceaux == Morceaux::tous) tous_notes_ = n;
}

void noter_morceaux(Dette& dette, const Decoupe& decoupe) {
  const bool abandonne = decoupe.longueurs.front().empty();
  DetteMorceaux(dette).noter(decoupe.chiffres, abandonne ? Morceaux::du_debut : Morceaux::tous);
}

// The largest prime P obliges to its root, which is enough for all that is not above P: a composite
// has a factor below its root. A piece above P is a number of the range itself.
bool noter_par_le_plus_grand_premier(Dette& dette, const NTL::ZZ& debut, const NTL::ZZ& fin) {
  if (NTL::NumBits(fin) > bits_borne_exacte) return false;
  NTL::ZZ P = fin;
  while (P >= debut && !est_premier(P)) --P;
  if (P < debut) return false;
  for (NTL::ZZ N = P; N <= fin; ++N) noter_division(dette, N);
  return true;
}

}  // namespace premiers
