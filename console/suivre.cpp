// SPDX-License-Identifier: MIT
// The clock of one piece of work: when to write out what is finished, when to draw, and the
// witness that wipes the line at the end (suivre.h).
#include "console/suivre.h"

#include <atomic>
#include <chrono>
#include <cstddef>
#include <memory>
#include <optional>

#include "console/ligne_de_vie.h"
#include "systeme/minuterie.h"
#include "systeme/terminal.h"

namespace premiers {

namespace {

using Horloge = std::chrono::steady_clock;

/// How long work lasts before it is told of, and how often it is told.
constexpr std::chrono::seconds patience{2};
constexpr int periode_ms = 200;

/// The line that shows life, from the moment the work began.
struct Temoin {
  Temoin(systeme::Terminal ou, std::string_view travail)
      : terminal(ou), quoi(travail), minuterie(std::in_place, periode_ms, dessiner, this) {}
  ~Temoin() {
    minuterie.reset();
    if (dessinees > 0) poser({}, terminal.colonnes());
  }
  Temoin(const Temoin&) = delete;
  Temoin& operator=(const Temoin&) = delete;

  /// The timer's handler. All that it touches is constant or a lock-free atomic, and what it calls
  /// neither waits nor asks for memory.
  static void dessiner(void* temoin) { static_cast<Temoin*>(temoin)->redessiner(); }

  void redessiner() {
    const auto maintenant = Horloge::now();
    if (maintenant - debut < patience) return;
    const std::size_t colonnes = terminal.colonnes();
    const double fait = part;
    // What is left of a step follows from the time that the step has taken, not the work.
    const Horloge::time_point depuis =
        fait > 0 ? Horloge::time_point{Horloge::duration{debut_du_genre.load()}} : debut;
    const Ligne texte = texte_de_vie(quoi, etape, fait, maintenant - depuis, colonnes);
    if (dessinees > 0 || texte.longueur > 0) poser(texte.texte(), colonnes);
  }

  /// Draws, in one attempt: where the terminal takes nothing, this drawing is not made. Nor is it
  /// in the background, where the row of the cursor belongs to somebody else.
  void poser(std::string_view texte, std::size_t colonnes) {
    if (!terminal.a_l_avant_plan()) return;
    const Ligne octets = remplacer(dessinees, texte, colonnes, terminal.obeit);
    const std::size_t pris = terminal.tenter(octets.texte());
    const bool entier = pris == octets.longueur;
    if (entier || (pris > 0 && texte.size() > dessinees)) dessinees = texte.size();
  }

  /// A step of another kind: what is said of the part done is from now on its own.
  void annoncer(const Etape& nouvelle) {
    if (nouvelle.genre != etape.load().genre) {
      part = 0;
      debut_du_genre = Horloge::now().time_since_epoch().count();
    }
    etape = nouvelle;
  }

  const systeme::Terminal terminal;
  const std::string_view quoi;
  const Horloge::time_point debut = Horloge::now();
  std::atomic<double> part = 0;
  std::atomic<Horloge::rep> debut_du_genre = debut.time_since_epoch().count();
  std::atomic<Etape> etape = Etape{};
  std::atomic<std::size_t> dessinees = 0;  // characters on the row
  std::optional<systeme::Minuterie> minuterie;

  static_assert(decltype(part)::is_always_lock_free && decltype(dessinees)::is_always_lock_free &&
                decltype(debut_du_genre)::is_always_lock_free &&
                decltype(etape)::is_always_lock_free);
};

}  // namespace

Suivi suivre(Session& s, std::string_view quoi) {
  std::shared_ptr<Temoin> temoin;
  if (s.monde.terminal.existe() && s.curseur_en_debut_de_ligne()) {
    temoin = std::make_shared<Temoin>(s.monde.terminal, quoi);
  }
  return {[&s, temoin](double part) {
            if (temoin) temoin->part = part;
            s.sortie.vider_si_tard();
          },
          [temoin](const Etape& etape) {
            if (temoin) temoin->annoncer(etape);
          }};
}

}  // namespace premiers
