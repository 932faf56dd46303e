// SPDX-License-Identifier: MIT
// SIGALRM, again and again; system calls that it interrupts go on by themselves.
#include "systeme/minuterie.h"

#include <sys/time.h>

#include <atomic>
#include <cerrno>
#include <csignal>

namespace premiers::systeme {

namespace {

/// What the timer calls. The one variable of the program that is global: a signal handler is
/// handed nothing else.
struct Rappel {
  std::atomic<void (*)(void*)> geste = nullptr;
  std::atomic<void*> sujet = nullptr;
  static_assert(decltype(geste)::is_always_lock_free && decltype(sujet)::is_always_lock_free);
};
Rappel rappel;

void au_signal(int /*signal*/) {
  const int avant = errno;
  if (const auto geste = rappel.geste.load(); geste != nullptr) geste(rappel.sujet);
  errno = avant;
}

void regler(int periode_ms) {
  const timeval periode{periode_ms / 1000, periode_ms % 1000 * 1000};
  const itimerval minuterie{periode, periode};
  setitimer(ITIMER_REAL, &minuterie, nullptr);
}

}  // namespace

Minuterie::Minuterie(int periode_ms, void (*geste)(void*), void* sujet) {
  rappel.sujet = sujet;
  rappel.geste = geste;
  struct sigaction action {};
  action.sa_handler = au_signal;
  action.sa_flags = SA_RESTART;
  sigaction(SIGALRM, &action, nullptr);
  regler(periode_ms);
}

Minuterie::~Minuterie() {
  regler(0);
  rappel.geste = nullptr;
}

}  // namespace premiers::systeme
