// SPDX-License-Identifier: MIT
// Filling the buckets of a round, and emptying them.
#include "primes/crible/crible_grand.h"

#include <algorithm>
#include <bit>
#include <functional>

#include "primes/arithmetique/bits.h"
#include "primes/arithmetique/racines.h"
#include "primes/arithmetique/roue.h"
#include "primes/crible/crible.h"
#include "primes/crible/touches.h"

namespace premiers {

namespace {

// Bytes of a bucket's segment: should be the segment that fits the L2 cache.
constexpr unsigned log_seau = 19;
constexpr std::size_t taille_seau = std::size_t{1} << log_seau;

// The shortest round that the memory is cut down to.
constexpr std::uint64_t tour_min = std::uint64_t{1} << 20;

// The first round of a window that is longer than the longest is this part of it: perhaps no more is
// ever asked for.
constexpr std::uint64_t part_du_premier = 4;

// Beyond the width of the round candidates need not be prime, only free of small factors. The wider
// the round, the more multiples a false candidate has in it, and the deeper it pays to sieve. Found
// by measurement: 1000 is best for 10^7 integers, 8000 for 10^8 and more.
constexpr std::uint64_t plafond_candidats(std::uint64_t largeur) {
  return std::clamp<std::uint64_t>(largeur / 10000, 500, 8000);
}

// Bytes of candidates at a time.
constexpr std::uint64_t taille_candidats = std::uint64_t{1} << 15;

/// Calls f(bytes, number of the first byte) for the sieved bytes that hold the numbers a to b.
template <class F>
void pour_chaque_segment(std::uint64_t a, std::uint64_t b, std::uint64_t plafond, F&& f) {
  std::uint64_t octet = a / 30;
  const std::uint64_t fin = b / 30 + 1;
  Crible crible(octet, fin, plafond);
  std::vector<std::uint8_t> segment(taille_candidats);
  while (octet < fin) {
    const auto octets = std::span{segment}.first(std::min(taille_candidats, fin - octet));
    crible.remplir(octets);
    f(std::span<const std::uint8_t>{octets}, octet);
    octet += octets.size();
  }
}

/// ceil(n / p) for 2^19 < p < 2^32: the quotient in double precision is off by one at most.
inline std::uint64_t quotient_superieur(std::uint64_t n, std::uint64_t p) {
  const double quotient = static_cast<double>(static_cast<std::int64_t>(n)) /
                          static_cast<double>(static_cast<std::int64_t>(p));
  auto q = static_cast<std::uint64_t>(static_cast<std::int64_t>(quotient));
  const auto reste = static_cast<std::int64_t>(n - q * p);
  const auto ecart = static_cast<std::int64_t>(p);
  q += static_cast<std::uint64_t>(reste > 0) + static_cast<std::uint64_t>(reste > ecart);
  q -= static_cast<std::uint64_t>(reste <= -ecart);
  return q;
}

}  // namespace

CribleGrand::CribleGrand(std::uint64_t octet, std::uint64_t octet_fin, std::uint64_t memoire)
    : fin_(octet_fin),
      debut_tour_(octet),
      fin_tour_(octet),
      tour_max_(std::clamp(std::bit_floor(memoire / octets_par_octet), tour_min, tour_max)),
      longueur_(octet_fin - octet <= tour_max_ ? tour_max_ : tour_max_ / part_du_premier) {}

/// Writes the multiples of p in the round, by cofactors coprime to 30, into the buckets.
inline void CribleGrand::noter_multiples(std::uint64_t p) {
  const std::uint64_t debut = 30 * debut_tour_;
  const std::uint64_t largeur = 30 * (fin_tour_ - debut_tour_);
  const std::uint64_t q = quotient_superieur(debut, p);
  const std::uint64_t reste = q % 30;
  std::size_t c = indice_suivant[reste];
  std::uint64_t m = q * p - debut + (residus[c] - reste) * p;  // multiple, from the round's start
  while (m < largeur) {
    const auto octet = static_cast<std::uint32_t>(m) / 30;
    const std::uint32_t bit = indice_suivant[static_cast<std::uint32_t>(m) - 30 * octet];
    seaux_.jeter(octet >> log_seau, 8 * octet + bit);
    m += p * ecarts[c];
    c = (c + 1) % 8;
  }
}

/// The same for a candidate that is at least as large as the round is wide: one multiple at most.
/// Whether its cofactor is coprime to 30 cannot be guessed, so it is no branch.
inline void CribleGrand::noter_multiple(std::uint64_t p) {
  const std::uint64_t debut = 30 * debut_tour_;
  const std::uint64_t q = quotient_superieur(debut, p);
  const std::uint64_t m = q * p - debut;
  if (m >= 30 * (fin_tour_ - debut_tour_)) return;
  const auto octet = static_cast<std::uint32_t>(m) / 30;
  const std::uint32_t reste = static_cast<std::uint32_t>(m) - 30 * octet;
  const std::size_t bit = indice_suivant[reste];
  seaux_.jeter_si(octet >> log_seau, 8 * octet + static_cast<std::uint32_t>(bit),
                  residus[bit] == reste);
}

void CribleGrand::ouvrir_tour(const Annonce& annoncer) {
  const std::uint64_t longueur = std::min(longueur_, fin_ - fin_tour_);
  debut_tour_ = fin_tour_;
  fin_tour_ += longueur;
  longueur_ = std::min(2 * longueur_, tour_max_);
  seaux_.preparer((longueur - 1) / taille_seau + 1);
  const Fenetre fenetre{30 * debut_tour_, 30 * fin_tour_};
  const std::uint64_t racine = racine_carree(fenetre.fin - 1);
  const auto dire = [&](std::uint64_t octet) {
    if (annoncer) annoncer(debut_tour_ + longueur * (30 * octet) / (racine + 30));
  };

  // Up to the width of the round each prime has multiples in it.
  const std::uint64_t limite =
      std::clamp(fenetre.fin - fenetre.debut, premier_grand, std::max(premier_grand, racine));
  pour_chaque_segment(premier_grand, limite, limite, [&](auto octets, std::uint64_t octet) {
    dire(octet);
    pour_chaque_premier(octets, octet, [&](std::uint64_t p) { noter_multiples(p); });
  });
  if (limite >= racine) return;
  std::vector<std::uint32_t> candidats(8 * taille_candidats + 8);
  const std::uint64_t plafond = plafond_candidats(fenetre.fin - fenetre.debut);
  pour_chaque_segment(limite, racine, plafond, [&](auto octets, std::uint64_t octet) {
    dire(octet);
    const std::size_t n = touches(octets, octet, fenetre, candidats.data());
    for (std::size_t i = 0; i < n; ++i) noter_multiple(candidats[i]);
  });
}

/// Crosses off what the current bucket has for the segment, which starts at byte `place` of the
/// round; returns how many bytes of the segment are done.
std::size_t CribleGrand::vider_seau(std::span<std::uint8_t> segment, std::size_t place) {
  const auto rayer = [&](const std::uint32_t* e, const std::uint32_t* fin_entrees) {
    for (; e != fin_entrees; ++e) {
      std::uint8_t& octet = segment[(*e >> 3) - place];
      octet = static_cast<std::uint8_t>(octet & ~(1u << (*e & 7)));
    }
  };
  const std::size_t numero = place >> log_seau;
  const std::size_t fin_seau =
      std::min<std::size_t>((numero + 1) << log_seau, fin_tour_ - debut_tour_);
  const std::size_t fin = std::min(fin_seau, place + segment.size());
  if (place % taille_seau == 0) {
    if (fin == fin_seau) {
      seaux_.vider(numero, rayer);
      return fin - place;
    }
    // The bucket is wanted in pieces: sorted, they follow on one another.
    tries_.clear();
    seaux_.vider(numero, [&](const std::uint32_t* e, const std::uint32_t* fin_entrees) {
      tries_.insert(tries_.end(), e, fin_entrees);
    });
    std::sort(tries_.begin(), tries_.end(), std::greater<>{});
  }
  const auto suivante = std::lower_bound(tries_.rbegin(), tries_.rend(), 8 * fin);
  const auto n = static_cast<std::size_t>(tries_.rend() - suivante);
  rayer(tries_.data() + n, tries_.data() + tries_.size());
  tries_.resize(n);
  return fin - place;
}

void CribleGrand::cribler(std::span<std::uint8_t> segment, std::uint64_t octet,
                          const Annonce& annoncer) {
  while (!segment.empty()) {
    if (octet == fin_tour_) ouvrir_tour(annoncer);
    const std::size_t n = vider_seau(segment, octet - debut_tour_);
    segment = segment.subspan(n);
    octet += n;
  }
}

}  // namespace premiers
