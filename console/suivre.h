// SPDX-License-Identifier: MIT
// What a long computation started by a dialogue does for the operator while it runs.
#pragma once

#include <string_view>

#include "console/session.h"
#include "primes/suivi.h"

namespace premiers {

/// Gives what the engine is to call now and then: no finished result waits unwritten while it
/// computes. `quoi` names the work. Valid as long as the session.
Suivi suivre(Session& s, std::string_view quoi);

}  // namespace premiers
