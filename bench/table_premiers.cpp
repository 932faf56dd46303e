// SPDX-License-Identifier: MIT
// The bare engine, without the dialogue: the table of primes, its reading, and the sieve.
//
//   table_premiers table BOUND    the table of all primes up to a bound: how many, and the last
//   table_premiers lire RANK      what reading the table costs, one "name value" a line: random
//                                 access and walking (ns), memory for each integer covered (bytes)
//   table_premiers crible A B     the number of primes in [A, B] by sieving
#include <malloc.h>

#include <algorithm>
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

void construire(std::int64_t borne) {
  Table table;
  table.etendre_au_dela(borne - 1);  // the first prime above the integer before
  std::printf("%lld %lld\n", static_cast<long long>(table.np()),
              static_cast<long long>(table.dernier()));
}

/// Nanoseconds of processor time for each of `fois` things that f does.
template <typename F>
double ns_par(std::int64_t fois, F f) {
  const std::clock_t debut = std::clock();
  f();
  const double duree = static_cast<double>(std::clock() - debut) / CLOCKS_PER_SEC;
  return duree * 1e9 / static_cast<double>(fois);
}

/// What the program has taken from the heap and not given back, pages of the system included.
double octets_pris() {
  const auto info = mallinfo2();
  return static_cast<double>(info.uordblks) + static_cast<double>(info.hblkhd);
}

/// The largest number of bytes for each integer covered, met while a table grows from 10^7 to a
/// rank.
double octets_par_entier(Table& table, std::int64_t rang) {
  const double avant = octets_pris();
  double pire = 0;
  for (std::int64_t borne = 10'000'000; table.np() < rang; borne += borne / 4) {
    table.etendre_au_dela(borne);
    const auto couverts = static_cast<double>(table.dernier());
    pire = std::max(pire, (octets_pris() - avant) / couverts);
  }
  return pire;
}

void lire(std::int64_t rang) {
  Table table;
  const double octets = octets_par_entier(table, rang);

  constexpr std::int64_t acces = 2'000'000;
  std::mt19937_64 hasard(1);
  std::uniform_int_distribution<std::int64_t> rangs(1, rang);
  std::vector<std::int64_t> demandes(acces);
  for (auto& demande : demandes) demande = rangs(hasard);
  std::uint64_t somme = 0;
  const double ns_acces = ns_par(acces, [&] {
    for (const auto demande : demandes) somme += static_cast<std::uint64_t>(table[demande]);
  });
  const double ns_marche = ns_par(rang, [&] {
    table.parcourir(1, rang, [&](std::int64_t, std::int64_t premier) {
      somme += static_cast<std::uint64_t>(premier);
    });
  });
  std::printf("acces_ns %.3f\nmarche_ns %.4f\noctets_par_entier %.5f\nsomme %llu\n", ns_acces,
              ns_marche, octets, static_cast<unsigned long long>(somme));
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) return 2;
  const std::string_view travail = argv[1];
  if (travail == "table") {
    construire(std::atoll(argv[2]));
  } else if (travail == "lire") {
    lire(std::atoll(argv[2]));
  } else if (travail == "crible" && argc == 4) {
    const auto a = std::strtoull(argv[2], nullptr, 10);
    const auto b = std::strtoull(argv[3], nullptr, 10);
    std::printf("%llu\n", static_cast<unsigned long long>(premiers::compter_par_crible(a, b)));
  } else {
    return 2;
  }
}
