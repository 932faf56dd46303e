// SPDX-License-Identifier: MIT
// Starting the kept primes, and the one loop that they live in.
#include "primes/crible/crible_garde.h"

#include <algorithm>
#include <bit>

#include "primes/arithmetique/quotient.h"
#include "primes/arithmetique/roue.h"
#include "primes/crible/roue_30030.h"

namespace premiers::crible {

namespace {

// An entry, from its lowest bit: the byte of the multiple in its segment; index of p mod 30; index of
// the cofactor mod 30030; p / 30.
constexpr unsigned ou_residu = CribleGarde::log_segment;
constexpr unsigned ou_roue = ou_residu + 3;
constexpr unsigned ou_k = ou_roue + 13;
static_assert(roue_30030::nombre <= 1u << (ou_k - ou_roue));

constexpr std::uint64_t masque_place = CribleGarde::taille_segment - 1;
constexpr std::uint64_t masque_roue = (std::uint64_t{1} << (ou_k - ou_roue)) - 1;
// What never changes in an entry.
constexpr std::uint64_t masque_fixe = ~(masque_place | masque_roue << ou_roue);

// Entries from asking for a line of the segment to writing on it. 8 to 32 are alike.
constexpr std::ptrdiff_t avance = 16;

/// The buckets needed: from the current one to the farthest that a step reaches.
std::size_t seaux_pour(std::uint64_t borne) {
  const std::uint64_t pas_max = (borne / 30 + 1) * (roue_30030::plus_long_pas + 2);
  return std::bit_ceil((pas_max >> CribleGarde::log_segment) + 3);
}

}  // namespace

CribleGarde::CribleGarde(std::uint64_t octet, std::uint64_t octet_fin, std::uint64_t borne)
    : debut_(octet), fin_(octet_fin), segment_(0) {
  const std::uint64_t segments = (octet_fin - octet + taille_segment - 1) >> log_segment;
  const std::size_t seaux = std::min(seaux_pour(borne), std::bit_ceil(segments));
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
  const std::uint64_t place = (cofacteur.q * p - debut) / 30;
  if (place >= fin_ - debut_) return;
  const std::uint64_t residu = indice_suivant[p % 30];
  seaux_.jeter((segment_ + (place >> log_segment)) & masque_,
               (place & masque_place) | residu << ou_residu |
                   std::uint64_t{cofacteur.indice} << ou_roue | std::uint64_t{p / 30} << ou_k);
}

void CribleGarde::rayer(std::span<std::uint8_t> segment) {
  // Copies: as far as the compiler knows, a byte crossed off may be one of ours.
  std::uint8_t* const octets = segment.data();
  const std::uint64_t ici = segment_;
  const std::uint64_t masque = masque_;
  const std::uint64_t reste = fin_ - debut_;
  const auto rayer_un = [&](std::uint64_t entree) {
    const std::uint64_t k = entree >> ou_k;
    const std::uint64_t indice = entree >> ou_roue & masque_roue;
    const std::uint64_t residu = entree >> ou_residu & 7;
    const std::uint32_t ecart = roue_30030::ecarts[indice];
    const auto croix = roue_30030::croix[128 * residu + ecart];
    octets[entree & masque_place] &= croix.masque;
    const std::uint64_t place = (entree & masque_place) + k * (2 * (ecart % 16)) + croix.retenue;
    if (place >= reste) return;
    const std::uint64_t suivant = indice + 1 == roue_30030::nombre ? 0 : indice + 1;
    seaux_.jeter((ici + (place >> log_segment)) & masque,
                 (place & masque_place) | (entree & masque_fixe) | suivant << ou_roue);
  };
  seaux_.vider(ici & masque, [&](const std::uint64_t* e, const std::uint64_t* fin) {
    for (; fin - e > avance; ++e) {
      __builtin_prefetch(octets + (e[avance] & masque_place), 1);
      rayer_un(*e);
    }
    for (; e != fin; ++e) rayer_un(*e);
  });
  ++segment_;
  debut_ += std::min<std::uint64_t>(taille_segment, reste);
}

}  // namespace premiers::crible
