// SPDX-License-Identifier: MIT
// The sums W of report.h, and for which of ten numbers they are the same.
#include "primes/concatenations/report.h"

#include <algorithm>

namespace premiers::concatenations {

template <typename Taille>
void Report<Taille>::fixer(std::size_t m, const Morceaux& morceaux) {
  morceaux_[m] = morceaux;
  departs_au_plus_tot_[m] = std::min(departs_au_plus_tot_[m - 1], morceaux.plus_petit());
}

template <typename Taille>
void Report<Taille>::commencer_dizaine(std::size_t n) {
  n_ = n;
  couverts_communs_ = false;
}

template <typename Taille>
typename Taille::Compte Report<Taille>::chemins(const Morceaux& derniers, bool& entree) {
  const std::size_t depart = std::min(departs_au_plus_tot_[n_ - 1], derniers.plus_petit());
  entree = depart != Morceaux::aucun;
  if (derniers.plus_petit() == Morceaux::aucun) return Compte(0);
  // Most of the ten numbers differ in nothing but the last step.
  const bool comme_les_autres =
      depart == departs_au_plus_tot_[n_ - 1] && !derniers.contient(depart);
  if (!comme_les_autres || !couverts_communs_) {
    morceaux_[n_] = derniers;
    couvrir(depart);
  }
  couverts_communs_ = comme_les_autres;
  Compte chemins(0);
  derniers.pour_chaque(depart + 1, [&](std::size_t j) { chemins += couverts_[j]; });
  return chemins;
}

/// couverts_[m] = W[m] for s <= m < n.
template <typename Taille>
void Report<Taille>::couvrir(std::size_t depart) {
  const std::size_t s = depart + 1;
  for (std::size_t m = s; m < n_; ++m) {
    couverts_[m] = depart + m <= n_ && morceaux_[depart + m].contient(depart) ? 1 : 0;
    morceaux_[m].pour_chaque(s, [&](std::size_t j) { couverts_[m] += couverts_[j]; });
  }
}

template struct Report<Petits>;
template struct Report<Grands>;

}  // namespace premiers::concatenations
