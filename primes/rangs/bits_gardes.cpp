// SPDX-License-Identifier: MIT
// Growing by lines of 64 bytes, and the two searches (bits_gardes.h).
#include "primes/rangs/bits_gardes.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <utility>

#include "primes/arithmetique/bits.h"
#include "primes/crible/crible.h"

namespace premiers::rangs {

namespace {

constexpr std::size_t octets_par_ligne = 64;
constexpr auto octets_max = static_cast<std::size_t>((BitsGardes::borne_max + 1) / 30);
static_assert(octets_max % octets_par_ligne == 0);

/// A mark for so many flags: some forty lines.
constexpr std::size_t pas_repere = 4096;

/// 2, 3 and 5, which have no flag.
constexpr std::array<std::int64_t, 4> premiers_sans_bit{0, 2, 3, 5};
constexpr std::int64_t nombre_sans_bit = 3;

}  // namespace

/// Room for so many bytes: a little at first, then at once for all that will ever be kept. What is
/// never written costs no memory.
void BitsGardes::faire_place(std::size_t taille) {
  if (taille <= capacite_) return;
  constexpr std::size_t un_peu = std::size_t{1} << 20;
  const std::size_t capacite = taille <= un_peu ? un_peu : octets_max;
  auto octets = std::make_unique_for_overwrite<std::uint8_t[]>(capacite);
  std::copy_n(octets_.get(), taille_, octets.get());
  octets_ = std::move(octets);
  capacite_ = capacite;
}

void BitsGardes::etendre(std::int64_t borne) {
  if (borne <= this->borne()) return;
  const auto voulus = static_cast<std::size_t>(borne / 30 + 1);
  const std::size_t lignes = (voulus + octets_par_ligne - 1) / octets_par_ligne;
  const std::size_t taille = lignes * octets_par_ligne;
  faire_place(taille);
  const std::span<std::uint8_t> nouveaux(octets_.get() + taille_, taille - taille_);
  crible::Crible(taille_, taille).remplir(nouveaux);
  const std::size_t avant = avant_.size();
  avant_.resize(lignes);
  const std::span<std::uint32_t> neuves = std::span{avant_}.subspan(avant);
  const std::int64_t dedans = compter_par_ligne(nouveaux.data(), neuves);
  if (nombre_ == 0) nombre_ = nombre_sans_bit;
  for (std::uint32_t& n : neuves) n += static_cast<std::uint32_t>(nombre_ - nombre_sans_bit);
  nombre_ += dedans;
  taille_ = taille;
  poser_reperes();
}

/// The line of the n-th flag, between two lines.
std::size_t BitsGardes::ligne(std::uint32_t n, std::size_t initiale, std::size_t finale) const {
  const auto debut = avant_.begin() + static_cast<std::ptrdiff_t>(initiale);
  const auto fin = avant_.begin() + static_cast<std::ptrdiff_t>(finale);
  return initiale + static_cast<std::size_t>(std::lower_bound(debut + 1, fin + 1, n) - debut - 1);
}

void BitsGardes::poser_reperes() {
  const auto drapeaux = static_cast<std::size_t>(nombre_ - nombre_sans_bit);
  std::size_t finale = reperes_.empty() ? 0 : reperes_.back();
  while (reperes_.size() * pas_repere < drapeaux) {
    const auto n = static_cast<std::uint32_t>(reperes_.size() * pas_repere + 1);
    finale = ligne(n, finale, avant_.size() - 1);
    reperes_.push_back(static_cast<std::uint32_t>(finale));
  }
}

std::int64_t BitsGardes::premier(std::int64_t rang) const {
  if (rang <= nombre_sans_bit) return premiers_sans_bit[static_cast<std::size_t>(rang)];
  const auto n = static_cast<std::uint32_t>(rang - nombre_sans_bit);
  const std::size_t repere = (n - 1) / pas_repere;
  const std::size_t fin = repere + 1 < reperes_.size() ? reperes_[repere + 1] : avant_.size() - 1;
  const std::size_t l = ligne(n, reperes_[repere], fin);
  const std::size_t o = l * octets_par_ligne;
  const PlaceDuBit place = place_du_bit(octets_.get() + o, n - avant_[l]);
  return static_cast<std::int64_t>(valeur(o, place));
}

std::int64_t BitsGardes::rang(std::int64_t v) const {
  if (v < 7) {
    return std::upper_bound(premiers_sans_bit.begin(), premiers_sans_bit.end(), v) -
           premiers_sans_bit.begin() - 1;
  }
  const auto octet = static_cast<std::size_t>(v / 30);
  const std::size_t ligne = octet / octets_par_ligne;
  const std::size_t debut = ligne * octets_par_ligne;
  const unsigned dernier = octets_[octet] & drapeaux_jusqu_a(static_cast<std::uint64_t>(v % 30));
  return nombre_sans_bit + avant_[ligne] +
         static_cast<std::int64_t>(compter_bits(octets().subspan(debut, octet - debut))) +
         std::popcount(dernier);
}

}  // namespace premiers::rangs
