// SPDX-License-Identifier: MIT
// In which order the pieces of a number are noted, so that few of them cost anything.
#include "primes/dette/morceaux.h"

#include <algorithm>
#include <array>

#include "primes/arithmetique/entier128.h"
#include "primes/dette/decisions.h"

namespace premiers::dette {

namespace {

/// Longer pieces are beyond 2^`bits_borne_exacte`, and of this length those from here on.
constexpr std::size_t longueur_exacte = 31;
constexpr std::string_view borne_exacte = "1267650600228229401496703205376";
static_assert(bits_borne_exacte == 100 && borne_exacte.size() == longueur_exacte);

bool est_long(std::string_view morceau) {
  return morceau.size() > longueur_exacte ||
         (morceau.size() == longueur_exacte && morceau >= borne_exacte);
}

/// puissances[u]: the numbers of u digits are below.
constexpr auto puissances = [] {
  std::array<Entier128, longueur_exacte + 1> t{1};
  for (std::size_t u = 1; u < t.size(); ++u) t[u] = 10 * t[u - 1];
  return t;
}();

/// No number of so many digits has a root above the bound.
bool sans_effet(const Dette& dette, std::size_t longueur) {
  const Entier128 borne = Entier128{dette.borne_due} + 1;
  return puissances[longueur] <= borne * borne;
}

}  // namespace

/// Calls f(end) for those of that length that are not noted yet. Where leading zeros vanish a shorter
/// piece is met instead.
template <typename F>
void DetteMorceaux::pour_les_morceaux(std::string_view chiffres, std::size_t longueur,
                                      Morceaux morceaux, F f) {
  const std::size_t notes = morceaux == Morceaux::tous ? tous_notes_ : debuts_notes_;
  const std::size_t derniere = morceaux == Morceaux::tous ? chiffres.size() : longueur;
  for (std::size_t fin = std::max(longueur, notes + 1); fin <= derniere; ++fin) {
    if (chiffres[fin - longueur] != '0') f(fin);
  }
}

/// The primes first: what a composite obliges to must be looked for only above the largest of them.
void DetteMorceaux::noter_les_courts(std::string_view chiffres, Morceaux morceaux) {
  for (const auto note : {noter_si_premier, noter_prem}) {
    for (std::size_t u = std::min(chiffres.size(), longueur_exacte);
         u > 0 && !sans_effet(dette_, u); --u) {
      pour_les_morceaux(chiffres, u, morceaux, [&](std::size_t fin) {
        const std::string_view morceau = chiffres.substr(fin - u, u);
        if (!est_long(morceau)) note(dette_, concatenations::valeur_des_chiffres(morceau));
      });
    }
  }
}

void DetteMorceaux::noter_les_longs(std::string_view chiffres, Morceaux morceaux) {
  for (std::size_t u = longueur_exacte; u <= chiffres.size(); ++u) {
    if (dette_.borne_due >= borne_des_diviseurs) return;
    pour_les_morceaux(chiffres, u, morceaux, [&](std::size_t fin) {
      if (est_long(chiffres.substr(fin - u, u))) etendues_.noter(dette_, chiffres, fin, u);
    });
  }
}

void DetteMorceaux::noter(std::string_view chiffres, Morceaux morceaux, std::size_t communs) {
  const std::size_t n = chiffres.size();
  debuts_notes_ = std::min(debuts_notes_, communs);
  tous_notes_ = std::min(tous_notes_, communs);
  if (morceaux == Morceaux::nombre_entier) {
    if (est_long(chiffres)) {
      etendues_.noter(dette_, chiffres, n, n);
    } else {
      noter_prem(dette_, concatenations::valeur_des_chiffres(chiffres));
    }
    return;
  }
  noter_les_courts(chiffres, morceaux);
  noter_les_longs(chiffres, morceaux);
  debuts_notes_ = n;
  if (morceaux == Morceaux::tous) tous_notes_ = n;
}

void noter_morceaux(Dette& dette, const concatenations::Decoupe& decoupe) {
  const bool abandonne = decoupe.longueurs.front().empty();
  DetteMorceaux(dette).noter(decoupe.chiffres, abandonne ? Morceaux::du_debut : Morceaux::tous);
}

}  // namespace premiers::dette
