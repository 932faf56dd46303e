// SPDX-License-Identifier: MIT
// The ring of eight lanes for primes/facteurs/ecm.h in AVX-512 registers.
//
// A residue is K limbs of 52 bits, each a register of eight lanes; the IFMA instructions multiply
// 52 by 52 bits and add the low or the high half of the product. A Montgomery product with R =
// 2^(52 K) takes 4 K^2 + K of them (K = 2: 18) for eight lanes, where the scalar code needs 10
// multiplications for each lane. As in primes/primalite/montgomery_souple.h nothing is corrected:
// products are left in (0, 2n), sums and differences in (0, 4n), for n < 2^(52 K - 4).
//
// Limbs of products are below 2^52. A sum only carries upwards and leaves the carry standing in the
// lower limb, too: the multiplier ignores all but the low 52 bits, and sums are never summed.
#include "primes/facteurs/ecm_avx512.h"

#if defined(__x86_64__)

#include <immintrin.h>

#include <algorithm>
#include <array>
#include <bit>
#include <numeric>
#include <span>
#include <utility>
#include <vector>

#include "primes/arithmetique/racines.h"
#include "primes/primalite/montgomery.h"
#include "primes/primalite/montgomery128.h"

// All of ecm.h is compiled here for AVX-512, into functions of this file alone: the ring below is
// in an anonymous namespace. Library headers stay outside of the pragma, so that nothing compiled
// for AVX-512 can be taken for the common version of a library function.
#if defined(__clang__)
#pragma clang attribute push(__attribute__((target("avx512f,avx512ifma"))), apply_to = function)
#else
#pragma GCC push_options
#pragma GCC target("avx512f,avx512ifma")
#endif

#include "primes/facteurs/ecm.h"

namespace premiers::ecm {
namespace {

constexpr int bits_membre = 52;
constexpr std::uint64_t masque_membre = (std::uint64_t{1} << bits_membre) - 1;

/// Limb i of x.
std::uint64_t membre(Entier128 x, std::size_t i) {
  return bas(x >> (bits_membre * i)) & masque_membre;
}

/// Every function that returns a Residu has to be inlined, and not for speed alone: gcc 12 clears
/// the upper lanes (vzeroupper) before it returns a structure of one vector register.
template <class M, std::size_t K>
struct Huit {
  using Entier = typename M::Entier;
  static constexpr std::size_t voies = voies_avx512;
  struct alignas(64) Residu {  // said aloud: std::vector is told nothing of the target
    __m512i v[K];
  };
  static_assert(alignof(Residu) == 64);

  M m;  ///< the scalar ring, for the gcds
  Residu n, deux_n, r2;
  __m512i moins_inverse;  ///< -1 / n modulo 2^52

  [[gnu::always_inline]] static Residu diffuser(Entier128 x) {
    Residu r;
    for (std::size_t i = 0; i < K; ++i) {
      r.v[i] = _mm512_set1_epi64(static_cast<long long>(membre(x, i)));
    }
    return r;
  }

  explicit Huit(Entier modulus)
      : m{modulus},
        n{diffuser(modulus)},
        deux_n{diffuser(Entier128{modulus} * 2)},
        moins_inverse{_mm512_set1_epi64(
            static_cast<long long>((0 - inverse_2_64(bas(modulus))) & masque_membre))} {
    Entier r = 1;
    for (std::size_t i = 0; i < 2 * bits_membre * K; ++i) r = m.somme(r, r);
    r2 = diffuser(r);
  }

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
  std::array<Entier, voies> lire(const Residu& a) const {
    std::array<Entier, voies> r{};
    for (std::size_t i = K; i-- > 0;) {
      std::array<std::uint64_t, voies> membres;
      _mm512_storeu_si512(membres.data(), a.v[i]);
      for (std::size_t j = 0; j < voies; ++j) r[j] = (r[j] << bits_membre) + membres[j];
    }
    for (auto& x : r) x = x < m.n ? x : x - m.n;
    return r;
  }
};

template <class M, std::size_t K>
Entier128 essayer_en(Entier128 n, const std::uint32_t* sigma, std::size_t b1, std::size_t b2) {
  const Huit<M, K> a{static_cast<typename M::Entier>(n)};
  if (b2 <= paires_courtes.portee) return essayer(a, sigma, paires_courtes, b1, b2);
  return essayer(a, sigma, paires_longues, b1, b2);
}

}  // namespace

Entier128 essayer_huit(Entier128 n, const std::uint32_t* sigma, std::size_t b1, std::size_t b2) {
  const int taille = bits(n);
  if (taille <= bits_membre - 4) return essayer_en<Montgomery64, 1>(n, sigma, b1, b2);
  if (taille <= 2 * bits_membre - 4) return essayer_en<Montgomery128, 2>(n, sigma, b1, b2);
  return essayer_en<Montgomery128, 3>(n, sigma, b1, b2);
}

}  // namespace premiers::ecm

#if defined(__clang__)
#pragma clang attribute pop
#else
#pragma GCC pop_options
#endif

namespace premiers::ecm {

bool avx512_disponible() {
  return __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512ifma");
}

}  // namespace premiers::ecm

#else

namespace premiers::ecm {

bool avx512_disponible() { return false; }
Entier128 essayer_huit(Entier128, const std::uint32_t*, std::size_t, std::size_t) { return 1; }

}  // namespace premiers::ecm

#endif
