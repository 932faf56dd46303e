// SPDX-License-Identifier: MIT
// One stretch as bytes, then the walks upward and downward over such stretches.
#include "primes/rangs/tranche.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <span>

#include "primes/arithmetique/bits.h"
#include "primes/crible/crible.h"
#include "primes/primalite/primalite.h"
#include "primes/rangs/couts.h"
#include "primes/rangs/memoire.h"
#include "primes/rangs/riemann.h"

namespace premiers::rangs {

namespace {

/// The longest stretch, which the shortfall of an estimate exceeds from 10^15 on.
constexpr double plus_longue = 30.0 * static_cast<double>(octets_par_tranche);

/// The flags of the integers from a to b, 7 <= a <= b.
struct Tranche {
  Tranche(std::int64_t a, std::int64_t b, const Suivi& suivi)
      : octet_(static_cast<std::uint64_t>(a) / 30),
        taille_(static_cast<std::size_t>(static_cast<std::uint64_t>(b) / 30 - octet_ + 1)),
        octets_(std::make_unique_for_overwrite<std::uint8_t[]>(taille_ + sizeof(std::uint64_t))) {
    const std::span<std::uint8_t> octets(octets_.get(), taille_);
    crible::Crible(octet_, octet_ + taille_, ~std::uint64_t{0}, memoire_des_rangs)
        .remplir(octets, suivi);
    limiter(octets, static_cast<std::uint64_t>(a), static_cast<std::uint64_t>(b));
    std::fill_n(octets_.get() + taille_, sizeof(std::uint64_t), std::uint8_t{0});
  }

  std::int64_t nombre() const {
    return static_cast<std::int64_t>(compter_bits({octets_.get(), taille_}));
  }

  /// The n-th prime of the stretch, 1 <= n <= nombre().
  std::int64_t premier(std::int64_t n) const {
    constexpr std::size_t morceau = 1 << 12;  // bytes counted at a time
    std::size_t o = 0;
    for (;; o += morceau) {
      const auto dedans = static_cast<std::int64_t>(
          compter_bits({octets_.get() + o, std::min(morceau, taille_ - o)}));
      if (n <= dedans) break;
      n -= dedans;
    }
    const PlaceDuBit place = place_du_bit(octets_.get() + o, static_cast<std::uint32_t>(n));
    return static_cast<std::int64_t>(valeur(octet_ + o, place));
  }

 private:
  std::uint64_t octet_;
  std::size_t taille_;
  std::unique_ptr<std::uint8_t[]> octets_;
};

/// The n-th prime met from v on by steps of 2, upward or downward; v is odd.
std::int64_t un_par_un(std::int64_t v, std::int64_t n, std::int64_t sens) {
  for (;; v += sens) {
    if (primalite::est_premier(static_cast<std::uint64_t>(v)) && --n == 0) return v;
  }
}

/// The part of the work that a stretch is, where `fait` of n primes are passed and it holds about
/// `dedans`.
Suivi part_de(const Suivi& suivi, std::int64_t fait, double dedans, std::int64_t n) {
  const auto en_tout = static_cast<double>(n);
  const double debut = static_cast<double>(fait) / en_tout;
  return etape(suivi, debut, std::min(debut + dedans / en_tout, 1.0));
}

}  // namespace

std::int64_t premier_apres(std::int64_t v, std::int64_t n, const Suivi& suivi) {
  constexpr std::int64_t fin = std::numeric_limits<std::int64_t>::max();
  for (std::int64_t fait = 0;;) {
    const auto x = static_cast<double>(v);
    const double voulue = largeur_pour(static_cast<double>(n - fait), x);
    if (vaut_un_par_un(voulue, x)) return un_par_un(v + 1 + v % 2, n - fait, 2);
    const auto largeur = static_cast<std::int64_t>(std::min(voulue, plus_longue));
    const std::int64_t b = v + std::min(largeur, fin - v);
    const Tranche tranche(v + 1, b,
                          part_de(suivi, fait, static_cast<double>(largeur) / std::log(x), n));
    const std::int64_t dedans = tranche.nombre();
    if (dedans >= n - fait) return tranche.premier(n - fait);
    fait += dedans;
    v = b;
  }
}

std::int64_t premier_avant(std::int64_t v, std::int64_t n, const Suivi& suivi) {
  constexpr std::int64_t debut = 7;
  for (std::int64_t fait = 0;;) {
    const auto x = static_cast<double>(v);
    const double voulue = largeur_pour(static_cast<double>(n - fait), x);
    if (vaut_un_par_un(voulue, x)) return un_par_un(v - 1 + v % 2, n - fait, -2);
    const auto largeur = static_cast<std::int64_t>(std::min(voulue, plus_longue));
    const std::int64_t a = std::max(v - largeur + 1, debut);
    const Tranche tranche(a, v,
                          part_de(suivi, fait, static_cast<double>(largeur) / std::log(x), n));
    const std::int64_t dedans = tranche.nombre();
    if (dedans >= n - fait) return tranche.premier(dedans - (n - fait) + 1);
    fait += dedans;
    v = a - 1;
  }
}

}  // namespace premiers::rangs
