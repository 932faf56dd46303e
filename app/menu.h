// SPDX-License-Identifier: MIT
// The main menu: from here the operator reaches every feature and comes back.
#pragma once

#include "console/session.h"

namespace premiers {

/// Shows the menu and runs the choices until the operator closes the program. Returns the exit
/// status, which is 1 for that.
int menu(Session& s);

}  // namespace premiers
