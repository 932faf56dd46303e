// SPDX-License-Identifier: MIT
#include "systeme/systeme.h"

#include <algorithm>
#include <limits>

// PREMIERS_SANS_POSIX: the tests build the portable way as well.
#if (defined(__unix__) || defined(__APPLE__)) && !defined(PREMIERS_SANS_POSIX)
#define PREMIERS_POSIX 1
#else
#define PREMIERS_POSIX 0
#endif

#if PREMIERS_POSIX
#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/resource.h>
#include <sys/time.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <optional>
#else
#include <cstdio>
#endif

namespace premiers::systeme {

#if PREMIERS_POSIX

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

constexpr std::uint64_t sans_limite = std::numeric_limits<std::uint64_t>::max();

std::uint64_t difference_ou_zero(std::uint64_t a, std::uint64_t b) { return a > b ? a - b : 0; }

/// The number that follows `nom` in a file of the system (its first number if `nom` is empty);
/// nothing where there is no such file or number ("max", for one).
std::optional<std::uint64_t> lire_nombre(const std::string& fichier, std::string_view nom = {}) {
  std::ifstream flux(fichier);
  for (std::string mot; !nom.empty() && flux >> mot;) {
    if (mot == nom) break;
  }
  std::uint64_t nombre = 0;
  if (flux >> nombre) return nombre;
  return std::nullopt;
}

std::uint64_t taille_de_page() { return static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE)); }

/// What is available of the physical memory; all of it where the system does not tell, no limit
/// where it does not tell that either (-1 pages).
std::uint64_t memoire_de_la_machine() {
  const auto toute = static_cast<std::uint64_t>(sysconf(_SC_PHYS_PAGES)) * taille_de_page();
  const auto disponible = lire_nombre("/proc/meminfo", "MemAvailable:");
  return disponible ? *disponible * 1024 : toute;
}

/// What a control group leaves; cached files count as free, the system gives them up first.
std::uint64_t reste_du_groupe(const std::string& dossier, bool version_2) {
  const auto lire = [&](const char* nom, std::string_view champ = {}) {
    return lire_nombre(dossier + nom, champ);
  };
  const auto permis = lire(version_2 ? "/memory.max" : "/memory.limit_in_bytes");
  const auto pris = lire(version_2 ? "/memory.current" : "/memory.usage_in_bytes");
  if (!permis || !pris) return sans_limite;
  const auto cache = lire("/memory.stat", version_2 ? "inactive_file" : "total_inactive_file");
  return difference_ou_zero(*permis, difference_ou_zero(*pris, cache.value_or(0)));
}

std::uint64_t espace_d_adressage() {
  rlimit limite{};
  if (getrlimit(RLIMIT_AS, &limite) != 0 || limite.rlim_cur == RLIM_INFINITY) return sans_limite;
  const std::uint64_t pages = lire_nombre("/proc/self/statm").value_or(0);
  return difference_ou_zero(limite.rlim_cur, pages * taille_de_page());
}

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

std::size_t Terminal::colonnes() const {
  constexpr std::size_t habituelles = 80;
  winsize taille{};
  if (ioctl(descripteur, TIOCGWINSZ, &taille) != 0 || taille.ws_col == 0) return habituelles;
  return taille.ws_col;
}

bool Terminal::au_premier_plan() const {
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

std::uint64_t memoire_des_groupes(const std::string& racine) {
  std::uint64_t libre = sans_limite;
  std::ifstream flux(racine + "/proc/self/cgroup");  // lines like "0::/a/b" or "9:memory:/a/b"
  for (std::string ligne; std::getline(flux, ligne);) {
    const std::size_t premier = ligne.find(':');
    const std::size_t second = ligne.find(':', premier + 1);
    if (second == std::string::npos) continue;
    const std::string nom = ligne.substr(premier + 1, second - premier - 1);
    if (!nom.empty() && nom != "memory") continue;
    const std::string base = racine + "/sys/fs/cgroup" + (nom.empty() ? "" : "/memory");
    for (std::string groupe = ligne.substr(second + 1);; groupe.resize(groupe.rfind('/'))) {
      libre = std::min(libre, reste_du_groupe(base + groupe, nom.empty()));
      if (groupe.find('/') == std::string::npos) break;
    }
  }
  return libre;
}

std::uint64_t memoire_libre() {
  return std::min({memoire_de_la_machine(), memoire_des_groupes(), espace_d_adressage()});
}

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

#else

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

std::size_t Terminal::colonnes() const { return 0; }
bool Terminal::au_premier_plan() const { return false; }
std::size_t Terminal::tenter(std::string_view /*octets*/) const { return 0; }

Terminal terminal_des_erreurs() { return {}; }

std::uint64_t memoire_des_groupes(const std::string& /*racine*/) {
  return std::numeric_limits<std::uint64_t>::max();
}

std::uint64_t memoire_libre() { return memoire_des_groupes(); }

Minuterie::Minuterie(int /*periode_ms*/, void (* /*geste*/)(void*), void* /*sujet*/) {}
Minuterie::~Minuterie() = default;

#endif

}  // namespace premiers::systeme
