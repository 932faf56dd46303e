// SPDX-License-Identifier: MIT
// The payment; what the debt is, dette.h tells.
#include "primes/dette/dette.h"

namespace premiers::dette {

void payer(const Dette& dette, Table& table, const Suivi& suivi) {
  table.etendre_au_dela(static_cast<std::int64_t>(dette.borne_due), suivi);
}

}  // namespace premiers::dette
