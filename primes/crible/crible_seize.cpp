// SPDX-License-Identifier: MIT
// A prime is put where its multiples will be walked; a row is walked sixteen or eight primes at a time.
#include "primes/crible/crible_seize.h"

#include <algorithm>
#include <cassert>

#include "primes/arithmetique/quotient.h"
#include "primes/arithmetique/roue.h"
#include "primes/crible/multiple_initial.h"

namespace premiers::crible {

namespace {

/// The smallest cofactor of the wheel that makes a composite multiple.
constexpr std::uint64_t cofacteur_initial = 11;

// Multiples of one prime in a segment at most, counted on the wheel of 30.
constexpr std::size_t par_premier = (CribleSeize::taille_segment / CribleSeize::debut + 1) * 8;

}  // namespace

bool CribleSeize::vaut() {
  static const bool oui = choisir(versions_de_marcher()).besoin != instructions::aucune;
  return oui;
}

void CribleSeize::ajouter(std::uint32_t p, std::uint64_t octet, std::uint64_t octet_fin) {
  assert(p > debut && p < 1U << 24);
  const std::uint64_t origine = 30 * octet;
  std::uint64_t q = std::max(quotient_superieur(origine, p), cofacteur_initial);
  const std::uint64_t reste = q % roue_210::module;
  const std::uint32_t indice = roue_210::suivants[reste];
  q += roue_210::valeurs[indice] - reste;
  const std::uint64_t place = (p * q - origine) / 30;
  if (place >= octet_fin - octet) return;
  multiples_.resize(Marcheurs::places * par_premier + 16);  // once
  Rangee& rangee = rangees_[indice_suivant[p % 30]];
  if (rangee.dans_le_dernier == Marcheurs::places) {
    rangee.blocs.push_back(std::make_unique_for_overwrite<Marcheurs>());
    rangee.dans_le_dernier = 0;
  }
  Marcheurs& bloc = *rangee.blocs.back();
  bloc.etat[rangee.dans_le_dernier] = p / 30 << Marcheurs::ou_k | indice;
  bloc.place[rangee.dans_le_dernier] = static_cast<std::uint32_t>(place << Marcheurs::ou_octet);
  ++rangee.dans_le_dernier;
}

void CribleSeize::cribler(std::span<std::uint8_t> segment) {
  assert(segment.size() <= taille_segment);
  std::uint8_t* const octets = segment.data();
  const auto taille = static_cast<std::uint32_t>(segment.size());
  const std::uint32_t* const multiples = multiples_.data();
  for (std::size_t r = 0; r < rangees_.size(); ++r) {
    const Rangee& rangee = rangees_[r];
    for (const auto& bloc : rangee.blocs) {
      const bool au_bout = &bloc == &rangee.blocs.back();
      const std::size_t dedans = au_bout ? rangee.dans_le_dernier : Marcheurs::places;
      const std::size_t n = marcher(*bloc, dedans, r, taille, multiples_.data());
      for (std::size_t i = 0; i < n; ++i) {
        octets[multiples[i] >> Marcheurs::ou_octet] &= static_cast<std::uint8_t>(multiples[i]);
      }
    }
  }
}

}  // namespace premiers::crible
