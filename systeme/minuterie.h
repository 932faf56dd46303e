// SPDX-License-Identifier: MIT
// A timer that goes on during calls into libraries.
#pragma once

namespace premiers::systeme {

/// Calls geste(sujet) every `periode_ms` milliseconds until the object is gone, whatever runs
/// meanwhile; never where there are no timers. `geste` runs as a signal handler: it may only do
/// what is safe there. One at a time.
struct Minuterie {
  Minuterie(int periode_ms, void (*geste)(void*), void* sujet);
  ~Minuterie();
  Minuterie(const Minuterie&) = delete;
  Minuterie& operator=(const Minuterie&) = delete;
};

}  // namespace premiers::systeme
