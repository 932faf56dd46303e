// SPDX-License-Identifier: MIT
// Fermat's method against products that are made to be within its reach, and just beyond.
#include "primes/facteurs/fermat.h"

#include <NTL/ZZ.h>
#include <gtest/gtest.h>

#include <optional>

namespace premiers::facteurs {
namespace {

using NTL::ZZ;

TEST(Fermat, FindsFactorsWhoseRatioIsNearlyThatOfTwoSmallIntegers) {
  NTL::SetSeed(ZZ{7});
  for (long u = 1; u <= 8; ++u) {
    for (long v = 1; v <= 8; ++v) {
      for (const long bits : {40L, 90L, 200L}) {
        const ZZ r = NTL::RandomLen_ZZ(bits);
        // v q lies some u or v times the gaps of primes, thousands at most, above u p.
        const ZZ p = NTL::NextPrime(v * r);
        const ZZ q = NTL::NextPrime(u * r);
        if (p == q) continue;
        const auto f = facteur_de_fermat(p * q);
        ASSERT_TRUE(f.has_value()) << p << " * " << q;
        EXPECT_TRUE(*f == p || *f == q) << *f;
      }
    }
  }
}

TEST(Fermat, FindsToTheEndOfWhatItPromisesAndNoFurther) {
  // n = (x - y) (x + y): the first square above 4 n is that of 2 x as long as y^2 < x.
  const ZZ x = NTL::power2_ZZ(80);
  const ZZ y = NTL::power2_ZZ(40);
  EXPECT_EQ(facteur_de_fermat((x - (y - 1)) * (x + (y - 1))), x - (y - 1));
  // Two primes without a simple ratio.
  EXPECT_EQ(facteur_de_fermat(NTL::NextPrime(113 * x) * NTL::NextPrime(355 * x)), std::nullopt);
}

TEST(Fermat, SplitsWhatIsLeftOf2To254Less1) {
  const ZZ n = (NTL::power2_ZZ(254) - 1) / 3;
  const auto f = facteur_de_fermat(n);
  ASSERT_TRUE(f.has_value());
  EXPECT_TRUE(*f == NTL::power2_ZZ(127) - 1 || *f == (NTL::power2_ZZ(127) + 1) / 3) << *f;
}

TEST(Fermat, GivesNothingOfPrimesAndOnlyProperFactors) {
  EXPECT_FALSE(facteur_de_fermat(NTL::power2_ZZ(127) - 1).has_value());
  NTL::SetSeed(ZZ{8});
  for (int i = 0; i < 500; ++i) {
    const ZZ n = 2 * NTL::RandomLen_ZZ(30) + 1;
    const auto f = facteur_de_fermat(n);
    if (!f) continue;
    EXPECT_GT(*f, 1);
    EXPECT_LT(*f, n);
    EXPECT_EQ(n % *f, 0);
  }
}

}  // namespace
}  // namespace premiers::facteurs
