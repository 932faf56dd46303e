// SPDX-License-Identifier: MIT
// How a long computation tells how far it is, without knowing who listens.
#pragma once

#include <functional>

namespace premiers {

/// Called now and then (every few milliseconds of work) with the part of the work that is done,
/// 0 to 1. May be empty. It may throw: the work is then abandoned, whatever it had already
/// finished stays valid.
using Suivi = std::function<void(double part)>;

}  // namespace premiers
