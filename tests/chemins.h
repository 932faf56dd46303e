// SPDX-License-Identifier: MIT
// What is said of the paths that a processor takes. The lines begin with "paths: ", which is what
// `./test` looks for when it says at its end which of them ran.
#pragma once

#include <map>
#include <set>
#include <string>

#include "primes/boucles.h"

namespace chemins {

using premiers::Instructions;

/// What was compared with a plain loop: by loop, the versions.
using Comparees = std::map<std::string, std::set<Instructions>, std::less<>>;

inline std::string processeur() {
  const Instructions ici = premiers::instructions_presentes();
  const Instructions permis = premiers::instructions_utilisables();
  const std::string tout = ici == premiers::instructions::aucune ? "none" : premiers::nommer(ici);
  return "paths: this processor has " + tout +
         (permis == ici ? "" : ", of which this build uses " + premiers::nommer(permis)) + "\n";
}

/// "; label: a, b" for those versions of which `oui` is true; nothing if there are none.
template <class Oui>
std::string liste(const premiers::Boucle& b, const char* label, Oui oui) {
  std::string r;
  for (const Instructions v : b.versions) {
    if (oui(v)) r += (r.empty() ? std::string("; ") + label + ": " : ", ") + premiers::nommer(v);
  }
  return r;
}

inline bool essayable(Instructions version) {
  return (version & ~premiers::instructions_presentes()) == 0;
}

/// A line for each loop; `comparees` is null where nothing is compared.
inline std::string boucles(const Comparees* comparees) {
  std::string r;
  for (const premiers::Boucle& b : premiers::boucles()) {
    r += "paths: " + std::string(b.nom) + " takes " + premiers::nommer(b.prise);
    if (comparees != nullptr) {
      const auto i = comparees->find(b.nom);
      r += liste(b, "compared",
                 [&](Instructions v) { return i != comparees->end() && i->second.contains(v); });
    }
    r += liste(b, "cannot run here", [](Instructions v) { return !essayable(v); }) + "\n";
  }
  return r;
}

}  // namespace chemins
