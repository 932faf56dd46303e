// SPDX-License-Identifier: MIT
// The rules of decisions.h, and what spares most numbers the work of a note: of a number whose root is
// within the bound nothing is asked at all.
#include "primes/dette/decisions.h"

#include <algorithm>
#include <cmath>

#include "primes/arithmetique/entier128.h"
#include "primes/arithmetique/zz.h"
#include "primes/facteurs/etendue.h"
#include "primes/facteurs/facteurs.h"
#include "primes/facteurs/facteurs64.h"
#include "primes/facteurs/petits_facteurs.h"
#include "primes/prem.h"

namespace premiers::dette {

namespace {

/// The smallest prime factor of a composite S below 2^`bits_borne_exacte`.
std::uint64_t facteur_certain(const NTL::ZZ& S) {
  if (NTL::NumBits(S) <= 64) return facteurs::plus_petit_facteur(en_entier64(S));
  NTL::ZZ reste = S;
  const auto petits = facteurs::retirer_petits_facteurs(reste);
  if (!petits.empty()) return petits.front().premier;
  return en_entier64(facteurs::decomposer(S).front().premier);
}

/// No number up to n can raise the bound: not a prime, by its root, and a composite even less.
bool sans_effet(const Dette& dette, Entier128 n) {
  const Entier128 suivante = Entier128{dette.borne_due} + 1;
  return n < suivante * suivante;
}

/// Notes a bound of any size; one that does not fit is beyond the limit anyway.
void noter_grande(Dette& dette, const NTL::ZZ& borne) {
  if (NTL::NumBits(borne) < 64) dette.noter(NTL::conv<std::uint64_t>(borne));
}

/// A prime obliges to its root.
void noter_premier(Dette& dette, const NTL::ZZ& S) { noter_grande(dette, NTL::SqrRoot(S)); }

/// S is at least 2^`bits_borne_exacte`.
void noter_petit_diviseur(Dette& dette, const NTL::ZZ& S) {
  if (dette.borne_due >= borne_des_diviseurs) return;
  if (const std::uint64_t p = facteurs::Etendue(S, 1)[0]; p != 0) dette.noter(p - 1);
}

}  // namespace

void noter_si_premier(Dette& dette, const NTL::ZZ& S) {
  if (NTL::NumBits(S) > bits_borne_exacte || sans_effet(dette, en_entier128(S))) return;
  if (prem(S)) noter_premier(dette, S);
}

void noter_prem(Dette& dette, const NTL::ZZ& S) {
  if (NTL::NumBits(S) > bits_borne_exacte) return noter_petit_diviseur(dette, S);
  const auto n = en_entier128(S);
  if (sans_effet(dette, n)) return;
  if (prem(S)) return noter_premier(dette, S);
  // A composite raises it to its root less one at most.
  const Entier128 deux_plus = Entier128{dette.borne_due} + 2;
  if (n >= deux_plus * deux_plus) dette.noter(facteur_certain(S) - 1);
}

void noter_prem1(Dette& dette, std::int64_t S3, bool premier) {
  const auto rS1 = static_cast<std::uint64_t>(std::sqrt(static_cast<double>(S3)));
  if (rS1 <= dette.borne_due) return;
  dette.noter(premier ? rS1 : facteurs::plus_petit_facteur(static_cast<std::uint64_t>(S3)) - 1);
}

void noter_intervalle(Dette& dette, rangs::Intervalle bornes) {
  const std::int64_t debut = std::max<std::int64_t>(bornes.debut, 5);
  for (std::int64_t n = bornes.fin; n >= debut; --n) {
    if (n % 2 == 0) continue;
    const bool premier = prem1(n);
    noter_prem1(dette, n, premier);
    if (premier) return;
  }
}

void noter_decomposition(Dette& dette, std::span<const facteurs::Facteur> facteurs) {
  if (facteurs.empty()) return;
  const facteurs::Facteur& plus_grand = facteurs.back();
  if (plus_grand.exposant > 1) {
    noter_grande(dette, plus_grand.premier - 1);
    return;
  }
  const NTL::ZZ racine = NTL::SqrRoot(plus_grand.premier);
  const bool seul = facteurs.size() == 1;
  noter_grande(dette, seul ? racine : std::max(racine, facteurs[facteurs.size() - 2].premier));
}

}  // namespace premiers::dette
