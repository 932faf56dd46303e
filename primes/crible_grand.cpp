// SPDX-License-Identifier: MIT
// Filling the buckets of a round, and emptying them.
#include "primes/crible_grand.h"

#include <algorithm>

#include "primes/bits.h"
#include "primes/crible.h"
#include "primes/racine.h"
#include "primes/roue.h"
#include "primes/touches.h"

namespace premiers {

namespace {

// Bytes of a bucket's segment: should be the segment that fits the L2 cache.
constexpr unsigned log_seau = 18;
constexpr std::size_t taille_seau = std::size_t{1} << log_seau;

// Bytes of the longest round. Longer rounds go through the large primes less often, but take up to
// 20 times as much memory.
constexpr std::uint64_t tour_max = std::uint64_t{1} << 23;

// The first round of a window that is longer than tour_max: perhaps no more is ever asked for.
constexpr std::uint64_t premier_tour = tour_max / 8;

// Beyond the width of the round candidates need not be prime, only free of factors up to this.
constexpr std::uint64_t plafond_candidats = 1000;

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
  q += static_cast<std::uint64_t>(reste > 0) +
       static_cast<std::uint64_t>(reste > static_cast<std::int64_t>(p));
  q -= static_cast<std::uint64_t>(reste <= -static_cast<std::int64_t>(p));
  return q;
}

}  // namespace

CribleGrand::CribleGrand(std::uint64_t octet, std::uint64_t octet_fin)
    : fin_(octet_fin),
      debut_tour_(octet),
      fin_tour_(octet),
      longueur_(octet_fin - octet <= tour_max ? tour_max : premier_tour) {}

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
    seaux_[octet >> log_seau].push_back(8 * octet + bit);
    m += p * ecarts[c];
    c = (c + 1) % 8;
  }
}

void CribleGrand::ouvrir_tour(const Annonce& annoncer) {
  const std::uint64_t longueur = std::min(longueur_, fin_ - fin_tour_);
  debut_tour_ = fin_tour_;
  fin_tour_ += longueur;
  longueur_ = std::min(2 * longueur_, tour_max);
  seaux_.resize((longueur - 1) / taille_seau + 1);
  const Fenetre fenetre{30 * debut_tour_, 30 * fin_tour_};
  const std::uint64_t racine = racine_entiere(fenetre.fin - 1);
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
  pour_chaque_segment(limite, racine, plafond_candidats, [&](auto octets, std::uint64_t octet) {
    dire(octet);
    const std::size_t n = touches(octets, octet, fenetre, candidats.data());
    for (std::size_t i = 0; i < n; ++i) noter_multiples(candidats[i]);
  });
}

/// Crosses off what the current bucket has for the segment, which starts at byte `place` of the
/// round; returns how many bytes of the segment are done.
std::size_t CribleGrand::vider_seau(std::span<std::uint8_t> segment, std::size_t place) {
  const std::size_t numero = place >> log_seau;
  const std::size_t fin_seau =
      std::min<std::size_t>((numero + 1) << log_seau, fin_tour_ - debut_tour_);
  const std::size_t fin = std::min(fin_seau, place + segment.size());
  std::vector<std::uint32_t>& seau = seaux_[numero];
  // A segment that ends within the bucket's finds its entries in front once they are sorted.
  if (fin < fin_seau && place % taille_seau == 0) std::sort(seau.begin(), seau.end());
  std::size_t n = seau.size();
  if (fin < fin_seau) {
    const auto suivante = std::lower_bound(seau.begin(), seau.end(), 8 * fin);
    n = static_cast<std::size_t>(suivante - seau.begin());
  }
  for (std::size_t i = entame_; i < n; ++i) {
    const std::uint32_t e = seau[i];
    std::uint8_t& octet = segment[(e >> 3) - place];
    octet = static_cast<std::uint8_t>(octet & ~(1u << (e & 7)));
  }
  entame_ = n;
  if (fin == fin_seau) {
    seau.clear();
    entame_ = 0;
  }
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
