// SPDX-License-Identifier: MIT
// The one writer: every byte once and in order, whatever the blocks; a lost output is noticed.
#include "console/sortie.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <limits>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace premiers {
namespace {

/// Collects what comes, block by block.
struct Recueil {
  std::vector<std::string> blocs;

  Puits puits() {
    return [this](std::string_view octets) {
      blocs.emplace_back(octets);
      return true;
    };
  }
  std::string tout() const {
    std::string texte;
    for (const std::string& bloc : blocs) texte += bloc;
    return texte;
  }
};

template <class T>
std::string ecrit(const T& nombre) {
  Recueil recueil;
  Sortie sortie(recueil.puits());
  sortie << nombre;
  sortie.vider();
  return recueil.tout();
}

TEST(Numbers, ArePlainDecimalUpToTheLimitsOfTheirType) {
  EXPECT_EQ(ecrit(std::int64_t{0}), "0");
  EXPECT_EQ(ecrit(std::int64_t{-1}), "-1");
  EXPECT_EQ(ecrit(std::int64_t{1000000}), "1000000");
  EXPECT_EQ(ecrit(std::numeric_limits<std::int64_t>::max()), "9223372036854775807");
  EXPECT_EQ(ecrit(std::numeric_limits<std::int64_t>::min()), "-9223372036854775808");
}

TEST(Numbers, OfAnySizeArePlainDecimal) {
  EXPECT_EQ(ecrit(NTL::ZZ(0)), "0");
  EXPECT_EQ(ecrit(NTL::ZZ(-42)), "-42");
  const NTL::ZZ deux_63 = NTL::power2_ZZ(63);
  EXPECT_EQ(ecrit(NTL::power2_ZZ(62)), "4611686018427387904");
  EXPECT_EQ(ecrit(deux_63 - 1), "9223372036854775807");
  EXPECT_EQ(ecrit(deux_63), "9223372036854775808");
  EXPECT_EQ(ecrit(-deux_63), "-9223372036854775808");
  EXPECT_EQ(ecrit(-deux_63 - 1), "-9223372036854775809");
  EXPECT_EQ(ecrit(NTL::power2_ZZ(64)), "18446744073709551616");
  EXPECT_EQ(ecrit(NTL::power_ZZ(10, 60)), std::string("1") + std::string(60, '0'));
}

TEST(Blocks, TextsOfAllLengthsComeWholeAndInOrder) {
  Recueil recueil;
  Sortie sortie(recueil.puits());
  std::string attendu;
  for (std::size_t n = 0; n < 1200; ++n) {
    const std::string texte(n, static_cast<char>('a' + n % 26));
    sortie << texte << static_cast<std::int64_t>(n);
    attendu += texte + std::to_string(n);
  }
  sortie.vider();
  EXPECT_EQ(recueil.tout(), attendu);
  EXPECT_GT(recueil.blocs.size(), 5U);
  EXPECT_LT(recueil.blocs.size(), 40U) << "whole blocks, not single texts";
}

TEST(Blocks, ATextLongerThanTheBufferComesWhole) {
  Recueil recueil;
  Sortie sortie(recueil.puits());
  std::string texte;
  for (int i = 0; texte.size() < 1'000'000; ++i) texte += std::to_string(i) + " ";
  sortie << "avant " << texte << std::int64_t{7};
  sortie.vider();
  EXPECT_EQ(recueil.tout(), "avant " + texte + "7");
}

TEST(Blocks, NumbersAndReservedRoomAtEveryDistanceFromTheBlocksEnd) {
  for (std::size_t reste = 0; reste < 24; ++reste) {
    Recueil recueil;
    Sortie sortie(recueil.puits());
    const std::string rempli(65536 - reste, 'x');
    sortie << rempli << std::numeric_limits<std::int64_t>::min();
    char* place = sortie.reserver(4);
    std::memcpy(place, "abcd", 4);
    sortie.avancer(place + 3);
    sortie << "e";
    sortie.vider();
    ASSERT_EQ(recueil.tout(), rempli + "-9223372036854775808abce") << reste;
  }
}

TEST(Blocks, TheLargestRoomIsAlwaysGiven) {
  Recueil recueil;
  Sortie sortie(recueil.puits());
  std::string attendu;
  for (int i = 0; i < 300; ++i) {
    char* place = sortie.reserver(Sortie::place_max);
    ASSERT_GE(sortie.fin_place() - place, static_cast<std::ptrdiff_t>(Sortie::place_max));
    std::memset(place, 'a' + i % 26, Sortie::place_max);
    sortie.avancer(place + Sortie::place_max - 1);
    attendu += std::string(Sortie::place_max - 1, static_cast<char>('a' + i % 26));
  }
  sortie.vider();
  EXPECT_EQ(recueil.tout(), attendu);
}

TEST(Emptying, HandsOverEachByteOnceAndNeverNothing) {
  Recueil recueil;
  Sortie sortie(recueil.puits());
  sortie.vider();
  EXPECT_TRUE(recueil.blocs.empty());
  sortie << "a" << std::string_view();
  sortie.vider();
  sortie.vider();
  sortie << "b";
  sortie.vider();
  EXPECT_EQ(recueil.blocs, (std::vector<std::string>{"a", "b"}));
}

TEST(Emptying, HappensByItselfOnlyWhenAResultHasWaitedTooLong) {
  Recueil recueil;
  Sortie sortie(recueil.puits());
  sortie.vider();
  std::this_thread::sleep_for(2 * Sortie::patience);
  sortie.vider_si_tard();
  EXPECT_TRUE(recueil.blocs.empty()) << "there was nothing to hand over";
  sortie << "a";
  sortie.vider();
  sortie << "b";
  sortie.vider_si_tard();
  sortie.vider_si_tard();
  // A machine that stops this test for 20 ms in between may already have let "b" go.
  EXPECT_LE(recueil.blocs.size(), 2U);
  std::this_thread::sleep_for(2 * Sortie::patience);
  sortie.vider_si_tard();
  EXPECT_EQ(recueil.blocs, (std::vector<std::string>{"a", "b"}));
}

TEST(LostOutput, Throws) {
  Sortie sortie([](std::string_view) { return false; });
  sortie << "a";
  EXPECT_THROW(sortie.vider(), SortiePerdue);
}

TEST(LostOutput, ThrowsFromAWriteThatFillsTheBuffer) {
  Sortie sortie([](std::string_view) { return false; });
  const std::string texte(200'000, 'x');
  EXPECT_THROW(sortie << texte, SortiePerdue);
}

TEST(LostOutput, NothingIsWrittenTwiceAfterIt) {
  bool bouche = true;
  std::vector<std::string> essais;
  Sortie sortie([&](std::string_view octets) {
    essais.emplace_back(octets);
    return !bouche;
  });
  sortie << "a";
  EXPECT_THROW(sortie.vider(), SortiePerdue);
  bouche = false;
  sortie.vider();
  sortie << "b";
  sortie.vider();
  EXPECT_EQ(essais, (std::vector<std::string>{"a", "b"}));
}

}  // namespace
}  // namespace premiers
