// SPDX-License-Identifier: MIT
// The terminal behind standard error, to draw on while there is work to do.
#pragma once

#include <cstddef>
#include <string_view>

namespace premiers::systeme {

/// A terminal to draw on while there is work to do: nothing here ever waits for it, and all is safe
/// in a signal handler.
struct Terminal {
  int descripteur = -1;
  bool obeit = false;  // to control sequences

  bool existe() const { return descripteur >= 0; }
  /// How wide it is at this moment; 80 where it does not tell.
  std::size_t colonnes() const;
  /// False while the program is a job in the background of this terminal.
  bool a_l_avant_plan() const;
  /// Writes, in one attempt; gives how many of the bytes the terminal took.
  std::size_t tenter(std::string_view octets) const;
};

/// The one behind standard error; none where there is no terminal. It is opened once more: a stopped
/// terminal makes whoever writes wait, unless the descriptor is told otherwise, and the program's
/// own descriptors cannot be told so without telling the shell and all others that hold them.
Terminal terminal_des_erreurs();

}  // namespace premiers::systeme
