// SPDX-License-Identifier: MIT
// Taking a batch from where the primes come from.
#include "primes/rangs/lots_de_premiers.h"

#include <algorithm>

#include "primes/arithmetique/bits.h"
#include "primes/primalite/primalite.h"
#include "primes/rangs/couts.h"

namespace premiers::rangs {

namespace {

std::uint64_t naturel(std::int64_t n) { return static_cast<std::uint64_t>(n); }

/// 2, 3 and 5 have no bit in sieved bytes.
constexpr std::uint64_t premier_avec_bit = 7;

/// A batch from the sieve: at most 2,048 primes, so that they stay in the L1 cache.
constexpr std::size_t octets_par_lot = 256;
/// A batch of numbers decided one by one: some hundred microseconds.
constexpr std::uint64_t nombres_par_lot = 4096;

}  // namespace

LotsDePremiers::LotsDePremiers(Intervalle bornes)
    : debut_(naturel(std::max<std::int64_t>(bornes.debut, 1))),
      fin_(naturel(std::max<std::int64_t>(bornes.fin, 0))),
      position_(debut_),
      lot_(std::make_unique_for_overwrite<std::uint64_t[]>(
          std::max<std::size_t>(octets_par_lot * 8, nombres_par_lot))) {}

LotsDePremiers::LotsDePremiers(Intervalle bornes, std::uint64_t memoire) : LotsDePremiers(bornes) {
  const std::uint64_t debut = std::max(debut_, premier_avec_bit);
  if (debut > fin_) return;
  const double largeur = static_cast<double>(fin_ - debut_) + 1;
  if (vaut_un_par_un(largeur, static_cast<double>(fin_))) return;
  fenetres_.emplace(debut, fin_, crible::ChoixDesFenetres{.memoire = memoire});
}

LotsDePremiers::LotsDePremiers(Intervalle bornes, std::span<const std::uint8_t> cribles)
    : LotsDePremiers(bornes) {
  const std::uint64_t debut = std::max(debut_, premier_avec_bit);
  if (debut <= fin_) fenetres_.emplace(debut, fin_, cribles);
}

std::span<const std::uint64_t> LotsDePremiers::suivant(const Suivi& suivi) {
  nombre_ = 0;
  while (nombre_ == 0 && position_ <= fin_) {
    if (position_ < premier_avec_bit) {
      prendre_les_petits();
    } else if (fenetres_) {
      prendre_du_crible(suivi);
    } else {
      decider_un_par_un(suivi);
    }
  }
  return {lot_.get(), nombre_};
}

void LotsDePremiers::prendre_les_petits() {
  for (const std::uint64_t p : {2U, 3U, 5U}) {
    if (debut_ <= p && p <= fin_) lot_[nombre_++] = p;
  }
  position_ = premier_avec_bit;
}

void LotsDePremiers::prendre_du_crible(const Suivi& suivi) {
  if (lus_ == fenetres_->octets().size()) {
    lus_ = 0;
    if (!fenetres_->suivante(suivi)) {
      position_ = fin_ + 1;
      return;
    }
  }
  const std::size_t n = std::min(octets_par_lot, fenetres_->octets().size() - lus_);
  std::uint64_t* ou = lot_.get();
  pour_chaque_premier(fenetres_->octets().subspan(lus_, n), fenetres_->octet_initial() + lus_,
                      [&ou](std::uint64_t p) { *ou++ = p; });
  nombre_ = static_cast<std::size_t>(ou - lot_.get());
  lus_ += n;
}

void LotsDePremiers::decider_un_par_un(const Suivi& suivi) {
  const std::uint64_t n = std::min(nombres_par_lot, fin_ - position_ + 1);
  for (const std::uint64_t bout = position_ + n; position_ < bout; ++position_) {
    if (position_ % 2 != 0 && primalite::est_premier(position_)) lot_[nombre_++] = position_;
  }
  if (!suivi) return;
  suivi(static_cast<double>(position_ - debut_) / static_cast<double>(fin_ - debut_ + 1));
}

}  // namespace premiers::rangs
