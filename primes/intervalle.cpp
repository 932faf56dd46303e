// SPDX-License-Identifier: MIT
#include "primes/intervalle.h"

#include <cmath>

#include "primes/arithmetique/bits.h"
#include "primes/arithmetique/roue.h"
#include "primes/compte/compte.h"
#include "primes/prem.h"
#include "primes/primalite/primalite.h"

namespace premiers {

namespace {

std::uint64_t naturel(std::int64_t n) { return static_cast<std::uint64_t>(n); }

double largeur(Intervalle bornes) { return static_cast<double>(bornes.fin - bornes.debut) + 1; }

/// About how many primes there are below x.
double nombre_environ(double x) { return x / std::max(std::log(x) - 1, 1.0); }

// Costs in nanoseconds. They come from the benchmarks of crible, primalite and compte: 10^9 integers
// are sieved in 0.06 s at 0 and in 0.16 s at 10^12; the 1.5 * 10^8 sieving primes below 2^63 take
// 0.33 s; a random odd number of 64 bits is decided in 0.1 us; pi(10^12) takes 8 ms, pi(10^14)
// 0.13 s. Near the borders two ways cost the same, so a factor of two does no harm.

/// Sieving: so much for each integer of the interval, and for each sieving prime.
constexpr double par_entier_crible = 0.2;
constexpr double par_cribleur = 2.2;
/// Deciding one by one: so much for each integer, odd or even.
constexpr double par_entier_decide = 50;
/// The combinatorial count of the primes up to x: so much for each unit of x^(2/3).
constexpr double par_puissance_deux_tiers = 0.08;

double cout_crible(Intervalle bornes) {
  const double racine = std::sqrt(static_cast<double>(bornes.fin));
  return largeur(bornes) * par_entier_crible + nombre_environ(racine) * par_cribleur;
}

double cout_un_par_un(Intervalle bornes) { return largeur(bornes) * par_entier_decide; }

double cout_combinatoire(Intervalle bornes) {
  const auto cout = [](std::int64_t x) {
    return par_puissance_deux_tiers * std::cbrt(static_cast<double>(x)) *
           std::cbrt(static_cast<double>(x));
  };
  return cout(bornes.debut) + cout(bornes.fin);
}

bool vaut_un_par_un(Intervalle bornes) { return cout_un_par_un(bornes) < cout_crible(bornes); }

/// Bits of a byte whose residue is >= r, 0 <= r < 30.
constexpr std::uint8_t a_partir_de(std::uint64_t r) {
  return static_cast<std::uint8_t>(0xFFU << indice_suivant[r]);
}

/// Bits of a byte whose residue is <= r, 0 <= r < 30.
constexpr std::uint8_t jusqu_a(std::uint64_t r) {
  return r == 29 ? std::uint8_t{0xFF} : static_cast<std::uint8_t>(~a_partir_de(r + 1));
}

static_assert(a_partir_de(7) == 0xFE && jusqu_a(7) == 0x03 && jusqu_a(29) == 0xFF);

/// 2, 3 and 5 have no bit in sieved bytes.
constexpr std::uint64_t premier_avec_bit = 7;

/// A batch from the sieve: at most 2,048 primes, so that they stay in the L1 cache.
constexpr std::size_t octets_par_lot = 256;
/// A batch of numbers decided one by one: some hundred microseconds.
constexpr std::uint64_t nombres_par_lot = 4096;

/// Half of the work for each of two counts.
Suivi moitie(const Suivi& suivi, double debut) {
  if (!suivi) return {};
  return [&suivi, debut](double part) { suivi(debut + part / 2); };
}

}  // namespace

Fenetres::Fenetres(std::uint64_t debut, std::uint64_t fin)
    : debut_(debut),
      fin_(fin),
      octet_(debut / 30),
      crible_(octet_, fin / 30 + 1),
      tampon_(crible_.taille()) {}

bool Fenetres::suivante(const Suivi& suivi) {
  octet_ += taille_;
  const std::uint64_t octet_fin = fin_ / 30 + 1;
  if (octet_ >= octet_fin) return false;
  taille_ = static_cast<std::size_t>(std::min<std::uint64_t>(tampon_.size(), octet_fin - octet_));
  const std::span<std::uint8_t> fenetre(tampon_.data(), taille_);
  crible_.remplir(fenetre, suivi);
  if (octet_ == debut_ / 30) fenetre.front() &= a_partir_de(debut_ % 30);
  if (octet_ + taille_ == octet_fin) fenetre.back() &= jusqu_a(fin_ % 30);
  return true;
}

LotsDePremiers::LotsDePremiers(Intervalle bornes)
    : debut_(naturel(std::max<std::int64_t>(bornes.debut, 1))),
      fin_(naturel(std::max<std::int64_t>(bornes.fin, 0))),
      position_(debut_),
      lot_(std::make_unique_for_overwrite<std::uint64_t[]>(
          std::max<std::size_t>(octets_par_lot * 8, nombres_par_lot))) {
  bornes.debut = std::max<std::int64_t>(bornes.debut, 1);
  const std::uint64_t debut_crible = std::max(debut_, premier_avec_bit);
  if (debut_crible <= fin_ && !vaut_un_par_un(bornes)) fenetres_.emplace(debut_crible, fin_);
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

std::int64_t compter_premiers(Intervalle bornes, const Suivi& suivi) {
  bornes.debut = std::max<std::int64_t>(bornes.debut, 1);
  if (bornes.fin < bornes.debut) return 0;
  if (vaut_un_par_un(bornes)) {
    std::int64_t effectif = 0;
    LotsDePremiers lots(bornes);
    for (auto lot = lots.suivant(suivi); !lot.empty(); lot = lots.suivant(suivi)) {
      effectif += static_cast<std::int64_t>(lot.size());
    }
    return effectif;
  }
  if (cout_combinatoire(bornes) < cout_crible(bornes)) {
    const std::uint64_t avant = nombre_premiers(naturel(bornes.debut) - 1, moitie(suivi, 0.0));
    const std::uint64_t jusqu = nombre_premiers(naturel(bornes.fin), moitie(suivi, 0.5));
    return static_cast<std::int64_t>(jusqu - avant);
  }
  return static_cast<std::int64_t>(
      compter_par_crible(naturel(bornes.debut), naturel(bornes.fin), suivi));
}

void noter_intervalle(Dette& dette, Intervalle bornes) {
  const std::int64_t debut = std::max<std::int64_t>(bornes.debut, 5);
  for (std::int64_t n = bornes.fin; n >= debut; --n) {
    if (n % 2 != 0 && prem1(n, dette)) return;
  }
}

}  // namespace premiers
