// SPDX-License-Identifier: MIT
// prem and prem1 and their notes where the rules are delicate; every small number is compared in
// dette_test.cpp.
#include "primes/prem.h"

#include <gtest/gtest.h>

#include <cstdint>

#include "primes/dette/decisions.h"

namespace premiers {
namespace {

using NTL::ZZ;

TEST(Prem1, TakesTheRootInDoublePrecision) {
  // 2^63 - 25 is the largest prime below 2^63; as a double it is 2^63, whose root is 3037000499.97.
  dette::Dette dette;
  EXPECT_TRUE(prem1(INT64_MAX - 24));
  dette::noter_prem1(dette, INT64_MAX - 24, prem1(INT64_MAX - 24));
  EXPECT_EQ(dette.borne_due, 3037000499U);
}

TEST(Prem, NotesACompositeByItsSmallestFactor) {
  const long p = 4'294'967'291;  // the largest prime below 2^32
  dette::Dette dette;
  EXPECT_FALSE(prem(ZZ(p) * p));
  dette::noter_prem(dette, ZZ(p) * p);
  EXPECT_EQ(dette.borne_due, static_cast<std::uint64_t>(p) - 1);
}

TEST(Prem, IsExactBetween64And100Bits) {
  // The largest prime below 2^50 (C. Caldwell, The Prime Pages, "Primes just less than a power of
  // two": 2^50 - 27).
  const ZZ p((std::int64_t{1} << 50U) - 27);
  ASSERT_TRUE(NTL::ProbPrime(p, 20));
  dette::Dette dette;
  EXPECT_FALSE(prem(p * p));
  dette::noter_prem(dette, p * p);
  EXPECT_EQ(dette.borne_due, (std::uint64_t{1} << 50U) - 28);
  // 2^100 - 15 is prime (the same list), and its root is 2^50 less a bit.
  dette::Dette d100;
  EXPECT_TRUE(prem(NTL::power2_ZZ(100) - 15));
  dette::noter_prem(d100, NTL::power2_ZZ(100) - 15);
  EXPECT_EQ(d100.borne_due, (std::uint64_t{1} << 50U) - 1);
  dette::Dette d64;
  EXPECT_TRUE(prem(NTL::power2_ZZ(64) + 13));
  dette::noter_prem(d64, NTL::power2_ZZ(64) + 13);
  EXPECT_EQ(d64.borne_due, std::uint64_t{1} << 32);
}

TEST(Prem, Beyond100BitsOnlySmallFactorsLeaveANote) {
  const ZZ grand = NTL::power2_ZZ(107) - 1;  // a Mersenne prime
  dette::Dette dette;
  EXPECT_TRUE(prem(grand));
  dette::noter_prem(dette, grand);
  EXPECT_EQ(dette.borne_due, dette::Dette{}.borne_due);
  EXPECT_FALSE(prem(grand * 9'999'991));  // the largest prime below 10^7
  dette::noter_prem(dette, grand * 9'999'991);
  EXPECT_EQ(dette.borne_due, 9'999'990U);
  dette::Dette autre;
  EXPECT_FALSE(prem(grand * 10'000'019));  // the next one
  dette::noter_prem(autre, grand * 10'000'019);
  EXPECT_EQ(autre.borne_due, dette::Dette{}.borne_due);
}

// A composite between two bounds of the debt: with all smaller factors known to be in the table it
// obliges to nothing more, whatever was noted before.
TEST(Prem, ACompositeAboveTheDebtIsNotedByItsSmallestFactorAlone) {
  const ZZ p(1'000'000'007), q(10'000'000'019);
  for (const std::uint64_t deja :
       {std::uint64_t{2}, std::uint64_t{2011}, std::uint64_t{1'000'000'005}}) {
    dette::Dette dette;
    dette.noter(deja);
    EXPECT_FALSE(prem(p * q));
    dette::noter_prem(dette, p * q);
    EXPECT_EQ(dette.borne_due, 1'000'000'006U) << deja;
  }
  dette::Dette petite;
  EXPECT_FALSE(prem(p * q * 2003));
  dette::noter_prem(petite, p * q * 2003);
  EXPECT_EQ(petite.borne_due, 2002U);
}

TEST(Prem, NotingPrimesAloneNotesNoComposite) {
  dette::Dette dette;
  dette::noter_si_premier(dette, ZZ(1'000'000'007) * ZZ(1'000'000'009));
  EXPECT_EQ(dette.borne_due, dette::Dette{}.borne_due);
  dette::noter_si_premier(dette, ZZ(1'000'000'007));
  EXPECT_EQ(dette.borne_due, 31622U);
}

}  // namespace
}  // namespace premiers
