// SPDX-License-Identifier: MIT
// prem and prem1 where their rules are delicate; every small number is compared in dette_test.cpp.
#include "primes/prem.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace premiers {
namespace {

using NTL::ZZ;

TEST(Prem1, TakesTheRootInDoublePrecision) {
  // 2^63 - 25 is the largest prime below 2^63; as a double it is 2^63, whose root is 3037000499.97.
  Dette dette;
  EXPECT_TRUE(prem1(INT64_MAX - 24, dette));
  EXPECT_EQ(dette.borne_due, 3037000499U);
}

TEST(Prem, NotesACompositeByItsSmallestFactor) {
  const long p = 4'294'967'291;  // the largest prime below 2^32
  Dette dette;
  EXPECT_FALSE(prem(ZZ(p) * p, dette));
  EXPECT_EQ(dette.borne_due, static_cast<std::uint64_t>(p) - 1);
}

TEST(Prem, IsExactBetween64And66Bits) {
  const ZZ p(8'589'934'583);  // the largest prime below 2^33
  ASSERT_TRUE(NTL::ProbPrime(p, 20));
  Dette dette;
  EXPECT_FALSE(prem(p * p, dette));
  EXPECT_EQ(dette.borne_due, 8'589'934'582U);
  Dette d64;
  EXPECT_TRUE(prem(NTL::power2_ZZ(64) + 13, d64));
  EXPECT_EQ(d64.borne_due, std::uint64_t{1} << 32);
}

TEST(Prem, Beyond66BitsOnlySmallFactorsLeaveANote) {
  const ZZ grand = NTL::power2_ZZ(89) - 1;  // a Mersenne prime
  Dette dette;
  EXPECT_TRUE(prem(grand, dette));
  EXPECT_EQ(dette.borne_due, Dette{}.borne_due);
  EXPECT_FALSE(prem(grand * 9'999'991, dette));  // the largest prime below 10^7
  EXPECT_EQ(dette.borne_due, 9'999'990U);
  Dette autre;
  EXPECT_FALSE(prem(grand * 10'000'019, autre));  // the next one
  EXPECT_EQ(autre.borne_due, Dette{}.borne_due);
}

}  // namespace
}  // namespace premiers
