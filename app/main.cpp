// SPDX-License-Identifier: MIT
// The door: a session on the standard streams. The exit status is 1 when the operator closes the
// program, 2 when it cannot go on (memory, output), with one line on standard error.
#include <exception>
#include <new>

#include "app/menu.h"
#include "console/monde.h"

namespace {

using namespace premiers;

constexpr int statut_panne = 2;

/// Whatever ends it, the answers that were finished are written.
int tenir(Session& session) {
  try {
    return menu(session);
  } catch (const SortiePerdue&) {
    throw;
  } catch (...) {
    session.sortie.vider();
    throw;
  }
}

}  // namespace

int main() {
  try {
    Session session{Entree(entree_standard()), Sortie(sortie_standard()), monde_standard()};
    return tenir(session);
  } catch (const std::bad_alloc&) {
    dire_erreur("memoire insuffisante");
  } catch (const std::exception& panne) {
    dire_erreur(panne.what());
  }
  return statut_panne;
}
