// SPDX-License-Identifier: MIT
// What the program asks of the operating system: the three standard streams, the memory that it may
// use, a timer. All that only POSIX has stands in the source beside this header, with a portable
// way for other systems.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace premiers::systeme {

/// Reads at least one byte of standard input, waiting if it must; 0 at the end of input, which an
/// error (closed, a folder ...) counts as.
std::size_t lire_entree(std::span<char> place);

/// Whether `lire_entree` would answer at once.
bool entree_prete();

/// Writes all the bytes; false when they can no longer be written.
bool ecrire_sortie(std::string_view octets);

/// The same on standard error; what cannot be written there is lost.
void ecrire_erreur(std::string_view octets);

/// Whether standard input is a terminal.
bool entree_est_un_terminal();

/// A terminal to draw on while there is work to do: nothing here ever waits for it, and all is safe
/// in a signal handler.
struct Terminal {
  int descripteur = -1;
  bool obeit = false;  // to control sequences

  bool existe() const { return descripteur >= 0; }
  /// How wide it is at this moment; 80 where it does not tell.
  std::size_t colonnes() const;
  /// False while the program is a job in the background of this terminal.
  bool au_premier_plan() const;
  /// Writes, in one attempt; gives how many of the bytes the terminal took.
  std::size_t tenter(std::string_view octets) const;
};

/// The one behind standard error; none where there is no terminal. It is opened once more: a stopped
/// terminal makes whoever writes wait, unless the descriptor is told otherwise, and the program's
/// own descriptors cannot be told so without telling the shell and all others that hold them.
Terminal terminal_des_erreurs();

/// How many more bytes the process can be given: the least of what the machine has available, what
/// its control groups leave, and what its limit of address space leaves. Asked anew at each call.
/// Without POSIX nothing is known: 2^64 - 1.
std::uint64_t memoire_libre();

/// What the control group of the process and those above it leave, of either version; 2^64 - 1 where
/// none sets a limit. `racine` is the folder that holds /proc and /sys: a test has its own.
std::uint64_t memoire_des_groupes(const std::string& racine = {});

/// Calls geste(sujet) every `periode_ms` milliseconds until the object is gone, whatever runs
/// meanwhile; never where there are no timers. `geste` runs as a signal handler: it may only do
/// what is safe there. One at a time.
struct Minuterie {
  Minuterie(int periode_ms, void (*geste)(void*), void* sujet);
  ~Minuterie();
  Minuterie(const Minuterie&) = delete;
  Minuterie& operator=(const Minuterie&) = delete;
};

}  // namespace premiers::systeme
