// SPDX-License-Identifier: MIT
// The prime count by powers of ten, each part of it at 10^13, and the plain method.
#include <benchmark/benchmark.h>

#include <cstdint>

#include "primes/compte/compte.h"
#include "primes/compte/difficiles.h"
#include "primes/compte/faciles.h"
#include "primes/compte/lucy.h"
#include "primes/compte/p2.h"
#include "primes/compte/phi.h"

namespace premiers::compte {
namespace {

std::uint64_t puissance_de_dix(std::int64_t k) {
  std::uint64_t x = 1;
  for (; k > 0; --k) x *= 10;
  return x;
}

void nombre_premiers_10_puissance(benchmark::State& state) {
  const std::uint64_t x = puissance_de_dix(state.range(0));
  for (auto _ : state) benchmark::DoNotOptimize(nombre_premiers(x));
}
BENCHMARK(nombre_premiers_10_puissance)->DenseRange(2, 15)->Unit(benchmark::kMillisecond);

void compte_lucy_10_puissance(benchmark::State& state) {
  const std::uint64_t x = puissance_de_dix(state.range(0));
  for (auto _ : state) benchmark::DoNotOptimize(compte_lucy(x));
}
BENCHMARK(compte_lucy_10_puissance)->DenseRange(2, 12, 2)->Unit(benchmark::kMillisecond);

template <typename Partie>
void mesurer(benchmark::State& state, Partie partie) {
  const Plan plan(puissance_de_dix(13), 130'000, 130'000);
  for (auto _ : state) benchmark::DoNotOptimize(partie(plan));
}
BENCHMARK_CAPTURE(mesurer, ordinaires, [](const Plan& p) {
  return feuilles_ordinaires(p);
})->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(mesurer, faciles, [](const Plan& p) {
  return feuilles_faciles(p);
})->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(mesurer, difficiles, [](const Plan& p) {
  return feuilles_difficiles(p);
})->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(mesurer, p2, [](const Plan& p) {
  return compte_p2(p);
})->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace premiers::compte
