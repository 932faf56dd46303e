// SPDX-License-Identifier: MIT
// The ring of eight lanes for primes/facteurs/ecm.h in AVX-512 registers, for long moduli.
//
// A residue is K limbs of 52 bits, each a register of eight lanes; the IFMA instructions multiply
// 52 by 52 bits and add the low or the high half of the product. A Montgomery product with R =
// 2^(52 K) takes 4 K^2 + K of them for eight lanes: for 200 bits 68, where scalar code multiplies
// 288 times. Measured: ten times the curves of montgomery_long.h in the same time.
//
// As there nothing is corrected: products are left in (0, 2n), sums and differences in (0, 4n), for
// n < 2^(52 K - 4). Limbs of products are below 2^52. A sum only carries upwards and leaves the
// carry standing in the lower limb, too: the multiplier ignores all but the low 52 bits.
#include "primes/facteurs/ecm_long_avx512.h"

#if defined(__x86_64__)

#include <immintrin.h>

#include <algorithm>
#include <array>
#include <numeric>
#include <span>
#include <utility>
#include <vector>

#include "primes/arithmetique/entier_long.h"
#include "primes/arithmetique/racines.h"
#include "primes/primalite/montgomery_long.h"

#if defined(__clang__)
#pragma clang attribute push(__attribute__((target("avx512f,avx512ifma"))), apply_to = function)
#else
#pragma GCC push_options
#pragma GCC target("avx512f,avx512ifma")
#endif

#include "primes/facteurs/ecm.h"

namespace premiers::ecm {
namespace {

constexpr long bits_membre = 52;
constexpr std::uint64_t masque_membre = (std::uint64_t{1} << bits_membre) - 1;

/// Limb i of x >= 0.
std::uint64_t membre(const NTL::ZZ& x, std::size_t i) {
  return premiers::en_mots<1>(NTL::trunc_ZZ(x >> (bits_membre * static_cast<long>(i)), bits_membre))
      .mots[0];
}

template <std::size_t K>
struct HuitLong {
  static constexpr std::size_t mots = (bits_membre * K + 63) / 64;
  static constexpr long bits_maximum = bits_membre * static_cast<long>(K) - 4;
  using Entier = EntierLong<mots>;
  static constexpr std::size_t voies = 8;
  struct alignas(64) Residu {  // said aloud: std::vector is told nothing of the target
    __m512i v[K];
  };
  static_assert(alignof(Residu) == 64);

  MontgomeryLong<mots> m;  ///< the scalar ring, for the gcds
  Residu n, deux_n, r2;
  __m512i moins_inverse;  ///< -1 / n modulo 2^52

  static Residu diffuser(const NTL::ZZ& x) {
    Residu r;
    for (std::size_t i = 0; i < K; ++i) {
      r.v[i] = _mm512_set1_epi64(static_cast<long long>(membre(x, i)));
    }
    return r;
  }

  explicit HuitLong(const NTL::ZZ& modulus)
      : m{modulus},
        n{diffuser(modulus)},
        deux_n{diffuser(2 * modulus)},
        r2{diffuser(NTL::power2_ZZ(2 * bits_membre * static_cast<long>(K)) % modulus)},
        moins_inverse{_mm512_set1_epi64(static_cast<long long>(m.oppose & masque_membre))} {}

  [[gnu::always_inline]] Residu produit(const Residu& a, const Residu& b) const {
    const __m512i zero{};
    __m512i t[2 * K] = {};
    for (std::size_t i = 0; i < K; ++i) {
      for (std::size_t j = 0; j < K; ++j) {
        t[i + j] = _mm512_madd52lo_epu64(t[i + j], a.v[i], b.v[j]);
        t[i + j + 1] = _mm512_madd52hi_epu64(t[i + j + 1], a.v[i], b.v[j]);
      }
    }
    for (std::size_t i = 0; i < K; ++i) {  // make limb i zero, and carry its upper bits
      const __m512i f = _mm512_madd52lo_epu64(zero, t[i], moins_inverse);
      for (std::size_t j = 0; j < K; ++j) {
        t[i + j] = _mm512_madd52lo_epu64(t[i + j], f, n.v[j]);
        t[i + j + 1] = _mm512_madd52hi_epu64(t[i + j + 1], f, n.v[j]);
      }
      t[i + 1] += t[i] >> bits_membre;
    }
    Residu r;
    for (std::size_t i = K; i < 2 * K - 1; ++i) {
      t[i + 1] += t[i] >> bits_membre;
      r.v[i - K] = t[i] & static_cast<long long>(masque_membre);
    }
    r.v[K - 1] = t[2 * K - 1];
    return r;
  }
  [[gnu::always_inline]] Residu carre(const Residu& a) const { return produit(a, a); }

  [[gnu::always_inline]] Residu somme(const Residu& a, const Residu& b) const {
    Residu r;
    for (std::size_t i = 0; i < K; ++i) r.v[i] = a.v[i] + b.v[i];
    return propager(r);
  }
  [[gnu::always_inline]] Residu difference(const Residu& a, const Residu& b) const {
    Residu r;
    for (std::size_t i = 0; i < K; ++i) r.v[i] = a.v[i] + (deux_n.v[i] - b.v[i]);
    return propager(r);
  }
  /// Adds to every limb the carry, or the borrow, of the limb below.
  [[gnu::always_inline]] static Residu propager(Residu r) {
    for (std::size_t i = 0; i + 1 < K; ++i) r.v[i + 1] += r.v[i] >> bits_membre;
    return r;
  }

  [[gnu::always_inline]] Residu entrer(const std::array<std::uint64_t, voies>& x) const {
    Residu r;
    for (auto& v : r.v) v = __m512i{};
    r.v[0] = _mm512_loadu_si512(x.data());
    return produit(r, r2);
  }
  /// For each lane a number that has the same gcd with n as the residue.
  std::array<Entier, voies> lire(const Residu& a) const {
    std::array<std::array<std::uint64_t, voies>, K> membres;
    for (std::size_t i = 0; i < K; ++i) _mm512_storeu_si512(membres[i].data(), a.v[i]);
    std::array<Entier, voies> r;
    for (std::size_t j = 0; j < voies; ++j) {
      NTL::ZZ x;
      for (std::size_t i = K; i-- > 0;)
        x = (x << bits_membre) + premiers::en_zz(EntierLong<1>{membres[i][j]});
      r[j] = premiers::en_mots<mots>(x);
    }
    return r;
  }
};

template <std::size_t K>
NTL::ZZ essayer_en(const NTL::ZZ& n, const std::array<std::uint32_t, 8>& sigma, std::size_t b1,
                   std::size_t b2) {
  const HuitLong<K> a{n};
  return premiers::en_zz(essayer(a, sigma.data(), paires_longues, b1, b2));
}

}  // namespace

NTL::ZZ essayer_huit_long(const NTL::ZZ& n, const std::array<std::uint32_t, 8>& sigma,
                          std::size_t b1, std::size_t b2) {
  const long bits = NTL::NumBits(n);
  if (bits <= HuitLong<3>::bits_maximum) return essayer_en<3>(n, sigma, b1, b2);
  if (bits <= HuitLong<4>::bits_maximum) return essayer_en<4>(n, sigma, b1, b2);
  if (bits <= HuitLong<5>::bits_maximum) return essayer_en<5>(n, sigma, b1, b2);
  if (bits <= HuitLong<6>::bits_maximum) return essayer_en<6>(n, sigma, b1, b2);
  return essayer_en<8>(n, sigma, b1, b2);
}

}  // namespace premiers::ecm

#if defined(__clang__)
#pragma clang attribute pop
#else
#pragma GCC pop_options
#endif

#else

namespace premiers::ecm {

NTL::ZZ essayer_huit_long(const NTL::ZZ&, const std::array<std::uint32_t, 8>&, std::size_t,
                          std::size_t) {
  return NTL::ZZ{1};
}

}  // namespace premiers::ecm

#endif
