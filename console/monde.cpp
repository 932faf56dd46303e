// SPDX-License-Identifier: MIT
// The streams, the clock and the memory of `systeme`, under the names that a session asks for.
#include "console/monde.h"

#include <chrono>
#include <thread>

#include "console/ligne.h"
#include "systeme/flux.h"

namespace premiers {

namespace {

/// The pace of a prompt that is repeated at the end of input: the first repeat at once, then about
/// ten a second, so that a forgotten pipe neither fills a disk nor burns a core.
void attendre_apres_la_fin(int repetition) {
  constexpr std::chrono::milliseconds pause{100};
  if (repetition > 0) std::this_thread::sleep_for(pause);
}

}  // namespace

Source entree_standard() {
  return {systeme::lire_entree, systeme::entree_prete, systeme::entree_est_un_terminal()};
}

Puits sortie_standard() { return systeme::ecrire_sortie; }

Monde monde_standard() {
  return {attendre_apres_la_fin, dire_erreur, systeme::terminal_des_erreurs()};
}

void dire_erreur(std::string_view ligne) {
  Ligne texte;
  texte << "premiers: " << ligne << "\n";
  systeme::ecrire_erreur(texte.texte());
}

}  // namespace premiers
