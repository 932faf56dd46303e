// SPDX-License-Identifier: MIT
// Nothing but calls; what the routines are, prem.h tells.
#include "primes/prem.h"

#include "primes/primalite/primalite.h"

namespace premiers {

void Suiv(Table& Nprem) { Nprem.etendre_au_rang(Nprem.np() + 1); }

bool prem(const NTL::ZZ& S) { return primalite::est_premier(S); }

bool prem1(std::int64_t S3) {
  return S3 == 1 || (S3 != 2 && primalite::est_premier(static_cast<std::uint64_t>(S3)));
}

}  // namespace premiers
