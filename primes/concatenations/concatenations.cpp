// SPDX-License-Identifier: MIT
// What comes before the walk through a range: primality that is looked up, and the range cut into parts of
// numbers of the same length.
#include "primes/concatenations/concatenations.h"

#include <algorithm>
#include <stdexcept>
#include <string>

#include "primes/arithmetique/zz.h"
#include "primes/concatenations/parcours.h"
#include "primes/concatenations/tailles.h"
#include "primes/crible/decades.h"

namespace premiers::concatenations {

namespace {

/// The smallest number of n digits.
std::string le_plus_petit(std::size_t n) {
  std::string chiffres(n, '0');
  chiffres.front() = '1';
  return chiffres;
}

/// The numbers of the range, digit count by digit count.
void parcourir_la_recherche(Commun& commun) {
  const std::string debut = en_decimal(commun.recherche.debut);
  const std::string fin = en_decimal(commun.recherche.fin);
  for (std::size_t n = debut.size(); n <= fin.size(); ++n) {
    const std::string de = n == debut.size() ? debut : le_plus_petit(n);
    const std::string a = n == fin.size() ? fin : std::string(n, '9');
    if (n <= Petits::chiffres_max) {
      parcourir<Petits>(commun, de, a);
    } else {
      parcourir<Grands>(commun, de, a);
    }
  }
}

/// How far primality is looked up beforehand: in proportion to the width of the range, so that the
/// sieve never costs more than the search. With ten times as much, or a tenth, searches of 10^4 to
/// 10^6 numbers of nine to twelve digits take up to a third longer; with a hundred times, four. The most
/// is a matter of memory: 36 MB.
std::uint64_t limite_des_decades(const Recherche& recherche) {
  constexpr std::uint64_t plus_grande = std::uint64_t{1} << 30;
  constexpr long par_nombre = 10;
  const NTL::ZZ largeur = recherche.fin - recherche.debut + 1;
  const NTL::ZZ limite = std::min(par_nombre * largeur, recherche.fin);
  return NTL::NumBits(limite) > 30 ? plus_grande : en_entier64(limite);
}

}  // namespace

std::uint64_t chercher_concatenations(const Recherche& recherche, const Gardes& gardes,
                                      const Examens& examens, const Suivi& suivi) {
  if (recherche.debut < 1 || recherche.debut > recherche.fin ||
      en_decimal(recherche.fin).size() > Recherche::chiffres_max) {
    throw std::invalid_argument("chercher_concatenations");
  }
  // What comes before the search proper counts for nothing.
  const crible::Decades decades(limite_des_decades(recherche), etape(suivi, 0, 0));
  const NTL::ZZ dizaines = recherche.fin / 10 - recherche.debut / 10 + 1;
  Commun commun{recherche, gardes, examens, decades, suivi, NTL::conv<double>(dizaines)};
  parcourir_la_recherche(commun);
  return commun.retenus;
}

}  // namespace premiers::concatenations
