// SPDX-License-Identifier: MIT
// One estimated interval after the other, while primes are missing (suite_de_premiers.h).
#include "primes/rangs/suite_de_premiers.h"

#include <algorithm>

#include "primes/rangs/memoire.h"
#include "primes/rangs/riemann.h"

namespace premiers::rangs {

SuiteDePremiers::SuiteDePremiers(const BitsGardes& gardes, std::int64_t debut, std::int64_t nombre,
                                 std::int64_t fin)
    : gardes_(gardes), debut_(std::max<std::int64_t>(debut, 1)), reste_(nombre), fin_(fin) {}

/// Opens the next interval: up to the bound, or where the primes still wanted should end.
void SuiteDePremiers::ouvrir() {
  const double largeur = largeur_pour(static_cast<double>(reste_),
                                      static_cast<double>(std::max<std::int64_t>(debut_, 2)));
  const auto possible = static_cast<double>(fin_ - debut_);
  const std::int64_t fin =
      largeur < possible ? std::min(debut_ + static_cast<std::int64_t>(largeur), fin_) : fin_;
  const Intervalle bornes{debut_, fin};
  if (fin <= gardes_.borne()) {
    lots_.emplace(bornes, gardes_.octets());
  } else {
    lots_.emplace(bornes, memoire_des_rangs);
  }
  debut_ = fin == sans_limite ? fin : fin + 1;
}

std::span<const std::uint64_t> SuiteDePremiers::suivant(const Suivi& suivi) {
  for (;;) {
    if (reste_ == 0) return {};
    if (!lots_) {
      if (debut_ > fin_) return {};
      ouvrir();
    }
    const auto lot = lots_->suivant(suivi);
    if (lot.empty()) {
      if (debut_ == sans_limite) return {};
      lots_.reset();
      continue;
    }
    const auto pris =
        static_cast<std::size_t>(std::min(reste_, static_cast<std::int64_t>(lot.size())));
    reste_ -= static_cast<std::int64_t>(pris);
    return lot.first(pris);
  }
}

}  // namespace premiers::rangs
