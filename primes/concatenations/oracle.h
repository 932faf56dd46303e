// SPDX-License-Identifier: MIT
// Who tells which of ten numbers are prime: the decades that are looked up (primes/crible/decades.h),
// windows of decades where a search goes through so many long pieces that sieving pays, and a test
// (primes/primalite/primalite.h) for the rest.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <type_traits>

#include "primes/arithmetique/zz.h"
#include "primes/concatenations/chiffres.h"
#include "primes/concatenations/commun.h"
#include "primes/concatenations/tailles.h"
#include "primes/crible/decades.h"

namespace premiers::concatenations {

template <typename Taille>
struct Oracle {
  using Valeur = typename Taille::Valeur;

  /// For pieces of the numbers debut .. fin, of n digits both.
  Oracle(Commun& commun, const std::string& debut, const std::string& fin);

  /// Which of 10 v + 1, 3, 7, 9 are prime, v > 0, right for the last digits `voulus`. The piece begins
  /// after `place` digits; `au_bout`: it ends with the last digit of its number.
  unsigned demander(const Valeur& v, std::size_t place, bool au_bout, Chiffres voulus) {
    if constexpr (std::is_same_v<Taille, Petits>) {
      if (v < commun_.decades.nombre()) return commun_.decades[v];
      // Before the last digit the pieces are shorter, and ten times fewer.
      if (const auto& fenetres = fenetres_[place]; fenetres && au_bout) {
        return fenetres->demander(v, commun_.pendant_un_crible);
      }
    } else if (NTL::NumBits(v) < 64 && en_entier64(v) < commun_.decades.nombre()) {
      return commun_.decades[en_entier64(v)];
    }
    return tester(v, voulus);
  }

 private:
  unsigned tester(const Valeur& v, Chiffres voulus);

  Commun& commun_;
  /// For the cuts behind which so long pieces are met in so wide a range that sieving pays.
  std::array<std::unique_ptr<crible::DecadesGlissantes>, Taille::chiffres_max> fenetres_;
};

}  // namespace premiers::concatenations
