// SPDX-License-Identifier: MIT
// The ladder of curves: how many are taken for which depth, and that they go on where they were.
#include "primes/facteurs/echelle.h"

#include <NTL/ZZ.h>
#include <gtest/gtest.h>

#include <cstdint>

namespace premiers::facteurs {
namespace {

using NTL::ZZ;

/// Something that no curve splits, so that all of them are taken.
ZZ premier_de_mersenne() { return NTL::power2_ZZ(107) - 1; }

TEST(Echelle, TakesTheCurvesOfALevelInProportionToTheDepth) {
  Echelle etat;
  const ZZ n = premier_de_mersenne();
  EXPECT_TRUE(facteurs_par_echelle(n, 0, etat).empty());
  EXPECT_TRUE(facteurs_par_echelle(n, 15, etat).empty());
  EXPECT_EQ(etat.niveau, 0U);
  EXPECT_EQ(etat.courbe, 0U);
  EXPECT_TRUE(facteurs_par_echelle(n, 16, etat).empty());
  EXPECT_EQ(etat.niveau, 0U);
  EXPECT_GE(etat.courbe, 20U);  // a fifth of 98, in whole eights where they come by eight
  EXPECT_LE(etat.courbe, 24U);
}

TEST(Echelle, TakesNoCurveTwice) {
  const ZZ n = premier_de_mersenne();
  int appels = 0;
  const Suivi suivi = [&](double) { ++appels; };
  const auto appels_pour = [&](double profondeur, Echelle& etat) {
    appels = 0;
    EXPECT_TRUE(facteurs_par_echelle(n, profondeur, etat, suivi).empty());
    return appels;
  };
  Echelle etat{0, 0};
  const int vingt = appels_pour(16, etat);
  EXPECT_EQ(appels_pour(16, etat), 0);
  const int dix_neuf = appels_pour(17, etat);
  EXPECT_GE(etat.courbe, 39U);
  EXPECT_LE(etat.courbe, 40U);
  EXPECT_LT(dix_neuf, vingt);  // P - 1 is not done again
  EXPECT_GT(dix_neuf, vingt / 8);
}

TEST(EchelleLent, GoesOnWithWhatIsLeftOfN) {
  // Factors of 14, 15 and 16 digits: P - 1 or a few curves of the first level find each.
  ZZ reste = NTL::power2_ZZ(521) - 1;
  NTL::SetSeed(ZZ{3});
  for (const long bits : {45L, 49L, 52L}) reste *= NTL::GenPrime_ZZ(bits);
  Echelle etat;
  std::uint64_t courbes = 0;
  for (int trouves = 0; trouves < 3; ++trouves) {
    const auto facteurs = facteurs_par_echelle(reste, profondeur_sans_fin, etat);
    ASSERT_FALSE(facteurs.empty());
    for (const ZZ& f : facteurs) {
      ASSERT_GT(f, 1);
      ASSERT_LT(f, NTL::power2_ZZ(521) - 1);
      const ZZ d = NTL::GCD(f, reste);
      ASSERT_NE(NTL::divide(reste, reste, d), 0);
    }
    EXPECT_GE(etat.courbe, courbes);
    courbes = etat.courbe;
    if (NTL::ProbPrime(reste) != 0) break;
  }
  EXPECT_EQ(reste, NTL::power2_ZZ(521) - 1);
}

TEST(Echelle, MayBeAbandonedAndGoesOnWithTheSameCurve) {
  struct Abandon {};
  Echelle etat{0, 5};
  int appels = 0;
  const Suivi suivi = [&](double) {
    if (++appels == 300) throw Abandon{};
  };
  EXPECT_THROW(facteurs_par_echelle(premier_de_mersenne(), 20, etat, suivi), Abandon);
  EXPECT_GT(etat.courbe, 5U);
  EXPECT_LT(etat.courbe, 98U);
}

TEST(Echelle, LeavesWhatIsTooLongForItsRings) {
  Echelle etat;
  EXPECT_TRUE(
      facteurs_par_echelle(2027 * NTL::power2_ZZ(700) + 2027, profondeur_sans_fin, etat).empty());
  EXPECT_EQ(etat.courbe, 0U);
}

}  // namespace
}  // namespace premiers::facteurs
