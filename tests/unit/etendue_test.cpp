// SPDX-License-Identifier: MIT
// The smallest factors of integers in a row, against division by one prime after the other.
#include "primes/facteurs/etendue.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <initializer_list>
#include <vector>

namespace premiers::facteurs {
namespace {

using NTL::ZZ;

/// The primes up to 10^7, by the sieve of Eratosthenes.
const std::vector<long>& premiers() {
  static const std::vector<long> liste = [] {
    std::vector<bool> compose(10'000'001);
    std::vector<long> l;
    for (std::size_t n = 2; n < compose.size(); ++n) {
      if (compose[n]) continue;
      l.push_back(static_cast<long>(n));
      for (std::size_t m = n * n; m < compose.size(); m += n) compose[m] = true;
    }
    return l;
  }();
  return liste;
}

std::uint32_t facteur(const ZZ& N, std::uint64_t au_dela_de) {
  for (const long p : premiers()) {
    if (static_cast<std::uint64_t>(p) > au_dela_de && N % p == 0) {
      return static_cast<std::uint32_t>(p);
    }
  }
  return 0;
}

void comparer(const ZZ& debut, std::size_t nombre, std::uint64_t au_dela_de = 0) {
  const Etendue etendue(debut, nombre, au_dela_de);
  ASSERT_EQ(etendue.nombre(), nombre);
  for (std::size_t i = 0; i < nombre; ++i) {
    const ZZ N = debut + static_cast<long>(i);
    ASSERT_EQ(etendue[i], facteur(N, au_dela_de)) << N << " above " << au_dela_de;
  }
}

TEST(Etendue, SmallIntegers) {
  comparer(ZZ{1}, 3000);
  comparer(ZZ{9'999'900}, 200);
  comparer(ZZ{9'999'991}, 1);            // the last prime below the bound: its own factor
  comparer(ZZ{10'000'019}, 1);           // the first behind it: none
  comparer(ZZ{99'999'820'000'081}, 1);   // 9999991^2
  comparer(ZZ{100'000'380'000'361}, 1);  // 10000019^2
}

TEST(Etendue, AnyNumberOfThem) {
  NTL::SetSeed(ZZ{5});
  for (const std::size_t nombre : std::initializer_list<std::size_t>{0, 1, 2, 3, 31, 32, 33}) {
    for (const long bits : {3, 27, 28, 29, 56, 57, 64, 101, 333}) {
      comparer(NTL::RandomLen_ZZ(bits), nombre);
    }
  }
}

TEST(Etendue, LongIntegers) {
  for (const long exposant : {24, 31, 60, 100, 198}) {
    comparer(NTL::power_ZZ(10, exposant) - 20, 40);
    comparer(NTL::power_ZZ(2, 3 * exposant) - 1, 20);
  }
}

TEST(EtendueLent, FactorsAboveABoundAlone) {
  const ZZ debut = NTL::power_ZZ(10, 50);
  for (const std::uint64_t borne : {2ULL, 3ULL, 4ULL, 1000ULL, 131ULL, 9'000'000ULL, 9'999'973ULL,
                                    9'999'990ULL, 9'999'991ULL, 10'000'000ULL, 20'000'000ULL}) {
    comparer(debut, 30, borne);
    comparer(ZZ{9'999'991} * 9'999'973, 1, borne);
  }
}

// The primes go through in groups: products of two neighbours wherever a group may end.
TEST(Etendue, NoPrimeIsLeftOut) {
  const auto& p = premiers();
  ASSERT_EQ(p.size(), 664'579U);                  // OEIS A006880
  const ZZ cofacteur = NTL::power_ZZ(2, 61) - 1;  // a prime
  for (const std::size_t rang : std::initializer_list<std::size_t>{
           0, 1, 30, 31, 32, 33, 95, 96, 97, 223, 224, 4095, 4096, 4097, 8159, 8160, 8191, 8192}) {
    for (const std::size_t i : {rang, p.size() - 1 - rang, p.size() / 2 + rang}) {
      EXPECT_EQ(Etendue(cofacteur * p[i], 1)[0], p[i]) << i;
      EXPECT_EQ(Etendue(cofacteur * p[i] - 3, 7)[3], p[i]) << i;
    }
  }
}

// One run over a wide stretch against runs of one integer each, which stop early.
TEST(Etendue, AWideStretchAgreesWithItsParts) {
  const ZZ debut = NTL::power_ZZ(10, 40) + 99'000;
  constexpr std::size_t nombre = 100'000;
  const Etendue etendue(debut, nombre);
  for (std::size_t i = 0; i < nombre; i += i % 2 == 0 ? 97 : 98) {
    ASSERT_EQ(etendue[i], Etendue(debut + static_cast<long>(i), 1)[0]) << i;
  }
}

}  // namespace
}  // namespace premiers::facteurs
