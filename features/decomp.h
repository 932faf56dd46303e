// SPDX-License-Identifier: MIT
// Choice 1 of the main menu: decomposition of a positive integer of any size into prime factors.
#pragma once

#include "console/session.h"

namespace premiers {

/// The dialogue, until the operator wants no other N.
void decomp(Session& s);

}  // namespace premiers
