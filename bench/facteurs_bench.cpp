// SPDX-License-Identifier: MIT
// Primality and factorisation by size: the argument is the number of bits of n.
#include <NTL/ZZ.h>
#include <benchmark/benchmark.h>

#include <cstdint>
#include <random>
#include <vector>

#include "primes/arithmetique/zz.h"
#include "primes/facteurs/facteurs128.h"
#include "primes/facteurs/facteurs64.h"
#include "primes/primalite/primalite.h"

namespace premiers::facteurs {
namespace {

constexpr std::size_t nombre_de_n = 512;

std::uint64_t premier_au_hasard(std::mt19937_64& g, int taille) {
  const std::uint64_t sommet = std::uint64_t{1} << (taille - 1);
  for (;;) {
    const std::uint64_t p = (g() & (sommet - 1)) | sommet | 1;
    if (primalite::est_premier(p)) return p;
  }
}

/// Products of two different primes of equal size, of exactly `taille` bits.
std::vector<Entier128> produits(int taille) {
  std::mt19937_64 g{static_cast<std::uint64_t>(taille)};
  std::vector<Entier128> n;
  while (n.size() < nombre_de_n) {
    const Entier128 p = premier_au_hasard(g, taille / 2);
    const Entier128 q = premier_au_hasard(g, taille - taille / 2);
    if (p != q && bits(p * q) == taille) n.push_back(p * q);
  }
  return n;
}

/// Times `calcul` on one n after the other.
template <class Entier, class Calcul>
void parcourir(benchmark::State& etat, const std::vector<Entier>& n, Calcul calcul) {
  std::size_t i = 0;
  for (auto _ : etat) {
    benchmark::DoNotOptimize(calcul(n[i]));
    i = i + 1 < n.size() ? i + 1 : 0;
  }
}

void BM_FacteursDeuxPremiers(benchmark::State& etat) {
  parcourir(etat, produits(static_cast<int>(etat.range(0))),
            [](Entier128 n) { return facteurs(bas(n)); });
}
BENCHMARK(BM_FacteursDeuxPremiers)->DenseRange(32, 64, 4);

void BM_FacteursAuHasard(benchmark::State& etat) {
  std::mt19937_64 g{1};
  std::vector<std::uint64_t> n(20000);
  for (auto& x : n) x = g() >> (64 - etat.range(0));
  parcourir(etat, n, [](std::uint64_t x) { return facteurs(x); });
}
BENCHMARK(BM_FacteursAuHasard)->DenseRange(16, 64, 16);

void BM_FacteurEcm(benchmark::State& etat) {
  parcourir(etat, produits(static_cast<int>(etat.range(0))),
            [](Entier128 n) { return facteur_ecm(n, 10000); });
}
BENCHMARK(BM_FacteurEcm)->DenseRange(48, 104, 8);

void BM_FacteurEcmPortable(benchmark::State& etat) {
  parcourir(etat, produits(static_cast<int>(etat.range(0))),
            [](Entier128 n) { return versions_de_facteur_ecm().back().boucle(n, 10000); });
}
BENCHMARK(BM_FacteurEcmPortable)->DenseRange(48, 96, 8);

void BM_EstPremierSurPremiers(benchmark::State& etat) {
  std::vector<NTL::ZZ> n(100);
  for (auto& x : n) NTL::GenPrime(x, etat.range(0), 20);
  if (etat.range(0) > 64)
    return parcourir(etat, n, [](const NTL::ZZ& x) { return primalite::est_premier(x); });
  std::vector<std::uint64_t> mots;
  for (const auto& x : n) mots.push_back(en_entier64(x));
  parcourir(etat, mots, [](std::uint64_t x) { return primalite::est_premier(x); });
}
BENCHMARK(BM_EstPremierSurPremiers)
    ->Arg(20)
    ->Arg(32)
    ->Arg(64)
    ->Arg(80)
    ->Arg(128)
    ->Arg(330)
    ->Arg(660);

void BM_EstPremierSurImpairs(benchmark::State& etat) {
  std::vector<NTL::ZZ> n(1000);
  for (auto& x : n) x = 2 * NTL::RandomLen_ZZ(etat.range(0) - 1) + 1;
  if (etat.range(0) > 64)
    return parcourir(etat, n, [](const NTL::ZZ& x) { return primalite::est_premier(x); });
  std::vector<std::uint64_t> mots;
  for (const auto& x : n) mots.push_back(en_entier64(x));
  parcourir(etat, mots, [](std::uint64_t x) { return primalite::est_premier(x); });
}
BENCHMARK(BM_EstPremierSurImpairs)->Arg(32)->Arg(64)->Arg(80)->Arg(128)->Arg(330)->Arg(660);

}  // namespace
}  // namespace premiers::facteurs
