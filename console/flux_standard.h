// SPDX-License-Identifier: MIT
// The standard streams of the process, as the console wants them. All that only POSIX has stands
// in the source beside this header, with a portable way for other systems.
#pragma once

#include "console/entree.h"
#include "console/sortie.h"

namespace premiers {

/// Standard input. A read error (closed, a folder ...) counts as the end of input.
Source entree_standard();

/// Standard output.
Puits sortie_standard();

/// The pace of a prompt that is repeated at the end of input: the first repeat at once, then about
/// ten a second, so that a forgotten pipe neither fills a disk nor burns a core.
void attendre_apres_la_fin(int repetition);

/// One line on standard error.
void dire_erreur(std::string_view ligne);

}  // namespace premiers
