// SPDX-License-Identifier: MIT
// Which paths does this processor take? All loops of the engine that have more than one version
// (primes/arithmetique/processeur.h).
#pragma once

#include <string_view>
#include <vector>

#include "primes/arithmetique/processeur.h"

namespace premiers {

struct Boucle {
  std::string_view nom;
  std::vector<Instructions> versions;  ///< what each needs, best first
  Instructions prise;                  ///< what the one needs that is taken here
};

/// Every one of them; `tests/rooms_test` sees to it that none is forgotten.
std::vector<Boucle> boucles();

}  // namespace premiers
