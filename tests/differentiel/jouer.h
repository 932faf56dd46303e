// SPDX-License-Identifier: MIT
// Plays the text of a session: through the shipped program and through the reference model, in
// memory or as processes.
#pragma once

#include <chrono>
#include <string>

#include "tests/differentiel/isoler.h"

namespace differentiel {

/// What can be seen of a session.
struct Rendu {
  std::string sortie;
  /// The exit status; -1 where the input ended first (in memory), or the process did not exit.
  int statut = -1;
  /// How a process ended.
  Fin::Comment comment = Fin::statut;
  friend bool operator==(const Rendu&, const Rendu&) = default;
};

/// In memory. At the end of the input the last prompt is printed four times in all, then the
/// session is over.
Rendu jouer_premiers(const std::string& session);
Rendu jouer_reference(const std::string& session);

/// How a process gets its input: all at once from a file, or through a pipe in small pieces.
enum class Alimentation { fichier, tube };

/// Runs a program. Its input and output go through the files `dossier`/entree and /sortie. After so
/// much time of the clock it is ended: what waits at the end of its input uses no processor.
Rendu jouer_programme(const std::string& programme, const std::string& session, Alimentation,
                      const std::string& dossier, std::chrono::milliseconds duree);

/// Both sides in memory show the same.
bool meme_rendu(const std::string& session);

}  // namespace differentiel
