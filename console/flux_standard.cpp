// SPDX-License-Identifier: MIT
#include "console/flux_standard.h"

#include <chrono>
#include <string>
#include <thread>

#if defined(__unix__) || defined(__APPLE__)
#include <poll.h>
#include <unistd.h>

#include <cerrno>
#else
#include <cstdio>
#endif

namespace premiers {

namespace {

constexpr std::chrono::milliseconds pause_a_la_fin{100};

#if defined(__unix__) || defined(__APPLE__)

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

std::size_t lire(std::span<char> place) {
  for (;;) {
    const ssize_t n = read(STDIN_FILENO, place.data(), place.size());
    if (n >= 0) return static_cast<std::size_t>(n);
    if (!a_reessayer(STDIN_FILENO, POLLIN)) return 0;
  }
}

bool prete() { return attendre(STDIN_FILENO, POLLIN, 0); }

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

bool ecrire_sortie(std::string_view octets) { return ecrire(STDOUT_FILENO, octets); }

void ecrire_erreur(std::string_view octets) { ecrire(STDERR_FILENO, octets); }

#else

/// Line by line: the C library cannot tell whether a read would wait.
std::size_t lire(std::span<char> place) {
  return std::fgets(place.data(), static_cast<int>(place.size()), stdin) == nullptr
             ? 0
             : std::string_view(place.data()).size();
}

bool prete() { return false; }

bool ecrire_sortie(std::string_view octets) {
  return std::fwrite(octets.data(), 1, octets.size(), stdout) == octets.size() &&
         std::fflush(stdout) == 0;
}

void ecrire_erreur(std::string_view octets) {
  std::fwrite(octets.data(), 1, octets.size(), stderr);
}

#endif

}  // namespace

Source entree_standard() { return {lire, prete}; }

Puits sortie_standard() { return ecrire_sortie; }

void attendre_apres_la_fin(int repetition) {
  if (repetition > 0) std::this_thread::sleep_for(pause_a_la_fin);
}

void dire_erreur(std::string_view ligne) {
  ecrire_erreur("premiers: " + std::string(ligne) + "\n");
}

}  // namespace premiers
