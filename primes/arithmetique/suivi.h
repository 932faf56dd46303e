// SPDX-License-Identifier: MIT
// How a long computation tells how far it is, without knowing who listens.
#pragma once

#include <functional>

namespace premiers {

/// Called now and then (every few milliseconds of work) with the part of the work that is done,
/// 0 to 1. May be empty. It may throw: the work is then abandoned, whatever it had already
/// finished stays valid.
using Suivi = std::function<void(double part)>;

/// For one step of a longer work: hears 0 to 1 of the step, tells `debut` to `fin` of the whole.
/// Valid as long as `suivi`.
inline Suivi etape(const Suivi& suivi, double debut, double fin) {
  if (!suivi) return {};
  return [&suivi, debut, fin](double part) { suivi(debut + part * (fin - debut)); };
}

}  // namespace premiers
