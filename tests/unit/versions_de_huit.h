// SPDX-License-Identifier: MIT
// Every set of kernels for eight lanes that this processor can run.
#pragma once

#include <gtest/gtest.h>

#include "primes/arithmetique/processeur.h"
#include "primes/facteurs/huit.h"

namespace premiers::facteurs::ecm {

/// Calls f with each of them; skips the test where there is none.
template <class F>
void pour_chaque_version(const F& f) {
  bool une = false;
  for (const auto& [besoin, noyaux] : Huit::versions_des_noyaux()) {
    if (noyaux == nullptr || !jouable(besoin)) continue;
    une = true;
    SCOPED_TRACE(nommer(besoin));
    f(noyaux);
  }
  if (!une) GTEST_SKIP() << "no processor for eight lanes";
}

}  // namespace premiers::facteurs::ecm
