// SPDX-License-Identifier: MIT
// The three standard streams, as bytes.
#pragma once

#include <cstddef>
#include <span>
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

}  // namespace premiers::systeme
