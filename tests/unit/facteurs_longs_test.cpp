// SPDX-License-Identifier: MIT
// ECM and Montgomery arithmetic on long moduli, and the division by small primes before them.
#include "primes/facteurs/facteurs_longs.h"

#include <NTL/ZZ.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "primes/arithmetique/montgomery_long.h"
#include "primes/arithmetique/zz.h"
#include "primes/facteurs/petits_facteurs.h"

namespace premiers::facteurs {
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

MontgomeryLong::Residu en_residu(ZZ x) {
  MontgomeryLong::Residu r{};
  for (std::uint64_t& mot : r.mots) {
    mot = en_entier64(NTL::trunc_ZZ(x, 64));
    x >>= 64;
  }
  return r;
}
ZZ en_zz(const MontgomeryLong::Residu& r, std::size_t mots) {
  ZZ x;
  for (std::size_t i = mots; i-- > 0;) x = (x << 64) + premiers::en_zz(r.mots[i]);
  return x;
}

void comparer_l_arithmetique(const ZZ& n, std::size_t L) {
  const ZZ R = power2_ZZ(static_cast<long>(64 * L));
  const MontgomeryLong m{n};
  ASSERT_EQ(m.longueur, L);
  for (int i = 0; i < 50; ++i) {
    // The greatest values that sums and differences may have are just below 4n.
    const ZZ x = i == 0 ? 4 * n - 1 : NTL::RandomBnd(4 * n);
    const ZZ y = i <= 1 ? 4 * n - 1 : NTL::RandomBnd(4 * n);
    MontgomeryLong::Residu r, s;
    m.produit(r, en_residu(x), en_residu(y));
    EXPECT_LT(en_zz(r, L), 2 * n);
    EXPECT_EQ(en_zz(r, L) * R % n, x * y % n);
    r = en_residu(x);
    m.produit(r, r, r);
    EXPECT_EQ(en_zz(r, L) * R % n, x * x % n);
    const ZZ u = NTL::RandomBnd(2 * n);
    const ZZ v = NTL::RandomBnd(2 * n);
    m.somme(r, en_residu(u), en_residu(v));
    EXPECT_EQ(en_zz(r, L), u + v);
    m.difference(r, en_residu(u), en_residu(v));
    EXPECT_EQ(en_zz(r, L), u + 2 * n - v);
    r = en_residu(u);
    s = en_residu(v);
    m.papillon(r, s, r, s);
    EXPECT_EQ(en_zz(r, L), u + v);
    EXPECT_EQ(en_zz(s, L), u + 2 * n - v);
    r = en_residu(x);
    m.fois_ecart(r, en_residu(u), en_residu(v));
    EXPECT_LT(en_zz(r, L), 2 * n);
    EXPECT_EQ(en_zz(r, L) * R % n, x * (u + 2 * n - v) % n);
    EXPECT_EQ(m.lire(m.entrer({x % n}))[0], x % n);
    EXPECT_EQ(en_zz(m.entrer({x % n}), L), x * R % n);
  }
}

TEST(MontgomeryLong, AgreesWithLongArithmeticUpToItsLimits) {
  for (std::size_t L = MontgomeryLong::mots_min; L <= MontgomeryLong::mots_max; ++L) {
    for (const ZZ& n : modules(MontgomeryLong::bits_maximum(L))) comparer_l_arithmetique(n, L);
  }
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
  constexpr long pas =
#if defined(PREMIERS_ASSAINI)
      21;  // every number of limbs all the same
#else
      7;
#endif
  for (long bits = 70; bits <= bits_facteur_long; bits += pas) {
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
}  // namespace premiers::facteurs
