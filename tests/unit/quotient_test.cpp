// SPDX-License-Identifier: MIT
// The quotients by floating point, against the processor's division of integers: at the ends of the
// ranges that they are proven for, and on both sides of multiples, where a rounding would show.
#include "primes/arithmetique/quotient.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <random>
#include <vector>

namespace premiers {
namespace {

/// Numbers below 2^bits: the ends, powers of two and their neighbours, and some of every length.
std::vector<std::uint64_t> nombres(unsigned bits, unsigned graine) {
  std::mt19937_64 hasard(graine);
  std::vector<std::uint64_t> r;
  for (unsigned b = 1; b <= bits; ++b) {
    const std::uint64_t puissance = std::uint64_t{1} << (b - 1);
    for (const std::uint64_t n : {puissance, puissance + 1, 2 * puissance - 1}) r.push_back(n);
    for (int i = 0; i < 8; ++i) r.push_back(puissance + hasard() % puissance);
  }
  return r;
}

/// Calls f(n, d) for n < 2^bits next to multiples of d, as near to the end as they come.
template <class F>
void pres_des_multiples(unsigned bits, unsigned bits_d, unsigned bits_q, F f) {
  const std::uint64_t fin = std::uint64_t{1} << bits;
  for (const std::uint64_t d : nombres(bits_d, 1)) {
    for (const std::uint64_t q : nombres(bits_q, 2)) {
      if (q > (fin - 1) / d) continue;
      for (const std::uint64_t n : {q * d - 1, q * d, q * d + 1, q * d + d / 2}) {
        if (n < fin && n / d >> bits_q == 0) f(n, d);
      }
    }
    const std::uint64_t dernier = (fin - 1) / d * d;
    if (dernier / d >> bits_q == 0) f(dernier, d), f(dernier == 0 ? 0 : dernier - 1, d);
  }
}

TEST(Quotient, OneDivision) {
  pres_des_multiples(52, 51, 52, [](std::uint64_t n, std::uint64_t d) {
    ASSERT_EQ(quotient_direct(n, d), n / d) << n << " / " << d;
  });
}

TEST(Quotient, ByAReciprocalInDoubles) {
  pres_des_multiples(51, 51, 51, [](std::uint64_t n, std::uint64_t d) {
    const double inverse = 1 / static_cast<double>(d);
    const std::int64_t q = quotient_par_inverse(avec_demi<double>(n), inverse);
    ASSERT_EQ(static_cast<std::uint64_t>(q), n / d) << n << " / " << d;
  });
}

TEST(Quotient, ByAReciprocalInFloats) {
  pres_des_multiples(22, 22, 22, [](std::uint64_t n, std::uint64_t d) {
    const float inverse = 1 / static_cast<float>(d);
    const std::int32_t q = quotient_par_inverse(avec_demi<float>(n), inverse);
    ASSERT_EQ(static_cast<std::uint64_t>(q), n / d) << n << " / " << d;
  });
}

TEST(Quotient, PutRightAfterwards) {
  pres_des_multiples(63, 51, 50, [](std::uint64_t n, std::uint64_t d) {
    ASSERT_EQ(quotient_inferieur(n, d), n / d) << n << " / " << d;
    ASSERT_EQ(quotient_superieur(n, d), n / d + (n % d != 0 ? 1 : 0)) << n << " / " << d;
  });
}

TEST(Quotient, NearestRemainder) {
  pres_des_multiples(52, 23, 50, [](std::uint64_t n, std::uint64_t d) {
    const auto reel = static_cast<double>(d);
    for (const std::int64_t t : {static_cast<std::int64_t>(n), -static_cast<std::int64_t>(n)}) {
      const auto r = reste_proche(static_cast<double>(t), reel, 1 / reel);
      ASSERT_LE(std::abs(r), reel / 2 + 1) << t << " mod " << d;
      ASSERT_EQ((t - static_cast<std::int64_t>(r)) % static_cast<std::int64_t>(d), 0)
          << t << " mod " << d;
    }
  });
}

TEST(Quotient, ProductsInFloats) {
  constexpr std::uint64_t fin = std::uint64_t{1} << 23;
  for (const std::uint64_t p : nombres(23, 3)) {
    const float inverse = 1 / static_cast<float>(p);
    for (const std::uint64_t a : nombres(23, 4)) {
      for (const std::uint64_t b : {p - 1, p / 2, p / 3 + 1, std::uint64_t{1}}) {
        if (a >= p || b >= p || a * b >= fin * p) continue;
        ASSERT_EQ(produit_par_inverse(static_cast<std::uint32_t>(a), static_cast<std::uint32_t>(b),
                                      static_cast<std::uint32_t>(p), inverse),
                  a * b % p)
            << a << " * " << b << " mod " << p;
      }
    }
  }
}

}  // namespace
}  // namespace premiers
