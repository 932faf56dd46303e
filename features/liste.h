// SPDX-License-Identifier: MIT
// Choice 3 of the main menu: the primes between two bounds, without ranks, or only their count.
#pragma once

#include "console/session.h"

namespace premiers {

/// The dialogue: two bounds, one question, one listing.
void liste(Session& s);

}  // namespace premiers
