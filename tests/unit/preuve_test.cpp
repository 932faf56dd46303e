// SPDX-License-Identifier: MIT
// Proofs of primality. Primes are published ones or found by NTL's own Miller-Rabin test, which
// shares no code with the proofs; composites are built to look prime.
#include "primes/facteurs/preuve.h"

#include <NTL/ZZ.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <initializer_list>

#include "primes/facteurs/pont_pari.h"

namespace premiers::facteurs {
namespace {

using NTL::power2_ZZ;
using NTL::ZZ;

bool est_dans(std::initializer_list<long> liste, long x) {
  return std::find(liste.begin(), liste.end(), x) != liste.end();
}

TEST(Preuve, SmallIntegersAsByDivision) {
  for (long n = -3; n < 3000; ++n) {
    bool premier = n > 1;
    for (long d = 2; d * d <= n; ++d) premier = premier && n % d != 0;
    EXPECT_EQ(est_premier_prouve(ZZ{n}), premier) << n;
    EXPECT_EQ(pari::est_premier_prouve(ZZ{n}), premier) << n;
  }
}

TEST(Preuve, MersenneNumbers) {  // the exponents: OEIS A000043
  for (long p = 2; p <= 660; ++p) {
    EXPECT_EQ(est_premier_prouve(power2_ZZ(p) - 1),
              est_dans({2, 3, 5, 7, 13, 17, 19, 31, 61, 89, 107, 127, 521, 607}, p))
        << p;
  }
}

TEST(PreuveLent, FactorialsPlusAndMinusOne) {  // OEIS A002981 and A002982
  ZZ factorielle{1};
  for (long n = 2; n <= 120; ++n) {
    factorielle *= n;
    EXPECT_EQ(est_premier_prouve(factorielle + 1), est_dans({2, 3, 11, 27, 37, 41, 73, 77, 116}, n))
        << n;
    EXPECT_EQ(est_premier_prouve(factorielle - 1),
              est_dans({3, 4, 6, 7, 12, 14, 30, 32, 33, 38, 94}, n))
        << n;
  }
}

TEST(Preuve, ThreeTimesAPowerOfTwoPlusOne) {  // OEIS A002253
  for (long n = 1; n <= 600; ++n) {
    EXPECT_EQ(
        est_premier_prouve(3 * power2_ZZ(n) + 1),
        est_dans({1, 2, 5, 6, 8, 12, 18, 30, 36, 41, 66, 189, 201, 209, 276, 353, 408, 438, 534},
                 n))
        << n;
  }
}

TEST(PreuveLent, RandomPrimesOfEveryLength) {
  NTL::SetSeed(ZZ{31});
  for (long bits = 76; bits <= 200; bits += 4) {
    for (int i = 0; i < 4; ++i) {
      const ZZ p = NTL::GenPrime_ZZ(bits);
      EXPECT_TRUE(est_premier_prouve(p)) << p;
    }
  }
}

TEST(PreuveLent, APrimeOf199Digits) {
  const ZZ p = NTL::NextPrime(NTL::power(ZZ{10}, 198), 20);
  EXPECT_TRUE(est_premier_prouve(p)) << p;
}

// p (2p - 1) passes the test of Miller and Rabin for a quarter of all bases, the most there are.
TEST(Preuve, CompositesThatLookPrime) {
  NTL::SetSeed(ZZ{32});
  for (const long bits : {42L, 60L, 100L, 150L}) {
    ZZ p;
    do {
      p = NTL::GenPrime_ZZ(bits);
    } while (!NTL::ProbPrime(2 * p - 1));
    EXPECT_FALSE(est_premier_prouve(p * (2 * p - 1))) << p;
    EXPECT_FALSE(pari::est_premier_prouve(p * (2 * p - 1))) << p;
    EXPECT_FALSE(est_premier_prouve(p * p)) << p;
    EXPECT_FALSE(pari::est_premier_prouve(p * p)) << p;
  }
}

}  // namespace
}  // namespace premiers::facteurs
