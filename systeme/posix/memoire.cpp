// SPDX-License-Identifier: MIT
// Read from what Linux tells in /proc and /sys; other systems have fewer of these files, and each
// that is missing sets no limit.
#include "systeme/memoire.h"

#include <sys/mman.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <limits>
#include <optional>
#include <string_view>

namespace premiers::systeme {

namespace {

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

}  // namespace

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

void conseiller_grandes_pages([[maybe_unused]] void* debut, [[maybe_unused]] std::size_t taille) {
#if defined(MADV_HUGEPAGE)  // not POSIX's: Linux's
  madvise(debut, taille, MADV_HUGEPAGE);
#endif
}

}  // namespace premiers::systeme
