// SPDX-License-Identifier: MIT
// The rounds of a window: which primes are kept for it, which are started anew in each.
#include "primes/crible/crible_grand.h"

#include <algorithm>

#include "primes/arithmetique/bits.h"
#include "primes/arithmetique/racines.h"
#include "primes/crible/fenetres.h"

namespace premiers::crible {

namespace {

// The first round of a window that is longer than the longest is this part of it: perhaps no more is
// ever asked for.
constexpr std::uint64_t part_initiale = 4;

// The medium primes end with the byte of debut_des_grands.
constexpr std::uint64_t octet_des_grands = CribleGrand::debut_des_grands / 30 + 1;

// Bytes of sieving primes at a time: half a first-level cache, which the primes of a round share with
// what they are added to.
constexpr std::uint64_t taille_troncon = std::uint64_t{1} << 14;

constexpr std::uint64_t taille_segment = CribleGarde::taille_segment;

}  // namespace

CribleGrand::CribleGrand(std::uint64_t octet, std::uint64_t octet_fin, std::uint64_t memoire)
    : CribleGrand(octet, octet_fin,
                  partager_selon_le_systeme(octet, octet_fin, debut_des_grands, memoire)) {}

CribleGrand::CribleGrand(std::uint64_t octet, std::uint64_t octet_fin, const Partage& partage)
    : fin_(octet_fin),
      octet_(octet),
      fin_segment_(octet),
      fin_tour_(octet),
      longueur_(octet_fin - octet <= partage.tour
                    ? partage.tour
                    : std::max(partage.tour / part_initiale, taille_segment)),
      partage_(partage),
      gardes_(octet, octet_fin, partage.borne),
      tours_(std::max(partage.borne / 30 + 1, octet_des_grands), octet_fin, partage.notes) {}

CribleGrand::~CribleGrand() = default;

/// Sees to it that the primes up to `racine` that are to be kept are.
void CribleGrand::garder_jusqu_a(std::uint64_t racine, const Annonce& annoncer) {
  const std::uint64_t fin = std::min(racine, partage_.borne) / 30 + 1;
  if (fin <= octet_des_grands) return;
  if (cribleurs_ == nullptr) {
    cribleurs_ = std::make_unique<Fenetres>(30 * octet_des_grands, partage_.borne / 30 * 30 + 29,
                                            ChoixDesFenetres{.taille = taille_troncon});
  }
  while (cribleurs_->suivante_avant(fin)) {
    pour_chaque_premier(cribleurs_->octets(), cribleurs_->octet_initial(),
                        [&](std::uint64_t premier) {
                          const auto p = static_cast<std::uint32_t>(premier);
                          if (p < CribleSeize::dernier && CribleSeize::vaut()) {
                            seize_.ajouter(p, fin_tour_, fin_);
                          } else {
                            gardes_.ajouter(p);
                          }
                        });
    if (annoncer) annoncer(fin_tour_);
  }
}

void CribleGrand::ouvrir_tour(const Annonce& annoncer) {
  const std::uint64_t debut = fin_tour_;
  const std::uint64_t fin = debut + std::min(longueur_, fin_ - debut);
  longueur_ = std::min(2 * longueur_, partage_.tour);
  garder_jusqu_a(racine_carree(30 * fin - 1), annoncer);
  tours_.ouvrir(debut, fin, annoncer);
  fin_tour_ = fin;
}

void CribleGrand::rayer_segment(std::span<std::uint8_t> segment, const Annonce& annoncer) {
  if (fin_segment_ == fin_tour_) ouvrir_tour(annoncer);
  seize_.cribler(segment);
  gardes_.rayer(segment);
  tours_.rayer(segment);
  fin_segment_ += segment.size();
}

void CribleGrand::cribler(std::span<std::uint8_t> octets, const Annonce& annoncer) {
  while (!octets.empty()) {
    const bool entame = octet_ < fin_segment_;
    const std::uint64_t taille = std::min(taille_segment, fin_ - fin_segment_);
    std::size_t n = octets.size();
    if (!entame && n >= taille) {
      n = taille;
      rayer_segment(octets.first(n), annoncer);
    } else {
      if (!entame) {
        masque_.assign(taille, 0xFF);
        rayer_segment(masque_, annoncer);
      }
      n = std::min<std::uint64_t>(n, fin_segment_ - octet_);
      const std::uint8_t* const masque =
          masque_.data() + (masque_.size() - (fin_segment_ - octet_));
      std::transform(
          octets.data(), octets.data() + n, masque, octets.data(),
          [](std::uint8_t a, std::uint8_t b) { return static_cast<std::uint8_t>(a & b); });
    }
    octet_ += n;
    octets = octets.subspan(n);
  }
}

}  // namespace premiers::crible
