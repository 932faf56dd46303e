// SPDX-License-Identifier: MIT
#include "primes/prem.h"

#include <algorithm>
#include <cmath>

#include "primes/arithmetique/entier128.h"
#include "primes/arithmetique/zz.h"
#include "primes/facteurs/etendue.h"
#include "primes/facteurs/facteurs.h"
#include "primes/facteurs/facteurs64.h"
#include "primes/facteurs/petits_facteurs.h"
#include "primes/primalite/primalite.h"

namespace premiers {

namespace {

/// The smallest prime factor of a composite S below 2^`bits_borne_exacte`.
std::uint64_t facteur_certain(const NTL::ZZ& S) {
  if (NTL::NumBits(S) <= 64) return plus_petit_facteur(en_entier64(S));
  NTL::ZZ reste = S;
  const auto petits = retirer_petits_facteurs(reste);
  if (!petits.empty()) return petits.front().premier;
  return en_entier64(decomposer(S).front().premier);
}

/// No number up to n can raise the bound: not a prime, by its root, and a composite even less.
bool sans_effet(const Dette& dette, Entier128 n) {
  const Entier128 suivante = Entier128{dette.borne_due} + 1;
  return n < suivante * suivante;
}

}  // namespace

static_assert(Dette::borne_max == std::uint64_t{1} << (bits_borne_exacte / 2));

void Suiv(Table& Nprem) { Nprem.etendre_au_rang(Nprem.np() + 1); }

void noter_si_premier(Dette& dette, const NTL::ZZ& S) {
  if (NTL::NumBits(S) > bits_borne_exacte || sans_effet(dette, en_entier128(S))) return;
  if (est_premier(S)) noter_premier(dette, S);
}

void noter_division(Dette& dette, const NTL::ZZ& S) {
  if (NTL::NumBits(S) > bits_borne_exacte) {
    if (dette.borne_due >= borne_des_diviseurs) return;
    if (const std::uint64_t p = Etendue(S, 1)[0]; p != 0) dette.noter(p - 1);
    return;
  }
  const auto n = en_entier128(S);
  if (sans_effet(dette, n)) return;
  if (est_premier(n)) {
    noter_premier(dette, S);
    return;
  }
  // A composite raises it to its root less one at most.
  const Entier128 deux_plus = Entier128{dette.borne_due} + 2;
  if (n >= deux_plus * deux_plus) dette.noter(facteur_certain(S) - 1);
}

bool prem(const NTL::ZZ& S, Dette& dette) {
  noter_division(dette, S);
  return est_premier(S);
}

bool prem1(std::int64_t S3, Dette& dette) {
  const auto n = static_cast<std::uint64_t>(S3);
  const auto rS1 = static_cast<std::uint64_t>(std::sqrt(static_cast<double>(S3)));
  if (n == 1 || (n != 2 && est_premier(n))) {
    dette.noter(rS1);
    return true;
  }
  if (rS1 > dette.borne_due) dette.noter(plus_petit_facteur(n) - 1);
  return false;
}

void noter_intervalle(Dette& dette, Intervalle bornes) {
  const std::int64_t debut = std::max<std::int64_t>(bornes.debut, 5);
  for (std::int64_t n = bornes.fin; n >= debut; --n) {
    if (n % 2 != 0 && prem1(n, dette)) return;
  }
}

}  // namespace premiers
