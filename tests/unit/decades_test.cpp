// SPDX-License-Identifier: MIT
#include "primes/concatenations/decades.h"

#include <gtest/gtest.h>

#include <vector>

namespace premiers {
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

TEST(Decades, NoneIsKnownByDefault) { EXPECT_EQ(Decades().nombre(), 0U); }

}  // namespace
}  // namespace premiers
