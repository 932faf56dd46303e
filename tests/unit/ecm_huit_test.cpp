// SPDX-License-Identifier: MIT
// Eight curves at a time against the same curves one by one, and against published ones.
#include <NTL/ZZ.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "primes/facteurs/ecm_grand.h"
#include "primes/facteurs/huit.h"
#include "versions_de_huit.h"

namespace premiers::facteurs::ecm {
namespace {

using NTL::ZZ;

ZZ lire(const char* chiffres) { return NTL::conv<ZZ>(chiffres); }

/// p times primes without any of interest, of so many bits in all.
ZZ completer(const ZZ& p, long bits) {
  NTL::SetSeed(ZZ{bits});
  return p * NTL::GenPrime_ZZ(bits - NTL::NumBits(p) + 1);
}

std::vector<ZZ> une_par_une(const ZZ& n, std::uint64_t sigma, const BornesLongues& bornes) {
  std::vector<ZZ> facteurs;
  for (std::size_t j = 0; j < Huit::voies; ++j) {
    const ZZ f = essayer_courbe(n, sigma + j, bornes);
    if (f != 1) facteurs.push_back(f);
  }
  return facteurs;
}

TEST(HuitCourbes, FindWhatEachFindsAloneAtEveryLengthAndInEveryLane) {
  // The orders of this curve: 2^6 3 11 29 59 73 263 283 1709.
  const ZZ p{33554520197234177};
  constexpr std::uint64_t sigma = 1691973485;
  const BornesLongues bornes{2000, 4000};
  pour_chaque_version([&](auto noyaux) {
    std::uint64_t voie = 0;
    for (std::size_t k = Huit::membres_min; k <= Huit::membres_max; ++k, ++voie) {
      const ZZ n = completer(p, std::min(Huit::bits_maximum(k), 690L));
      const std::uint64_t premiere = sigma - voie % Huit::voies;
      const auto facteurs = essayer_huit_courbes(n, premiere, bornes, noyaux);
      EXPECT_EQ(facteurs, une_par_une(n, premiere, bornes)) << k << " limbs";
      EXPECT_EQ(std::count(facteurs.begin(), facteurs.end(), p), std::ssize(facteurs)) << k;
      EXPECT_FALSE(facteurs.empty()) << k << " limbs";
    }
  });
}

TEST(HuitCourbesCourtes, FindWhatTheFirstLaneThatFindsAnythingFindsAlone) {
  NTL::SetSeed(ZZ{6});
  int trouves = 0;
  pour_chaque_version([&](auto noyaux) {
    for (const long bits : {90L, 100L, 101L, 152L, 153L, 204L, 205L, 308L, 309L, 412L, 700L}) {
      const ZZ n = NTL::GenPrime_ZZ(30) * NTL::GenPrime_ZZ(bits - 30);
      for (std::uint64_t sigma = 6; sigma < 86; sigma += Huit::voies) {
        ZZ attendu{1};
        for (std::size_t j = Huit::voies; j-- > 0;) {
          const ZZ f = essayer_courbe_courte(n, sigma + j, 100, 5000);
          if (f != 1) attendu = f;
        }
        EXPECT_EQ(essayer_huit_courtes(n, sigma, 100, 5000, noyaux), attendu) << n << ' ' << sigma;
        trouves += attendu != 1 ? 1 : 0;
      }
    }
    EXPECT_GT(trouves, 10);
  });
}

TEST(HuitCourbesLent, OfTwentyFiveDigitsFindWithExactlyTheBoundsOfTheOrder) {
  // 2^2 3 53 61 157 1747 12073 171553 207013 (GMP-ECM's published curve, sigma = 585928442)
  const ZZ n = lire("17061648125571273329563156588435816942778260706938821014533");
  const std::vector<ZZ> p{lire("4562371492227327125110177")};
  pour_chaque_version([&](auto noyaux) {
    const auto essayer = [&](std::uint64_t b1, std::uint64_t b2) {
      return essayer_huit_courbes(n, 585928442, BornesLongues{b1, b2}, noyaux);
    };
    EXPECT_EQ(essayer(171553, 207013), p);
    EXPECT_EQ(essayer(207013, 300000), p);
    EXPECT_TRUE(essayer(171552, 207013).empty());
    EXPECT_TRUE(essayer(171553, 207012).empty());
  });
}

TEST(HuitCourbes, LoseNoFactorThatOthersFindToo) {
  // Curves of sigma = 7 whose orders end in the same part; here they have company in other lanes.
  const ZZ p{17179869739};
  const ZZ q{17179872581};
  const ZZ grand = NTL::power2_ZZ(127) - 1;
  const BornesLongues bornes{5000, 10000};
  pour_chaque_version([&](auto noyaux) {
    for (const ZZ& n : {ZZ{p * q}, ZZ{p * q * grand}, ZZ{p * p * grand}}) {
      ZZ reste = n;
      for (const ZZ& f : essayer_huit_courbes(n, 7, bornes, noyaux)) {
        EXPECT_GT(f, 1);
        EXPECT_LT(f, n);
        EXPECT_EQ(n % f, 0);
        reste /= NTL::GCD(reste, f);
      }
      EXPECT_TRUE(reste == 1 || reste == p || reste == q || reste == grand || reste == p * grand)
          << reste;
    }
  });
}

TEST(HuitCourbes, TellThatTheyAreAliveAllAlong) {
  int appels = 0;
  const Suivi suivi = [&](double part) {
    ++appels;
    EXPECT_EQ(part, 0);
  };
  const BornesLongues bornes{11000, 1100000};
  pour_chaque_version([&](auto noyaux) {
    appels = 0;
    EXPECT_TRUE(essayer_huit_courbes(NTL::power2_ZZ(521) - 1, 10, bornes, noyaux, suivi).empty());
    EXPECT_GT(appels, 40);  // every 64th of 1,330 multipliers, every 16th of 476 rows
  });
}

}  // namespace
}  // namespace premiers::facteurs::ecm
