// SPDX-License-Identifier: MIT
// The world of a session that runs at a terminal or in a pipe: the standard streams, the clock and
// the memory of the machine.
#pragma once

#include "console/session.h"

namespace premiers {

Source entree_standard();
Puits sortie_standard();
Monde monde_standard();

/// One line on standard error, after the name of the program.
void dire_erreur(std::string_view ligne);

}  // namespace premiers
