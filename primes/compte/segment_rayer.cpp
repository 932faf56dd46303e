// SPDX-License-Identifier: MIT
// Crossing the multiples of one prime off a segment that counts: a loop for each residue modulo 30.
#include <array>
#include <bit>
#include <utility>

#include "primes/arithmetique/roue.h"
#include "primes/compte/segment.h"

namespace premiers::compte {

namespace {

static_assert(std::endian::native == std::endian::little, "bytes and words share the sieve");

// The multiples of primes 30 k + residus[R], by the residue of the cofactor
// (primes/arithmetique/roue.h).
struct TableCroix {
  std::array<std::uint8_t, 8> bits{};
  std::array<std::uint8_t, 8> decalages{};
  std::array<std::uint8_t, 8> retenues{};
};
template <std::size_t R>
constexpr TableCroix croix = [] {
  TableCroix t{};
  [&t]<std::size_t... C>(std::index_sequence<C...>) {
    ((t.bits[C] = indice_suivant[Croix<R, C>::produit % 30]), ...);
    ((t.decalages[C] = Croix<R, C>::decalage), ...);
    ((t.retenues[C] = Croix<R, C>::retenue), ...);
  }
  (std::make_index_sequence<8>{});
  return t;
}();

// Clears flags and keeps the counts.
struct Gomme {
  std::uint8_t* octets;
  std::uint16_t* blocs;
  std::uint32_t effaces = 0;

  [[gnu::always_inline]] void effacer(std::uint32_t octet, unsigned bit) {
    const std::uint32_t present = (octets[octet] >> bit) & 1u;
    std::uint16_t& bloc = blocs[octet / SegmentCompte::octets_par_bloc];
    octets[octet] &= static_cast<std::uint8_t>(~(1u << bit));
    bloc = static_cast<std::uint16_t>(bloc - present);
    effaces += present;
  }

  // A full turn of the wheel for q = 30 k + residus[R], from the multiple by cofactor residue 1 on.
  template <std::size_t R, std::size_t... C>
  [[gnu::always_inline]] void effacer_tour(std::uint32_t octet, std::uint32_t k,
                                           std::index_sequence<C...>) {
    (effacer(octet + k * (residus[C] - residus[0]) + croix<R>.decalages[C], croix<R>.bits[C]), ...);
  }
};

// Multiple by multiple up to a cofactor residue 1, eight at a time, and the rest one by one.
template <std::size_t R>
void rayer_residu(SegmentCompte& s, Multiple& multiple) {
  Gomme gomme{reinterpret_cast<std::uint8_t*>(s.mots.data()), s.blocs.data()};
  const auto taille = static_cast<std::uint32_t>(8 * s.mots.size());
  const std::uint32_t k = multiple.q / 30;
  std::uint32_t o = multiple.octet;
  std::uint32_t c = multiple.cofacteur;
  for (; c != 0 && o < taille; c = (c + 1) % 8) {
    gomme.effacer(o, croix<R>.bits[c]);
    o += k * ecarts[c] + croix<R>.retenues[c];
  }
  const std::uint32_t tour = k * (residus[7] - residus[0]) + croix<R>.decalages[7];
  for (; o + tour < taille; o += multiple.q) {
    gomme.effacer_tour<R>(o, k, std::make_index_sequence<8>{});
  }
  for (; o < taille; c = (c + 1) % 8) {
    gomme.effacer(o, croix<R>.bits[c]);
    o += k * ecarts[c] + croix<R>.retenues[c];
  }
  multiple.octet = o - taille;
  multiple.cofacteur = static_cast<std::uint8_t>(c);
  s.total -= gomme.effaces;
}

}  // namespace

Multiple Multiple::initial(std::uint32_t q, std::uint64_t octet_bas) {
  const std::uint64_t cofacteur = (30 * octet_bas + q - 1) / q;
  const std::uint8_t c = indice_suivant[static_cast<std::size_t>(cofacteur % 30)];
  const std::uint64_t multiple = (cofacteur / 30 * 30 + residus[c]) * q;
  return {q, static_cast<std::uint32_t>(multiple / 30 - octet_bas), c};
}

void SegmentCompte::rayer(Multiple& multiple) {
  switch (indice_suivant[multiple.q % 30]) {
    case 0:
      return rayer_residu<0>(*this, multiple);
    case 1:
      return rayer_residu<1>(*this, multiple);
    case 2:
      return rayer_residu<2>(*this, multiple);
    case 3:
      return rayer_residu<3>(*this, multiple);
    case 4:
      return rayer_residu<4>(*this, multiple);
    case 5:
      return rayer_residu<5>(*this, multiple);
    case 6:
      return rayer_residu<6>(*this, multiple);
    default:
      return rayer_residu<7>(*this, multiple);
  }
}

}  // namespace premiers::compte
