// SPDX-License-Identifier: MIT
// The line that tells of long work: what it says where there is so much room, and the bytes that put
// it on its row in the place of what stands there. A signal handler calls both, so neither asks for
// memory.
//
// The last column stays free: behind a character there, terminals disagree about where the cursor
// is. The cursor goes back to the first column, for where a narrowed window rewraps a row that has
// become too long the cursor then stands at the first of its rows, and they can be taken away
// without knowing where they are. Terminals that do not rewrap cut the row off instead; there the
// same bytes take away empty rows below it.
//
// A terminal that is full may take the first bytes only. The next drawing then begins inside a
// control sequence: a "\r" does there what it always does, and the escape behind it ends the sequence.
#pragma once

#include <chrono>
#include <cstddef>
#include <string_view>

#include "console/ligne.h"
#include "primes/suivi/etape.h"

namespace premiers {

/// Below so many columns nothing is said.
constexpr std::size_t colonnes_utiles = 12;

/// The name of the work, the step that it is busy with, how much of that (0 to 1) is done after `duree`
/// and how long the rest will take, or, with `part` 0, the seconds that have passed. Where `colonnes` are
/// too few, what comes last is left out, then the step, then the name; never a part of a number.
Ligne texte_de_vie(std::string_view quoi, const Etape& etape, double part,
                   std::chrono::duration<double> duree, std::size_t colonnes);

/// Puts `texte` (less than `colonnes` long; empty: nothing) in the place of the `dessinees`
/// characters that were drawn last, at a time when there was room for them. `obeit`: the terminal
/// knows control sequences; one that does not is wiped with blanks, as far as it still is wide.
Ligne remplacer(std::size_t dessinees, std::string_view texte, std::size_t colonnes, bool obeit);

}  // namespace premiers
