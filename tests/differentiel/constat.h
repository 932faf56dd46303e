// SPDX-License-Identifier: MIT
// What is wrong with a session, if anything: the screens differ, the program dies, or it does not
// come to an end. Each is reported in its shortest form.
#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <string_view>

#include "tests/differentiel/isoler.h"
#include "tests/differentiel/jouer.h"

namespace differentiel {

constexpr int pareil = 0;
constexpr int different = 1;

/// Within how much time the sides must come to an end, at first: a session takes milliseconds, in a
/// sanitized program on a busy machine some hundred times as long.
constexpr std::chrono::milliseconds duree_d_une_session{30'000};

/// How the reference model ended; if by itself, how the program did, and whether both showed the
/// same.
struct Constat {
  Fin reference;
  Fin premiers{Fin::statut, pareil};
  /// What the sides took that came to an end.
  std::chrono::milliseconds duree{};
  bool bon() const { return *this == Constat{{Fin::statut, pareil}}; }
  friend bool operator==(const Constat& a, const Constat& b) {
    return a.reference == b.reference && a.premiers == b.premiers;
  }
};

/// A way to play a session on both sides.
struct Jeu {
  /// Gives each side so much time.
  std::function<Constat(const std::string& session, std::chrono::milliseconds)> constater;
  /// Says where the screens differ.
  std::function<void(const std::string& session)> raconter;
  /// What is typed behind every shortened session, so that it leads out of the program.
  std::string sortir;
};

/// In memory; the time is processor time.
Jeu jeu_en_memoire();

/// The two executables, and how they are played (jouer.h).
struct Programmes {
  std::string premiers, reference, dossier;
  Alimentation alimentation;
};

/// As processes; the time is that of the clock.
Jeu jeu_en_processus(const Programmes& p);

/// Reports a failing session, which `quoi` names, in its shortest form.
void rapporter(const std::string& quoi, const std::string& session, const Jeu& jeu);

/// A text as one would write it in a program; a long run of one character is counted.
std::string visible(std::string_view texte);

}  // namespace differentiel
