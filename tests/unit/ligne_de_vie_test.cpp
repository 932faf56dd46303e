// SPDX-License-Identifier: MIT
// The line that tells of long work: its words in wide and narrow windows, and its bytes.
#include "console/ligne_de_vie.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstddef>
#include <string>
#include <string_view>

namespace premiers {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

std::string texte(std::string_view quoi, double part, std::chrono::duration<double> duree,
                  std::size_t colonnes, const Etape& etape = {}) {
  return std::string(texte_de_vie(quoi, etape, part, duree, colonnes).texte());
}

TEST(TexteDeVie, TellsThePartAndWhatRemains) {
  // A quarter in 3 s: three more quarters take 9 s.
  EXPECT_EQ(texte("compte", 0.25, seconds(3), 80), "compte : 25 %, encore 9 s");
  EXPECT_EQ(texte("compte", 1, seconds(3), 80), "compte : 100 %, encore 0 s");
}

TEST(TexteDeVie, TellsThePassedSecondsWhereNoPartIsKnown) {
  EXPECT_EQ(texte("decomposition", 0, milliseconds(7900), 80), "decomposition : 7 s");
}

TEST(TexteDeVie, NoPartIsTooSmallForAnEstimate) {
  EXPECT_EQ(texte("compte", 1e-300, seconds(2), 80), "compte : 0 %, encore 1000000000000000 s");
}

TEST(TexteDeVie, LosesWhatComesLastAndThenTheNameNeverPartOfANumber) {
  // "compte : 25 %, encore 9 s" has 25 characters, "compte : 25 %" has 13; the last column is free.
  EXPECT_EQ(texte("compte", 0.25, seconds(3), 26), "compte : 25 %, encore 9 s");
  EXPECT_EQ(texte("compte", 0.25, seconds(3), 25), "compte : 25 %");
  EXPECT_EQ(texte("compte", 0.25, seconds(3), 14), "compte : 25 %");
  EXPECT_EQ(texte("compte", 0.25, seconds(3), 13), "25 %");
  EXPECT_EQ(texte("decomposition", 0, seconds(12), 15), "12 s");
}

TEST(TexteDeVie, TellsTheStepOfADecomposition) {
  const auto decomposition = [](const Etape& etape, double part, std::size_t colonnes = 80) {
    return texte("decomposition", part, seconds(5), colonnes, etape);
  };
  const Etape courbe{.genre = Etape::Genre::courbes, .chiffres = 25, .nombre = 281, .numero = 17};
  EXPECT_EQ(decomposition(courbe, 0), "decomposition, courbe 17 sur 281 pour 25 chiffres : 5 s");
  const Etape sans_fin{.genre = Etape::Genre::courbes, .chiffres = 40, .numero = 70000};
  EXPECT_EQ(decomposition(sans_fin, 0), "decomposition, courbe 70000 pour 40 chiffres : 5 s");
  EXPECT_EQ(decomposition({.genre = Etape::Genre::moins_un}, 0),
            "decomposition, methode p - 1 : 5 s");
  EXPECT_EQ(decomposition({.genre = Etape::Genre::crible}, 0.5),
            "decomposition, crible : 50 %, encore 5 s");
  EXPECT_EQ(decomposition({.genre = Etape::Genre::algebre}, 0), "decomposition, algebre : 5 s");
  // What is too long: the time left goes first, the step next.
  EXPECT_EQ(decomposition({.genre = Etape::Genre::crible}, 0.5, 41),
            "decomposition, crible : 50 %, encore 5 s");
  EXPECT_EQ(decomposition({.genre = Etape::Genre::crible}, 0.5, 40),
            "decomposition, crible : 50 %");
  EXPECT_EQ(decomposition({.genre = Etape::Genre::crible}, 0.5, 28), "decomposition : 50 %");
  EXPECT_EQ(decomposition(courbe, 0, 20), "decomposition : 5 s");
}

TEST(TexteDeVie, SaysNothingBelowTwelveColumns) {
  EXPECT_EQ(texte("compte", 0.25, seconds(3), 12), "25 %");
  for (std::size_t colonnes = 0; colonnes < 12; ++colonnes) {
    EXPECT_EQ(texte("compte", 0.25, seconds(3), colonnes), "") << colonnes;
  }
}

std::string octets(std::size_t dessinees, std::string_view apres, std::size_t colonnes,
                   bool obeit) {
  return std::string(remplacer(dessinees, apres, colonnes, obeit).texte());
}

// "\033[K" erases up to the end of the row, "\033[nM" takes n rows away from that of the cursor on
// (ECMA-48, EL and DL).
TEST(Remplacer, ErasesTheRowAndGoesBackToItsBeginning) {
  EXPECT_EQ(octets(0, "compte : 2 s", 80, true), "\r\033[Kcompte : 2 s\r");
  EXPECT_EQ(octets(79, "2 s", 80, true), "\r\033[K2 s\r");
  EXPECT_EQ(octets(12, "", 80, true), "\r\033[K\r");
}

TEST(Remplacer, TakesAwayTheRowsThatANarrowerWindowMadeOfOne) {
  EXPECT_EQ(octets(25, "25 %", 25, true), "\r\033[K25 %\r") << "it just fits into one row";
  EXPECT_EQ(octets(25, "25 %", 24, true), "\r\033[1M\033[K25 %\r") << "24 + 1";
  EXPECT_EQ(octets(25, "", 13, true), "\r\033[1M\033[K\r") << "13 + 12";
  EXPECT_EQ(octets(25, "", 12, true), "\r\033[2M\033[K\r") << "12 + 12 + 1";
  EXPECT_EQ(octets(25, "", 1, true), "\r\033[24M\033[K\r");
}

TEST(Remplacer, WipesADumbTerminalWithBlanksAndLeavesItsLastColumn) {
  EXPECT_EQ(octets(0, "compte : 2 s", 80, false), "\rcompte : 2 s\r");
  EXPECT_EQ(octets(6, "2 s", 80, false), "\r2 s   \r");
  EXPECT_EQ(octets(6, "", 80, false), "\r      \r");
  EXPECT_EQ(octets(6, "", 4, false), "\r   \r");
  EXPECT_EQ(octets(6, "", 1, false), "\r\r");
}

}  // namespace
}  // namespace premiers
