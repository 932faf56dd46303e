// SPDX-License-Identifier: MIT
#include "primes/rangs/intervalle.h"

#include <cmath>

#include "primes/arithmetique/bits.h"
#include "primes/arithmetique/roue.h"
#include "primes/compte/compte.h"
#include "primes/primalite/primalite.h"
#include "primes/rangs/couts.h"

namespace premiers {

namespace {

std::uint64_t naturel(std::int64_t n) { return static_cast<std::uint64_t>(n); }

double largeur(Intervalle bornes) { return static_cast<double>(bornes.fin - bornes.debut) + 1; }

bool vaut_un_par_un(Intervalle bornes) {
  return premiers::vaut_un_par_un(largeur(bornes), static_cast<double>(bornes.fin));
}

/// Two counts cost less than sieving.
bool vaut_deux_comptes(Intervalle bornes) {
  const auto debut = static_cast<double>(bornes.debut);
  const auto fin = static_cast<double>(bornes.fin);
  return cout_compte(debut) + cout_compte(fin) < cout_crible(largeur(bornes), fin);
}

/// 2, 3 and 5 have no bit in sieved bytes.
constexpr std::uint64_t premier_avec_bit = 7;

/// A batch from the sieve: at most 2,048 primes, so that they stay in the L1 cache.
constexpr std::size_t octets_par_lot = 256;
/// Of bytes that are sieved already so many are taken at a time.
constexpr std::size_t octets_copies = std::size_t{1} << 14;
/// A batch of numbers decided one by one: some hundred microseconds.
constexpr std::uint64_t nombres_par_lot = 4096;

}  // namespace

Fenetres::Fenetres(std::uint64_t debut, std::uint64_t fin, std::uint64_t memoire)
    : debut_(debut),
      fin_(fin),
      octet_(debut / 30),
      crible_(std::in_place, octet_, fin / 30 + 1, ~std::uint64_t{0}, memoire),
      tampon_(crible_->taille()) {}

Fenetres::Fenetres(std::uint64_t debut, std::uint64_t fin, std::span<const std::uint8_t> cribles)
    : debut_(debut),
      fin_(fin),
      octet_(debut / 30),
      cribles_(cribles),
      tampon_(std::min<std::uint64_t>(octets_copies, fin / 30 + 1 - octet_)) {}

bool Fenetres::suivante(const Suivi& suivi) {
  octet_ += taille_;
  const std::uint64_t octet_fin = fin_ / 30 + 1;
  if (octet_ >= octet_fin) return false;
  taille_ = static_cast<std::size_t>(std::min<std::uint64_t>(tampon_.size(), octet_fin - octet_));
  const std::span<std::uint8_t> fenetre(tampon_.data(), taille_);
  if (crible_) {
    crible_->remplir(fenetre, suivi);
  } else {
    std::copy_n(cribles_.begin() + static_cast<std::ptrdiff_t>(octet_), taille_, fenetre.begin());
  }
  if (octet_ == debut_ / 30) fenetre.front() &= drapeaux_a_partir_de(debut_ % 30);
  if (octet_ + taille_ == octet_fin) fenetre.back() &= drapeaux_jusqu_a(fin_ % 30);
  return true;
}

LotsDePremiers::LotsDePremiers(Intervalle bornes)
    : debut_(naturel(std::max<std::int64_t>(bornes.debut, 1))),
      fin_(naturel(std::max<std::int64_t>(bornes.fin, 0))),
      position_(debut_),
      lot_(std::make_unique_for_overwrite<std::uint64_t[]>(
          std::max<std::size_t>(octets_par_lot * 8, nombres_par_lot))) {}

LotsDePremiers::LotsDePremiers(Intervalle bornes, std::uint64_t memoire) : LotsDePremiers(bornes) {
  bornes.debut = std::max<std::int64_t>(bornes.debut, 1);
  const std::uint64_t debut = std::max(debut_, premier_avec_bit);
  if (debut <= fin_ && !vaut_un_par_un(bornes)) fenetres_.emplace(debut, fin_, memoire);
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
  pour_chaque_premier(fenetres_->octets().subspan(lus_, n), fenetres_->premier_octet() + lus_,
                      [&ou](std::uint64_t p) { *ou++ = p; });
  nombre_ = static_cast<std::size_t>(ou - lot_.get());
  lus_ += n;
}

void LotsDePremiers::decider_un_par_un(const Suivi& suivi) {
  const std::uint64_t n = std::min(nombres_par_lot, fin_ - position_ + 1);
  for (const std::uint64_t bout = position_ + n; position_ < bout; ++position_) {
    if (position_ % 2 != 0 && est_premier(position_)) lot_[nombre_++] = position_;
  }
  if (suivi)
    suivi(static_cast<double>(position_ - debut_) / static_cast<double>(fin_ - debut_ + 1));
}

std::int64_t compter_premiers(Intervalle bornes, const Suivi& suivi, std::uint64_t memoire) {
  bornes.debut = std::max<std::int64_t>(bornes.debut, 1);
  if (bornes.fin < bornes.debut) return 0;
  if (vaut_un_par_un(bornes)) {
    std::int64_t effectif = 0;
    LotsDePremiers lots(bornes, memoire);
    for (auto lot = lots.suivant(suivi); !lot.empty(); lot = lots.suivant(suivi)) {
      effectif += static_cast<std::int64_t>(lot.size());
    }
    return effectif;
  }
  if (vaut_deux_comptes(bornes)) {
    const std::uint64_t avant = nombre_premiers(naturel(bornes.debut) - 1, etape(suivi, 0, 0.5));
    const std::uint64_t jusqu = nombre_premiers(naturel(bornes.fin), etape(suivi, 0.5, 1));
    return static_cast<std::int64_t>(jusqu - avant);
  }
  return static_cast<std::int64_t>(
      compter_par_crible(naturel(bornes.debut), naturel(bornes.fin), suivi, memoire));
}

}  // namespace premiers
