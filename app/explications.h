// SPDX-License-Identifier: MIT
// The explanation screen, choice 5 of the main menu.
#pragma once

#include "console/sortie.h"

namespace premiers {

void expliquer(Sortie& sortie);

}  // namespace premiers
