// SPDX-License-Identifier: MIT
// The table of primes by rank: published counts and primes, every small rank against division, the
// borders between what is kept, sieved and counted, the end of the numbers, and any order of growing
// and reading.
#include "primes/table.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <random>
#include <stdexcept>
#include <vector>

#include "primes/prem.h"

namespace premiers {
namespace {

constexpr std::int64_t sans_limite = rangs::SuiteDePremiers::sans_limite;

/// The primes up to `limite` by the plain sieve, behind a slot 0.
std::vector<std::int64_t> premiers_naifs(std::int64_t limite) {
  std::vector<bool> compose(static_cast<std::size_t>(limite) + 1);
  std::vector<std::int64_t> premiers{0};
  for (std::size_t n = 2; n < compose.size(); ++n) {
    if (compose[n]) continue;
    premiers.push_back(static_cast<std::int64_t>(n));
    for (std::size_t m = n * n; m < compose.size(); m += n) compose[m] = true;
  }
  return premiers;
}

std::int64_t taille(const std::vector<std::int64_t>& premiers) {
  return static_cast<std::int64_t>(premiers.size()) - 1;
}

/// What a suite holds, all batches in a row.
std::vector<std::int64_t> tout(rangs::SuiteDePremiers suite) {
  std::vector<std::int64_t> premiers;
  for (auto lot = suite.suivant(); !lot.empty(); lot = suite.suivant()) {
    premiers.insert(premiers.end(), lot.begin(), lot.end());
  }
  return premiers;
}

TEST(FreshTable, HoldsTwoAndThreeBehindSlotZero) {
  Table table;
  EXPECT_EQ(table.np(), 2);
  EXPECT_EQ(table.dernier(), 3);
  EXPECT_EQ(table[0], 0);
  EXPECT_EQ(table[1], 2);
  EXPECT_EQ(table[2], 3);
}

TEST(FreshTable, KnowsTheRanksOfItsValues) {
  Table table;
  for (const std::int64_t v : {std::numeric_limits<std::int64_t>::min(), std::int64_t{-1},
                               std::int64_t{0}, std::int64_t{1}}) {
    EXPECT_EQ(table.jusqu_a(v), (Place{0, 0})) << v;
  }
  EXPECT_EQ(table.jusqu_a(2), (Place{1, 2}));
  EXPECT_EQ(table.jusqu_a(3), (Place{2, 3}));
  EXPECT_EQ(table.jusqu_a(1000), (Place{2, 3})) << "what is not in the table has no rank";
  EXPECT_EQ(table.jusqu_a(std::numeric_limits<std::int64_t>::max()), (Place{2, 3}));
}

TEST(Suiv, AppendsExactlyTheNextPrime) {
  const std::vector<std::int64_t> premiers = premiers_naifs(300'000);
  Table table;
  for (std::int64_t np = 3; np <= taille(premiers); ++np) {
    Suiv(table);
    ASSERT_EQ(table.np(), np);
    ASSERT_EQ(table.dernier(), premiers[static_cast<std::size_t>(np)]);
    ASSERT_EQ(table[np], table.dernier());
    ASSERT_EQ(table[np - 1], premiers[static_cast<std::size_t>(np) - 1]);
  }
}

// pi(10^k): OEIS A006880, "Number of primes < 10^n".
TEST(PublishedValuesLent, CountsOfPrimesBelowPowersOfTen) {
  constexpr std::int64_t pi[] = {4,          25,          168,          1229,         9592,
                                 78498,      664579,      5761455,      50847534,     455052511,
                                 4118054813, 37607912018, 346065536839, 3204941750802};
  Table table;
  table.etendre_au_dela(100'000'000'000'000);
  EXPECT_EQ(table.dernier(), 100'000'000'000'031);
  EXPECT_EQ(table.np(), 3204941750803);
  std::int64_t puissance = 1;
  for (const std::int64_t attendu : pi) {
    puissance *= 10;
    const Place place = table.jusqu_a(puissance);
    EXPECT_EQ(place.rang, attendu);
    EXPECT_LT(place.premier, puissance);
    EXPECT_GT(table[attendu + 1], puissance);
    EXPECT_EQ(table[attendu], place.premier);
  }
}

// p(10^k): OEIS A006988, "a(n) = (10^n)-th prime".
TEST(PublishedValuesEnNombre, PrimesWhoseRankIsAPowerOfTen) {
  constexpr std::int64_t p[] = {29,          541,          7919,          104729,
                                1299709,     15485863,     179424673,     2038074743,
                                22801763489, 252097800623, 2760727302517, 29996224275833};
  Table table;
  std::int64_t rang = 1;
  for (const std::int64_t attendu : p) {
    rang *= 10;
    table.etendre_au_rang(rang);
    EXPECT_EQ(table.np(), rang);
    EXPECT_EQ(table.dernier(), attendu);
    EXPECT_EQ(table[rang], attendu);
    EXPECT_EQ(table.jusqu_a(attendu), (Place{rang, attendu}));
    EXPECT_EQ(table.jusqu_a(attendu - 1).rang, rang - 1);
  }
  rang = 1;
  for (const std::int64_t attendu : p) {
    rang *= 10;
    EXPECT_EQ(table[rang], attendu) << "and still once the table is larger";
  }
}

// The prime of rank 10^13 (OEIS A006988).
TEST(PublishedValuesLent, ThePrimeOfRank10To13) {
  Table table;
  table.etendre_au_rang(10'000'000'000'000);
  EXPECT_EQ(table.dernier(), 323780508946331);
}

TEST(SmallValues, EveryRankUpTo100000AgreesWithDivision) {
  const std::vector<std::int64_t> premiers = premiers_naifs(101'000);
  Table table;
  table.etendre_au_dela(100'500);
  std::int64_t rang = 0;
  for (std::int64_t v = 0; v <= 100'000; ++v) {
    if (premiers[static_cast<std::size_t>(rang) + 1] == v) ++rang;
    ASSERT_EQ(table.jusqu_a(v), (Place{rang, premiers[static_cast<std::size_t>(rang)]})) << v;
  }
  for (std::int64_t k = 0; k <= table.np(); ++k) {
    ASSERT_EQ(table[k], premiers[static_cast<std::size_t>(k)]) << k;
  }
}

TEST(Growing, ToARankStopsThere) {
  const std::vector<std::int64_t> premiers = premiers_naifs(3'000'000);
  for (std::int64_t rang = 1; rang <= taille(premiers); rang += rang < 300 ? 1 : 37 + rang / 97) {
    Table table;
    table.etendre_au_rang(rang);
    const std::int64_t np = rang < 2 ? 2 : rang;
    ASSERT_EQ(table.np(), np);
    ASSERT_EQ(table.dernier(), premiers[static_cast<std::size_t>(np)]);
  }
}

TEST(Growing, BeyondAValueStopsAtTheFirstPrimeAbove) {
  const std::vector<std::int64_t> premiers = premiers_naifs(3'000'000);
  std::size_t k = 2;
  for (std::int64_t borne = 0; borne <= 2'900'000; borne += borne < 1000 ? 1 : 13 + borne / 301) {
    while (premiers[k] <= borne) ++k;
    Table table;
    table.etendre_au_dela(borne);
    ASSERT_EQ(table.np(), static_cast<std::int64_t>(k)) << borne;
    ASSERT_EQ(table.dernier(), premiers[k]) << borne;
  }
}

TEST(Growing, NeverShrinksNorLosesAnEntry) {
  const std::vector<std::int64_t> premiers = premiers_naifs(10'000'000);
  Table table;
  std::mt19937_64 hasard(1);
  while (table.np() + 30'000 < taille(premiers)) {
    const auto tirage = static_cast<std::int64_t>(hasard() >> 33U);
    const std::int64_t avant = table.np();
    switch (tirage % 4) {
      case 0:
        Suiv(table);
        ASSERT_EQ(table.np(), avant + 1);
        break;
      case 1:
        table.etendre_au_rang(avant + tirage % 20'000);
        ASSERT_EQ(table.np(), avant + tirage % 20'000);
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
  EXPECT_THROW(table.etendre_au_rang(10'000'000'000, abandonner), std::runtime_error);
  EXPECT_EQ(appels, 3);
  EXPECT_EQ(table.np(), 1000);
  EXPECT_EQ(table.dernier(), 7919);
  table.etendre_au_rang(10'000'000'000);
  EXPECT_EQ(table.dernier(), 252097800623);
  EXPECT_EQ(table[100'000], 1299709);
}

TEST(Growing, TellsHowFarItIs) {
  Table table;
  std::vector<double> parts;
  table.etendre_au_rang(100'000'000'000, [&](double part) { parts.push_back(part); });
  ASSERT_GT(parts.size(), 10U);
  for (std::size_t i = 0; i < parts.size(); ++i) {
    EXPECT_GE(parts[i], i == 0 ? 0.0 : parts[i - 1]);
    EXPECT_LE(parts[i], 1.0);
  }
}

// 18 and 15 of the largest primes below 2^32 and above it are known from C. Caldwell's Prime Pages;
// pi(2^32) = 203280221 from OEIS A007053.
TEST(Borders, AroundTwoToThe32) {
  for (const bool de_loin : {true, false}) {
    Table table;
    if (!de_loin) table.etendre_au_rang(203'280'000);
    table.etendre_au_rang(203'280'222);
    EXPECT_EQ(table.dernier(), 4'294'967'311);
    EXPECT_EQ(table[203'280'221], 4'294'967'291);
    EXPECT_EQ(table[203'280'220], 4'294'967'279);
    EXPECT_EQ(table.jusqu_a(std::int64_t{1} << 32U), (Place{203'280'221, 4'294'967'291}));
    EXPECT_EQ(table.jusqu_a(4'294'967'291).rang, 203'280'221);
    EXPECT_EQ(table.jusqu_a(4'294'967'290).rang, 203'280'220);
  }
}

/// The same readings of a table whose bits are not there yet, and once they are: what is read often
/// enough is kept.
TEST(Borders, WhatIsKeptAgreesWithWhatIsCounted) {
  constexpr std::int64_t rang = 30'000'000;  // beyond the end of what can be kept
  Table table;
  table.etendre_au_rang(rang);
  std::mt19937_64 hasard(2);
  constexpr int combien =
#if defined(PREMIERS_ASSAINI)
      600;
#else
      3000;
#endif
  for (int fois = 0; fois < combien; ++fois) {
    const auto k = static_cast<std::int64_t>(hasard() % rang) + 1;
    const Place lue = table.lire(k);
    if (fois % 20 == 0) {
      Table neuve;
      neuve.etendre_au_rang(k);
      ASSERT_EQ(neuve.dernier(), lue.premier);
    }
    ASSERT_EQ(table.jusqu_a(lue.premier), lue);
    ASSERT_EQ(table.jusqu_a(lue.premier - 1).rang, k - 1);
    ASSERT_EQ(table.jusqu_a(lue.premier + 1).rang, k + (lue.premier == 2 ? 1 : 0));
  }
}

// Every place around the end of what is kept, from both sides.
TEST(Borders, AtTheEndOfWhatIsKept) {
  rangs::BitsGardes gardes;
  gardes.etendre(rangs::BitsGardes::borne_max);
  EXPECT_EQ(gardes.borne(), rangs::BitsGardes::borne_max);
  Table table;
  table.etendre_au_dela(2 * rangs::BitsGardes::borne_max);
  const std::int64_t np = gardes.nombre();
  for (int fois = 0; fois < 2; ++fois) {
    for (std::int64_t k = np - 30; k <= np; ++k) ASSERT_EQ(table[k], gardes.premier(k)) << k;
    ASSERT_GT(table[np + 1], rangs::BitsGardes::borne_max);
    ASSERT_EQ(table.jusqu_a(table[np + 1]).rang, np + 1);
    const auto liste = tout(table.suite(table[np - 30], 60, sans_limite));
    ASSERT_EQ(liste.size(), 60U);
    for (std::int64_t i = 0; i < 60; ++i) {
      ASSERT_EQ(liste[static_cast<std::size_t>(i)], table[np - 30 + i]) << i;
    }
    // From now on there are bits.
    for (std::int64_t k = 1; k < 1'000'000; k += 1000) ASSERT_EQ(table[k], gardes.premier(k));
  }
}

/// Rank and prime are inverse to each other at random places of all sizes, in a large table.
TEST(ConsistencyLent, RankAndPrimeAreInverseAtAllSizes) {
  Table table;
  table.etendre_au_dela(20'000'000'000'000);
  std::mt19937_64 hasard(3);
  std::int64_t plus_grand = 10;
  while (plus_grand <= 10'000'000'000'000) {
    for (int fois = 0; fois < 5; ++fois) {
      const auto v =
          static_cast<std::int64_t>(hasard() % static_cast<std::uint64_t>(plus_grand)) + 2;
      const Place place = table.jusqu_a(v);
      ASSERT_LE(place.premier, v);
      Table autre;
      autre.etendre_au_rang(place.rang + 1);
      ASSERT_GT(autre.dernier(), v);
      ASSERT_EQ(autre[place.rang], place.premier);
    }
    plus_grand *= 10;
  }
}

TEST(Consistency, TheWayToTheSameTableDoesNotMatter) {
  constexpr std::int64_t rang = 3'000'000;
  Table d_un_coup;
  d_un_coup.etendre_au_rang(rang);
  Table par_pas;
  for (std::int64_t k = 1; k < rang; k += 40'000) par_pas.etendre_au_rang(k);
  par_pas.etendre_au_rang(rang);
  Table par_valeurs;
  for (std::int64_t v = 10; v < d_un_coup.dernier(); v *= 3) par_valeurs.etendre_au_dela(v);
  par_valeurs.etendre_au_dela(d_un_coup.dernier() - 1);
  for (Table* table : {&par_pas, &par_valeurs}) {
    ASSERT_EQ(table->np(), rang);
    ASSERT_EQ(table->dernier(), d_un_coup.dernier());
    for (std::int64_t k = 1; k <= rang; k += 9973) ASSERT_EQ((*table)[k], d_un_coup[k]) << k;
  }
}

// Lists across the windows of the sieve, against the plain sieve.
TEST(SuitesEnNombre, AreThePrimesOneAfterTheOther) {
  const std::vector<std::int64_t> premiers = premiers_naifs(40'000'000);
  Table table;
  table.etendre_au_rang(taille(premiers));
  for (const bool avec_les_bits : {false, true}) {
    if (avec_les_bits) {
      for (std::int64_t k = 1; k < taille(premiers); k += 1000) {
        ASSERT_EQ(table[k], premiers[static_cast<std::size_t>(k)]);
      }
    }
    const auto liste = tout(table.suite(0, sans_limite, sans_limite));
    ASSERT_TRUE(std::equal(liste.begin(), liste.end(), premiers.begin() + 1, premiers.end()));
    std::mt19937_64 hasard(4);
    for (int fois = 0; fois < 400; ++fois) {
      const auto debut = static_cast<std::int64_t>(hasard() % 39'000'000);
      const auto nombre = static_cast<std::int64_t>(hasard() % 5000);
      const auto de = std::lower_bound(premiers.begin() + 1, premiers.end(), debut);
      const auto reste = premiers.end() - de;
      const auto par_nombre = tout(table.suite(debut, nombre, sans_limite));
      ASSERT_TRUE(std::equal(par_nombre.begin(), par_nombre.end(), de,
                             de + std::min<std::int64_t>(nombre, reste)));
      const std::int64_t borne = debut + nombre;
      const auto par_borne = tout(table.suite(debut, sans_limite, borne));
      ASSERT_TRUE(std::equal(par_borne.begin(), par_borne.end(), de,
                             std::upper_bound(premiers.begin() + 1, premiers.end(), borne)));
    }
  }
}

TEST(Suites, StopAtTheLastKnownPrime) {
  Table table;
  table.etendre_au_rang(1000);
  EXPECT_EQ(tout(table.suite(7900, sans_limite, sans_limite)),
            (std::vector<std::int64_t>{7901, 7907, 7919}));
  EXPECT_TRUE(tout(table.suite(7920, sans_limite, sans_limite)).empty());
  EXPECT_TRUE(tout(table.suite(2, 0, sans_limite)).empty());
  EXPECT_TRUE(tout(table.suite(24, sans_limite, 28)).empty());
}

// The primes behind 10^18: PARI/GP's nextprime, "vector(10, i, p = nextprime(p + 1))".
TEST(Suites, FarOutAFewPrimesAreListedToo) {
  Table table;
  table.prolonger({24'739'954'287'740'860, 999'999'999'999'999'989});
  const auto liste = tout(table.suivants(10, sans_limite));
  const std::vector<std::int64_t> attendus{3, 9, 31, 79, 177, 183, 201, 283, 381, 387};
  ASSERT_EQ(liste.size(), attendus.size());
  for (std::size_t i = 0; i < liste.size(); ++i) {
    EXPECT_EQ(liste[i], 1'000'000'000'000'000'000 + attendus[i]);
  }
}

// The last primes below 2^63 are 2^63 - d for these d (C. Caldwell, The Prime Pages, "Primes just
// less than a power of two").
constexpr std::int64_t ecarts_a_la_fin[] = {25, 165, 259, 301, 375, 387, 391, 409, 457, 471};
constexpr std::int64_t plus_grand = std::numeric_limits<std::int64_t>::max();

TEST(TheEnd, RanksNearItAreFoundFromIt) {
  for (std::int64_t i = 9; i >= 0; --i) {
    Table table;
    table.etendre_au_rang(Table::fin.rang - i);
    EXPECT_EQ(table.dernier(), plus_grand - ecarts_a_la_fin[i] + 1) << i;
    EXPECT_EQ(table.np(), Table::fin.rang - i);
  }
}

TEST(TheEnd, ValuesNearItAreFoundFromIt) {
  Table table;
  table.etendre_au_dela(plus_grand - 200);
  EXPECT_EQ(table.np(), Table::fin.rang - 1);
  EXPECT_EQ(table.dernier(), plus_grand - 164);
  table.etendre_au_dela(plus_grand - 25);
  EXPECT_EQ(table.np(), Table::fin.rang);
  EXPECT_EQ(table.dernier(), Table::fin.premier);
  EXPECT_TRUE(tout(table.suivants(sans_limite, sans_limite)).empty());
  EXPECT_EQ(table.jusqu_a(plus_grand).rang, Table::fin.rang);
  EXPECT_EQ(tout(table.suite(plus_grand - 400, sans_limite, sans_limite)).size(), 7U);
}

}  // namespace
}  // namespace premiers
