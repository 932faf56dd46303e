// SPDX-License-Identifier: MIT
// The quadratic sieve at a size where it takes seconds (see compte_long_test.cpp).
#include <gtest/gtest.h>

#include "primes/quadratique/crible_quadratique.h"

namespace premiers {
namespace {

// The first primes from pi 2^108 and e 2^108 on, by PARI/GP's nextprime; isprime proves them.
TEST(CribleQuadratiqueLong, AProductOfKnownPrimesOf220Bits) {
  const auto grand = NTL::conv<NTL::ZZ>("1019505104126898525104217885171827");
  const auto petit = NTL::conv<NTL::ZZ>("882132887407512986327086482852503");
  ASSERT_EQ(NTL::NumBits(grand * petit), 220);
  const auto facteur = facteur_quadratique(grand * petit);
  ASSERT_TRUE(facteur.has_value());
  EXPECT_TRUE(*facteur == grand || *facteur == petit) << *facteur;
}

}  // namespace
}  // namespace premiers
