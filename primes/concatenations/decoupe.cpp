// SPDX-License-Identifier: MIT
// The tests of all pieces and the sum from the last digit backward; why so, decoupe.h tells.
#include "primes/concatenations/decoupe.h"

#include "primes/arithmetique/zz.h"
#include "primes/primalite/primalite.h"

namespace premiers::concatenations {

namespace {

/// The lengths of the prime pieces that begin after t digits.
std::vector<std::size_t> longueurs_premieres(std::string_view chiffres, std::size_t t,
                                             const Suivi& suivi) {
  const auto n = static_cast<double>(chiffres.size());
  const auto avant = static_cast<double>(t) * (2 * n - static_cast<double>(t) + 1) / 2;
  std::vector<std::size_t> longueurs;
  NTL::ZZ morceau;
  for (std::size_t u = 1; u <= chiffres.size() - t; ++u) {
    morceau = 10 * morceau + (chiffres[t + u - 1] - '0');
    if (primalite::est_premier(morceau)) longueurs.push_back(u);
    if (suivi) suivi((avant + static_cast<double>(u)) / (n * (n + 1) / 2));
  }
  return longueurs;
}

}  // namespace

NTL::ZZ valeur_des_chiffres(std::string_view chiffres) {
  NTL::ZZ valeur;
  for (const char c : chiffres) valeur = 10 * valeur + (c - '0');
  return valeur;
}

Decoupe decouper(const NTL::ZZ& N, const Suivi& suivi) {
  Decoupe decoupe{en_decimal(N), {}, {}};
  const std::size_t n = decoupe.chiffres.size();
  decoupe.longueurs.resize(n);
  decoupe.chemins.resize(n + 1);
  for (std::size_t t = 0; t < n; ++t) {
    decoupe.longueurs[t] = longueurs_premieres(decoupe.chiffres, t, suivi);
    if (decoupe.longueurs.front().empty()) return decoupe;
  }
  decoupe.chemins[n] = 1;
  for (std::size_t t = n; t-- > 0;) {
    for (const std::size_t u : decoupe.longueurs[t]) decoupe.chemins[t] += decoupe.chemins[t + u];
  }
  return decoupe;
}

}  // namespace premiers::concatenations
