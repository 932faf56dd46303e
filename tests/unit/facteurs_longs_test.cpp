// SPDX-License-Identifier: MIT
// ECM and Montgomery arithmetic on long moduli, and the division by small primes before them.
#include "primes/facteurs/facteurs_longs.h"

#include <NTL/ZZ.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <vector>

#include "primes/arithmetique/montgomery_long.h"
#include "primes/facteurs/ecm.h"
#include "primes/facteurs/ecm_avx512.h"
#include "primes/facteurs/ecm_long_avx512.h"
#include "primes/facteurs/ecm_voies.h"
#include "primes/facteurs/petits_facteurs.h"

namespace premiers {
namespace {

using NTL::power2_ZZ;
using NTL::ZZ;

/// Odd moduli of up to `bits` bits, the extreme ones among them.
std::vector<ZZ> modules(long bits) {
  std::vector<ZZ> m{power2_ZZ(bits) - 1, power2_ZZ(bits) - 59, power2_ZZ(bits - 1) + 1};
  NTL::SetSeed(ZZ{bits});
  for (int i = 0; i < 20; ++i) m.push_back(2 * NTL::RandomLen_ZZ(bits - 1) + 1);
  return m;
}

template <std::size_t L>
void comparer_l_arithmetique() {
  const ZZ R = power2_ZZ(static_cast<long>(64 * L));
  for (const ZZ& n : modules(MontgomeryLong<L>::bits_maximum)) {
    const MontgomeryLong<L> m{n};
    for (int i = 0; i < 50; ++i) {
      // The greatest values that sums and differences may have are just below 4n.
      const ZZ x = i == 0 ? 4 * n - 1 : NTL::RandomBnd(4 * n);
      const ZZ y = i <= 1 ? 4 * n - 1 : NTL::RandomBnd(4 * n);
      const ZZ p = en_zz(m.produit(en_mots<L>(x), en_mots<L>(y)));
      EXPECT_LT(p, 2 * n);
      EXPECT_EQ(p * R % n, x * y % n);
      const ZZ u = NTL::RandomBnd(2 * n);
      const ZZ v = NTL::RandomBnd(2 * n);
      EXPECT_EQ(en_zz(m.somme(en_mots<L>(u), en_mots<L>(v))), u + v);
      EXPECT_EQ(en_zz(m.difference(en_mots<L>(u), en_mots<L>(v))), u + 2 * n - v);
    }
    EXPECT_EQ(en_zz(m.entrer(12345)) % n, 12345 * R % n);
  }
}

TEST(MontgomeryLong, AgreesWithLongArithmeticUpToItsLimits) {
  comparer_l_arithmetique<2>();
  comparer_l_arithmetique<3>();
  comparer_l_arithmetique<4>();
  comparer_l_arithmetique<5>();
  comparer_l_arithmetique<6>();
  comparer_l_arithmetique<7>();
  comparer_l_arithmetique<8>();
  comparer_l_arithmetique<9>();
  comparer_l_arithmetique<10>();
  comparer_l_arithmetique<11>();
}

using Methode = decltype(&facteur_ecm_long);

/// What this processor gets, and the plain version.
struct FacteursLongs : testing::TestWithParam<Methode> {};
INSTANTIATE_TEST_SUITE_P(, FacteursLongs,
                         testing::Values(&facteur_ecm_long,
                                         versions_de_facteur_ecm_long().back().boucle),
                         [](const auto& methode) {
                           return methode.index == 0 ? "here" : "portable";
                         });

TEST_P(FacteursLongs, FindsShortFactorsAtEveryLength) {
  NTL::SetSeed(ZZ{5});
  for (long bits = 70; bits <= bits_facteur_long; bits += 7) {
    const ZZ p = NTL::GenPrime_ZZ(28);
    const ZZ q = NTL::GenPrime_ZZ(bits - 28);
    const auto f = GetParam()(p * q, {256, 300, 15000}, 0, {});
    ASSERT_TRUE(f.has_value()) << p << " * " << q;
    EXPECT_TRUE(*f == p || *f == q) << *f;
  }
}

TEST_P(FacteursLongs, FindsNothingInPrimesNorBeyondItsLimit) {
  EXPECT_FALSE(GetParam()(power2_ZZ(127) - 1, {16, 200, 8000}, 0, {}).has_value());
  EXPECT_FALSE(GetParam()(2027 * power2_ZZ(710) + 2027, {16, 200, 8000}, 0, {}).has_value());
}

/// One curve in the scalar ring: what the eight lanes are compared with.
template <std::size_t L>
ZZ essayer_une(const ZZ& n, std::uint32_t sigma) {
  const ecm::Voies<MontgomeryLong<L>, 1> a{MontgomeryLong<L>{n}};
  return en_zz(ecm::essayer(a, &sigma, ecm::paires_longues, 100, 5000));
}

TEST(CourbesLongues, BothArithmeticsFindTheSameOnEveryCurve) {
  if (!jouable(ecm::besoin_avx512)) GTEST_SKIP() << "no AVX-512 IFMA here";
  NTL::SetSeed(ZZ{6});
  int trouves = 0;
  for (const long bits : {90L, 148L, 149L, 204L, 205L, 256L, 257L, 308L, 309L, 380L}) {
    const ZZ n = NTL::GenPrime_ZZ(30) * NTL::GenPrime_ZZ(bits - 30);
    for (std::uint32_t sigma = 6; sigma < 26; ++sigma) {
      std::array<std::uint32_t, 8> sigmas{};
      sigmas.fill(sigma);
      const ZZ f = ecm::essayer_huit_long(n, sigmas, 100, 5000);
      EXPECT_EQ(f, essayer_une<6>(n, sigma)) << n << ' ' << sigma;
      if (bits <= MontgomeryLong<4>::bits_maximum) {
        EXPECT_EQ(f, essayer_une<4>(n, sigma)) << n << ' ' << sigma;
      }
      trouves += f != 1 ? 1 : 0;
    }
  }
  EXPECT_GT(trouves, 10);
}

TEST(PetitsFacteurs, TakesOutAllPrimesBelowItsBoundAndNoOther) {
  for (std::uint64_t p = 2; p < borne_petits_facteurs; ++p) {
    bool premier = true;
    for (std::uint64_t d = 2; d * d <= p; ++d) premier = premier && p % d != 0;
    if (!premier) continue;
    const ZZ reste = NTL::power(ZZ{2011}, 30) * 2017;
    ZZ n = NTL::power(ZZ{static_cast<long>(p)}, 3) * reste;
    const auto trouves = retirer_petits_facteurs(n);
    ASSERT_EQ(trouves.size(), 1U) << p;
    EXPECT_EQ(trouves[0].premier, p);
    EXPECT_EQ(trouves[0].exposant, 3);
    EXPECT_EQ(n, reste);
  }
}

TEST(PetitsFacteurs, InIncreasingOrderAndDownToOne) {
  ZZ n{1};
  for (long i = 2; i <= 2010; ++i) n *= i;
  const auto trouves = retirer_petits_facteurs(n);
  EXPECT_EQ(n, 1);
  EXPECT_EQ(trouves.size(), 304U);  // pi(2010)
  for (std::size_t i = 1; i < trouves.size(); ++i) {
    EXPECT_LT(trouves[i - 1].premier, trouves[i].premier);
  }
}

}  // namespace
}  // namespace premiers
