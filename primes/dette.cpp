// SPDX-License-Identifier: MIT
#include "primes/dette.h"

#include <algorithm>

#include "primes/arithmetique/zz.h"

namespace premiers {

void payer(const Dette& dette, Table& table, const Suivi& suivi) {
  table.etendre_au_dela(static_cast<std::int64_t>(dette.borne_due), suivi);
}

namespace {

/// Notes a bound of any size; one that does not fit is beyond the limit anyway.
void noter_grande(Dette& dette, const NTL::ZZ& borne) {
  if (NTL::NumBits(borne) < 64) dette.noter(NTL::conv<std::uint64_t>(borne));
}

}  // namespace

void noter_decomposition(Dette& dette, std::span<const Facteur> facteurs) {
  if (facteurs.empty()) return;
  const Facteur& plus_grand = facteurs.back();
  if (plus_grand.exposant > 1) {
    noter_grande(dette, plus_grand.premier - 1);
    return;
  }
  const NTL::ZZ racine = NTL::SqrRoot(plus_grand.premier);
  const bool seul = facteurs.size() == 1;
  noter_grande(dette, seul ? racine : std::max(racine, facteurs[facteurs.size() - 2].premier));
}

void noter_premier(Dette& dette, const NTL::ZZ& S) { noter_grande(dette, NTL::SqrRoot(S)); }

}  // namespace premiers
