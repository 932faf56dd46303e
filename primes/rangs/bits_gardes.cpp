// SPDX-License-Identifier: MIT
#include "primes/rangs/bits_gardes.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>

#include "primes/arithmetique/bits.h"
#include "primes/crible/crible.h"

namespace premiers {

namespace {

constexpr std::size_t octets_par_ligne = 64;

/// 2, 3 and 5, which have no flag.
constexpr std::array<std::int64_t, 4> premiers_sans_bit{0, 2, 3, 5};
constexpr std::int64_t nombre_sans_bit = 3;

}  // namespace

void BitsGardes::etendre(std::int64_t borne, const Suivi& suivi) {
  if (borne <= this->borne()) return;
  const std::size_t avant = octets_.size();
  // A quarter more than there is at least, so that many small steps cost no more than one.
  constexpr auto octets_max = static_cast<std::size_t>((borne_max + 1) / 30);
  const std::size_t voulus =
      std::max(static_cast<std::size_t>(borne / 30 + 1), avant + avant / 4);
  const std::size_t taille = std::min(
      (voulus + octets_par_ligne - 1) / octets_par_ligne * octets_par_ligne, octets_max);
  constexpr std::size_t un_mio = std::size_t{1} << 20;
  if (taille > un_mio) octets_.reserve(octets_max);  // no second copy; pages cost as they are used
  octets_.resize(taille);
  const std::span<std::uint8_t> nouveaux = std::span{octets_}.subspan(avant);
  try {
    Crible(avant, taille).remplir(nouveaux, suivi);
    avant_.resize(taille / octets_par_ligne);
  } catch (...) {
    octets_.resize(avant);
    throw;
  }
  const std::span<std::uint32_t> lignes = std::span{avant_}.subspan(avant / octets_par_ligne);
  const auto deja = static_cast<std::uint32_t>(std::max(nombre_ - nombre_sans_bit, std::int64_t{0}));
  const std::uint32_t dedans = compter_par_ligne(nouveaux.data(), lignes);
  for (std::uint32_t& n : lignes) n += deja;
  nombre_ = nombre_sans_bit + deja + dedans;
}

std::int64_t BitsGardes::premier(std::int64_t rang) const {
  if (rang <= nombre_sans_bit) return premiers_sans_bit[static_cast<std::size_t>(rang)];
  const auto n = static_cast<std::uint32_t>(rang - nombre_sans_bit);
  const auto ligne = static_cast<std::size_t>(
      std::lower_bound(avant_.begin() + 1, avant_.end(), n) - avant_.begin() - 1);
  const std::size_t o = ligne * octets_par_ligne;
  const PlaceDuBit place = place_du_bit(octets_.data() + o, n - avant_[ligne]);
  return static_cast<std::int64_t>(
      (o + 8 * place.mot) * 30 +
      valeurs_bits[static_cast<std::size_t>(std::countr_zero(place.reste))]);
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

}  // namespace premiers
