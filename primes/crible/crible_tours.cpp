// SPDX-License-Identifier: MIT
// Filling the buckets of a round, and emptying them.
#include "primes/crible/crible_tours.h"

#include <algorithm>

#include "primes/arithmetique/bits.h"
#include "primes/arithmetique/racines.h"
#include "primes/crible/crible.h"
#include "primes/crible/crible_garde.h"
#include "primes/crible/fenetres.h"

namespace premiers::crible {

namespace {

constexpr unsigned log_seau = CribleGarde::log_segment;

// Beyond the width of a round candidates need not be prime, only free of small factors. The wider
// the round, the more multiples a false candidate has in it, and the deeper it pays to sieve.
constexpr std::uint64_t plafond_candidats(std::uint64_t largeur) {
  return std::clamp<std::uint64_t>(largeur / 10000, 500, 8000);
}

// Bytes of candidates at a time.
constexpr std::uint64_t taille_troncon = std::uint64_t{1} << 15;

// Candidates whose multiples are looked for at a time.
constexpr std::size_t taille_lot = 256;

/// Calls f(bytes, number of the first byte) for bytes [octet, fin), sieved by primes up to `plafond`.
template <class F>
void cribler_troncons(std::uint64_t octet, std::uint64_t fin, std::uint64_t plafond, F&& f) {
  if (octet >= fin) return;
  Fenetres fenetres(30 * octet, 30 * fin - 1, {.plafond = plafond, .taille = taille_troncon});
  while (fenetres.suivante()) f(fenetres.octets(), fenetres.octet_initial());
}

}  // namespace

CribleursNotes::CribleursNotes(std::uint64_t octet, std::uint64_t octet_fin)
    : debut_(octet),
      crible_(std::make_unique<Crible>(octet, octet_fin)),
      octets_(std::make_unique_for_overwrite<std::uint8_t[]>(octet_fin - octet)) {}

CribleursNotes::~CribleursNotes() = default;

std::span<const std::uint8_t> CribleursNotes::lire(std::uint64_t octet, std::size_t n) {
  const std::uint64_t ou = octet - debut_;
  if (ou + n > connus_) {
    crible_->remplir({octets_.get() + connus_, ou + n - connus_});
    connus_ = ou + n;
  }
  return {octets_.get() + ou, n};
}

CribleTours::CribleTours(std::uint64_t octet_borne, std::uint64_t octet_fin, bool notes)
    : octet_borne_(octet_borne) {
  const std::uint64_t fin = racine_carree(30 * octet_fin - 1) / 30 + 1;
  if (notes && octet_borne < fin) notes_.emplace(octet_borne, fin);
}

CribleTours::~CribleTours() = default;

/// Calls f(bytes, number of the first byte) for the sieving primes up to byte `octet_fin`.
template <class F>
void CribleTours::pour_chaque_troncon(std::uint64_t octet_fin, F&& f) {
  if (notes_) {
    for (std::uint64_t octet = octet_borne_; octet < octet_fin; octet += taille_troncon) {
      f(notes_->lire(octet, std::min(taille_troncon, octet_fin - octet)), octet);
    }
    return;
  }
  const std::uint64_t largeur = tour_.fin - tour_.debut;
  const std::uint64_t milieu =
      std::clamp(largeur / 30, octet_borne_, std::max(octet_borne_, octet_fin));
  cribler_troncons(octet_borne_, milieu, ~std::uint64_t{0}, f);
  cribler_troncons(milieu, octet_fin, plafond_candidats(largeur), f);
}

void CribleTours::ouvrir(std::uint64_t octet, std::uint64_t octet_fin, const Annonce& annoncer) {
  tour_ = {30 * octet, 30 * octet_fin};
  segment_ = 0;
  const std::uint64_t fin = racine_carree(tour_.fin - 1) / 30 + 1;
  if (octet_borne_ >= fin) {
    seaux_.preparer(0);
    return;
  }
  seaux_.preparer((octet_fin - octet - 1) / CribleGarde::taille_segment + 1);
  candidats_.resize(8 * taille_troncon + 16);
  const std::uint64_t par_candidat = (tour_.fin - tour_.debut) / (60 * octet_borne_) + 1;
  multiples_.resize(taille_lot * par_candidat + 8);
  pour_chaque_troncon(fin, [&](std::span<const std::uint8_t> drapeaux, std::uint64_t ou) {
    if (annoncer) annoncer(octet + (octet_fin - octet) * ou / fin);
    prendre(drapeaux, ou);
  });
}

/// Throws the multiples of what is flagged into the buckets.
void CribleTours::prendre(std::span<const std::uint8_t> drapeaux, std::uint64_t octet) {
  std::size_t nombre = 0;
  if (30 * octet > (tour_.fin - tour_.debut) / 2) {
    nombre = touches(drapeaux, octet, tour_, candidats_.data());
  } else {
    pour_chaque_premier(drapeaux, octet, [&](std::uint64_t p) {
      candidats_[nombre++] = static_cast<std::uint32_t>(p);
    });
  }
  std::span<const std::uint32_t> candidats{candidats_.data(), nombre};
  while (!candidats.empty()) {
    const std::size_t n = std::min(taille_lot, candidats.size());
    jeter_multiples(candidats.first(n));
    candidats = candidats.subspan(n);
  }
}

void CribleTours::jeter_multiples(std::span<const std::uint32_t> candidats) {
  const std::size_t n = multiples(candidats, tour_, multiples_.data());
  for (const std::uint32_t m : std::span{multiples_}.first(n)) {
    seaux_.jeter(m >> (log_seau + 3), m);
  }
}

void CribleTours::rayer(std::span<std::uint8_t> segment) {
  if (seaux_.nombre() == 0) return;
  std::uint8_t* const octets = segment.data();
  constexpr std::uint32_t masque = CribleGarde::taille_segment - 1;
  seaux_.vider(segment_++, [&](const std::uint32_t* e, const std::uint32_t* fin) {
    for (; e != fin; ++e) {
      std::uint8_t& octet = octets[*e >> 3 & masque];
      octet = static_cast<std::uint8_t>(octet & ~(1u << (*e & 7)));
    }
  });
}

}  // namespace premiers::crible
