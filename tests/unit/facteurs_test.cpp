// SPDX-License-Identifier: MIT
// Factorisations judged by law: the powers multiply back to n, stand in increasing order, and every
// prime is prime by NTL's test. Inputs are chosen where each method is at its limit.
#include <NTL/ZZ.h>
#include <gtest/gtest.h>

#include <array>
#include <initializer_list>
#include <random>
#include <vector>

#include "primes/arithmetique/montgomery.h"
#include "primes/arithmetique/montgomery128.h"
#include "primes/arithmetique/montgomery_souple.h"
#include "primes/arithmetique/zz.h"
#include "primes/facteurs/ecm_avx512.h"
#include "primes/facteurs/ecm_chaines.h"
#include "primes/facteurs/ecm_paires.h"
#include "primes/facteurs/ecm_seconde.h"
#include "primes/facteurs/ecm_voies.h"
#include "primes/facteurs/facteurs128.h"
#include "primes/facteurs/facteurs64.h"
#include "primes/facteurs/petits_diviseurs.h"
#include "primes/facteurs/rho.h"

namespace premiers::facteurs {
namespace {

bool juge(std::uint64_t p) { return NTL::ProbPrime(en_zz(p), 20) != 0; }

/// Some prime of exactly `bits` bits.
std::uint64_t premier_au_hasard(std::mt19937_64& g, int bits) {
  const std::uint64_t sommet = std::uint64_t{1} << (bits - 1);
  for (;;) {
    const std::uint64_t p = (g() & (sommet - 1)) | sommet | 1;
    if (juge(p)) return p;
  }
}

void verifier(std::uint64_t n) {
  const Facteurs64 f = facteurs(n);
  Entier128 produit = 1;
  std::uint64_t precedent = 1;
  for (const auto& [p, exposant] : f) {
    ASSERT_GT(p, precedent) << n;
    ASSERT_GE(exposant, 1) << n;
    ASSERT_TRUE(juge(p)) << n;
    for (std::int64_t i = 0; i < exposant; ++i) produit *= p;
    precedent = p;
  }
  ASSERT_TRUE(produit == n) << n;
  ASSERT_EQ(plus_petit_facteur(n), f[0].premier) << n;
}

TEST(Facteurs64, ZeroAndOneHaveNoFactors) {
  EXPECT_EQ(facteurs(0).nombre, 0U);
  EXPECT_EQ(facteurs(1).nombre, 0U);
  EXPECT_EQ(plus_petit_facteur(0), 0U);
  EXPECT_EQ(plus_petit_facteur(1), 1U);
}

TEST(Facteurs64EnNombre, EveryIntegerBelowTwoMillion) {
  constexpr std::size_t fin = 2000000;
  std::vector<std::uint32_t> moindre(fin, 0);
  for (std::uint32_t p = 2; p < fin; ++p) {
    if (moindre[p] != 0) continue;
    for (std::uint32_t m = p; m < fin; m += p) {
      if (moindre[m] == 0) moindre[m] = p;
    }
  }
  for (std::uint64_t n = 2; n < fin; ++n) {
    ASSERT_EQ(plus_petit_facteur(n), moindre[n]) << n;
    std::uint64_t reste = n;
    for (const auto& [p, exposant] : facteurs(n)) {
      ASSERT_EQ(p, moindre[reste]) << n;
      for (std::int64_t i = 0; i < exposant; ++i) reste /= p;
      ASSERT_TRUE(reste == 1 || moindre[reste] > p) << n;
    }
    ASSERT_EQ(reste, 1U) << n;
  }
}

TEST(Facteurs64, FifteenDistinctPrimes) {
  const Facteurs64 f = facteurs(614889782588491410);  // 2 * 3 * ... * 47
  EXPECT_EQ(f.nombre, 15U);
  EXPECT_EQ(f[14], (Facteur64{47, 1}));
}

TEST(Facteurs64, PublishedFactorisations) {
  // 2^64 - 1 (the Fermat numbers F0 .. F5), 2^61 - 1 (M. Mersenne), 2^59 - 1 and 2^53 - 1 (F.
  // Landry).
  const Facteurs64 f = facteurs(~std::uint64_t{0});
  const std::vector<std::uint64_t> attendus{3, 5, 17, 257, 641, 65537, 6700417};
  ASSERT_EQ(f.nombre, attendus.size());
  for (std::size_t i = 0; i < attendus.size(); ++i) EXPECT_EQ(f[i], (Facteur64{attendus[i], 1}));
  EXPECT_EQ(facteurs((std::uint64_t{1} << 61) - 1).nombre, 1U);
  EXPECT_EQ(plus_petit_facteur((std::uint64_t{1} << 59) - 1), 179951U);
  EXPECT_EQ(plus_petit_facteur((std::uint64_t{1} << 53) - 1), 6361U);
  EXPECT_EQ(facteurs((std::uint64_t{1} << 53) - 1)[1], (Facteur64{69431, 1}));
}

TEST(Facteurs64, PowersOfPrimes) {
  for (const std::uint64_t p :
       std::initializer_list<std::uint64_t>{2, 3, 5, 7, 2003, 2011, 2017, 2027, 65521, 65537}) {
    std::uint64_t n = p;
    for (unsigned e = 1;; ++e) {
      const Facteurs64 f = facteurs(n);
      ASSERT_EQ(f.nombre, 1U) << n;
      EXPECT_EQ(f[0], (Facteur64{p, e}));
      if (n > ~std::uint64_t{0} / p) break;
      n *= p;
    }
  }
}

// Squares and cubes, for which rho has no chance and ECM finds both copies at once or none.
TEST(Facteurs64, SquaresAndCubesUpToTheLimit) {
  for (std::uint64_t p = 4294967291; p > 4294967291 - 2000; p -= 2) {
    if (!juge(p)) continue;
    const Facteurs64 f = facteurs(p * p);
    ASSERT_EQ(f.nombre, 1U) << p;
    EXPECT_EQ(f[0], (Facteur64{p, 2}));
  }
  for (std::uint64_t p = 2642245; p > 2642245 - 2000; p -= 2) {
    if (!juge(p)) continue;
    const Facteurs64 f = facteurs(p * p * p);
    ASSERT_EQ(f.nombre, 1U) << p;
    EXPECT_EQ(f[0], (Facteur64{p, 3}));
  }
  std::mt19937_64 g{1};
  for (int bits = 12; bits <= 21; ++bits) {
    for (int i = 0; i < 100; ++i) {
      const std::uint64_t p = premier_au_hasard(g, bits);
      verifier(p * p);
      verifier(p * p * premier_au_hasard(g, 63 - 2 * bits > 11 ? 63 - 2 * bits : 11));
    }
  }
}

TEST(Facteurs64, AroundTheEndOfTheTableOfDivisors) {
  const std::vector<std::uint64_t> voisins{1987, 1993, 1997, 1999, 2003,
                                           2011, 2017, 2027, 2029, 2039};
  for (const auto p : voisins) {
    for (const auto q : voisins) {
      verifier(p * q);
      for (const auto r : voisins) {
        verifier(p * q * r);
        verifier(p * q * r * 2011 * 2017);
      }
    }
  }
}

TEST(Facteurs64EnNombre, TwoPrimesOfEverySize) {
  std::mt19937_64 g{2};
  for (int a = 2; a <= 32; ++a) {
    for (int b = a; a + b <= 64; ++b) {
      for (int i = 0; i < 10; ++i) verifier(premier_au_hasard(g, a) * premier_au_hasard(g, b));
    }
  }
}

TEST(Facteurs64, TwoLargePrimesCloseToEachOther) {
  std::uint64_t precedent = 4294967291;
  for (std::uint64_t p = precedent - 2; p > 4294967291 - 5000; p -= 2) {
    if (!juge(p)) continue;
    verifier(p * precedent);
    precedent = p;
  }
}

TEST(Facteurs64Lent, ThreeAndFourPrimesOfTheSameSize) {
  std::mt19937_64 g{3};
  for (int i = 0; i < 3000; ++i) {
    verifier(premier_au_hasard(g, 21) * premier_au_hasard(g, 21) * premier_au_hasard(g, 21));
    verifier(premier_au_hasard(g, 16) * premier_au_hasard(g, 16) * premier_au_hasard(g, 16) *
             premier_au_hasard(g, 16));
    verifier(premier_au_hasard(g, 12) * premier_au_hasard(g, 12) * premier_au_hasard(g, 13) *
             premier_au_hasard(g, 13) * premier_au_hasard(g, 13));
  }
}

TEST(Facteurs64, RandomAndNearTheLimits) {
  std::mt19937_64 g{4};
  for (int i = 0; i < 10000; ++i) verifier(2 + (g() >> (g() % 62 + 1)));
  for (std::uint64_t k = 1; k < 1000; ++k) {
    verifier(std::uint64_t{0} - k);
    verifier((std::uint64_t{1} << 63) - 500 + k);
    verifier((std::uint64_t{1} << 32) - 500 + k);
    verifier((std::uint64_t{1} << 48) - 500 + k);
    verifier((std::uint64_t{1} << 60) - 500 + k);
  }
}

TEST(PetitsDiviseurs, DivideWhereTheRemainderIsZero) {
  constexpr auto table = table_diviseurs<100>();
  std::mt19937_64 g{5};
  for (const auto& d : table) {
    for (int i = 0; i < 200; ++i) {
      const std::uint64_t n = g() >> (g() % 64);
      ASSERT_EQ(d.divise(n), n % d.p == 0);
      const std::uint64_t multiple = n - n % d.p;
      ASSERT_TRUE(d.divise(multiple));
      ASSERT_EQ(d.quotient(multiple), n / d.p);
    }
  }
}

TEST(Rho, FindsAProperFactor) {
  std::mt19937_64 g{6};
  for (int bits = 3; bits <= 22; ++bits) {
    for (int i = 0; i < 50; ++i) {
      const std::uint64_t p = premier_au_hasard(g, bits);
      const std::uint64_t q = premier_au_hasard(g, bits + 1);
      const std::uint64_t f = facteur_rho(Montgomery64{p * q});
      ASSERT_TRUE(f == p || f == q) << p << ' ' << q;
    }
  }
}

TEST(Rho, StandsInForAllCurves) {
  std::mt19937_64 g{16};
  for (int bits = 12; bits <= 24; ++bits) {
    for (int i = 0; i < 20; ++i) {
      const std::uint64_t p = premier_au_hasard(g, bits);
      const std::uint64_t q = premier_au_hasard(g, 40 - bits);
      const Facteurs64 f = facteurs_sans_courbes(p * p * q);
      ASSERT_EQ(f.nombre, p == q ? 1U : 2U) << p << ' ' << q;
      ASSERT_EQ(f[p > q ? 1 : 0], (Facteur64{p, p == q ? 3U : 2U})) << p << ' ' << q;
    }
  }
}

// Each step of every chain adds two slots whose difference is in the third; the prefix for b1 has
// to multiply by 12 lcm(1..b1). Checked with the integers modulo a prime in place of the curve.
TEST(Ecm, ChainsMultiplyByTheLeastCommonMultiple) {
  constexpr std::uint64_t module = (std::uint64_t{1} << 61) - 1;
  std::array<std::uint64_t, 4> slot{1, 0, 0, 0};
  std::uint64_t attendu = 12;
  std::size_t i = 0;
  std::size_t resultat = 0;
  for (std::size_t q = 2; q <= ecm::b1_court; ++q) {
    std::size_t p = 2;
    while (q % p != 0) ++p;
    std::size_t puissance = p;
    while (puissance < q) puissance *= p;
    if (puissance == q) attendu = bas(Entier128{attendu} * p % module);
    const auto instructions = ecm::programme(q);
    for (; i < instructions.size(); ++i) {
      const auto [vers, a, b, ecart] = instructions[i];
      ASSERT_TRUE(vers != a && vers != b && vers != ecart) << i;
      const std::uint64_t plus = (slot[a] + module - slot[b]) % module;
      if (a != b) {
        ASSERT_TRUE(slot[ecart] == plus || slot[ecart] == (module - plus) % module) << i;
      }
      slot[vers] = (slot[a] + slot[b]) % module;
      resultat = vers;
    }
    ASSERT_EQ(slot[resultat], attendu) << q;
  }
}

TEST(Ecm, PairsCoverEveryPrime) {
  const auto& t = ecm::paires_courtes;
  std::vector<bool> couvert(t.portee + t.pas_de_geant, false);
  for (std::size_t k = 1; k <= t.geants_max; ++k) {
    for (std::size_t i = t.debut[k]; i < t.debut[k + 1]; ++i) {
      ASSERT_EQ(t.paires[i].geant, k);
      couvert[k * t.pas_de_geant - t.residus[t.paires[i].bebe]] = true;
      couvert[k * t.pas_de_geant + t.residus[t.paires[i].bebe]] = true;
    }
  }
  for (std::size_t p = t.pas_de_geant / 2 + 1; p <= t.portee; ++p) {
    if (juge(p)) {
      EXPECT_TRUE(couvert[p]) << p;
    }
  }
}

/// A ring of lanes must find the same factor on every curve as any other ring.
template <class M, std::size_t voies>
Entier128 essayer_avec(Entier128 n, const std::array<std::uint64_t, voies>& sigma) {
  const ecm::Voies<M, voies> a{M{static_cast<typename M::Entier>(n)}};
  return ecm::essayer(a, sigma, 50, 2000);
}

TEST(Ecm, AllArithmeticsFindTheSame) {
  std::mt19937_64 g{7};
  const std::array<std::uint64_t, 8> sigma{6, 7, 8, 9, 10, 11, 12, 13};
  int trouves = 0;
  for (int i = 0; i < 300; ++i) {
    const std::uint64_t n = premier_au_hasard(g, 22) * premier_au_hasard(g, 24);
    const Entier128 attendu = essayer_avec<Montgomery64, 8>(n, sigma);
    trouves += attendu != 1 ? 1 : 0;
    EXPECT_TRUE((essayer_avec<MontgomerySouple<Montgomery64>, 8>(n, sigma) == attendu));
    EXPECT_TRUE((essayer_avec<Montgomery128, 8>(n, sigma) == attendu));
    EXPECT_TRUE((essayer_avec<MontgomerySouple<Montgomery128>, 8>(n, sigma) == attendu));
#if defined(__x86_64__)
    if (jouable(ecm::besoin_avx512)) {
      EXPECT_TRUE(ecm::essayer_huit(n, sigma, 50, 2000) == attendu);
    }
#endif
  }
  EXPECT_GT(trouves, 200);
}

void verifier_ecm(Entier128 n, Entier128 p, Entier128 q) {
  for (const auto& v : versions_de_facteur_ecm()) {
    if (!jouable(v.besoin)) continue;
    const auto f = v.boucle(n, 2000);
    ASSERT_TRUE(f.has_value()) << en_zz(n);
    EXPECT_TRUE(*f == p || *f == q) << en_zz(n);
  }
}

TEST(Facteurs128, TwoPrimesOfEverySizeUpTo92Bits) {
  std::mt19937_64 g{8};
  for (int taille = 46; taille <= 92; ++taille) {
    for (int i = 0; i < 5; ++i) {
      const Entier128 p = premier_au_hasard(g, taille / 2);
      const Entier128 q = premier_au_hasard(g, taille - taille / 2);
      if (p != q) verifier_ecm(p * q, p, q);
    }
  }
}

TEST(Facteurs128, FactorsOfUnequalSizeNearTwoToThe128) {
  std::mt19937_64 g{9};
  for (int taille = 100; taille <= 128;
       ++taille) {  // lengths where the ring changes: 100, 124, 126
    for (int i = 0; i < 2; ++i) {
      const std::uint64_t p = premier_au_hasard(g, 30);
      NTL::ZZ q;
      do {
        NTL::GenPrime(q, taille - 30, 40);
      } while (NTL::NumBits(q * en_zz(p)) != taille);
      verifier_ecm(en_entier128(q * en_zz(p)), p, en_entier128(q));
    }
  }
}

TEST(Facteurs128, KeepsToItsNumberOfCurves) {
  EXPECT_FALSE(facteur_ecm(~Entier128{0} - 158, 0).has_value());   // no curve, no factor
  EXPECT_FALSE(facteur_ecm(~Entier128{0} - 158, 16).has_value());  // 2^128 - 159 is prime
  EXPECT_FALSE(facteur_ecm((Entier128{1} << 89) - 1, 16).has_value());
  EXPECT_FALSE(versions_de_facteur_ecm().back().boucle((Entier128{1} << 89) - 1, 16).has_value());
}

TEST(Facteurs128, FermatAndMersenneNumbers) {
  // 2^67 - 1 = 193707721 * 761838257287 (F. N. Cole, 1903);
  // 2^64 + 1 = 274177 * 67280421310721 (F. Landry, 1880).
  verifier_ecm((Entier128{1} << 67) - 1, 193707721, 761838257287);
  verifier_ecm((Entier128{1} << 64) + 1, 274177, 67280421310721);
}

}  // namespace
}  // namespace premiers::facteurs
