// SPDX-License-Identifier: MIT
// Montgomery arithmetic against the plain remainder (64 bits) and against NTL (128 bits), with
// moduli up to the very edge of the word.
#include "primes/arithmetique/montgomery.h"

#include <NTL/ZZ.h>
#include <gtest/gtest.h>

#include <initializer_list>
#include <random>
#include <vector>

#include "primes/arithmetique/montgomery128.h"
#include "primes/arithmetique/montgomery_souple.h"
#include "primes/arithmetique/racines.h"
#include "primes/arithmetique/zz.h"

namespace premiers {
namespace {

constexpr std::uint64_t plein = ~std::uint64_t{0};

template <class Entier>
Entier au_hasard(std::mt19937_64& g) {
  if constexpr (sizeof(Entier) == 8) {
    return g();
  } else {
    const std::uint64_t h = g();
    return assembler(h, g());
  }
}

/// Odd moduli of every length of the word, and those at its upper edge.
template <class Entier>
std::vector<Entier> modules(std::mt19937_64& g, int bits_maximum) {
  std::vector<Entier> n{3, 5, 7, 9};
  for (int taille = 3; taille <= bits_maximum; ++taille) {
    const auto sommet = static_cast<Entier>(Entier{1} << (taille - 1));
    n.push_back(sommet + 1);
    n.push_back(sommet + (sommet - 1));
    n.push_back(sommet | (au_hasard<Entier>(g) % sommet) | 1);
  }
  return n;
}

/// Residues to try: the edges, and some at random.
template <class Entier>
std::vector<Entier> residus(std::mt19937_64& g, Entier n) {
  return {0,
          1,
          2 % n,
          n - 1,
          n - 2,
          n / 2,
          n / 2 + 1,
          au_hasard<Entier>(g) % n,
          au_hasard<Entier>(g) % n};
}

NTL::ZZ produit_exact(Entier128 a, Entier128 b, Entier128 n) {
  return (en_zz(a) * en_zz(b)) % en_zz(n);
}

/// m.produit(a, b) must be a b / R modulo n, and so must times R be a b.
template <class Montgomery>
void verifier_anneau(const Montgomery& m, typename Montgomery::Entier a,
                     typename Montgomery::Entier b) {
  const auto n = m.n;
  const auto p = m.produit(a, b);
  ASSERT_LT(p, n);
  EXPECT_EQ(produit_exact(p, m.un, n), produit_exact(a, b, n));  // m.un is R modulo n
  EXPECT_EQ(en_zz(m.somme(a, b)), (en_zz(a) + en_zz(b)) % en_zz(n));
  EXPECT_EQ(en_zz(m.difference(a, b)), (en_zz(a) + en_zz(n) - en_zz(b)) % en_zz(n));
  EXPECT_EQ(m.carre(a), m.produit(a, a));
  EXPECT_EQ(produit_exact(m.sortir(a), m.un, n), en_zz(a));
}

TEST(Montgomery, InverseModuloTwoToThe64) {
  for (std::uint64_t n = 1; n < 100000; n += 2) ASSERT_EQ(n * inverse_2_64(n), 1U);
  for (std::uint64_t n = plein; n > plein - 100000; n -= 2) ASSERT_EQ(n * inverse_2_64(n), 1U);
}

TEST(Montgomery, SixtyFourBitsAsByNtl) {
  std::mt19937_64 g{64};
  for (const auto n : modules<std::uint64_t>(g, 64)) {
    const Montgomery64 m{n};
    for (const auto a : residus(g, n)) {
      for (const auto b : residus(g, n)) verifier_anneau(m, a, b);
    }
  }
}

TEST(Montgomery, HundredAndTwentyEightBitsAsByNtl) {
  std::mt19937_64 g{128};
  for (const auto n : modules<Entier128>(g, 128)) {
    const Montgomery128 m{n};
    for (const auto a : residus(g, n)) {
      for (const auto b : residus(g, n)) verifier_anneau(m, a, b);
    }
  }
}

template <class Montgomery>
void verifier_souple(int bits_maximum) {
  using Entier = typename Montgomery::Entier;
  std::mt19937_64 g{1};
  for (const auto n : modules<Entier>(g, bits_maximum)) {
    const Montgomery strict{n};
    const MontgomerySouple<Montgomery> souple{n};
    for (const auto a : residus(g, n)) {
      for (const auto b : residus(g, n)) {
        // The largest values its contract allows: sums of products near 2n.
        const Entier somme = souple.somme(a + n, b + n - (b + n > 0 ? 0 : 1));
        const Entier ecart = souple.difference(a + n, b);
        ASSERT_LT(souple.produit(somme, ecart), 2 * n);
        EXPECT_EQ(souple.produit(somme, ecart) % n,
                  strict.produit(strict.somme(a, b), strict.difference(a, b)));
      }
    }
  }
}

TEST(Montgomery, LooseAgreesWithStrictOn64Bits) {
  verifier_souple<Montgomery64>(MontgomerySouple<Montgomery64>::bits_maximum);
}

TEST(Montgomery, LooseAgreesWithStrictOn128Bits) {
  verifier_souple<Montgomery128>(MontgomerySouple<Montgomery128>::bits_maximum);
}

TEST(Montgomery, EnteringAndLeavingAreInverse) {
  std::mt19937_64 g{2};
  for (const auto n : modules<std::uint64_t>(g, 64)) {
    const Montgomery64 m{n};
    for (const std::uint64_t x :
         std::initializer_list<std::uint64_t>{0, 1, 2, 3, 41, 1000, 65537}) {
      EXPECT_EQ(m.sortir(m.entrer(x)), x % n);
    }
  }
  for (const auto n : modules<Entier128>(g, 128)) {
    const Montgomery128 m{n};
    for (const std::uint64_t x :
         std::initializer_list<std::uint64_t>{0, 1, 2, 3, 41, 1000, 65537}) {
      EXPECT_TRUE(m.sortir(m.entrer(x)) == x % n);
    }
  }
}

TEST(Racines, SquareRootsAtTheLimits) {
  for (std::uint64_t n = 0; n < 100000; ++n) {
    const auto r = racine_carree(n);
    ASSERT_TRUE(r * r <= n && n < (r + 1) * (r + 1)) << n;
  }
  for (std::uint64_t r : {94906265ULL, 94906267ULL, 3037000499ULL, 4294967294ULL, 4294967295ULL}) {
    EXPECT_EQ(racine_carree(r * r), r);
    EXPECT_EQ(racine_carree(r * r - 1), r - 1);
    EXPECT_EQ(racine_carree(r * r + 2 * r), r);
    EXPECT_TRUE(est_carre(r * r));
    EXPECT_FALSE(est_carre(r * r - 1));
    EXPECT_FALSE(est_carre(r * r + 1));
  }
  EXPECT_EQ(racine_carree(plein), 4294967295U);
}

TEST(Racines, SquareRootsOf128BitsAtTheLimits) {
  std::mt19937_64 g{3};
  std::vector<std::uint64_t> racines{4294967296, 4294967297, plein, plein - 1, plein >> 1};
  for (int i = 0; i < 10000; ++i) racines.push_back(g() | (std::uint64_t{1} << 32));
  for (const auto r : racines) {
    const Entier128 carre = Entier128{r} * r;
    EXPECT_EQ(racine_carree(carre), r);
    EXPECT_EQ(racine_carree(carre - 1), r - 1);
    EXPECT_EQ(racine_carree(carre + 2 * Entier128{r}), r);
    EXPECT_TRUE(est_carre(carre));
    EXPECT_FALSE(est_carre(carre + 1));
  }
  EXPECT_EQ(racine_carree(~Entier128{0}), plein);
}

TEST(Racines, GcdAsByNtl) {
  std::mt19937_64 g{4};
  for (int i = 0; i < 2000; ++i) {
    const std::uint64_t commun = (g() >> (g() % 40 + 20)) | 1;
    const Entier128 a = Entier128{commun} * (g() >> 20);
    const Entier128 n = Entier128{commun} * ((g() >> 20) | 1);
    EXPECT_EQ(en_zz(pgcd(a, n)), NTL::GCD(en_zz(a), en_zz(n)));
    const std::uint64_t b = g();
    const std::uint64_t m = (g() >> (g() % 60)) | 1;
    EXPECT_EQ(en_zz(pgcd(b, m)), NTL::GCD(en_zz(b), en_zz(m)));
  }
  EXPECT_EQ(pgcd(std::uint64_t{0}, std::uint64_t{15}), 15U);
}

TEST(Zz, ThereAndBack) {
  std::mt19937_64 g{5};
  EXPECT_EQ(en_zz(plein), NTL::power2_ZZ(64) - 1);
  EXPECT_EQ(en_zz(~Entier128{0}), NTL::power2_ZZ(128) - 1);
  EXPECT_EQ(en_zz(std::uint64_t{0}), 0);
  EXPECT_EQ(en_entier64(NTL::power2_ZZ(64) + 5), 5U);
  EXPECT_TRUE(en_entier128(NTL::power2_ZZ(128) + 5) == 5);
  for (int i = 0; i < 1000; ++i) {
    const std::uint64_t x = g() >> (g() % 64);
    EXPECT_EQ(en_entier64(en_zz(x)), x);
    const Entier128 y = au_hasard<Entier128>(g) >> (g() % 128);
    EXPECT_TRUE(en_entier128(en_zz(y)) == y);
    EXPECT_EQ(en_zz(y), en_zz(haut(y)) * NTL::power2_ZZ(64) + en_zz(bas(y)));
  }
}

}  // namespace
}  // namespace premiers
