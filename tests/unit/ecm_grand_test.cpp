// SPDX-License-Identifier: MIT
// Curves and P - 1 with large bounds. What a curve must find and what it cannot find follows from
// the order of its point modulo p, which the library PARI gives (ellcard, ellorder of the curve in
// Weierstrass form); it stands beside each case. The curves are published ones, from test suites of
// the method.
#include "primes/facteurs/ecm_grand.h"

#include <NTL/ZZ.h>
#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

#include "primes/arithmetique/montgomery_long.h"
#include "primes/facteurs/ecm.h"
#include "primes/facteurs/ecm_chaines.h"
#include "primes/facteurs/ecm_paires.h"
#include "primes/facteurs/ecm_rangees.h"
#include "primes/facteurs/ecm_seconde.h"
#include "primes/facteurs/p_moins_un.h"

namespace premiers::facteurs {
namespace {

using ecm::BornesLongues;
using ecm::essayer_courbe;
using ecm::essayer_p_moins_un;
using NTL::ZZ;

ZZ lire(const char* texte) { return NTL::conv<ZZ>(texte); }

bool est_premier_par_division(std::uint64_t n) {
  for (std::uint64_t d = 2; d * d <= n; ++d) {
    if (n % d == 0) return false;
  }
  return n > 1;
}

/// p times a prime that makes a number of so many bits.
ZZ completer(const ZZ& p, long bits) {
  NTL::SetSeed(ZZ{bits});
  return p * NTL::GenPrime_ZZ(bits - NTL::NumBits(p) + 1);
}

/// One number for each length of the ring.
std::vector<long> toutes_les_longueurs(long minimum) {
  std::vector<long> bits;
  for (long L = 2; L <= 11; ++L) {
    if (64 * L - 5 > minimum) bits.push_back(64 * L - 5);
  }
  return bits;
}

// ---- Lists -------------------------------------------------------------------------------------

TEST(Multiplicateurs, GiveTheLeastCommonMultiple) {
  for (const auto& [debut, fin] : {std::array{2U, 100U}, {100U, 2000U}, {2000U, 5000U}}) {
    ZZ attendu{1};
    for (std::uint64_t q = debut + 1; q <= fin; ++q) {
      std::uint64_t p = 2;
      while (q % p != 0) ++p;
      std::uint64_t r = q;
      while (r % p == 0) r /= p;
      if (r == 1) attendu *= static_cast<long>(p);
    }
    ZZ produit{1};
    for (const auto& m : ecm::multiplicateurs(debut, fin)) produit *= static_cast<long>(m.p);
    EXPECT_EQ(produit, attendu) << debut << ' ' << fin;
  }
}

using Point = ecm::Point<MontgomeryLong>;
using Courbe = ecm::Courbe<MontgomeryLong>;

/// m P by the doubling ladder: k P and (k + 1) P, bit by bit.
Point multiple(const MontgomeryLong& a, const Courbe& courbe, const Point& depart,
               std::uint32_t m) {
  Point bas = depart;
  Point haut;
  ecm::doubler(a, courbe, haut, depart);
  for (int i = static_cast<int>(std::bit_width(m)) - 2; i >= 0; --i) {
    const bool un = (m >> i & 1) != 0;
    ecm::ajouter(a, un ? bas : haut, haut, bas, depart);
    ecm::doubler(a, courbe, un ? haut : bas, un ? haut : bas);
  }
  return bas;
}

TEST(Marche, EveryChainLeadsToTheMultipleThatTheDoublingLadderGives) {
  const ZZ p = NTL::power2_ZZ(107) - 1;  // a prime, so that X / Z can be compared
  const MontgomeryLong a{p};
  Courbe courbe;
  const auto depart = ecm::suyama(a, {11}, courbe);
  std::vector<ecm::Multiplicateur> chaines = ecm::multiplicateurs(2, 3000);
  for (const std::uint32_t m : {3U, 5U, 7U, 31U, 101U, 1009U}) {  // not the best ones only
    for (std::uint32_t r = (m + 1) / 2; r < m; ++r) chaines.push_back({m, r});
  }
  for (const auto& m : chaines) {
    ecm::Marche<MontgomeryLong> marche{a, courbe, depart};
    marche.multiplier(m);
    const auto attendu = multiple(a, courbe, depart, m.p);
    const ZZ x = a.lire(marche.point().x)[0];
    const ZZ z = a.lire(marche.point().z)[0];
    EXPECT_NE(z, 0);
    EXPECT_EQ(x * a.lire(attendu.z)[0] % p, z * a.lire(attendu.x)[0] % p) << m.p << ' ' << m.r;
  }
}

TEST(Rangees, HoldEveryPrimeBetweenTheBoundsAndNothingBeside) {
  const std::uint64_t b1 = 20011;
  const std::uint64_t b2 = 100003;  // both prime: the lower bound is left out, the upper is not
  const ecm::Rangees rangees{b1, b2};
  std::vector<bool> couvert(200000);
  std::size_t paires = 0;
  std::vector<ecm::Paire> rangee;
  for (std::size_t i = 0; i < rangees.bits.size(); ++i) {
    const std::uint64_t milieu = (rangees.k0 + i) * ecm::Rangees::pas_de_geant;
    ecm::lire_rangee(rangees.bits[i], rangee);
    for (const auto& [geant, b] : rangee) {
      EXPECT_EQ(geant, 0);
      const std::uint64_t j = ecm::Rangees::residus()[b];
      const auto voulu = [&](std::uint64_t q) {
        return b1 < q && q <= b2 && est_premier_par_division(q);
      };
      EXPECT_TRUE(voulu(milieu - j) || voulu(milieu + j)) << milieu << ' ' << j;
      couvert[milieu - j] = couvert[milieu + j] = true;
      ++paires;
    }
  }
  std::size_t premiers = 0;
  for (std::uint64_t q = b1 + 1; q <= b2; ++q) {
    if (!est_premier_par_division(q)) continue;
    ++premiers;
    EXPECT_TRUE(couvert[q]) << q;
  }
  EXPECT_EQ(premiers, 9593U - 2263U);  // pi(100003) - pi(20011)
  EXPECT_LT(paires, premiers);
}

// ---- Steps of the second stage -----------------------------------------------------------------

using Trouves = ecm::Trouves<MontgomeryLong>;

/// Points (i : z) for the z of a list.
std::vector<Point> points_de(const MontgomeryLong& a, const std::vector<ZZ>& z) {
  std::vector<Point> points;
  for (const ZZ& x : z) {
    points.push_back({a.entrer({en_zz(std::uint64_t{points.size() + 5})}), a.entrer({x})});
  }
  return points;
}

TEST(Normaliser, DividesEveryXByItsZ) {
  const ZZ n = ZZ{17179869739} * 17179872581;
  const MontgomeryLong a{n};
  const std::vector<ZZ> z{ZZ{1}, ZZ{2}, n - 1, ZZ{123456789}, n / 3};
  auto points = points_de(a, z);
  Trouves trouves{a};
  ecm::normaliser(std::span<Point>{points}, trouves);
  EXPECT_TRUE(trouves.rien());
  for (std::size_t i = 0; i < z.size(); ++i) {
    EXPECT_EQ(a.lire(points[i].x)[0] * z[i] % n, static_cast<long>(i + 5)) << i;
  }
}

TEST(Normaliser, GivesTheFactorsThatForbidIt) {
  const ZZ p{17179869739};
  const ZZ q{17179872581};
  const MontgomeryLong a{p * q};
  const auto divise = [&](const std::vector<ZZ>& z) {
    auto points = points_de(a, z);
    Trouves trouves{a};
    ecm::normaliser(std::span<Point>{points}, trouves);
    return trouves.g[0];
  };
  EXPECT_EQ(divise({ZZ{3}, 5 * p, ZZ{7}}), p);
  EXPECT_EQ(divise({ZZ{3}, 5 * q}), q);
  EXPECT_EQ(divise({2 * q, 5 * p}), p * q);
  EXPECT_EQ(divise({ZZ{3}, ZZ{0}}), p * q);
}

/// The z of two points of a block, found together: one by one they say what the first has found.
TEST(Comparer, StepByStepKeepsThePointsOfABlockApart) {
  struct Pas {
    const std::vector<Point>& points;
    std::size_t i = 0;
    void suivants(std::span<Point> geants, Trouves& trouves) {
      for (Point& p : geants) p = points[i++];
      ecm::normaliser(geants, trouves);
    }
  };
  const ZZ p{17179869739};
  const ZZ q{17179872581};
  const MontgomeryLong a{p * q};
  const auto points = points_de(a, {ZZ{3}, 2 * q, 5 * p, ZZ{7}});
  const auto bebes = points_de(a, std::vector<ZZ>(ecm::Rangees::bebes, ZZ{1}));
  ecm::Rangees rangees{2000, 2000 + 3 * ecm::Rangees::pas_de_geant};
  ASSERT_LE(rangees.bits.size(), points.size());
  for (auto& rangee : rangees.bits) rangee = {};
  for (const auto& [allure, attendu] :
       {std::pair{ecm::Allure::rapide, ZZ{p * q}}, std::pair{ecm::Allure::pas_a_pas, q}}) {
    Trouves trouves{a};
    Pas pas{points};
    ecm::comparer(pas, std::span<const Point>{bebes}, rangees, allure, trouves, {});
    EXPECT_EQ(trouves.g[0], attendu);
  }
}

// ---- Published curves --------------------------------------------------------------------------

using ecm::essayer_courbe_courte;

TEST(CourbesPubliees, OfSmallBoundsFindWhatTheirOrdersSay) {
  struct Cas {
    const char* p;
    std::uint64_t sigma;
    std::size_t b1, b2;  // the second greatest and the greatest prime of the order
  };
  for (const auto& c : {Cas{"30210181", 7, 29, 2411},                     // 2^4 3^3 29 2411
                        Cas{"33554520197234177", 262763035, 743, 937},    // .. 601 743 937
                        Cas{"33554520197234177", 1691973485, 283, 1709},  // .. 263 283 1709
                        Cas{"24651922299337", 2301432245, 157, 521},      // .. 67 157 521
                        Cas{"291310394389387", 3547, 167, 211}}) {        // .. 101 167 211
    const ZZ p = lire(c.p);
    const ZZ n = p * (NTL::power2_ZZ(127) - 1);
    EXPECT_EQ(essayer_courbe_courte(n, c.sigma, c.b1, c.b2), p) << p;
    EXPECT_EQ(essayer_courbe_courte(n, c.sigma, c.b1 - 1, c.b2), 1) << p;
  }
  EXPECT_EQ(essayer_courbe_courte(lire("2050449353925555290706354283"), 7, 30, 2411), 30210181);
  EXPECT_EQ(
      essayer_courbe_courte(lire("3533000986701102061387017352606588294716061"), 3547, 167, 211),
      lire("291310394389387"));
}

TEST(CourbesPublieesLent, OfTwentyFiveDigitsFindsWithExactlyTheBoundsOfItsOrder) {
  // 2^2 3 53 61 157 1747 12073 171553 207013
  const ZZ n = lire("17061648125571273329563156588435816942778260706938821014533");
  const std::uint64_t sigma = 585928442;
  EXPECT_EQ(essayer_courbe(n, sigma, BornesLongues{171553, 207013}),
            lire("4562371492227327125110177"));
  EXPECT_EQ(essayer_courbe(n, sigma, BornesLongues{207013, 300000}),
            lire("4562371492227327125110177"));
  EXPECT_EQ(essayer_courbe(n, sigma, BornesLongues{171552, 207013}), 1);
  EXPECT_EQ(essayer_courbe(n, sigma, BornesLongues{171553, 207012}), 1);
}

TEST(CourbesPubliees, OfLongSigmaFindsWithinALongSecondStageOnly) {
  // The greatest prime of the order is 11639363.
  const ZZ p = lire("9302886086952880781510307853");
  const ZZ n = completer(p, 230);
  const std::uint64_t sigma = 10472874358726434170U;
  EXPECT_EQ(essayer_courbe(n, sigma, BornesLongues{50000, 5000000}), 1);
  EXPECT_EQ(essayer_courbe(n, sigma, BornesLongues{50000, 12700000}), p);
}

TEST(CourbesLonguesBornes, FindTheSameInTheRingOfEveryLength) {
  const ZZ p{33554520197234177};
  for (const long bits : toutes_les_longueurs(100)) {
    const ZZ n = completer(p, bits);
    EXPECT_EQ(essayer_courbe(n, 1691973485, BornesLongues{2000, 4000}), p) << bits;
    EXPECT_EQ(essayer_courbe(n, 12345, BornesLongues{2000, 4000}), 1) << bits;
  }
}

TEST(CourbesLonguesBornes, SeparateFactorsThatOneGcdFinds) {
  // sigma = 7; the greatest primes of the two orders fall into the same part of the curve.
  struct Cas {
    long p, q;
    const char* ou;
  };
  const BornesLongues bornes{5000, 10000};
  for (const auto& c : {Cas{17179869739, 17179872581, "the table of chains: 1039 and 577"},
                        Cas{17179870373, 17179872167, "the list: 2377 and 2087"},
                        Cas{17179870369, 17179872137, "the second stage: 5167 and 7883"}}) {
    const ZZ grand = NTL::power2_ZZ(127) - 1;
    EXPECT_EQ(essayer_courbe(c.p * grand, 7, bornes), c.p) << c.ou;
    EXPECT_EQ(essayer_courbe(c.q * grand, 7, bornes), c.q) << c.ou;
    const ZZ f = essayer_courbe(ZZ{c.p} * c.q, 7, bornes);
    EXPECT_TRUE(f == c.p || f == c.q) << c.ou << ": " << f;
    EXPECT_EQ(essayer_courbe(ZZ{c.p} * c.q * grand, 7, bornes), ZZ{c.p} * c.q) << c.ou;
  }
}

TEST(CourbesLonguesBornes, FindThePrimeInItsPowersAndTwice) {
  const ZZ p{33554520197234177};
  const BornesLongues bornes{2000, 4000};
  const ZZ f = essayer_courbe(p * p * (NTL::power2_ZZ(107) - 1), 1691973485, bornes);
  EXPECT_TRUE(f == p || f == p * p) << f;
  EXPECT_EQ(essayer_courbe(NTL::power2_ZZ(127) - 1, 1691973485, bornes), 1);
}

TEST(CourbesLonguesBornesEnNombre, TellThatTheyAreAliveAllAlong) {
  int appels = 0;
  const Suivi suivi = [&](double part) {
    ++appels;
    EXPECT_EQ(part, 0);
  };
  const BornesLongues bornes{50000, 5000000, suivi};
  EXPECT_GT(appels, 10);
  appels = 0;
  // A prime, so that no factor ends it early: every 64th of 4830 multipliers, every 16th of 2144 rows.
  essayer_courbe(NTL::power2_ZZ(607) - 1, 10, bornes, suivi);
  EXPECT_GT(appels, 200);
}

// ---- P - 1 -------------------------------------------------------------------------------------

TEST(MoinsUn, FindsWhatItsOrderSaysInTheRingOfEveryLength) {
  // p - 1 = 2 19 41 223 487 617 1361 70381
  const ZZ p = lire("10000000000000067327");
  for (const long bits : toutes_les_longueurs(100)) {
    const ZZ n = completer(p, bits);
    EXPECT_EQ(essayer_p_moins_un(n, 2000, 70381), p) << bits;
    // 70381 = 30 2310 + 1081 is covered together with 68219, which is prime as well.
    EXPECT_EQ(essayer_p_moins_un(n, 2000, 68218), 1) << bits;
    EXPECT_EQ(essayer_p_moins_un(n, 70381, 80000), p) << bits;
  }
}

TEST(MoinsUn, SeparatesTwoFactorsThatTheSameStageFinds) {
  // q - 1 = 2^2 3^2 11 19 23 89 167 587 198701
  const ZZ p = lire("10000000000000067327");
  const ZZ q = lire("300000000000015613");
  for (const auto& [b1, b2] :
       {std::array{2000U, 200000U}, {100000U, 200000U}, {200000U, 300000U}}) {
    const ZZ f = essayer_p_moins_un(p * q, b1, b2);
    EXPECT_TRUE(f == p || f == q) << b1 << ' ' << f;
  }
  // 2^3 3 11^2 71 97 859 and 2^4 7^2 13 19 79 1123: both within the first exponent.
  const ZZ f = essayer_p_moins_un(ZZ{17179869433} * 17179869617, 2000, 5000);
  EXPECT_TRUE(f == 17179869433 || f == 17179869617) << f;
}

}  // namespace
}  // namespace premiers::facteurs
