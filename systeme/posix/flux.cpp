// SPDX-License-Identifier: MIT
// A read or write that a signal interrupts, or a descriptor that somebody made non-blocking, is
// waited for and tried again.
#include "systeme/flux.h"

#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

namespace premiers::systeme {

namespace {

bool attendre(int descripteur, short evenement, int delai_ms) {
  pollfd attente{descripteur, evenement, 0};
  return poll(&attente, 1, delai_ms) > 0;
}

/// An interrupted call, or a descriptor that somebody made non-blocking: to be tried again.
bool a_reessayer(int descripteur, short evenement) {
  if (errno == EINTR) return true;
  if (errno != EAGAIN && errno != EWOULDBLOCK) return false;
  attendre(descripteur, evenement, -1);
  return true;
}

bool ecrire(int descripteur, std::string_view octets) {
  while (!octets.empty()) {
    const ssize_t n = write(descripteur, octets.data(), octets.size());
    if (n >= 0) {
      octets.remove_prefix(static_cast<std::size_t>(n));
    } else if (!a_reessayer(descripteur, POLLOUT)) {
      return false;
    }
  }
  return true;
}

}  // namespace

std::size_t lire_entree(std::span<char> place) {
  for (;;) {
    const ssize_t n = read(STDIN_FILENO, place.data(), place.size());
    if (n >= 0) return static_cast<std::size_t>(n);
    if (!a_reessayer(STDIN_FILENO, POLLIN)) return 0;
  }
}

bool entree_prete() { return attendre(STDIN_FILENO, POLLIN, 0); }

bool ecrire_sortie(std::string_view octets) { return ecrire(STDOUT_FILENO, octets); }

void ecrire_erreur(std::string_view octets) {
  struct sigaction sans_effet {};
  struct sigaction avant {};
  sans_effet.sa_handler = SIG_IGN;
  sigaction(SIGPIPE, &sans_effet, &avant);  // nobody reads: no reason to end
  ecrire(STDERR_FILENO, octets);
  sigaction(SIGPIPE, &avant, nullptr);
}

bool entree_est_un_terminal() { return isatty(STDIN_FILENO) == 1; }

}  // namespace premiers::systeme
