// SPDX-License-Identifier: MIT
// The quadratic sieve on products of two primes of equal size, by decimal digits.
// PARI 2.15 for comparison (factor, numbers of the same kind, 2.6 GHz EPYC): 24 digits 0.8 ms,
// 30 2.0, 36 7.9, 40 22, 50 243, 60 2100.
#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <vector>

#include "primes/facteurs/facteurs64.h"
#include "primes/quadratique/crible_quadratique.h"

namespace {

// Sixteen numbers of exactly so many digits, always the same.
std::vector<NTL::ZZ> nombres(long chiffres) {
  NTL::SetSeed(NTL::ZZ(chiffres));
  const NTL::ZZ bas = NTL::power_ZZ(10, chiffres - 1);
  const auto bits = static_cast<long>(static_cast<double>(chiffres) * 3.3219 / 2);
  std::vector<NTL::ZZ> liste;
  while (liste.size() < 16) {
    const NTL::ZZ n = NTL::GenPrime_ZZ(bits) * NTL::GenPrime_ZZ(bits + 1);
    if (n >= bas && n < 10 * bas) liste.push_back(n);
  }
  return liste;
}

std::uint64_t scinder(std::uint64_t m) { return premiers::facteurs::plus_petit_facteur(m); }

void facteur(benchmark::State& state) {
  const std::vector<NTL::ZZ> liste = nombres(state.range(0));
  std::size_t i = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(
        premiers::quadratique::facteur_quadratique(liste[i++ % liste.size()], {}, scinder));
  }
}

BENCHMARK(facteur)->Unit(benchmark::kMillisecond)->Arg(24)->Arg(30)->Arg(36)->Arg(40)->Arg(50);
BENCHMARK(facteur)->Unit(benchmark::kMillisecond)->Arg(60)->Iterations(4);

}  // namespace
