// SPDX-License-Identifier: MIT
#include "primes/facteurs/facteurs.h"

#include <algorithm>
#include <utility>

#include "primes/quadratique/crible_quadratique.h"
#include "primes/facteurs/facteurs128.h"
#include "primes/facteurs/facteurs64.h"
#include "primes/facteurs/petits_facteurs.h"
#include "primes/facteurs/pont_pari.h"
#include "primes/facteurs/preuve.h"
#include "primes/facteurs/puissance.h"
#include "primes/arithmetique/zz.h"

namespace premiers {
namespace {

constexpr long bits_ecm128 = 110;
constexpr long bits_crible = 300;

void ajouter(Facteurs& facteurs, const NTL::ZZ& premier, std::int64_t exposant) {
  const auto place =
      std::lower_bound(facteurs.begin(), facteurs.end(), premier,
                       [](const Facteur& f, const NTL::ZZ& p) { return f.premier < p; });
  if (place != facteurs.end() && place->premier == premier) {
    place->exposant += exposant;
  } else {
    facteurs.insert(place, {premier, exposant});
  }
}

NTL::ZZ diviser(const NTL::ZZ& n, const Suivi& suivi) {
  const long bits = NTL::NumBits(n);
  if (bits <= bits_ecm128) {
    if (const auto f = facteur_ecm(en_entier128(n), 400)) return en_zz(*f);
  }
  if (bits > 128) {
    if (auto f = pari::facteur_ecm(n, bits / 10, 1000, 1)) return *f;
  }
  if (bits <= bits_crible) {
    if (const auto f = facteur_quadratique(n, suivi)) return *f;
  }
  return pari::diviseurs_premiers(n).front();
}

void decomposer_reste(Facteurs& facteurs, const NTL::ZZ& n, std::int64_t exposant,
                      const Suivi& suivi) {
  if (n == 1) return;
  if (NTL::NumBits(n) <= 64) {
    for (const auto& [p, e] : premiers::facteurs(en_entier64(n))) {
      ajouter(facteurs, en_zz(p), e * exposant);
    }
    return;
  }
  if (est_premier_prouve(n, suivi)) return ajouter(facteurs, n, exposant);
  if (const auto p = puissance_parfaite(n)) {
    return decomposer_reste(facteurs, p->base, exposant * p->exposant, suivi);
  }
  const NTL::ZZ d = diviser(n, suivi);
  decomposer_reste(facteurs, d, exposant, suivi);
  decomposer_reste(facteurs, n / d, exposant, suivi);
}

}  // namespace

Facteurs decomposer(const NTL::ZZ& N, const Suivi& suivi) {
  Facteurs facteurs;
  if (NTL::NumBits(N) <= 64) {
    for (const auto& [p, e] : premiers::facteurs(en_entier64(N))) facteurs.push_back({en_zz(p), e});
    return facteurs;
  }
  NTL::ZZ reste = N;
  for (const auto& [p, e] : retirer_petits_facteurs(reste)) facteurs.push_back({en_zz(p), e});
  decomposer_reste(facteurs, reste, 1, suivi);
  return facteurs;
}

}  // namespace premiers
