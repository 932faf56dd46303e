// SPDX-License-Identifier: MIT
// The consultation of the primes already computed, opened by "*" in the ranked listing. It only
// reads the table.
#pragma once

#include "console/session.h"

namespace premiers {

/// The sub-menu and its five selections, until the operator chooses 0.
void affiche(Session& s);

}  // namespace premiers
