// SPDX-License-Identifier: MIT
// Screens as data: fields give place to numbers, everything else stands as it is.
#include "console/ecran.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

namespace premiers {
namespace {

std::string dessin(std::string_view texte, std::initializer_list<Champ> champs) {
  std::string ecran;
  Sortie sortie([&](std::string_view octets) {
    ecran += octets;
    return true;
  });
  dessiner(sortie, texte, champs);
  sortie.vider();
  return ecran;
}

TEST(Ecran, ATextWithoutFieldsIsPrintedVerbatim) {
  EXPECT_EQ(dessin(" \n \n \t  a  b ", {}), " \n \n \t  a  b ");
  EXPECT_EQ(dessin("", {{"np", 1}}), "");
}

TEST(Ecran, FieldsGivePlaceToTheirValues) {
  EXPECT_EQ(dessin("[ {np} : {P} ] .", {{"np", 12}, {"P", 37}}), "[ 12 : 37 ] .");
  EXPECT_EQ(dessin("{P}", {{"np", 12}, {"P", 37}}), "37");
  EXPECT_EQ(dessin("{P}{P}{np}", {{"np", 12}, {"P", 37}}), "373712");
  EXPECT_EQ(dessin("{n}", {{"n", std::numeric_limits<std::int64_t>::min()}}),
            "-9223372036854775808");
}

TEST(Ecran, AFieldThatIsNotGivenStandsAsItIs) {
  EXPECT_EQ(dessin("a {x} {np} b", {{"np", 2}}), "a {x} 2 b");
  EXPECT_EQ(dessin("{}", {{"np", 2}}), "{}");
}

TEST(Ecran, NothingComesBetweenTheTexts) {
  std::string ecran;
  Sortie sortie([&](std::string_view octets) {
    ecran += octets;
    return true;
  });
  constexpr std::string_view textes[] = {"a ", " b{n}", "\n", "{n}"};
  dessiner(sortie, textes, {{"n", 7}});
  dessiner(sortie, std::span<const std::string_view>(textes).first(1));
  sortie.vider();
  EXPECT_EQ(ecran, "a  b7\n7a ");
}

}  // namespace
}  // namespace premiers
