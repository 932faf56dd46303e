// SPDX-License-Identifier: MIT
// Where a window ends, and what of it is masked; the idea is told in fenetres.h.
#include "primes/crible/fenetres.h"

#include <algorithm>

#include "primes/arithmetique/bits.h"

namespace premiers::crible {

namespace {

// Bytes copied at a time where they are sieved already: half an L1 cache. 2^13 to 2^16 are alike.
constexpr std::uint64_t octets_copies = std::uint64_t{1} << 14;

/// Behind the last byte; for no integers at all the first.
std::uint64_t octet_apres(std::uint64_t debut, std::uint64_t fin) {
  return debut > fin ? debut / 30 : fin / 30 + 1;
}

}  // namespace

Fenetres::Fenetres(std::uint64_t debut, std::uint64_t fin, const ChoixDesFenetres& choix)
    : debut_(debut),
      fin_(fin),
      octet_(debut / 30),
      octet_fin_(octet_apres(debut, fin)),
      crible_(std::in_place, octet_, octet_fin_, choix.plafond, choix.memoire),
      tampon_(std::min<std::uint64_t>(
          {crible_->taille(), choix.taille, std::max<std::uint64_t>(octet_fin_ - octet_, 1)})) {}

Fenetres::Fenetres(std::uint64_t debut, std::uint64_t fin, std::span<const std::uint8_t> cribles)
    : debut_(debut),
      fin_(fin),
      octet_(debut / 30),
      octet_fin_(octet_apres(debut, fin)),
      cribles_(cribles),
      tampon_(std::clamp<std::uint64_t>(octet_fin_ - octet_, 1, octets_copies)) {}

bool Fenetres::suivante_avant(std::uint64_t arret, const Suivi& suivi) {
  const std::uint64_t octet = octet_ + taille_;
  const std::uint64_t fin = std::min(arret, octet_fin_);
  if (octet >= fin) return false;
  octet_ = octet;
  taille_ = std::min<std::uint64_t>(tampon_.size(), fin - octet);
  const auto fenetre = tampon_.octets().first(taille_);
  if (crible_) {
    crible_->remplir(fenetre, suivi);
  } else {
    std::copy_n(cribles_.begin() + static_cast<std::ptrdiff_t>(octet), taille_, fenetre.begin());
  }
  if (octet == debut_ / 30) fenetre.front() &= drapeaux_a_partir_de(debut_ % 30);
  if (octet + taille_ == octet_fin_) fenetre.back() &= drapeaux_jusqu_a(fin_ % 30);
  return true;
}

}  // namespace premiers::crible
