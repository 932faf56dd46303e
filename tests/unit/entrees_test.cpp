// SPDX-License-Identifier: MIT
// The entries of the listings against the same texts put together from std::to_string.
#include "console/entrees.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace premiers {
namespace {

/// What `f` writes.
template <class F>
std::string ecrit(F f) {
  std::string ecran;
  Sortie sortie([&](std::string_view octets) {
    ecran += octets;
    return true;
  });
  f(sortie);
  sortie.vider();
  return ecran;
}

std::string entree(std::int64_t rang, std::int64_t premier) {
  return std::string("   [ ") + std::to_string(rang) + " : " + std::to_string(premier) + " ] ";
}

/// Numbers that cross every change of the number of digits and of the groups of four.
std::vector<std::int64_t> croissants() {
  std::vector<std::int64_t> n{1, 2, 9};
  for (std::int64_t dix = 10; dix < 9'000'000'000'000'000'000 / 10; dix *= 10) {
    for (const std::int64_t ecart : {-1, 0, 1, 7}) n.push_back(dix + ecart);
    n.push_back(3 * dix + 12345 % dix);
  }
  n.push_back(9'223'372'036'854'775'783);
  n.push_back(9'223'372'036'854'775'807);
  return n;
}

TEST(RankedEntries, AreFormattedLikeAnyNumber) {
  std::string attendu;
  const std::string obtenu = ecrit([&](Sortie& sortie) {
    EntreesRangees entrees(sortie);
    for (const std::int64_t n : croissants()) {
      entrees.ecrire(n, n);
      attendu += entree(n, n);
    }
  });
  EXPECT_EQ(obtenu, attendu);
}

TEST(RankedEntries, ABreakStandsBeforeRanks1And101And201) {
  for (const std::int64_t debut : {1, 2, 99, 100, 101, 102, 200, 201, 9'901, 10'001}) {
    std::string attendu;
    const std::string obtenu = ecrit([&](Sortie& sortie) {
      EntreesRangees entrees(sortie);
      for (std::int64_t rang = debut; rang < debut + 230; ++rang) {
        entrees.ecrire_en_blocs(rang, 3 * rang);
        if (rang % 100 == 1) attendu += " \n \n \n ";
        attendu += entree(rang, 3 * rang);
      }
    });
    EXPECT_EQ(obtenu, attendu) << debut;
  }
}

TEST(EntriesWithoutRank, AreFormattedLikeAnyNumber) {
  std::string attendu;
  const std::string obtenu = ecrit([&](Sortie& sortie) {
    EntreesSansRang entrees(sortie);
    for (const std::int64_t n : croissants()) {
      entrees.ecrire(static_cast<std::uint64_t>(n));
      attendu.append(" ").append(std::to_string(n)).append(" , ");
    }
  });
  EXPECT_EQ(obtenu, attendu);
}

TEST(Entries, EveryBoundaryOfTheBufferIsCrossedWithoutLoss) {
  for (std::size_t avant = 0; avant < 160; ++avant) {
    std::string attendu(65536 - avant, 'x');
    const std::string obtenu = ecrit([&](Sortie& sortie) {
      sortie << attendu;
      {
        EntreesRangees entrees(sortie);
        for (std::int64_t rang = 99; rang < 103; ++rang) {
          entrees.ecrire_en_blocs(rang, 1'000'000'000'000'000'000 + rang);
          if (rang == 101) attendu += " \n \n \n ";
          attendu += entree(rang, 1'000'000'000'000'000'000 + rang);
        }
      }
      sortie << "fin";
    });
    ASSERT_EQ(obtenu, attendu + "fin") << avant;
  }
}

}  // namespace
}  // namespace premiers
