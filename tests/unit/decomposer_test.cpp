// SPDX-License-Identifier: MIT
// The decomposition of integers of any size. Expected factors are published ones (the source stands
// next to them), known by construction, or found by division; every decomposition is also
// multiplied back and each of its factors proven prime a second time, by the library alone.
#include <NTL/ZZ.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <initializer_list>
#include <stdexcept>
#include <string>
#include <vector>

#include "primes/facteurs/facteurs.h"
#include "primes/facteurs/pont_pari.h"

namespace premiers::facteurs {

// For the messages of a failing test.
void PrintTo(const Facteur& f, std::ostream* os) { *os << f.premier << '^' << f.exposant; }

namespace {

using NTL::power;
using NTL::power2_ZZ;
using NTL::to_ZZ;
using NTL::ZZ;

ZZ lire(const char* texte) { return NTL::conv<ZZ>(texte); }

/// 2^p - 1.
ZZ mersenne(long p) { return power2_ZZ(p) - 1; }

ZZ produit(const Facteurs& facteurs) {
  ZZ n{1};
  for (const auto& f : facteurs) n *= power(f.premier, static_cast<long>(f.exposant));
  return n;
}

/// The laws: what is multiplied back is N, the factors increase, each is prime, exponents count.
void verifier_les_lois(const ZZ& N, const Facteurs& facteurs) {
  EXPECT_EQ(produit(facteurs), N);
  for (std::size_t i = 0; i < facteurs.size(); ++i) {
    EXPECT_GE(facteurs[i].exposant, 1);
    EXPECT_TRUE(pari::est_premier_prouve(facteurs[i].premier)) << facteurs[i].premier;
    if (i > 0) {
      EXPECT_LT(facteurs[i - 1].premier, facteurs[i].premier);
    }
  }
}

void attendre(const ZZ& N, const Facteurs& attendus) {
  const Facteurs trouves = decomposer(N);
  EXPECT_EQ(trouves, attendus) << N;
  verifier_les_lois(N, trouves);
}

/// The distinct primes, each once.
void attendre(const ZZ& N, std::initializer_list<const char*> premiers) {
  Facteurs attendus;
  for (const char* p : premiers) attendus.push_back({lire(p), 1});
  attendre(N, attendus);
}

void attendre_premier(const ZZ& N) { attendre(N, Facteurs{{N, 1}}); }

Facteurs par_division(std::int64_t n) {
  Facteurs facteurs;
  for (std::int64_t p = 2; p * p <= n; ++p) {
    if (n % p != 0) continue;
    facteurs.push_back({to_ZZ(p), 0});
    for (; n % p == 0; n /= p) ++facteurs.back().exposant;
  }
  if (n > 1) facteurs.push_back({to_ZZ(n), 1});
  return facteurs;
}

/// A prime of exactly `bits` bits, the same in every run.
ZZ premier_de(long bits, long graine) {
  NTL::SetSeed(to_ZZ(1000 * bits + graine));
  return NTL::GenPrime_ZZ(bits);
}

TEST(Decomposer, OneHasNoFactors) { EXPECT_TRUE(decomposer(ZZ{1}).empty()); }

TEST(Decomposer, SmallIntegersAsByDivision) {
  for (std::int64_t n = 1; n <= 20000; ++n) {
    ASSERT_EQ(decomposer(to_ZZ(n)), par_division(n)) << n;
  }
}

TEST(Decomposer, AcrossSixtyFourBits) {
  for (long d = -150; d <= 150; ++d) {
    const ZZ N = power2_ZZ(64) + d;
    verifier_les_lois(N, decomposer(N));
  }
  attendre_premier(lire("18446744073709551629"));  // 2^64 + 13, the first prime beyond
}

TEST(Decomposer, PowersOfTwoAreOneFactor) {
  for (long e = 1; e <= 660; ++e) attendre(power2_ZZ(e), Facteurs{{ZZ{2}, e}});
}

TEST(Decomposer, PrimePowersAroundTheLimitOfDivision) {
  for (const long p : {3L, 2003L, 2011L, 2017L, 65537L}) {
    for (long e = 1; e <= 30; ++e) attendre(power(ZZ{p}, e), Facteurs{{ZZ{p}, e}});
  }
}

TEST(DecomposerLent, ProductsOfTwoPrimesAcrossTheLimitsOfEveryMethod) {
  for (long bits = 60; bits <= 152; bits += bits < 100 || bits > 108 ? 4 : 1) {
    for (long graine = 0; graine < 3; ++graine) {
      const ZZ p = premier_de(bits / 2, graine);
      const ZZ q = premier_de(bits - bits / 2, graine + 100);
      if (p == q) continue;
      attendre(p * q, p < q ? Facteurs{{p, 1}, {q, 1}} : Facteurs{{q, 1}, {p, 1}});
    }
  }
}

TEST(DecomposerLent, ShortFactorOfALongInteger) {
  for (long bits = 12; bits <= 44; bits += 4) {
    for (const long autre : {70L, 90L, 150L, 200L, 300L}) {
      const ZZ p = premier_de(bits, 7);
      const ZZ q = premier_de(autre, 8);
      attendre(p * q, Facteurs{{p, 1}, {q, 1}});
    }
  }
}

TEST(DecomposerLent, FactorsOfFifteenDigitsOfIntegersThatNoSieveReaches) {
  // Several, so that the curves go on with what is left of N.
  const ZZ p = premier_de(48, 21);
  const ZZ q = premier_de(51, 22);
  for (const long autre : {240L, 400L, 550L}) {
    const ZZ r = premier_de(autre, 23);
    attendre(p * q * r, Facteurs{{p, 1}, {q, 1}, {r, 1}});
  }
  const ZZ r = premier_de(300, 23);
  attendre(p * q * q * r, Facteurs{{p, 1}, {q, 2}, {r, 1}});
}

TEST(Decomposer, SquaresAndCubesOfPrimesOfEverySize) {
  for (const long bits :
       {11L, 16L, 31L, 32L, 33L, 51L, 52L, 53L, 63L, 64L, 65L, 100L, 128L, 200L}) {
    const ZZ p = premier_de(bits, 3);
    for (const long e : {2L, 3L}) attendre(power(p, e), Facteurs{{p, e}});
  }
}

TEST(Decomposer, PowersOfThirtyDigitPrimes) {
  // Mersenne primes: of 27, 33 and 39 digits.
  for (const long p : {89L, 107L, 127L}) {
    for (const long e : {2L, 3L, 4L, 5L})
      attendre(power(mersenne(p), e), Facteurs{{mersenne(p), e}});
  }
}

TEST(Decomposer, RepeatedFactorsBesideOthers) {
  const ZZ p = premier_de(34, 1);
  const ZZ q = premier_de(45, 2);
  attendre(p * p * q, Facteurs{{p, 2}, {q, 1}});
  attendre(p * q * q * q, Facteurs{{p, 1}, {q, 3}});
  attendre(power(p * q, 2), Facteurs{{p, 2}, {q, 2}});
  attendre(power(p, 6) * power(q, 4), Facteurs{{p, 6}, {q, 4}});
}

// Where curves and the sieve take turns, a factor may come that is no prime.
TEST(Decomposer, ThreePrimesAndSquaresFromEightyTo103Bits) {
  for (long bits = 27; bits <= 34; ++bits) {
    const ZZ p = premier_de(bits, 31);
    const ZZ q = premier_de(bits + 1, 32);
    const ZZ r = premier_de(bits - 1, 33);
    attendre(p * q * r, Facteurs{{r, 1}, {p, 1}, {q, 1}});
    attendre(p * p * q, Facteurs{{p, 2}, {q, 1}});
    attendre(p * q * q, Facteurs{{p, 1}, {q, 2}});
  }
}

TEST(DecomposerEnNombre, SeveralLargeFactors) {
  Facteurs attendus;
  ZZ N{1};
  for (const long bits : {40L, 42L, 44L, 46L, 48L, 70L}) {
    attendus.push_back({premier_de(bits, 5), 1});
    N *= attendus.back().premier;
  }
  attendre(N, attendus);
  attendre(mersenne(31) * mersenne(61) * mersenne(89),
           Facteurs{{mersenne(31), 1}, {mersenne(61), 1}, {mersenne(89), 1}});
}

TEST(Decomposer, LargeFactorBetweenSmallOnes) {
  const ZZ p = premier_de(40, 9);
  const ZZ q = premier_de(42, 9);
  attendre(power(ZZ{2}, 3) * 97 * p * power(q, 2) * mersenne(127),
           Facteurs{{ZZ{2}, 3}, {ZZ{97}, 1}, {p, 1}, {q, 2}, {mersenne(127), 1}});
  attendre(mersenne(521) * 2017 * 3, Facteurs{{ZZ{3}, 1}, {ZZ{2017}, 1}, {mersenne(521), 1}});
}

TEST(Decomposer, TheFactorialOf120AsLegendreCountsIt) {
  ZZ N{1};
  for (long i = 2; i <= 120; ++i) N *= i;
  Facteurs attendus;
  for (long p = 2; p <= 120; ++p) {
    if (par_division(p).size() != 1 || par_division(p)[0].premier != p) continue;
    std::int64_t exposant = 0;
    for (long q = p; q <= 120; q *= p) exposant += 120 / q;
    attendus.push_back({ZZ{p}, exposant});
  }
  attendre(N, attendus);  // 199 digits
}

TEST(Decomposer, SmoothIntegersOf199Digits) {
  Facteurs attendus;
  ZZ N{1};
  for (long i = 0; NTL::NumBits(N) < 655; ++i) {
    attendus.push_back({NTL::NextPrime(ZZ{1000000 + 5000 * i}), 1});
    N *= attendus.back().premier;
  }
  attendre(N, attendus);
}

TEST(Decomposer, IntegersThatMadeALibraryHang) {
  const ZZ longue = lire("500000000000000000000000000000000000000017711");
  verifier_les_lois(longue, decomposer(longue));
  const ZZ courte = lire("126582278481012658227848101265822806309");
  verifier_les_lois(courte, decomposer(courte));
}

// The Cunningham project's tables: J. Brillhart, D. H. Lehmer, J. L. Selfridge, B. Tuckerman,
// S. S. Wagstaff, "Factorizations of b^n +- 1, b = 2, 3, 5, 6, 7, 10, 11, 12 up to high powers",
// Contemporary Mathematics 22.
TEST(DecomposerEnNombre, CunninghamNumbersOfBaseTwo) {
  attendre(mersenne(67), {"193707721", "761838257287"});
  attendre(mersenne(101), {"7432339208719", "341117531003194129"});
  attendre(mersenne(103), {"2550183799", "3976656429941438590393"});
  attendre(mersenne(137), {"32032215596496435569", "5439042183600204290159"});
  attendre(mersenne(139), {"5625767248687", "123876132205208335762278423601"});
  attendre(mersenne(201),
           {"7", "1609", "22111", "193707721", "761838257287", "87449423397425857942678833145441"});
  attendre(mersenne(202),
           {"3", "7432339208719", "341117531003194129", "845100400152152934331135470251"});
  attendre(mersenne(203), {"127", "233", "1103", "2089", "136417", "121793911",
                           "11348055580883272011090856053175361113"});
  attendre(mersenne(205), {"31", "13367", "2940521", "164511353", "70171342151",
                           "3655725065508797181674078959681"});
  attendre(mersenne(206),
           {"3", "2550183799", "415141630193", "8142767081771726171", "3976656429941438590393"});
  attendre(mersenne(207), {"7", "47", "73", "79903", "178481", "634569679", "2232578641663",
                           "10052678938039", "42166482463639"});
  attendre(mersenne(208), {"3", "5", "17", "53", "157", "257", "1613", "2731", "8191", "858001",
                           "308761441", "78919881726271091143763623681"});
  attendre(mersenne(209), {"23", "89", "524287", "94803416684681", "1512348937147247",
                           "5346950541323960232319657"});
}

TEST(Decomposer, CunninghamNumbersWithSquares) {
  Facteurs deux_cents;
  for (const long p : {3L, 5L, 11L, 17L, 31L, 41L, 101L, 251L, 401L, 601L, 1801L, 4051L, 8101L,
                       61681L, 268501L, 340801L, 2787601L, 3173389601L}) {
    deux_cents.push_back({ZZ{p}, p == 5 ? 3 : 1});
  }
  attendre(mersenne(200), deux_cents);
  Facteurs deux_cent_dix;
  for (const long p :
       {3L,   7L,   11L,   31L,    43L,    71L,     127L,    151L,    211L,    281L,
        331L, 337L, 5419L, 29191L, 86171L, 106681L, 122921L, 152041L, 664441L, 1564921L}) {
    deux_cent_dix.push_back({ZZ{p}, p == 3 || p == 7 ? 2 : 1});
  }
  attendre(mersenne(210), deux_cent_dix);
}

TEST(Decomposer, FermatNumbers) {
  // F. Landry 1880; M. Morrison and J. Brillhart 1970; R. P. Brent and J. M. Pollard 1980.
  attendre(power2_ZZ(64) + 1, {"274177", "67280421310721"});
  attendre(power2_ZZ(128) + 1, {"59649589127497217", "5704689200685129054721"});
  attendre(power2_ZZ(256) + 1,
           {"1238926361552897", "93461639715357977769163558199606896584051237541638188580280321"});
}

TEST(DecomposerLent, PrimesOfManyDigits) {
  attendre_premier(power(ZZ{10}, 99) + 289);  // the first of 100 digits
  attendre_premier(mersenne(521));            // R. M. Robinson, 1952
  attendre_premier(mersenne(607));
}

TEST(Decomposer, CarmichaelNumbers) {
  attendre(ZZ{561}, {"3", "11", "17"});
  attendre(ZZ{825265}, {"5", "7", "17", "19", "73"});
  // J. Chernick, "On Fermat's simple theorem", 1939: (6m + 1)(12m + 1)(18m + 1) when all are prime.
  int vus = 0;
  for (long m = 10000000000; vus < 3; ++m) {
    const ZZ p{6 * m + 1};
    const ZZ q{12 * m + 1};
    const ZZ r{18 * m + 1};
    if (!NTL::ProbPrime(p) || !NTL::ProbPrime(q) || !NTL::ProbPrime(r)) continue;
    attendre(p * q * r, Facteurs{{p, 1}, {q, 1}, {r, 1}});
    ++vus;
  }
}

TEST(Decomposer, StrongPseudoprimesToManyBases) {
  // The least to the first 7, 9, 12 and 13 prime bases: G. Jaeschke, "On strong pseudoprimes to
  // several bases", 1993; J. Sorenson and J. Webster, "Strong pseudoprimes to twelve prime bases",
  // 2017.
  attendre(lire("341550071728321"), {"10670053", "32010157"});
  attendre(lire("3825123056546413051"), {"149491", "747451", "34233211"});
  attendre(lire("318665857834031151167461"), {"399165290221", "798330580441"});
  attendre(lire("3317044064679887385961981"), {"1287836182261", "2575672364521"});
  // To all bases up to 31: F. Arnault, "Rabin-Miller primality test: composite numbers which pass
  // it", Mathematics of Computation 64 (1995).
  attendre(lire("1195068768795265792518361315725116351898245581"),
           {"24444516448431392447461", "48889032896862784894921"});
}

TEST(Decomposer, TheSameWayEveryTime) {
  const ZZ N = premier_de(64, 4) * premier_de(66, 4);
  const Facteurs une_fois = decomposer(N);
  EXPECT_EQ(decomposer(N), une_fois);
}

TEST(Decomposer, TellsHowFarItIs) {
  int appels = 0;
  const ZZ N = premier_de(70, 1) * premier_de(72, 1);
  decomposer(N, [&](double part) {
    ++appels;
    EXPECT_GE(part, 0);
    EXPECT_LE(part, 1);
  });
  EXPECT_GT(appels, 3);
}

TEST(Decomposer, MayBeAbandonedAtAnyCallAndStartedAgain) {
  struct Abandon {};
  const ZZ p = premier_de(66, 6);
  const ZZ q = premier_de(68, 6);
  for (const int dernier : {1, 2, 5, 10}) {
    int appels = 0;
    EXPECT_THROW(decomposer(p * q,
                            [&](double) {
                              if (++appels == dernier) throw Abandon{};
                            }),
                 Abandon);
  }
  attendre(p * q, Facteurs{{p, 1}, {q, 1}});
}

}  // namespace
}  // namespace premiers::facteurs
