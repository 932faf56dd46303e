// SPDX-License-Identifier: MIT
// What a dialogue does for the operator while the engine computes for it: finished results do not
// wait unwritten, and work that lasts shows that it lives.
#pragma once

#include <string_view>

#include "console/session.h"
#include "primes/suivi/suivi.h"

namespace premiers {

/// Gives what the engine is to call now and then. While it exists, and from two seconds on, one
/// line on the terminal behind standard error tells `quoi` (a literal), how far it is and how long
/// it will still take; it is redrawn by a timer, so it moves during calls into libraries too, and
/// is wiped when the last copy of the result goes. It is drawn only where the cursor stands at the
/// beginning of a line, just after the operator's Enter. The work never waits for the terminal: one
/// that is stopped, or that nobody reads, misses drawings. Valid as long as the session.
Suivi suivre(Session& s, std::string_view quoi);

}  // namespace premiers
