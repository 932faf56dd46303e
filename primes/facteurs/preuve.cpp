// SPDX-License-Identifier: MIT
#include "primes/facteurs/preuve.h"

#include "primes/facteurs/pont_pari.h"
#include "primes/primalite/primalite.h"

namespace premiers {
bool est_premier_prouve(const NTL::ZZ& n, const Suivi& suivi) {
  if (!est_premier(n)) return false;
  if (NTL::NumBits(n) <= 81) return true;
  if (suivi) suivi(0);
  return pari::est_premier_prouve(n);
}
}  // namespace premiers
