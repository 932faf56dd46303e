// SPDX-License-Identifier: MIT
// A function in a process of its own, so that a crash, an endless loop or a sanitizer's abort ends
// that process alone.
#pragma once

#include <sys/resource.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <stdexcept>

namespace differentiel {

/// How a child ended.
struct Fin {
  enum Comment { statut, mort, trop_long } comment;
  /// What it gave, where it ended by itself.
  int valeur;
  friend bool operator==(const Fin&, const Fin&) = default;
};

/// The calling process ends when it has used so much processor time.
inline void limiter_processeur(std::chrono::milliseconds duree) {
  itimerval limite{};
  limite.it_value.tv_sec = duree.count() / 1000;
  limite.it_value.tv_usec = duree.count() % 1000 * 1000;
  setitimer(ITIMER_PROF, &limite, nullptr);
}

/// The calling process, and what it becomes, ends when it has taken much more memory, or written
/// much longer a file, than any session does: one without end may print without end.
inline void limiter_place() {
  constexpr rlim_t octets = rlim_t{1} << 30U;
  const rlimit limite{octets, octets};
  setrlimit(RLIMIT_FSIZE, &limite);
#if !defined(PREMIERS_ASSAINI)  // which takes terabytes
  setrlimit(RLIMIT_AS, &limite);
#endif
}

inline Fin attendre(pid_t enfant) {
  int statut = 0;
  while (waitpid(enfant, &statut, 0) < 0) {
    if (errno != EINTR) throw std::runtime_error("waitpid");
  }
  if (WIFEXITED(statut)) return {Fin::statut, WEXITSTATUS(statut)};
  return {WTERMSIG(statut) == SIGPROF ? Fin::trop_long : Fin::mort, 0};
}

/// What `f` gives (0 to 125), computed in a child with so much processor time. Nothing else that
/// `f` does comes back. An exception counts as death.
template <class F>
Fin isoler(F f, std::chrono::milliseconds duree) {
  const pid_t enfant = fork();
  if (enfant < 0) throw std::runtime_error("fork");
  if (enfant > 0) return attendre(enfant);
  limiter_processeur(duree);
  limiter_place();
  int resultat = 0;
  try {
    resultat = f();
  } catch (...) {
    std::raise(SIGABRT);
  }
  _exit(resultat);
}

}  // namespace differentiel
