// SPDX-License-Identifier: MIT
// The ring of eight lanes: its kernels, in every version that can run here, against NTL's integers.
#include "primes/facteurs/huit.h"

#include <NTL/ZZ.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <utility>

#include "versions_de_huit.h"

namespace premiers::facteurs::ecm {
namespace {

using NTL::ZZ;

std::string texte(const ZZ& n) {
  std::string r;
  for (ZZ x = n; r.empty() || x != 0; x /= 10) {
    r.insert(r.begin(), static_cast<char>('0' + NTL::to_int(x % 10)));
  }
  return r;
}

/// Odd moduli of every length, just within it and just beyond the one before.
template <class F>
void pour_chaque_module(const F& f) {
  for (std::size_t k = Huit::membres_min; k <= Huit::membres_max; ++k) {
    const long bits = Huit::bits_maximum(k);
    const ZZ petit = NTL::power2_ZZ(k == Huit::membres_min ? 65 : Huit::bits_maximum(k - 1)) + 1;
    for (const ZZ& n : {petit, NTL::power2_ZZ(bits) - 1, NTL::power2_ZZ(bits) - 59,
                        NTL::RandomBits_ZZ(bits - 1) / 2 * 2 + NTL::power2_ZZ(bits - 1) + 1}) {
      SCOPED_TRACE(std::to_string(k) + " limbs, n = " + texte(n));
      f(n);
    }
  }
}

/// The ends of the range first, then anything.
Huit::Nombres au_hasard(const ZZ& n) {
  Huit::Nombres x{ZZ{0}, ZZ{1}, n - 1, n / 2};
  for (std::size_t j = 4; j < x.size(); ++j) x[j] = NTL::RandomBnd(n);
  return x;
}

TEST(Huit, EntersAndReads) {
  pour_chaque_version([](auto noyaux) {
    pour_chaque_module([&](const ZZ& n) {
      const Huit a(n, noyaux);
      const auto x = au_hasard(n);
      EXPECT_EQ(a.lire(a.entrer(x)), x);
    });
  });
}

/// Sums of products, differences, and products of both, in all orders: a residue may be as lazy as the
/// ring allows, and a kernel's result may be one of its arguments.
TEST(Huit, ComputesAsIntegersDo) {
  NTL::SetSeed(ZZ{5});
  pour_chaque_version([](auto noyaux) {
    pour_chaque_module([&](const ZZ& n) {
      const Huit a(n, noyaux);
      auto x = au_hasard(n);
      auto y = au_hasard(n);
      std::swap(y[2], y[4]);
      Huit::Nombres uns;
      uns.fill(ZZ{1});
      auto rx = a.entrer(x);
      auto ry = a.entrer(y);
      for (int fois = 0; fois < 20; ++fois) {
        const auto xs = x;
        Huit::Nombres s, d;
        for (std::size_t j = 0; j < x.size(); ++j) {
          s[j] = (x[j] + y[j]) % n;
          d[j] = (n + x[j] - y[j]) % n;
          x[j] = s[j] * s[j] % n;
          y[j] = s[j] * d[j] % n;
        }
        Huit::Residu rs, rd, deux[2];
        a.somme(rs, rx, ry);
        a.difference(rd, rx, ry);
        a.papillon(deux[0], deux[1], rx, ry);
        EXPECT_EQ(a.lire(rs), s);
        EXPECT_EQ(a.lire(rd), d);
        EXPECT_EQ(a.lire(deux[0]), s);
        EXPECT_EQ(a.lire(deux[1]), d);
        a.produit(rd, rs, rd);
        a.produit(deux[1], rx, a.entrer(uns));
        a.fois_ecart(deux[1], rx, ry);  // x (x - y)
        for (std::size_t j = 0; j < x.size(); ++j) {
          EXPECT_EQ(a.lire(deux[1])[j], xs[j] * d[j] % n);
        }
        a.produit(rx, rs, rs);
        ry = rd;
        ASSERT_EQ(a.lire(rx), x);
        ASSERT_EQ(a.lire(ry), y);
      }
    });
  });
}

TEST(Huit, TheDifferenceOfEqualsIsAMultipleOfN) {
  pour_chaque_version([](auto noyaux) {
    pour_chaque_module([&](const ZZ& n) {
      const Huit a(n, noyaux);
      Huit::Residu x;
      a.produit(x, a.entrer(au_hasard(n)), a.entrer(au_hasard(n)));
      a.difference(x, x, x);
      for (const ZZ& zero : a.lire(x)) EXPECT_EQ(zero, 0);
    });
  });
}

}  // namespace
}  // namespace premiers::facteurs::ecm
