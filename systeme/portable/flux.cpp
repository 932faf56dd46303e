// SPDX-License-Identifier: MIT
// The C library and nothing else.
#include "systeme/flux.h"

#include <cstdio>

namespace premiers::systeme {

/// Line by line: the C library cannot tell whether a read would wait. A line that the end of input
/// cuts short comes first, the end then; after it a terminal may go on.
std::size_t lire_entree(std::span<char> place) {
  std::size_t n = 0;
  while (n < place.size() && (n == 0 || place[n - 1] != '\n')) {
    const int octet = std::getchar();
    if (octet == EOF) break;
    place[n++] = static_cast<char>(octet);
  }
  if (n == 0) std::clearerr(stdin);
  return n;
}

bool entree_prete() { return false; }

bool ecrire_sortie(std::string_view octets) {
  return std::fwrite(octets.data(), 1, octets.size(), stdout) == octets.size() &&
         std::fflush(stdout) == 0;
}

void ecrire_erreur(std::string_view octets) {
  std::fwrite(octets.data(), 1, octets.size(), stderr);
}

bool entree_est_un_terminal() { return false; }

}  // namespace premiers::systeme
