// SPDX-License-Identifier: MIT
// The bare engine, without the dialogue: reading the low part of the table of primes, and the sieve.
//
//   moteur lire RANK      what reading costs once the bits up to that rank are kept, one "name value"
//                         a line: random access and walking (ns)
//   moteur crible A B     the number of primes in [A, B] by sieving
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <random>
#include <string_view>
#include <vector>

#include "primes/crible/crible.h"
#include "primes/table.h"

namespace {

using premiers::Table;

/// Nanoseconds of processor time for each of `fois` things that f does.
template <typename F>
double ns_par(std::int64_t fois, F f) {
  const std::clock_t debut = std::clock();
  f();
  const double duree = static_cast<double>(std::clock() - debut) / CLOCKS_PER_SEC;
  return duree * 1e9 / static_cast<double>(fois);
}

void lire(std::int64_t rang) {
  Table table;
  table.etendre_au_rang(rang);
  std::mt19937_64 hasard(1);
  std::uniform_int_distribution<std::int64_t> rangs(1, rang);
  std::uint64_t somme = 0;
  for (int i = 0; i < 10'000; ++i) somme += static_cast<std::uint64_t>(table[rangs(hasard)]);

  constexpr std::int64_t acces = 2'000'000;
  std::vector<std::int64_t> demandes(acces);
  for (auto& demande : demandes) demande = rangs(hasard);
  const double ns_acces = ns_par(acces, [&] {
    for (const auto demande : demandes) somme += static_cast<std::uint64_t>(table[demande]);
  });
  const double ns_marche = ns_par(rang, [&] {
    auto premiers = table.suite(2, rang, table.dernier());
    for (auto lot = premiers.suivant(); !lot.empty(); lot = premiers.suivant()) {
      for (const std::uint64_t premier : lot) somme += premier;
    }
  });
  std::printf("acces_ns %.3f\nmarche_ns %.4f\nsomme %llu\n", ns_acces, ns_marche,
              static_cast<unsigned long long>(somme));
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) return 2;
  const std::string_view travail = argv[1];
  if (travail == "lire") {
    lire(std::atoll(argv[2]));
  } else if (travail == "crible" && argc == 4) {
    const auto a = std::strtoull(argv[2], nullptr, 10);
    const auto b = std::strtoull(argv[3], nullptr, 10);
    std::printf("%llu\n",
                static_cast<unsigned long long>(premiers::crible::compter_par_crible(a, b)));
  } else {
    return 2;
  }
}
