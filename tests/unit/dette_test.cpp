// SPDX-License-Identifier: MIT
// What a decision by division would have left in the table of primes: each rule against division
// itself, prime after prime, for every N up to 20,000 and for larger ones.
#include "primes/dette/dette.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <vector>

#include "primes/dette/decisions.h"
#include "primes/facteurs/facteurs.h"
#include "primes/prem.h"
#include "primes/rangs/intervalle.h"

namespace premiers::dette {
namespace {

constexpr std::int64_t jusqu = 20'000;

/// The primes up to `limite` and some beyond, behind a slot 0.
std::vector<std::int64_t> cribler(std::int64_t limite) {
  std::vector<bool> compose(static_cast<std::size_t>(limite) + 1000);
  std::vector<std::int64_t> premiers{0};
  for (std::size_t n = 2; n < compose.size(); ++n) {
    if (compose[n]) continue;
    premiers.push_back(static_cast<std::int64_t>(n));
    for (std::size_t m = n * n; m < compose.size(); m += n) compose[m] = true;
  }
  return premiers;
}

/// Division as the rules tell it, with a count of the primes that it needed.
struct Division {
  std::vector<std::int64_t> premiers;
  std::int64_t np = 2;

  std::int64_t premier(std::int64_t rang) {
    np = std::max(np, rang);
    return premiers[static_cast<std::size_t>(rang)];
  }

  /// S by the primes up to its exact root, the first prime above the root tried too.
  bool prem(std::int64_t S) {
    if (S < 2) return false;
    if (S == 2) return true;
    for (std::int64_t k = 1;; ++k) {
      const std::int64_t p = premier(k);
      if (S % p == 0) return false;
      if (p * p > S) return true;
    }
  }

  /// The same with the root in double precision, and without special cases.
  bool prem1(std::int64_t S3) {
    const auto racine = static_cast<std::int64_t>(std::sqrt(static_cast<double>(S3)));
    for (std::int64_t k = 1;; ++k) {
      const std::int64_t p = premier(k);
      if (S3 % p == 0) return false;
      if (p > racine) return true;
    }
  }

  /// All factors; stops where the root of what is left is below the prime to be tried.
  void decomposer(std::int64_t N) {
    for (std::int64_t k = 1; N != 1; ++k) {
      const std::int64_t p = premier(k);
      if (p * p > N) return;
      while (N % p == 0) N /= p;
    }
  }
};

/// What a fresh table holds once the debt is paid.
std::int64_t np_paye(const Dette& dette) {
  Table table;
  payer(dette, table);
  return table.np();
}

std::int64_t np_de_decomposition(std::int64_t N) {
  Dette dette;
  noter_decomposition(dette, facteurs::decomposer(NTL::ZZ(N)));
  return np_paye(dette);
}

struct DetteTest : ::testing::Test {
  Division division{cribler(jusqu), 2};
  /// What a fresh table would hold after `f`.
  template <class F>
  std::int64_t apres(F f) {
    division.np = 2;
    f();
    return division.np;
  }
};
using DetteEnNombre = DetteTest;

TEST_F(DetteEnNombre, PremOfEveryNumber) {
  for (std::int64_t S = 0; S <= jusqu; ++S) {
    bool attendu = false;
    const std::int64_t np = apres([&] { attendu = division.prem(S); });
    ASSERT_EQ(prem(NTL::ZZ(S)), attendu) << S;
    Dette dette;
    noter_prem(dette, NTL::ZZ(S));
    ASSERT_EQ(np_paye(dette), np) << S;
  }
}

TEST_F(DetteTest, Prem1OfEveryNumber) {
  for (std::int64_t S3 = 0; S3 <= jusqu; ++S3) {
    bool attendu = false;
    const std::int64_t np = apres([&] { attendu = division.prem1(S3); });
    ASSERT_EQ(prem1(S3), attendu) << S3;
    Dette dette;
    noter_prem1(dette, S3, prem1(S3));
    ASSERT_EQ(np_paye(dette), np) << S3;
  }
}

TEST_F(DetteTest, Prem1GivesTrueForOneAndFalseForTwo) {
  EXPECT_TRUE(prem1(1));
  EXPECT_FALSE(prem1(2));
  EXPECT_FALSE(prem1(0));
  EXPECT_TRUE(prem1(3));
  Dette dette;
  for (const std::int64_t S3 : {0, 1, 2, 3}) noter_prem1(dette, S3, prem1(S3));
  EXPECT_EQ(np_paye(dette), 2);
}

TEST_F(DetteEnNombre, DecompositionOfEveryNumber) {
  for (std::int64_t N = 1; N <= jusqu; ++N) {
    const std::int64_t np = apres([&] { division.decomposer(N); });
    ASSERT_EQ(np_de_decomposition(N), np) << N;
  }
}

TEST_F(DetteTest, LargerSquaresCubesAndProducts) {
  for (std::size_t k = 3; k + 1 < division.premiers.size(); k += 7) {
    const std::int64_t p = division.premiers[k];
    const std::int64_t q = division.premiers[k + 1];
    if (q > jusqu) break;
    for (const std::int64_t N : {p * p, p * q, p * p - 2, p * p + 2, p * p * 3, 2 * p * q,
                                 p * p * p <= jusqu * jusqu ? p * p * p : p}) {
      if (N > jusqu * jusqu) continue;
      ASSERT_EQ(np_de_decomposition(N), apres([&] { division.decomposer(N); })) << N;
      Dette dette;
      noter_prem(dette, NTL::ZZ(N));
      ASSERT_EQ(np_paye(dette), apres([&] { division.prem(N); })) << N;
      Dette dette1;
      noter_prem1(dette1, N, prem1(N));
      ASSERT_EQ(np_paye(dette1), apres([&] { division.prem1(N); })) << N;
    }
  }
}

TEST_F(DetteTest, EverySmallIntervalAndEmptyOnesHigherUp) {
  const auto verifier = [&](std::int64_t debut, std::int64_t fin) {
    const std::int64_t np = apres([&] {
      for (std::int64_t n = std::max<std::int64_t>(debut, 5) | 1; n <= fin; n += 2) {
        division.prem1(n);
      }
    });
    Dette dette;
    noter_intervalle(dette, {debut, fin});
    ASSERT_EQ(np_paye(dette), np) << debut << " to " << fin;
  };
  for (std::int64_t debut = -3; debut <= 130; ++debut) {
    for (std::int64_t fin = debut - 1; fin <= debut + 60; ++fin) verifier(debut, fin);
  }
  for (std::size_t k = 100; k + 1 < division.premiers.size(); k += 11) {
    const std::int64_t p = division.premiers[k];
    if (p >= jusqu) break;
    verifier(p + 1, division.premiers[k + 1] - 1);  // no prime at all
    verifier(p * p - 6, p * p + 1);                 // just past a square
    verifier(p * p, p * p);
    verifier(p * p - 40, p * p + 40);
  }
}

// The bounds of an interval can be any 64-bit number.
TEST_F(DetteTest, IntervalsWithoutAnyPositiveNumberOweNothing) {
  constexpr std::int64_t le_plus_petit = std::numeric_limits<std::int64_t>::min();
  for (const std::int64_t fin : {le_plus_petit, le_plus_petit + 1, std::int64_t{-2},
                                 std::int64_t{-1}, std::int64_t{0}, std::int64_t{1}}) {
    Dette dette;
    noter_intervalle(dette, {le_plus_petit, fin});
    EXPECT_EQ(dette.borne_due, Dette{}.borne_due) << fin;
  }
}

// 2^63 - 1 = 7^2 73 127 337 92737 649657 and 2^63 - 3 is a multiple of 5; 2^63 - 25 is prime, with
// the root 3037000499.97 (R. Crandall, C. Pomerance, "Prime Numbers"; C. Caldwell's Prime Pages,
// "Primes just less than a power of two").
TEST_F(DetteTest, IntervalsAtTheUpperEnd) {
  constexpr std::int64_t le_plus_grand = std::numeric_limits<std::int64_t>::max();
  Dette un;
  noter_intervalle(un, {le_plus_grand, le_plus_grand});
  EXPECT_EQ(un.borne_due, 6U);
  Dette trois;
  noter_intervalle(trois, {le_plus_grand - 2, le_plus_grand});
  EXPECT_EQ(trois.borne_due, 6U);
  Dette premier;
  noter_intervalle(premier, {le_plus_grand - 24, le_plus_grand});
  EXPECT_EQ(premier.borne_due,
            static_cast<std::uint64_t>(std::sqrt(static_cast<double>(le_plus_grand - 24))));
}

// Here the root in double precision is one more than the exact root, and a prime: q^2 - 2, with the
// first q above 2^27 for which both are prime.
using DetteTestLent = DetteTest;

TEST_F(DetteTestLent, ARootThatRoundsUpToAPrimeObligesThePlainTestToOnePrimeMore) {
  const auto sans_diviseur = [](std::int64_t n) {
    for (std::int64_t d = 2; d * d <= n; ++d) {
      if (n % d == 0) return false;
    }
    return true;
  };
  std::int64_t q = (std::int64_t{1} << 27U) + 1;
  while (static_cast<std::int64_t>(std::sqrt(static_cast<double>(q * q - 2))) != q ||
         !sans_diviseur(q) || !sans_diviseur(q * q - 2)) {
    q += 2;
  }
  const std::int64_t S3 = q * q - 2;
  ASSERT_EQ(NTL::SqrRoot(NTL::ZZ(S3)), q - 1);
  Dette arrondie;
  EXPECT_TRUE(prem1(S3));
  noter_prem1(arrondie, S3, prem1(S3));
  EXPECT_EQ(arrondie.borne_due, static_cast<std::uint64_t>(q));
  Dette intervalle;
  noter_intervalle(intervalle, {S3, S3});
  EXPECT_EQ(intervalle.borne_due, static_cast<std::uint64_t>(q));
  Dette exacte;
  EXPECT_TRUE(prem(NTL::ZZ(S3)));
  noter_prem(exacte, NTL::ZZ(S3));
  EXPECT_EQ(exacte.borne_due, static_cast<std::uint64_t>(q - 1));
  Dette decomposition;
  noter_decomposition(decomposition, facteurs::decomposer(NTL::ZZ(S3)));
  EXPECT_EQ(decomposition.borne_due, static_cast<std::uint64_t>(q - 1));
}

// 10^18 + 9 is prime (PARI/GP's isprime), its root 10^9. There are 50847534 primes below 10^9 (OEIS
// A006880), and 10^9 + 7 is the next (A033873).
TEST_F(DetteTest, APrimeOf19DigitsOwesThePrimesUpToABillion) {
  Dette dette;
  noter_decomposition(dette, facteurs::decomposer(NTL::ZZ(1'000'000'000'000'000'009)));
  EXPECT_EQ(dette.borne_due, 1'000'000'000U);
  Table table;
  payer(dette, table);
  EXPECT_EQ(table.np(), 50'847'535);
  EXPECT_EQ(table.dernier(), 1'000'000'007);
}

TEST_F(DetteTest, OnlyTheLargestNoteCounts) {
  Dette dette;
  dette.noter(100);
  dette.noter(50);
  EXPECT_EQ(dette.borne_due, 100U);
  dette.noter(101);
  EXPECT_EQ(dette.borne_due, 101U);
  EXPECT_EQ(np_paye(dette), 27) << "26 primes up to 101, and 103";
}

TEST_F(DetteTest, ANoteBeyondTheLimitIsNotTaken) {
  Dette dette;
  dette.noter(Dette::borne_max + 1);
  EXPECT_EQ(dette.borne_due, Dette{}.borne_due);
  dette.noter(Dette::borne_max);
  EXPECT_EQ(dette.borne_due, Dette::borne_max);
}

// One decision makes one note, the largest of what its rule says; where that is beyond the limit
// there is none at all.
TEST_F(DetteTest, ADecisionBeyondTheLimitLeavesNoNoteAtAll) {
  const NTL::ZZ dix(10);
  Dette dix_40;
  noter_decomposition(
      dix_40, std::vector<facteurs::Facteur>{{NTL::ZZ(1009), 1}, {NTL::power(dix, 40) + 121, 1}});
  EXPECT_EQ(dix_40.borne_due, Dette{}.borne_due) << "the root, 10^20, is the note of the decision";
  Dette dix_30;
  noter_decomposition(
      dix_30, std::vector<facteurs::Facteur>{{NTL::ZZ(1009), 1}, {NTL::power(dix, 30) + 57, 1}});
  EXPECT_EQ(dix_30.borne_due, 1'000'000'000'000'000U);
  const NTL::ZZ p = NTL::power2_ZZ(51) - 129, q = NTL::power2_ZZ(51) + 65;
  Dette deux_grands;
  noter_decomposition(deux_grands, std::vector<facteurs::Facteur>{{p, 1}, {q, 1}});
  EXPECT_EQ(deux_grands.borne_due, Dette{}.borne_due) << "the smaller factor, above 2^50";
}

TEST_F(DetteTest, PayingChangesNothingWhereTheTableReachesFarEnough) {
  Dette dette;
  dette.noter(1000);
  Table table;
  table.etendre_au_rang(500);
  payer(dette, table);
  EXPECT_EQ(table.np(), 500);
  payer(Dette{}, table);
  EXPECT_EQ(table.np(), 500);
}

}  // namespace
}  // namespace premiers::dette
