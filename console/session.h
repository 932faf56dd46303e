// SPDX-License-Identifier: MIT
// What every dialogue is handed: ears, mouth and memory.
#pragma once

#include <functional>

#include "console/entree.h"
#include "console/sortie.h"
#include "state/etat.h"

namespace premiers {

struct Session {
  Entree entree;
  Sortie sortie;
  /// Called when a question finds the input at its end, before its prompt is repeated; with 0, 1,
  /// 2 ... within one question. The program pauses there; a test throws.
  std::function<void(int repetition)> fin_entree;
  Etat etat{};
};

}  // namespace premiers
