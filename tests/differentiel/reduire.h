// SPDX-License-Identifier: MIT
// The shortest form of a failing session: words are left out as long as it still fails, large runs
// first (A. Zeller, R. Hildebrandt, "Simplifying and isolating failure-inducing input", 2002), then
// each word is made shorter.
#pragma once

#include <functional>
#include <string>

namespace differentiel {

/// `echoue` says whether a session still fails; it is true of `session`. Words come out separated
/// by line breaks if that fails as well. Costs some hundreds of calls.
std::string reduire(const std::string& session,
                    const std::function<bool(const std::string&)>& echoue);

}  // namespace differentiel
