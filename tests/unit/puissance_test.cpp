// SPDX-License-Identifier: MIT
#include "primes/facteurs/puissance.h"

#include <NTL/ZZ.h>
#include <gtest/gtest.h>

namespace premiers::facteurs {
namespace {

using NTL::power;
using NTL::ZZ;

TEST(PuissanceParfaite, EveryExponentIsSeenByItsSmallestPrime) {
  for (const long base : {2011L, 2017L, 65537L, 4294967291L, 1000003L * 1000033L}) {
    for (long e = 2; e <= 40; ++e) {
      long q = 2;
      while (e % q != 0) ++q;
      const auto p = puissance_parfaite(power(ZZ{base}, e));
      ASSERT_TRUE(p.has_value()) << base << '^' << e;
      EXPECT_EQ(p->exposant, q);
      EXPECT_EQ(p->base, power(ZZ{base}, e / q));
    }
  }
}

TEST(PuissanceParfaite, NeighboursOfPowersAreNone) {  // P. Mihailescu: only 8 and 9 are neighbours
  for (const long base : {2011L, 65537L, 4294967291L}) {
    for (long e = 2; e <= 20; ++e) {
      EXPECT_FALSE(puissance_parfaite(power(ZZ{base}, e) + 1).has_value());
      EXPECT_FALSE(puissance_parfaite(power(ZZ{base}, e) - 1).has_value());
    }
  }
}

}  // namespace
}  // namespace premiers::facteurs
