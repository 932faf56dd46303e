// SPDX-License-Identifier: MIT
// The ring of eight lanes in AVX-512 registers (primes/facteurs/ecm_anneau_avx512.h) for long moduli.
// Measured: ten times the curves of primes/arithmetique/montgomery_long.h in the same time.
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
#include "primes/arithmetique/montgomery_long.h"
#include "primes/arithmetique/racines.h"

#if defined(__clang__)
#pragma clang attribute push(__attribute__((target("avx512f,avx512ifma"))), apply_to = function)
#else
#pragma GCC push_options
#pragma GCC target("avx512f,avx512ifma")
#endif

#include "primes/facteurs/ecm.h"
#include "primes/facteurs/ecm_anneau_avx512.h"

namespace premiers::ecm {
namespace {

template <std::size_t K>
struct HuitLong : AnneauHuit<K> {
  static constexpr std::size_t mots = (bits_membre * K + 63) / 64;
  using Entier = EntierLong<mots>;
  using Anneau = AnneauHuit<K>;
  using typename Anneau::Residu;

  MontgomeryLong<mots> m;  // the scalar ring, for the gcds

  /// The limbs of x >= 0.
  static typename Anneau::Membres membres(NTL::ZZ x) {
    typename Anneau::Membres r;
    for (std::uint64_t& membre : r) {
      membre = premiers::en_mots<1>(NTL::trunc_ZZ(x, bits_membre)).mots[0];
      x >>= bits_membre;
    }
    return r;
  }

  explicit HuitLong(const NTL::ZZ& modulus) : m{modulus} {
    this->n = Anneau::diffuser(membres(modulus));
    this->deux_n = Anneau::diffuser(membres(2 * modulus));
    this->r2 =
        Anneau::diffuser(membres(NTL::power2_ZZ(2 * bits_membre * static_cast<long>(K)) % modulus));
    this->moins_inverse = _mm512_set1_epi64(static_cast<long long>(m.oppose & masque_membre));
  }

  /// For each lane a number that has the same gcd with n as the residue.
  std::array<Entier, Anneau::voies> lire(const Residu& a) const {
    std::array<NTL::ZZ, Anneau::voies> x;
    for (std::size_t i = K; i-- > 0;) {
      const auto membres = Anneau::lire_membre(a, i);
      for (std::size_t j = 0; j < x.size(); ++j) {
        x[j] = (x[j] << bits_membre) + premiers::en_zz(EntierLong<1>{membres[j]});
      }
    }
    std::array<Entier, Anneau::voies> r;
    for (std::size_t j = 0; j < x.size(); ++j) r[j] = premiers::en_mots<mots>(x[j]);
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

// Under sanitizers nothing takes longer to compile than this; there, three of the five lengths do.
NTL::ZZ essayer_huit_long(const NTL::ZZ& n, const std::array<std::uint32_t, 8>& sigma,
                          std::size_t b1, std::size_t b2) {
  const long bits = NTL::NumBits(n);
  if (bits <= AnneauHuit<3>::bits_maximum) return essayer_en<3>(n, sigma, b1, b2);
#if !defined(PREMIERS_ASSAINI)
  if (bits <= AnneauHuit<4>::bits_maximum) return essayer_en<4>(n, sigma, b1, b2);
#endif
  if (bits <= AnneauHuit<5>::bits_maximum) return essayer_en<5>(n, sigma, b1, b2);
  static_assert(AnneauHuit<8>::bits_maximum == bits_huit_long);
#if !defined(PREMIERS_ASSAINI)
  if (bits <= AnneauHuit<6>::bits_maximum) return essayer_en<6>(n, sigma, b1, b2);
#endif
  return essayer_en<8>(n, sigma, b1, b2);
}

}  // namespace premiers::ecm

#if defined(__clang__)
#pragma clang attribute pop
#else
#pragma GCC pop_options
#endif

#endif
