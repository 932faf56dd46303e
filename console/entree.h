// SPDX-License-Identifier: MIT
// The words that the operator types: separated by blanks, whatever the lines, at most 199
// characters each. A longer word is passed over in constant memory.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string_view>

namespace premiers {

struct Sortie;

/// Where bytes come from.
struct Source {
  /// Reads at least one byte, waiting if it must; 0 means the end of input.
  std::function<std::size_t(std::span<char>)> lire;
  /// Whether `lire` would answer at once.
  std::function<bool()> prete;
  /// Whether a person types there, line by line, and the terminal shows what is typed.
  bool terminal = false;
};

/// A source that holds a whole session.
Source source_texte(std::string_view texte);

struct Entree {
  explicit Entree(Source source);

  enum class Lecture { mot, mot_refuse, fin };

  /// Reads the next word into `mot`. `mot_refuse`: it is too long or holds a NUL byte. `fin`: the
  /// input is at its end, and stays so until `oublier_fin`. Before a read that would wait, and at
  /// the end, `sortie` is emptied.
  Lecture lire_mot(Sortie& sortie);

  /// Forgets that the end was met: a terminal may go on after it.
  void oublier_fin() { fin_ = false; }

  /// The word read last.
  std::string_view mot() const { return {entree_.data(), l1_}; }

  /// Whether the last word ended the line that was just typed at a terminal, and how much had been
  /// written by then.
  bool validee_au_terminal() const { return validee_; }
  std::uint64_t total_a_la_lecture() const { return total_; }

  static constexpr std::size_t longueur_max = 199;

 private:
  bool remplir(Sortie& sortie);
  bool passer_blancs(Sortie& sortie);

  Source source_;
  std::unique_ptr<char[]> tampon_;
  std::size_t position_ = 0;
  std::size_t plein_ = 0;
  bool fin_ = false;
  bool attendue_ = false;  // the last word was waited for
  bool validee_ = false;
  std::uint64_t total_ = 0;
  std::array<char, longueur_max> entree_{};
  std::size_t l1_ = 0;
};

}  // namespace premiers
