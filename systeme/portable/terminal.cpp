// SPDX-License-Identifier: MIT
// Nothing is drawn: the C library knows no terminals.
#include "systeme/terminal.h"

namespace premiers::systeme {

std::size_t Terminal::colonnes() const { return 0; }
bool Terminal::a_l_avant_plan() const { return false; }
std::size_t Terminal::tenter(std::string_view /*octets*/) const { return 0; }

Terminal terminal_des_erreurs() { return {}; }

}  // namespace premiers::systeme
