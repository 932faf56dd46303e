// SPDX-License-Identifier: MIT
// Starting the kept primes, and the one loop that they live in.
#include "primes/crible/crible_garde.h"

#include <algorithm>
#include <bit>

#include "primes/arithmetique/roue.h"
#include "primes/crible/premier_multiple.h"
#include "primes/crible/roue_30030.h"

namespace premiers {

namespace {

// An entry, from its lowest bit: the byte of the multiple in its segment; index of p mod 30; index of
// the cofactor mod 30030; p / 30.
constexpr unsigned ou_residu = CribleGarde::log_segment;
constexpr unsigned ou_roue = ou_residu + 3;
constexpr unsigned ou_k = ou_roue + 13;
static_assert(roue_30030::nombre <= 1u << (ou_k - ou_roue));

constexpr std::uint64_t masque_place = CribleGarde::taille_segment - 1;
constexpr std::uint64_t masque_residu = std::uint64_t{7} << ou_residu;
constexpr std::uint64_t masque_roue = (std::uint64_t{1} << (ou_k - ou_roue)) - 1;

// Entries from asking for a line of the segment to writing on it. 8 to 32 are alike.
constexpr std::ptrdiff_t avance = 16;

/// The buckets needed: from the current one to the farthest that a step reaches.
std::size_t seaux_pour(std::uint64_t borne) {
  const std::uint64_t pas_max = (borne / 30 + 1) * (roue_30030::plus_long_pas + 2);
  return std::bit_ceil((pas_max >> CribleGarde::log_segment) + 3);
}

}  // namespace

CribleGarde::CribleGarde(std::uint64_t octet, std::uint64_t octet_fin, std::uint64_t borne)
    : debut_(octet),
      segment_(0),
      nombre_((octet_fin - octet + taille_segment - 1) >> log_segment) {
  const std::size_t seaux = std::min(seaux_pour(borne), std::bit_ceil(nombre_));
  masque_ = seaux - 1;
  seaux_.preparer(seaux);
}

std::uint64_t CribleGarde::memoire(double nombre, std::uint64_t borne) {
  return static_cast<std::uint64_t>(nombre) * sizeof(std::uint64_t) +
         seaux_pour(borne) * Blocs::taille_bloc;
}

void CribleGarde::ajouter(std::uint32_t p) {
  const std::uint64_t debut = 30 * debut_;
  const auto cofacteur = roue_30030::a_partir_de(quotient_superieur(debut, p));
  const std::uint64_t octet = (cofacteur.q * p - debut) / 30;
  const std::uint64_t segment = segment_ + (octet >> log_segment);
  if (segment >= nombre_) return;
  jeter(segment, (octet & masque_place) |
                     std::uint64_t{indice_suivant[p % 30]} << ou_residu |
                     std::uint64_t{cofacteur.indice} << ou_roue | std::uint64_t{p / 30} << ou_k);
}

void CribleGarde::rayer(std::span<std::uint8_t> segment) {
  std::uint8_t* const octets = segment.data();
  seaux_.vider(segment_ & masque_, [&](const std::uint64_t* e, const std::uint64_t* fin) {
    for (; e != fin; ++e) {
      __builtin_prefetch(octets + (*std::min(e + avance, fin - 1) & masque_place), 1);
      const std::uint64_t k = *e >> ou_k;
      std::uint64_t indice = *e >> ou_roue & masque_roue;
      const std::uint64_t residu = *e & masque_residu;
      const std::uint32_t pas = roue_30030::pas[indice];
      const auto croix = roue_30030::croix[(residu >> (ou_residu - 7)) + pas];
      octets[*e & masque_place] &= croix.masque;
      const std::uint64_t place = (*e & masque_place) + k * (2 * (pas % 16)) + croix.retenue;
      const std::uint64_t ou = segment_ + (place >> log_segment);
      if (ou >= nombre_) continue;
      indice = indice + 1 == roue_30030::nombre ? 0 : indice + 1;
      jeter(ou, (place & masque_place) | residu | indice << ou_roue | k << ou_k);
    }
  });
  ++segment_;
  debut_ += taille_segment;
}

}  // namespace premiers
