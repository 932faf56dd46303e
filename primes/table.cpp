// SPDX-License-Identifier: MIT
// Which way a rank or a value is read, by what each costs; what the table is, table.h tells.
#include "primes/table.h"

#include <algorithm>
#include <cstdlib>

#include "primes/compte/compte.h"
#include "primes/rangs/couts.h"
#include "primes/rangs/intervalle.h"
#include "primes/rangs/memoire.h"
#include "primes/rangs/riemann.h"
#include "primes/rangs/tranche.h"

namespace premiers {

namespace {

/// What lies below is read from the bits at once: sieving so little costs less than anything else.
/// Sensible: 10^4 to 10^6, whose sieve a session's start does not show; sessions of single ranks, of a
/// hundred and of a thousand took the same time with 20,000 and 2,000,000.
constexpr std::int64_t toujours_gardes = 200'000;

/// The bits up to a place are made when reading below it has cost this part of what they cost: what
/// one reading wastes on them stays below that, and readings that follow have them early. Sensible: 1/64
/// to 1/2. Measured on random ranks below 10^7: 20 of them take 0.6 of the time with 1/2 and 1.15 with
/// 1/64, a thousand take the same with all three.
constexpr double part_a_depenser = 1.0 / 8;

double ecart(std::int64_t a, std::int64_t b) { return std::abs(static_cast<double>(a - b)); }

}  // namespace

template <typename Distance>
Place Table::ancre_la_plus_proche(Distance distance) const {
  constexpr std::int64_t plus_petite = 7;  // before it the sieve has no flags
  Place proche = fin;
  const auto comparer = [&](const Place& ancre) {
    if (ancre.premier >= plus_petite && distance(ancre) < distance(proche)) proche = ancre;
  };
  comparer(dernier_);
  for (const Place& ancre : ancres_) comparer(ancre);
  return proche;
}

Place Table::retenir(Place place) {
  ancres_[prochaine_ancre_] = place;
  prochaine_ancre_ = (prochaine_ancre_ + 1) % nombre_d_ancres;
  return place;
}

/// Whether a reading near v, which costs `cout` otherwise, goes to the bits; makes them where it is
/// time.
bool Table::lire_les_bits(std::int64_t v, double cout) {
  if (v <= gardes_.borne()) return true;
  if (v > rangs::BitsGardes::borne_max) return false;
  depense_ += cout;
  const auto x = static_cast<double>(v);
  if (v > toujours_gardes && depense_ < part_a_depenser * rangs::cout_crible(x, x)) return false;
  // Twice as far, if the table goes so far, so that many steps cost no more than one.
  const std::int64_t utile = std::min(std::max(dernier_.premier, v), rangs::BitsGardes::borne_max);
  constexpr std::int64_t un_peu_plus =
      30'000;  // a kilobyte of bits, so that the first ones are made once
  gardes_.etendre(
      std::max({v, std::min(2 * v, utile), std::min(v + v / 4 + un_peu_plus, toujours_gardes)}));
  return true;
}

/// The prime of a rank behind or before the anchor.
Place Table::depuis_une_ancre(const Place& ancre, std::int64_t rang, const Suivi& suivi) {
  if (rang == ancre.rang) return ancre;
  const std::int64_t premier =
      rang > ancre.rang ? rangs::premier_apres(ancre.premier, rang - ancre.rang, suivi)
                        : rangs::premier_avant(ancre.premier - 1, ancre.rang - rang, suivi);
  return retenir({rang, premier});
}

/// The prime of a rank by a count at the place where it should be.
Place Table::par_un_compte(std::int64_t rang, std::int64_t estime, const Suivi& suivi) {
  const auto x = static_cast<double>(estime);
  const double part = rangs::cout_compte(x) / rangs::cout_par_un_compte(x);
  const auto n = static_cast<std::int64_t>(
      compte::nombre_premiers(static_cast<std::uint64_t>(estime), etape(suivi, 0, part)));
  const Suivi fin_du_travail = etape(suivi, part, 1);
  const std::int64_t premier = rang > n
                                   ? rangs::premier_apres(estime, rang - n, fin_du_travail)
                                   : rangs::premier_avant(estime, n - rang + 1, fin_du_travail);
  return retenir({rang, premier});
}

/// The prime of any rank, known or not, 1 <= rang <= fin.rang.
Place Table::trouver_rang(std::int64_t rang, const Suivi& suivi) {
  if (rang <= gardes_.nombre()) return {rang, gardes_.premier(rang)};
  const Place ancre = ancre_la_plus_proche([&](const Place& p) { return ecart(p.rang, rang); });
  const std::int64_t estime = rangs::inverse_de_riemann(rang);
  const auto x = static_cast<double>(estime);
  const double saut = rangs::cout_saut(ecart(rang, ancre.rang), x);
  const double compte = rangs::cout_par_un_compte(x);
  if (estime <= rangs::BitsGardes::borne_max &&
      (rang <= dernier_.rang || estime < toujours_gardes)) {
    // One percent and a little more than the estimate, so that the prime is surely among the bits.
    constexpr std::int64_t marge = 1000;
    if (lire_les_bits(estime + estime / 100 + marge, std::min(saut, compte))) {
      return {rang, gardes_.premier(rang)};
    }
  }
  return saut < compte ? depuis_une_ancre(ancre, rang, suivi) : par_un_compte(rang, estime, suivi);
}

/// The largest prime <= v with its rank, known or not, 2 <= v.
Place Table::trouver_valeur(std::int64_t v, const Suivi& suivi) {
  const Place ancre = ancre_la_plus_proche([&](const Place& p) { return ecart(p.premier, v); });
  if (ancre.premier == v) return ancre;
  const auto x = static_cast<double>(v);
  const double saut = rangs::cout_intervalle(ecart(v, ancre.premier), x);
  const double compte = rangs::cout_compte(x);
  if (v <= dernier_.premier || v < toujours_gardes) {
    if (lire_les_bits(v, std::min(saut, compte))) {
      const std::int64_t rang = gardes_.rang(v);
      return {rang, gardes_.premier(rang)};
    }
  }
  std::int64_t rang = ancre.rang;
  if (saut >= compte) {
    rang = static_cast<std::int64_t>(compte::nombre_premiers(static_cast<std::uint64_t>(v), suivi));
  } else if (ancre.premier < v) {
    rang += rangs::compter_premiers({ancre.premier + 1, v}, suivi, rangs::memoire_des_rangs);
  } else {
    rang -= rangs::compter_premiers({v + 1, ancre.premier}, suivi, rangs::memoire_des_rangs);
  }
  return retenir({rang, rangs::premier_avant(v, 1)});
}

Place Table::lire(std::int64_t rang, const Suivi& suivi) {
  if (rang == 0) return {0, 0};
  if (rang == dernier_.rang) return dernier_;
  return trouver_rang(rang, suivi);
}

Place Table::jusqu_a(std::int64_t v, const Suivi& suivi) {
  if (v >= dernier_.premier) return dernier_;
  if (v < 2) return {0, 0};
  return trouver_valeur(v, suivi);
}

void Table::etendre_au_rang(std::int64_t rang, const Suivi& suivi) {
  if (rang > dernier_.rang) dernier_ = trouver_rang(rang, suivi);
}

void Table::etendre_au_dela(std::int64_t borne, const Suivi& suivi) {
  if (borne < dernier_.premier) return;
  const Place place = trouver_valeur(borne, suivi);
  dernier_ = trouver_rang(place.rang + 1, {});
}

rangs::SuiteDePremiers Table::suite(std::int64_t debut, std::int64_t nombre,
                                    std::int64_t borne) const {
  return {gardes_, debut, nombre, std::min(borne, dernier_.premier)};
}

rangs::SuiteDePremiers Table::suivants(std::int64_t nombre, std::int64_t borne) const {
  return {gardes_, dernier_.premier + 1, nombre, borne};
}

}  // namespace premiers
