// SPDX-License-Identifier: MIT
// The primes between two bounds: the ways that lead to them agree with each other, with division
// and with published counts, from the smallest bounds to 2^63 - 1.
#include "primes/rangs/intervalle.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <stdexcept>
#include <vector>

#include "primes/compte/compte.h"
#include "primes/primalite/primalite.h"
#include "primes/rangs/lots_de_premiers.h"

namespace premiers::rangs {
namespace {

constexpr std::int64_t le_plus_grand = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t le_plus_petit = std::numeric_limits<std::int64_t>::min();

bool premier_par_division(std::int64_t n) {
  if (n < 2) return false;
  for (std::int64_t d = 2; d * d <= n; ++d) {
    if (n % d == 0) return false;
  }
  return true;
}

std::vector<std::int64_t> par_lots(Intervalle bornes) {
  std::vector<std::int64_t> premiers;
  LotsDePremiers lots(bornes, crible::CribleGrand::memoire_max);
  for (auto lot = lots.suivant(); !lot.empty(); lot = lots.suivant()) {
    for (const std::uint64_t p : lot) premiers.push_back(static_cast<std::int64_t>(p));
  }
  EXPECT_TRUE(lots.suivant().empty()) << "the end stays the end";
  return premiers;
}

/// The primality test, number after number.
std::vector<std::int64_t> un_par_un(Intervalle bornes) {
  std::vector<std::int64_t> premiers;
  for (std::int64_t n = bornes.debut; n <= bornes.fin; ++n) {
    if (primalite::est_premier(static_cast<std::uint64_t>(n))) premiers.push_back(n);
    if (n == le_plus_grand) break;
  }
  return premiers;
}

TEST(SmallBounds, EveryIntervalAgreesWithDivision) {
  for (std::int64_t debut = -4; debut <= 100; ++debut) {
    std::vector<std::int64_t> attendus;
    for (std::int64_t fin = debut; fin <= debut + 70; ++fin) {
      if (premier_par_division(fin)) attendus.push_back(fin);
      ASSERT_EQ(par_lots({debut, fin}), attendus) << debut << " " << fin;
      ASSERT_EQ(compter_premiers({debut, fin}), static_cast<std::int64_t>(attendus.size()));
    }
  }
}

TEST(SmallBounds, AnIntervalOfAMillionAgreesWithItsParts) {
  const std::vector<std::int64_t> tout = par_lots({1, 1'000'000});
  EXPECT_EQ(tout.size(), 78498U);
  std::vector<std::int64_t> morceaux;
  for (std::int64_t debut = 1; debut <= 1'000'000; debut += 33'331) {
    const auto morceau = par_lots({debut, std::min<std::int64_t>(debut + 33'330, 1'000'000)});
    morceaux.insert(morceaux.end(), morceau.begin(), morceau.end());
  }
  EXPECT_EQ(tout, morceaux);
}

TEST(OddBounds, EmptyAndReversedIntervalsHoldNothing) {
  for (const Intervalle bornes :
       {Intervalle{le_plus_petit, le_plus_petit}, Intervalle{le_plus_petit, -1},
        Intervalle{le_plus_petit, 1}, Intervalle{0, 0}, Intervalle{1, 1}, Intervalle{4, 4},
        Intervalle{24, 28}, Intervalle{le_plus_grand, le_plus_grand},
        Intervalle{le_plus_grand - 1, le_plus_grand}}) {
    EXPECT_TRUE(par_lots(bornes).empty()) << bornes.debut << " " << bornes.fin;
    EXPECT_EQ(compter_premiers(bornes), 0) << bornes.debut << " " << bornes.fin;
  }
  EXPECT_EQ(compter_premiers({20, 10}), 0);
}

TEST(OddBounds, WhatLiesBelowOneIsPassedOver) {
  EXPECT_EQ(par_lots({le_plus_petit, 20}), (std::vector<std::int64_t>{2, 3, 5, 7, 11, 13, 17, 19}));
  EXPECT_EQ(compter_premiers({le_plus_petit, 20}), 8);
  EXPECT_EQ(compter_premiers({-7, 2}), 1);
}

// The ten largest primes below 2^63: C. Caldwell, The Prime Pages, "Primes just less than a power
// of two".
TEST(UpperEnd, TheLargestPrimesBelowTwoToThe63) {
  std::vector<std::int64_t> attendus;
  for (const std::int64_t k : {471, 457, 409, 391, 387, 375, 301, 259, 165, 25}) {
    attendus.push_back(le_plus_grand - k + 1);
  }
  EXPECT_EQ(par_lots({attendus.front(), le_plus_grand}), attendus);
  EXPECT_EQ(compter_premiers({attendus.front(), le_plus_grand}), 10);
  EXPECT_EQ(compter_premiers({attendus.back() + 1, le_plus_grand}), 0);
  EXPECT_EQ(compter_premiers({attendus.back(), attendus.back()}), 1);
}

// OEIS A006880, "Number of primes < 10^n".
TEST(PublishedCounts, PrimesBelowPowersOfTen) {
  constexpr std::int64_t pi[] = {4,      25,      168,      1229,      9592,       78498,
                                 664579, 5761455, 50847534, 455052511, 4118054813, 37607912018};
  std::int64_t puissance = 1;
  std::int64_t precedente = 1;
  std::int64_t effectif_precedent = 0;
  for (const std::int64_t effectif : pi) {
    puissance *= 10;
    EXPECT_EQ(compter_premiers({1, puissance}), effectif);
    EXPECT_EQ(compter_premiers({precedente, puissance}), effectif - effectif_precedent);
    precedente = puissance;
    effectif_precedent = effectif;
  }
}

struct TroisVoies : ::testing::TestWithParam<std::int64_t> {
  std::uint64_t etat = 20240612;
  std::int64_t tirer(std::int64_t limite) {
    etat = etat * 6364136223846793005U + 1442695040888963407U;
    return static_cast<std::int64_t>((etat >> 33U) % static_cast<std::uint64_t>(limite));
  }
};

TEST_P(TroisVoies, NarrowIntervalsAgreeWithThePrimalityTest) {
  for (int i = 0; i < 40; ++i) {
    const std::int64_t fin = GetParam() - tirer(1'000'000'000);
    const Intervalle bornes{fin - tirer(3000), fin};
    const std::vector<std::int64_t> attendus = un_par_un(bornes);
    ASSERT_EQ(par_lots(bornes), attendus) << bornes.debut << " " << bornes.fin;
    ASSERT_EQ(compter_premiers(bornes), static_cast<std::int64_t>(attendus.size()));
  }
}

TEST_P(TroisVoies, WideIntervalsAgreeWithTheBareSieve) {
  const std::int64_t largeur = GetParam() > 1'000'000'000'000'000 ? 3'000'000 : 300'000;
  const std::int64_t fin = GetParam() - tirer(1'000'000);
  const Intervalle bornes{fin - largeur, fin};
  const auto effectif = static_cast<std::int64_t>(crible::compter_par_crible(
      static_cast<std::uint64_t>(bornes.debut), static_cast<std::uint64_t>(bornes.fin)));
  EXPECT_EQ(compter_premiers(bornes), effectif);
  const std::vector<std::int64_t> premiers = par_lots(bornes);
  EXPECT_EQ(static_cast<std::int64_t>(premiers.size()), effectif);
  for (std::size_t i = 0; i < premiers.size(); i += 97) {
    EXPECT_TRUE(primalite::est_premier(static_cast<std::uint64_t>(premiers[i])));
  }
}

INSTANTIATE_TEST_SUITE_P(UpToTheEnd, TroisVoies,
                         ::testing::Values(2'000'000'000, 1'000'000'000'000, 1'000'000'000'000'000,
                                           1'000'000'000'000'000'000, le_plus_grand));

TEST(TroisVoies, TheCombinatorialCountAgreesWithTheSieve) {
  for (const std::int64_t fin : {10'000'000LL, 123'456'789LL, 300'000'007LL}) {
    const auto naturel = static_cast<std::uint64_t>(fin);
    EXPECT_EQ(compte::nombre_premiers(naturel), crible::compter_par_crible(2, naturel));
  }
  // A width of 2 10^6 at 10^12: one count minus the other.
  const std::uint64_t debut = 1'000'000'000'000;
  EXPECT_EQ(compte::nombre_premiers(debut + 2'000'000) - compte::nombre_premiers(debut),
            crible::compter_par_crible(debut + 1, debut + 2'000'000));
}

TEST(Progress, IsToldInOrderAndMayAbandonTheWork) {
  std::vector<double> parts;
  LotsDePremiers lots({1, 100'000'000}, crible::CribleGrand::memoire_max);
  while (!lots.suivant([&](double part) { parts.push_back(part); }).empty()) {
  }
  ASSERT_GE(parts.size(), 3U);
  for (std::size_t i = 0; i < parts.size(); ++i) {
    EXPECT_GE(parts[i], i == 0 ? 0.0 : parts[i - 1]);
    EXPECT_LE(parts[i], 1.0);
  }
  const auto abandonner = [](double) { throw std::runtime_error("abandoned"); };
  EXPECT_THROW(compter_premiers({1, 10'000'000'000}, abandonner), std::runtime_error);
}

}  // namespace
}  // namespace premiers::rangs
