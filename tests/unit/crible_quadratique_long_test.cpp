// SPDX-License-Identifier: MIT
// The quadratic sieve at a size where it takes seconds (see compte_long_test.cpp).
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>

#include "primes/facteurs/facteurs64.h"
#include "primes/quadratique/crible_quadratique.h"

namespace premiers::quadratique {
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

// The same from pi 2^111 and e 2^111 on: large enough for two large primes (225 bits).
TEST(CribleQuadratiqueLong, AProductOfKnownPrimesOf226BitsWithTwoLargePrimes) {
  const auto grand = NTL::conv<NTL::ZZ>("8156040833015188200833743081374139");
  const auto petit = NTL::conv<NTL::ZZ>("7057063099260103890616691862818567");
  ASSERT_EQ(NTL::NumBits(grand * petit), 226);
  static std::size_t scissions = 0;
  const auto facteur = facteur_quadratique(grand * petit, {}, [](std::uint64_t m) {
    ++scissions;
    return facteurs::plus_petit_facteur(m);
  });
  ASSERT_TRUE(facteur.has_value());
  EXPECT_TRUE(*facteur == grand || *facteur == petit) << *facteur;
  EXPECT_GT(scissions, 1000U);
}

}  // namespace
}  // namespace premiers::quadratique
