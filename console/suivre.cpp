// SPDX-License-Identifier: MIT
#include "console/suivre.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <memory>
#include <optional>

#include "console/ligne.h"
#include "systeme/systeme.h"

namespace premiers {

namespace {

using Horloge = std::chrono::steady_clock;
using std::chrono::duration_cast;
using std::chrono::seconds;

/// How long work lasts before it is told of, and how often it is told.
constexpr seconds patience{2};
constexpr int periode_ms = 200;

/// The line that shows life, from the moment the work began.
struct Temoin {
  Temoin(const Monde& monde_du_temoin, std::string_view travail)
      : monde(monde_du_temoin),
        quoi(travail),
        minuterie(std::in_place, periode_ms, dessiner, this) {}
  ~Temoin() {
    minuterie.reset();
    if (dessinee) effacer();
  }
  Temoin(const Temoin&) = delete;
  Temoin& operator=(const Temoin&) = delete;

  /// The timer's handler: it only reads what is here and writes.
  static void dessiner(void* temoin) { static_cast<Temoin*>(temoin)->redessiner(); }

  void redessiner() {
    const auto duree = Horloge::now() - debut;
    if (duree < patience) return;
    const double fait = part;
    Ligne ligne;
    ligne << "\r" << quoi << " : ";
    if (fait > 0) {
      const std::chrono::duration<double> reste = duree * ((1 - fait) / fait);
      ligne << static_cast<std::int64_t>(100 * fait) << " %, encore "
            << duration_cast<seconds>(reste).count() << " s    ";
    } else {
      ligne << duration_cast<seconds>(duree).count() << " s ";
    }
    monde.animer(ligne.texte());
    dessinee = true;
  }

  void effacer() const {
    Ligne ligne;
    ligne << "\r";
    ligne.longueur = ligne.octets.size() - 1;
    std::fill(ligne.octets.begin() + 1, ligne.octets.end(), ' ');
    ligne << "\r";
    monde.animer(ligne.texte());
  }

  const Monde& monde;
  std::string_view quoi;
  Horloge::time_point debut = Horloge::now();
  std::atomic<double> part = 0;
  std::atomic<bool> dessinee = false;
  std::optional<systeme::Minuterie> minuterie;
};

}  // namespace

Suivi suivre(Session& s, std::string_view quoi) {
  std::shared_ptr<Temoin> temoin;
  if (s.monde.animer && s.curseur_en_debut_de_ligne()) {
    temoin = std::make_shared<Temoin>(s.monde, quoi);
  }
  return [&s, temoin](double part) {
    if (temoin) temoin->part = part;
    s.sortie.vider_si_tard();
  };
}

}  // namespace premiers
