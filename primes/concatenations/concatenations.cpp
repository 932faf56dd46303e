// SPDX-License-Identifier: MIT
#include "primes/concatenations/concatenations.h"

#include <algorithm>
#include <memory>
#include <stdexcept>
#include <string>

#include "primes/arithmetique/zz.h"
#include "primes/concatenations/decoupe.h"
#include "primes/concatenations/dette_morceaux.h"
#include "primes/concatenations/parcours.h"
#include "primes/crible/decades.h"

namespace premiers {

namespace {

/// The smallest number of n digits.
std::string le_plus_petit(std::size_t n) {
  std::string chiffres(n, '0');
  chiffres.front() = '1';
  return chiffres;
}

/// The numbers of the range, digit count by digit count.
void parcourir(Commun& commun) {
  const std::string debut = en_decimal(commun.recherche.debut);
  const std::string fin = en_decimal(commun.recherche.fin);
  for (std::size_t n = debut.size(); n <= fin.size(); ++n) {
    const std::string de = n == debut.size() ? debut : le_plus_petit(n);
    const std::string a = n == fin.size() ? fin : std::string(n, '9');
    // Up to some hundred kilobytes: on the heap, where a lack of memory can be told.
    if (n <= Petits::chiffres_max) {
      std::make_unique<Parcours<Petits>>(commun, de, a)->parcourir();
    } else {
      std::make_unique<Parcours<Grands>>(commun, de, a)->parcourir();
    }
  }
}

/// How far primality is looked up beforehand: in proportion to the width of the range, so that the
/// sieve never costs more than the search. With ten times as much, or a tenth, searches of 10^4 to
/// 10^6 numbers of nine to twelve digits take up to a third longer; with a hundred times, four.
std::uint64_t limite_des_decades(const Recherche& recherche) {
  constexpr std::uint64_t plus_grande = std::uint64_t{1} << 30;  // 36 MB
  constexpr long par_nombre = 10;
  const NTL::ZZ largeur = recherche.fin - recherche.debut + 1;
  const NTL::ZZ limite = std::min(par_nombre * largeur, recherche.fin);
  return NTL::NumBits(limite) > 30 ? plus_grande : en_entier64(limite);
}

/// How many numbers there are; 2^63 if there are more.
std::uint64_t largeur_au_plus_64_bits(const Recherche& recherche) {
  const NTL::ZZ largeur = recherche.fin - recherche.debut + 1;
  return NTL::NumBits(largeur) > 63 ? std::uint64_t{1} << 63 : en_entier64(largeur);
}

/// What comes before the search proper counts for nothing.
Suivi au_debut(const Suivi& suivi) {
  if (!suivi) return {};
  return [&suivi](double) { suivi(0); };
}

}  // namespace

std::uint64_t chercher_concatenations(const Recherche& recherche, const Gardes& gardes,
                                      Dette& dette, const Suivi& suivi) {
  if (recherche.debut < 1 || recherche.debut > recherche.fin ||
      en_decimal(recherche.fin).size() > Recherche::chiffres_max) {
    throw std::invalid_argument("chercher_concatenations");
  }
  Dette nouvelle = dette;
  DetteMorceaux dette_morceaux(nouvelle, largeur_au_plus_64_bits(recherche));
  const bool notee = noter_par_le_plus_grand_premier(nouvelle, recherche.debut, recherche.fin);
  const Decades decades(limite_des_decades(recherche), au_debut(suivi));
  Commun commun{recherche, gardes, decades, notee ? nullptr : &dette_morceaux, suivi};
  commun.dizaines_en_tout = NTL::conv<double>(recherche.fin / 10 - recherche.debut / 10 + 1);
  parcourir(commun);
  dette = nouvelle;
  return commun.retenus;
}

}  // namespace premiers
