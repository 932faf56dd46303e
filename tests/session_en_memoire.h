// SPDX-License-Identifier: MIT
// A session of the shipped program in memory: what is typed is a text, what is printed a string.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "console/session.h"

namespace premiers {

/// `texte` is typed, `ecran` (which must outlive the session) receives what is printed, and
/// `fin_entree` is called where the input ends.
inline Session session_en_memoire(std::string_view texte, std::string& ecran,
                                  std::function<void(int)> fin_entree) {
  Monde monde;
  monde.fin_entree = std::move(fin_entree);
  monde.avertir = [](std::string_view) {};
  return {Entree(source_texte(texte)), Sortie([&ecran](std::string_view octets) {
            ecran += octets;
            return true;
          }),
          std::move(monde)};
}

}  // namespace premiers
