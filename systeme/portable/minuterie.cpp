// SPDX-License-Identifier: MIT
// No timers: what works tells of itself by calling back, and nothing redraws between the calls.
#include "systeme/minuterie.h"

namespace premiers::systeme {

Minuterie::Minuterie(int /*periode_ms*/, void (* /*geste*/)(void*), void* /*sujet*/) {}
Minuterie::~Minuterie() = default;

}  // namespace premiers::systeme
