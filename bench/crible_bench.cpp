// SPDX-License-Identifier: MIT
// Speed of the sieve: counting primes in low, middle and high windows, and what a tiny one costs.
#include <benchmark/benchmark.h>

#include <cstdint>

#include "primes/crible/crible.h"

namespace premiers::crible {
namespace {

void compter(benchmark::State& etat, std::uint64_t a, std::uint64_t b) {
  for (auto _ : etat) benchmark::DoNotOptimize(compter_par_crible(a, b));
  etat.SetItemsProcessed(etat.iterations() * static_cast<std::int64_t>(b - a));
}

BENCHMARK_CAPTURE(compter, trente_mille, 0, 30'000)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(compter, dix_8, 0, 100'000'000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(compter, dix_9, 0, 1'000'000'000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(compter, deux_32, 0, 4'294'967'311)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(compter, dix_9_a_dix_12, 1'000'000'000'000, 1'001'000'000'000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(compter, dix_9_a_dix_15, 1'000'000'000'000'000, 1'000'001'000'000'000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(compter, dix_8_a_dix_18, 1'000'000'000'000'000'000, 1'000'000'000'100'000'000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(compter, dix_7_a_deux_63, 9'223'372'036'844'775'807, 9'223'372'036'854'775'807)
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace premiers::crible
