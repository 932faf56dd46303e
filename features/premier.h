// SPDX-License-Identifier: MIT
// Choice 2 of the main menu: primes after their ranks, the table extended as each command needs.
#pragma once

#include "console/session.h"

namespace premiers {

/// The dialogue, until the operator leaves it with a command of value 0.
void premier(Session& s);

}  // namespace premiers
