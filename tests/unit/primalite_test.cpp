// SPDX-License-Identifier: MIT
// Primality against a naive sieve, against published pseudoprimes, and against NTL's own test.
#include "primes/primalite/primalite.h"

#include <NTL/ZZ.h>
#include <gtest/gtest.h>

#include <initializer_list>
#include <random>
#include <vector>

#include "primes/arithmetique/zz.h"

namespace premiers::primalite {
namespace {

NTL::ZZ zz(const char* texte) { return NTL::conv<NTL::ZZ>(texte); }

/// 40 rounds of Miller-Rabin to random bases: independent of everything in primes/.
bool juge(const NTL::ZZ& n) { return NTL::ProbPrime(n, 40) != 0; }

std::vector<bool> crible_naif(std::size_t fin) {
  std::vector<bool> premier(fin, true);
  premier[0] = premier[1] = false;
  for (std::size_t i = 2; i * i < fin; ++i) {
    if (premier[i]) {
      for (std::size_t m = i * i; m < fin; m += i) premier[m] = false;
    }
  }
  return premier;
}

TEST(Primalite, EveryIntegerBelowTwoMillion) {
  const auto premier = crible_naif(2000000);
  for (std::size_t n = 0; n < premier.size(); ++n) {
    ASSERT_EQ(est_premier(std::uint64_t{n}), premier[n]) << n;
  }
}

TEST(Primalite, TheThreeFormsAgreeOnSmallIntegers) {
  const auto premier = crible_naif(3000);
  for (std::size_t n = 0; n < premier.size(); ++n) {
    EXPECT_EQ(est_premier(Entier128{n}), premier[n]) << n;
    EXPECT_EQ(est_premier(en_zz(std::uint64_t{n})), premier[n]) << n;
  }
}

TEST(Primalite, NegativeIntegersAreNotPrime) {
  EXPECT_FALSE(est_premier(NTL::ZZ{0}));
  EXPECT_FALSE(est_premier(NTL::ZZ{-7}));
  EXPECT_FALSE(est_premier(-(NTL::power2_ZZ(127) - 1)));
}

// psi_k, the smallest composites that pass Miller-Rabin to the first k primes as bases (OEIS
// A014233).
TEST(Primalite, SmallestStrongPseudoprimes) {
  for (const char* n : {"2047", "1373653", "25326001", "3215031751", "2152302898747",
                        "3474749660383", "341550071728321", "3825123056546413051",
                        "318665857834031151167461", "3317044064679887385961981"}) {
    EXPECT_FALSE(est_premier(zz(n))) << n;
  }
}

// Strong pseudoprimes to base 2 (OEIS A001262): only the Lucas test stops these.
TEST(Primalite, StrongPseudoprimesToBaseTwo) {
  for (const std::uint64_t n : std::initializer_list<std::uint64_t>{
           2047, 3277, 4033, 4681, 8321, 15841, 29341, 42799, 49141, 52633, 65281, 74665, 80581,
           85489, 88357, 90751}) {
    EXPECT_FALSE(est_premier(n)) << n;
  }
}

// Strong Lucas pseudoprimes (OEIS A217255) and extra strong ones (OEIS A217719): only base 2 stops
// these.
TEST(Primalite, LucasPseudoprimes) {
  for (const std::uint64_t n : std::initializer_list<std::uint64_t>{
           5459, 5777, 10877, 16109, 18971, 22499, 24569, 25199, 40309, 58519, 75077, 97439}) {
    EXPECT_FALSE(est_premier(n)) << n;
  }
  for (const std::uint64_t n : std::initializer_list<std::uint64_t>{
           989, 3239, 5777, 10877, 27971, 29681, 30739, 31631, 39059, 72389, 73919, 75077}) {
    EXPECT_FALSE(est_premier(n)) << n;
  }
}

TEST(Primalite, CarmichaelNumbers) {
  for (const std::uint64_t n :
       std::initializer_list<std::uint64_t>{561, 1105, 1729, 2465, 2821, 6601, 8911, 10585, 15841,
                                            29341, 41041, 46657, 52633, 62745, 63973, 75361}) {
    EXPECT_FALSE(est_premier(n)) << n;
  }
  // (6k + 1)(12k + 1)(18k + 1) with all three prime is a Carmichael number (J. Chernick, 1939).
  int vus = 0;
  for (std::uint64_t k = 1; k < 240000; ++k) {
    if (!est_premier(6 * k + 1) || !est_premier(12 * k + 1) || !est_premier(18 * k + 1)) continue;
    EXPECT_FALSE(est_premier((6 * k + 1) * (12 * k + 1) * (18 * k + 1))) << k;
    ++vus;
  }
  EXPECT_GT(vus, 500);
}

// (k + 1)(r k + 1): strong pseudoprimes to several bases abound among them.
TEST(Primalite, ProductsOfRelatedPrimes) {
  std::mt19937_64 g{6};
  for (const std::uint64_t r : std::initializer_list<std::uint64_t>{2, 3, 4, 5, 6, 7, 8}) {
    int vus = 0;
    for (std::uint64_t k = 1000000000 + (g() % 100000) * 2; vus < 300; k += 2) {
      if (!est_premier(k + 1) || !est_premier(r * k + 1)) continue;
      const Entier128 n = Entier128{k + 1} * (r * k + 1);
      EXPECT_FALSE(est_premier(n));
      EXPECT_FALSE(est_premier(en_zz(n)));
      ++vus;
    }
  }
}

// The largest primes below 2^64 (OEIS A013603 and C. Caldwell's lists of primes just below 2^n):
// 2^64 - k.
TEST(Primalite, LargestPrimesBelowTwoToThe64) {
  const std::vector<std::uint64_t> ecarts{59, 83, 95, 179, 189, 257, 279, 323, 353, 363};
  std::size_t vus = 0;
  for (std::uint64_t k = 1; k <= ecarts.back(); ++k) {
    const bool attendu = vus < ecarts.size() && ecarts[vus] == k;
    EXPECT_EQ(est_premier(std::uint64_t{0} - k), attendu) << k;
    vus += attendu ? 1 : 0;
  }
}

TEST(Primalite, SquaresAndCubesUpToTheLimit) {
  for (std::uint64_t p = 4294967291; p > 4294967291 - 3000; p -= 2) {
    EXPECT_FALSE(est_premier(p * p)) << p;
  }
  for (std::uint64_t p = 2642245; p > 2642245 - 3000; p -= 2) EXPECT_FALSE(est_premier(p * p * p));
  EXPECT_FALSE(est_premier(std::uint64_t{1093} * 1093));  // Wieferich: pseudoprimes to base 2
  EXPECT_FALSE(est_premier(std::uint64_t{3511} * 3511));
  const Entier128 p = std::uint64_t{0} - 59;
  EXPECT_FALSE(est_premier(p * p));
}

TEST(Primalite, AroundTwoToThe64AndTwoToThe128) {
  NTL::ZZ n = NTL::power2_ZZ(64) - 2000;
  for (int i = 0; i < 4000; ++i, n += 1) ASSERT_EQ(est_premier(n), juge(n)) << i;
  n = NTL::power2_ZZ(128) - 2000;
  for (int i = 0; i < 4000; ++i, n += 1) ASSERT_EQ(est_premier(n), juge(n)) << i;
  n = zz("3317044064679887385961981") - 1000;
  for (int i = 0; i < 2000; ++i, n += 1) ASSERT_EQ(est_premier(n), juge(n)) << i;
}

TEST(Primalite, RandomIntegersAsByNtl) {
  std::mt19937_64 g{7};
  for (int i = 0; i < 20000; ++i) {
    const std::uint64_t n = (g() >> (g() % 60)) | 1;
    ASSERT_EQ(est_premier(n), juge(en_zz(n))) << n;
  }
  NTL::SetSeed(NTL::ZZ{8});
  for (long bits = 65; bits <= 330; ++bits) {
    for (int i = 0; i < 20; ++i) {
      const NTL::ZZ n = 2 * NTL::RandomLen_ZZ(bits - 1) + 1;
      ASSERT_EQ(est_premier(n), juge(n)) << n;
    }
  }
}

// Mersenne numbers: prime exponents from 2 to 607 (G. Woltman and others, list of Mersenne primes).
TEST(Primalite, MersenneNumbers) {
  const std::vector<long> exposants{2, 3, 5, 7, 13, 17, 19, 31, 61, 89, 107, 127, 521, 607};
  std::size_t vus = 0;
  for (long e = 2; e <= 607; ++e) {
    const bool attendu = vus < exposants.size() && exposants[vus] == e;
    EXPECT_EQ(est_premier(NTL::power2_ZZ(e) - 1), attendu) << e;
    vus += attendu ? 1 : 0;
  }
}

// F. Arnault's composite of 397 digits passes Miller-Rabin to all bases below 307; here the idea in
// small: 1195068768795265792518361315725116351898245581 (F. Arnault, "Rabin-Miller primality test:
// composite numbers which pass it", Mathematics of Computation 64, 1995; to the bases up to 31).
TEST(Primalite, ArnaultsComposite) {
  const NTL::ZZ n = zz("1195068768795265792518361315725116351898245581");
  EXPECT_EQ(n % zz("24444516448431392447461"), 0);
  EXPECT_FALSE(est_premier(n));
}

}  // namespace
}  // namespace premiers::primalite
