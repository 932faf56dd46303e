// SPDX-License-Identifier: MIT
// A descriptor of our own: non-blocking, and nobody else holds it.
#include "systeme/terminal.h"

#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <array>
#include <cstdlib>

namespace premiers::systeme {

std::size_t Terminal::colonnes() const {
  constexpr std::size_t habituelles = 80;
  winsize taille{};
  if (ioctl(descripteur, TIOCGWINSZ, &taille) != 0 || taille.ws_col == 0) return habituelles;
  return taille.ws_col;
}

bool Terminal::a_l_avant_plan() const {
  const pid_t groupe = tcgetpgrp(descripteur);
  return groupe == -1 || groupe == getpgrp();  // -1: a terminal without jobs of ours
}

std::size_t Terminal::tenter(std::string_view octets) const {
  const ssize_t n = write(descripteur, octets.data(), octets.size());
  return n > 0 ? static_cast<std::size_t>(n) : 0;
}

Terminal terminal_des_erreurs() {
  std::array<char, 256> nom{"/dev/tty"};  // may be opened whoever owns the terminal
  const bool le_notre = tcgetpgrp(STDERR_FILENO) != -1;
  if (!le_notre && ttyname_r(STDERR_FILENO, nom.data(), nom.size()) != 0) return {};
  const char* const genre = std::getenv("TERM");
  return {open(nom.data(), O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC),
          genre == nullptr || std::string_view(genre) != "dumb"};
}

}  // namespace premiers::systeme
