// SPDX-License-Identifier: MIT
// What every dialogue is handed: ears, mouth and memory; and what of the world outside it may ask.
#pragma once

#include <functional>
#include <string_view>

#include "console/entree.h"
#include "console/sortie.h"
#include "state/etat.h"
#include "systeme/terminal.h"

namespace premiers {

/// The world outside a session. A test puts its own in place.
struct Monde {
  /// Called when a question finds the input at its end, before its prompt is repeated; with 0, 1,
  /// 2 ... within one question. The program pauses there.
  std::function<void(int repetition)> fin_entree;
  /// Says one line outside the dialogue, on standard error.
  std::function<void(std::string_view ligne)> avertir;
  /// Where the line that tells of long work is drawn, if anywhere.
  systeme::Terminal terminal{};
};

struct Session {
  Entree entree;
  Sortie sortie;
  Monde monde;
  Etat etat{};

  /// Whether the operator's Enter was the last thing on the screen: the last word was typed at a
  /// terminal, in answer to the prompt, and nothing has been written since.
  bool curseur_en_debut_de_ligne() const {
    return entree.validee_au_terminal() && sortie.total() == entree.total_a_la_lecture();
  }
};

}  // namespace premiers
