// SPDX-License-Identifier: MIT
// The table of primes by rank: published counts and primes, every small rank against division,
// the borders of its blocks, and any order of growing.
#include "primes/table.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <stdexcept>
#include <vector>

#include "primes/prem.h"

namespace premiers {
namespace {

/// The primes up to `limite` by division, behind a slot 0.
std::vector<std::int64_t> premiers_naifs(std::int64_t limite) {
  std::vector<std::int64_t> premiers{0};
  for (std::int64_t n = 2; n <= limite; ++n) {
    bool premier = true;
    for (std::size_t k = 1; k < premiers.size() && premiers[k] * premiers[k] <= n; ++k) {
      if (n % premiers[k] == 0) {
        premier = false;
        break;
      }
    }
    if (premier) premiers.push_back(n);
  }
  return premiers;
}

/// Grows in small steps, so that the blocks are as small and as many as they can be.
void agrandir_par_petits_pas(Table& table, std::int64_t borne) {
  for (std::int64_t pas = 0; pas < borne; pas += 10'000) table.etendre_au_dela(pas);
  table.etendre_au_dela(borne);
}

std::int64_t taille(const std::vector<std::int64_t>& premiers) {
  return static_cast<std::int64_t>(premiers.size()) - 1;
}

TEST(FreshTable, HoldsTwoAndThreeBehindSlotZero) {
  const Table table;
  EXPECT_EQ(table.np(), 2);
  EXPECT_EQ(table.dernier(), 3);
  EXPECT_EQ(table[0], 0);
  EXPECT_EQ(table[1], 2);
  EXPECT_EQ(table[2], 3);
}

TEST(FreshTable, KnowsTheRanksOfItsValues) {
  const Table table;
  for (const std::int64_t v : {std::numeric_limits<std::int64_t>::min(), std::int64_t{-1},
                               std::int64_t{0}, std::int64_t{1}}) {
    EXPECT_EQ(table.rang(v), 0) << v;
    EXPECT_EQ(table.rang_suivant(v), 1) << v;
  }
  EXPECT_EQ(table.rang(2), 1);
  EXPECT_EQ(table.rang(3), 2);
  EXPECT_EQ(table.rang(1000), 2) << "what is not in the table has no rank";
  EXPECT_EQ(table.rang(std::numeric_limits<std::int64_t>::max()), 2);
  EXPECT_EQ(table.rang_suivant(2), 1);
  EXPECT_EQ(table.rang_suivant(3), 2);
}

TEST(Suiv, AppendsExactlyTheNextPrime) {
  const std::vector<std::int64_t> premiers = premiers_naifs(20'000);
  Table table;
  for (std::int64_t np = 3; np <= taille(premiers); ++np) {
    Suiv(table);
    ASSERT_EQ(table.np(), np);
    ASSERT_EQ(table.dernier(), premiers[static_cast<std::size_t>(np)]);
    ASSERT_EQ(table[np], table.dernier());
    ASSERT_EQ(table[np - 1], premiers[static_cast<std::size_t>(np) - 1]);
  }
}

// pi(10^k): OEIS A006880, "Number of primes < 10^n". p(10^k): OEIS A006988, "a(n) = (10^n)-th
// prime".
TEST(PublishedValues, CountsOfPrimesBelowPowersOfTen) {
  constexpr std::int64_t pi[] = {4, 25, 168, 1229, 9592, 78498, 664579, 5761455};
  Table table;
  table.etendre_au_dela(100'000'000);
  EXPECT_EQ(table.dernier(), 100'000'007);
  EXPECT_EQ(table.np(), 5761456);
  std::int64_t puissance = 1;
  for (const std::int64_t attendu : pi) {
    puissance *= 10;
    EXPECT_EQ(table.rang(puissance), attendu);
    EXPECT_EQ(table.rang_suivant(puissance), attendu + 1);
    EXPECT_GT(table[attendu + 1], puissance);
    EXPECT_LT(table[attendu], puissance);
  }
}

TEST(PublishedValues, PrimesWhoseRankIsAPowerOfTen) {
  constexpr std::int64_t p[] = {29, 541, 7919, 104729, 1299709, 15485863, 179424673};
  Table table;
  std::int64_t rang = 1;
  for (const std::int64_t attendu : p) {
    rang *= 10;
    table.etendre_au_rang(rang);
    EXPECT_EQ(table.np(), rang);
    EXPECT_EQ(table.dernier(), attendu);
    EXPECT_EQ(table[rang], attendu);
    EXPECT_EQ(table.rang(attendu), rang);
    EXPECT_EQ(table.rang(attendu - 1), rang - 1);
  }
  rang = 1;
  for (const std::int64_t attendu : p) {
    rang *= 10;
    EXPECT_EQ(table[rang], attendu) << "and still once the table is larger";
  }
}

// pi(2^32) = 203280221: OEIS A007053, "Number of primes <= 2^n". The last prime below 2^32 is
// 2^32 - 5 (A013603, 2^n less the nearest prime below), the first above 2^32 + 15
// (A013597). p(10^8): A006988.
TEST(PublishedValues, PrimesOnBothSidesOfTwoToThe32) {
  constexpr std::int64_t deux_32 = std::int64_t{1} << 32U;
  Table table;
  table.etendre_au_rang(100'000'000);
  EXPECT_EQ(table.np(), 100'000'000);
  EXPECT_EQ(table.dernier(), 2038074743);
  table.etendre_au_rang(203'280'222);
  EXPECT_EQ(table.np(), 203'280'222);
  EXPECT_EQ(table.dernier(), deux_32 + 15);
  EXPECT_EQ(table[203'280'222], deux_32 + 15);
  EXPECT_EQ(table[203'280'221], deux_32 - 5);
  EXPECT_EQ(table.rang(deux_32), 203'280'221);
  EXPECT_EQ(table.rang_suivant(deux_32), 203'280'222);
  EXPECT_EQ(table[100'000'000], 2038074743) << "and still once the table is larger";
}

TEST(SmallValues, EveryRankUpTo100000AgreesWithDivision) {
  const std::vector<std::int64_t> premiers = premiers_naifs(101'000);
  Table table;
  agrandir_par_petits_pas(table, 100'500);
  std::int64_t rang = 0;
  for (std::int64_t v = 0; v <= 100'000; ++v) {
    const bool premier = premiers[static_cast<std::size_t>(rang) + 1] == v;
    ASSERT_EQ(table.rang_suivant(v), rang + 1) << v;
    if (premier) ++rang;
    ASSERT_EQ(table.rang(v), rang) << v;
  }
  for (std::int64_t k = 0; k <= table.np(); ++k) {
    ASSERT_EQ(table[k], premiers[static_cast<std::size_t>(k)]) << k;
  }
}

TEST(Growing, ToARankStopsThere) {
  const std::vector<std::int64_t> premiers = premiers_naifs(40'000);
  for (std::int64_t rang = 1; rang <= taille(premiers); rang += rang < 300 ? 1 : 37) {
    Table table;
    table.etendre_au_rang(rang);
    const std::int64_t np = rang < 2 ? 2 : rang;
    ASSERT_EQ(table.np(), np);
    ASSERT_EQ(table.dernier(), premiers[static_cast<std::size_t>(np)]);
  }
}

TEST(Growing, BeyondAValueStopsAtTheFirstPrimeAbove) {
  const std::vector<std::int64_t> premiers = premiers_naifs(50'000);
  std::size_t k = 2;
  for (std::int64_t borne = 0; borne <= 40'000; borne += borne < 1000 ? 1 : 13) {
    while (premiers[k] <= borne) ++k;
    Table table;
    table.etendre_au_dela(borne);
    ASSERT_EQ(table.np(), static_cast<std::int64_t>(k)) << borne;
    ASSERT_EQ(table.dernier(), premiers[k]) << borne;
  }
}

TEST(Growing, NeverShrinksNorLosesAnEntry) {
  const std::vector<std::int64_t> premiers = premiers_naifs(300'000);
  Table table;
  std::uint64_t etat = 1;
  while (table.np() + 1000 < taille(premiers)) {
    etat = etat * 6364136223846793005U + 1442695040888963407U;
    const auto tirage = static_cast<std::int64_t>(etat >> 33U);
    const std::int64_t avant = table.np();
    switch (tirage % 4) {
      case 0:
        Suiv(table);
        ASSERT_EQ(table.np(), avant + 1);
        break;
      case 1:
        table.etendre_au_rang(avant + tirage % 200);
        ASSERT_EQ(table.np(), avant + tirage % 200);
        break;
      case 2:
        table.etendre_au_dela(table.dernier() + tirage % 1000);
        ASSERT_GT(table.np(), avant);
        break;
      default:
        table.etendre_au_rang(avant - tirage % 100);
        table.etendre_au_dela(table.dernier() - 1 - tirage % 1000);
        ASSERT_EQ(table.np(), avant) << "what is known already changes nothing";
    }
    const std::int64_t k = tirage % (table.np() + 1);
    ASSERT_EQ(table[k], premiers[static_cast<std::size_t>(k)]);
    ASSERT_EQ(table.dernier(), premiers[static_cast<std::size_t>(table.np())]);
  }
}

TEST(Growing, CanBeAbandonedAndTakenUpAgain) {
  Table table;
  table.etendre_au_rang(1000);
  int appels = 0;
  const auto abandonner = [&](double) {
    if (++appels == 3) throw std::runtime_error("abandoned");
  };
  EXPECT_THROW(table.etendre_au_rang(10'000'000, abandonner), std::runtime_error);
  EXPECT_EQ(appels, 3);
  EXPECT_EQ(table.np(), 1000);
  EXPECT_EQ(table.dernier(), 7919);
  table.etendre_au_rang(10'000'000);
  EXPECT_EQ(table.dernier(), 179424673);
  EXPECT_EQ(table[100'000], 1299709);
}

TEST(Growing, TellsHowFarItIs) {
  Table table;
  std::vector<double> parts;
  table.etendre_au_dela(500'000'000, [&](double part) { parts.push_back(part); });
  ASSERT_GT(parts.size(), 10U);
  for (std::size_t i = 0; i < parts.size(); ++i) {
    EXPECT_GE(parts[i], i == 0 ? 0.0 : parts[i - 1]);
    EXPECT_LE(parts[i], 1.0);
  }
}

/// Follows the cursor and the batches from every given rank for a while.
void comparer_parcours(const Table& table, const std::vector<std::int64_t>& premiers,
                       std::int64_t debut, std::int64_t nombre) {
  const std::int64_t fin = std::min(table.np(), debut + nombre);
  std::int64_t attendu = debut;
  table.parcourir(debut, fin, [&](std::int64_t rang, std::int64_t premier) {
    ASSERT_EQ(rang, attendu++);
    ASSERT_EQ(premier, premiers[static_cast<std::size_t>(rang)]);
  });
  ASSERT_EQ(attendu, fin + 1);
  std::vector<std::int64_t> lot(static_cast<std::size_t>(fin - debut + 1));
  table.lire(debut, lot);
  for (std::size_t i = 0; i < lot.size(); ++i) {
    ASSERT_EQ(lot[i], premiers[static_cast<std::size_t>(debut) + i]);
  }
}

// The smallest blocks hold 30,720 integers, their lines 1,920: 300,000 cross many of both.
TEST(Walking, FromEveryRankAcrossLinesAndBlocks) {
  const std::vector<std::int64_t> premiers = premiers_naifs(310'000);
  Table table;
  agrandir_par_petits_pas(table, 300'000);
  for (std::int64_t debut = 1; debut <= table.np(); debut += debut < 1200 ? 1 : 101) {
    comparer_parcours(table, premiers, debut, 150);
    if (HasFatalFailure()) return;
  }
  comparer_parcours(table, premiers, 1, table.np());
}

TEST(Walking, ASmallTable) {
  const std::vector<std::int64_t> premiers = premiers_naifs(100);
  for (std::int64_t np = 2; np <= 12; ++np) {
    Table table;
    table.etendre_au_rang(np);
    for (std::int64_t debut = 1; debut <= np; ++debut) {
      comparer_parcours(table, premiers, debut, 20);
    }
  }
}

TEST(Walking, AnEmptyRangeCallsNothing) {
  Table table;
  table.parcourir(2, 1, [](std::int64_t, std::int64_t) { FAIL(); });
  table.parcourir(1, 0, [](std::int64_t, std::int64_t) { FAIL(); });
  table.parcourir(3, 2, [](std::int64_t, std::int64_t) { FAIL(); });
}

/// Every seventh rank, and every 997th value.
void comparer_rangs_et_premiers(const Table& table) {
  for (std::int64_t k = 1; k <= table.np(); k += 7) ASSERT_EQ(table.rang(table[k]), k);
  for (std::int64_t v = 1; v < 10'000'000; v += 997) {
    const std::int64_t k = table.rang(v);
    ASSERT_LE(table[k], v);
    ASSERT_GT(table[k + 1], v);
  }
}

TEST(Consistency, RankAndPrimeAreInverseUpToTenMillionInOneBlock) {
  Table table;
  table.etendre_au_dela(10'000'000);
  comparer_rangs_et_premiers(table);
}

TEST(Consistency, RankAndPrimeAreInverseUpToTenMillionInManyBlocks) {
  Table table;
  agrandir_par_petits_pas(table, 10'000'000);
  comparer_rangs_et_premiers(table);
}

}  // namespace
}  // namespace premiers
