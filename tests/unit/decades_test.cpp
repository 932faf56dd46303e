// SPDX-License-Identifier: MIT
#include "primes/crible/decades.h"

#include <NTL/ZZ.h>
#include <gtest/gtest.h>

#include <vector>

namespace premiers::crible {
namespace {

TEST(Decades, AgreesWithAPlainSieve) {
  constexpr std::size_t limite = 3'000'000;
  std::vector<bool> compose(limite + 60);
  for (std::size_t p = 2; p * p < compose.size(); ++p) {
    if (compose[p]) continue;
    for (std::size_t m = p * p; m < compose.size(); m += p) compose[m] = true;
  }
  const Decades decades(limite);
  ASSERT_GT(decades.nombre(), limite / 10);
  for (std::size_t d = 1; d <= limite / 10; ++d) {
    for (std::size_t i = 0; i < finales.size(); ++i) {
      ASSERT_EQ((decades[d] >> i & 1) != 0, !compose[10 * d + finales[i]]) << d << " " << i;
    }
  }
}

TEST(Decades, KnowsTheDecadeOfItsLimit) {
  for (std::uint64_t limite = 1; limite < 400; ++limite) {
    EXPECT_GT(Decades(limite).nombre(), limite / 10);
  }
}

TEST(DecadesGlissantes, AgreesWithTheTableWhereverItIsAsked) {
  constexpr std::uint64_t derniere = 4'000'000;
  const Decades table(10 * derniere + 9);
  DecadesGlissantes glissantes(derniere);
  // Upward in steps, then once more from below, then from the very last one.
  for (const std::uint64_t debut : {std::uint64_t{100}, std::uint64_t{1}, derniere - 5}) {
    for (std::uint64_t d = debut; d <= derniere; d += d % 7 == 0 ? 50 : 3) {
      ASSERT_EQ(glissantes.demander(d, {}), table[d]) << d;
    }
  }
}

TEST(DecadesGlissantes, FollowsAnAskerWhoJumpsOverWholeWindows) {
  constexpr std::uint64_t derniere = 30'000'000;
  const Decades table(10 * derniere + 9);
  DecadesGlissantes glissantes(derniere);
  for (std::uint64_t d = 1; d <= derniere; d = 3 * d + 1) {
    ASSERT_EQ(glissantes.demander(d, {}), table[d]) << d;
    ASSERT_EQ(glissantes.demander(d + 1, {}), table[d + 1]) << d;
  }
}

TEST(DecadesGlissantes, SurvivesAnAbandonedSieve) {
  struct Assez {};
  DecadesGlissantes glissantes(1'000'000'000'000);
  EXPECT_THROW(glissantes.demander(900'000'000'000, [](double) { throw Assez{}; }), Assez);
  unsigned attendu = 0;
  for (std::size_t i = 0; i < finales.size(); ++i) {
    const NTL::ZZ n = NTL::conv<NTL::ZZ>(9'000'000'000'000L + finales[i]);
    if (NTL::ProbPrime(n, 20)) attendu |= 1U << i;
  }
  EXPECT_EQ(glissantes.demander(900'000'000'000, {}), attendu);
}

TEST(Decades, NoneIsKnownByDefault) { EXPECT_EQ(Decades().nombre(), 0U); }

}  // namespace
}  // namespace premiers::crible
