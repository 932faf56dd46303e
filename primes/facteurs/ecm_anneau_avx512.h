// SPDX-License-Identifier: MIT
// Eight residues in AVX-512 registers, for few limbs: all is inlined, and a residue stays in its
// registers from one operation to the next, where the ring of huit.h, of any length, hands it over in
// memory. For two limbs that is a third of the instructions.
//
// A residue is K limbs of 52 bits, each a register of eight lanes; the IFMA instructions multiply
// 52 by 52 bits and add the low or the high half of the product. A Montgomery product with R =
// 2^(52 K) takes 4 K^2 + K of them for eight lanes: 18 for K = 2, where scalar code needs 10
// multiplications for each lane.
//
// As in primes/arithmetique/montgomery_souple.h nothing is corrected: products are left in [0, 2n),
// sums and differences in (0, 4n), for n < 2^(52 K - 4). Limbs of products are below 2^52. A sum
// only carries upwards and leaves the carry standing in the lower limb, too: the multiplier ignores
// all but the low 52 bits, and sums are never summed.
//
// To be included where the target is AVX-512, and nowhere else.
#pragma once

#include <immintrin.h>

#include <array>
#include <cstddef>
#include <cstdint>

namespace premiers::facteurs::ecm {

constexpr int bits_membre = 52;
constexpr std::uint64_t masque_membre = (std::uint64_t{1} << bits_membre) - 1;

/// Every function that returns a Residu has to be inlined, and not for speed alone: gcc 12 clears
/// the upper lanes (vzeroupper) before it returns a structure of one vector register.
template <std::size_t K>
struct AnneauHuit {
  static constexpr std::size_t voies = 8;
  static constexpr int bits_maximum = bits_membre * static_cast<int>(K) - 4;
  struct alignas(64) Residu {  // said aloud: std::vector is told nothing of the target
    __m512i v[K];
  };
  static_assert(alignof(Residu) == 64);
  using Membres = std::array<std::uint64_t, K>;

  Residu n, deux_n, r2;   // the modulus, its double, R^2 modulo n
  __m512i moins_inverse;  // -1 / n modulo 2^52

  /// The same number in all lanes.
  [[gnu::always_inline]] static Residu diffuser(const Membres& membres) {
    Residu r;
    for (std::size_t i = 0; i < K; ++i) {
      r.v[i] = _mm512_set1_epi64(static_cast<long long>(membres[i]));
    }
    return r;
  }

  [[gnu::always_inline]] void produit(Residu& r, const Residu& a, const Residu& b) const {
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
    for (std::size_t i = K; i < 2 * K - 1; ++i) {
      t[i + 1] += t[i] >> bits_membre;
      r.v[i - K] = t[i] & static_cast<long long>(masque_membre);
    }
    r.v[K - 1] = t[2 * K - 1];
  }

  [[gnu::always_inline]] void somme(Residu& r, const Residu& a, const Residu& b) const {
    for (std::size_t i = 0; i < K; ++i) r.v[i] = a.v[i] + b.v[i];
    propager(r);
  }
  [[gnu::always_inline]] void difference(Residu& r, const Residu& a, const Residu& b) const {
    for (std::size_t i = 0; i < K; ++i) r.v[i] = a.v[i] + (deux_n.v[i] - b.v[i]);
    propager(r);
  }
  [[gnu::always_inline]] void papillon(Residu& s, Residu& d, const Residu& a,
                                       const Residu& b) const {
    Residu ecart;
    difference(ecart, a, b);
    somme(s, a, b);
    d = ecart;
  }
  [[gnu::always_inline]] void fois_ecart(Residu& r, const Residu& a, const Residu& b) const {
    Residu ecart;
    difference(ecart, a, b);
    produit(r, r, ecart);
  }
  /// Adds to every limb the carry, or the borrow, of the limb below.
  [[gnu::always_inline]] static void propager(Residu& r) {
    for (std::size_t i = 0; i + 1 < K; ++i) r.v[i + 1] += r.v[i] >> bits_membre;
  }

  [[gnu::always_inline]] Residu entrer_mots(const std::array<std::uint64_t, voies>& x) const {
    Residu r;
    for (auto& v : r.v) v = __m512i{};
    r.v[0] = _mm512_loadu_si512(x.data());
    produit(r, r, r2);
    return r;
  }
  /// Limb i of all lanes.
  static std::array<std::uint64_t, voies> lire_membre(const Residu& a, std::size_t i) {
    std::array<std::uint64_t, voies> membres;
    _mm512_storeu_si512(membres.data(), a.v[i]);
    return membres;
  }
};

}  // namespace premiers::facteurs::ecm
