// SPDX-License-Identifier: MIT
// Runs of consecutive primes with a fixed difference: known runs, and the plain way of finding
// them.
#include "primes/suites.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

namespace premiers {
namespace {

std::vector<std::int64_t> premiers_naifs(std::int64_t debut, std::int64_t fin) {
  std::vector<std::int64_t> premiers;
  for (std::int64_t n = debut; n <= fin; ++n) {
    bool premier = n >= 2;
    for (std::int64_t d = 2; premier && d * d <= n; ++d) premier = n % d != 0;
    if (premier) premiers.push_back(n);
  }
  return premiers;
}

/// What is shown: "label: p q r" for each run, a blank before each prime.
std::string montrer(const std::vector<std::int64_t>& premiers, std::int64_t dif,
                    std::int64_t minimum) {
  std::string texte;
  Suites suites(dif, minimum);
  for (std::size_t i = 0; i < premiers.size(); ++i) {
    const std::int64_t n = suites.suivant(premiers[i]);
    if (n == minimum) texte.append("\n").append(std::to_string(suites.numero())).append(":");
    for (auto j = static_cast<std::size_t>(n); j > 0; --j) {
      texte.append(" ").append(std::to_string(premiers[i + 1 - j]));
    }
  }
  return texte;
}

/// The same, step by step: every pair with the difference is counted; a run is written whole when
/// it reaches the minimum, and prime by prime from there.
std::string montrer_pas_a_pas(const std::vector<std::int64_t>& premiers, std::int64_t dif,
                              std::int64_t minimum) {
  std::string texte;
  std::int64_t v = 0;
  std::int64_t db = 1;
  for (std::size_t t = 1; t < premiers.size(); ++t) {
    if (premiers[t] - premiers[t - 1] != dif) {
      db = 1;
      continue;
    }
    ++db;
    ++v;
    if (db == minimum) {
      texte.append("\n").append(std::to_string(v - minimum + 2)).append(":");
      for (std::int64_t w = minimum - 1; w >= 0; --w) {
        texte.append(" ").append(std::to_string(premiers[t - static_cast<std::size_t>(w)]));
      }
    } else if (db > minimum) {
      texte.append(" ").append(std::to_string(premiers[t]));
    }
  }
  return texte;
}

TEST(Suites, TwinPrimesBelow100AreLabelledByTheOrdinalOfTheirFirstPair) {
  EXPECT_EQ(montrer(premiers_naifs(1, 100), 2, 2),
            "\n1: 3 5 7\n3: 11 13\n4: 17 19\n5: 29 31\n6: 41 43\n7: 59 61\n8: 71 73");
}

TEST(Suites, DifferenceOneJoinsOnlyTwoAndThree) {
  EXPECT_EQ(montrer(premiers_naifs(1, 5000), 1, 2), "\n1: 2 3");
  EXPECT_EQ(montrer(premiers_naifs(3, 5000), 1, 2), "");
}

// 251, 257, 263, 269 is the first arithmetic progression of four consecutive primes (R. K. Guy,
// "Unsolved Problems in Number Theory", section A6), with difference 6; 47, 53, 59 the first of
// three.
TEST(Suites, TheFirstFourConsecutivePrimesInProgression) {
  EXPECT_EQ(montrer(premiers_naifs(240, 280), 6, 4), "\n1: 251 257 263 269");
  EXPECT_EQ(montrer(premiers_naifs(2, 62), 6, 3).substr(3), " 47 53 59");
  EXPECT_EQ(montrer(premiers_naifs(2, 268), 6, 4), "");
}

TEST(Suites, PairsOfRunsTooShortToBeShownCountInTheLabel) {
  // Difference 6 below 60: the pairs 23-29, 31-37, and then 47-53-59.
  EXPECT_EQ(montrer(premiers_naifs(2, 60), 6, 3), "\n3: 47 53 59");
}

TEST(Suites, TheBoundsCutRuns) {
  EXPECT_EQ(montrer(premiers_naifs(4, 100), 2, 2).substr(0, 5), "\n1: 5");
  EXPECT_EQ(montrer(premiers_naifs(1, 5), 2, 2), "\n1: 3 5");
  EXPECT_EQ(montrer({}, 2, 2), "");
  EXPECT_EQ(montrer({7}, 2, 2), "");
}

TEST(Suites, AgreeWithThePlainStepsForEveryDifference) {
  for (const std::int64_t debut : {1, 3, 50, 1000}) {
    const std::vector<std::int64_t> premiers = premiers_naifs(debut, 6000);
    for (std::int64_t dif = -2; dif <= 36; ++dif) {
      for (std::int64_t minimum = 2; minimum <= 5; ++minimum) {
        ASSERT_EQ(montrer(premiers, dif, minimum), montrer_pas_a_pas(premiers, dif, minimum))
            << debut << " " << dif << " " << minimum;
      }
    }
  }
}

TEST(Suites, LongRunsOfAnythingGoOnPrimeByPrime) {
  std::vector<std::int64_t> progression;
  for (std::int64_t n = 0; n < 50; ++n) progression.push_back(10 + 7 * n);
  for (const std::int64_t minimum : {2, 3, 49, 50, 51, 1'000'000}) {
    EXPECT_EQ(montrer(progression, 7, minimum), montrer_pas_a_pas(progression, 7, minimum));
  }
}

}  // namespace
}  // namespace premiers
