// SPDX-License-Identifier: MIT
// The ring of eight lanes in AVX-512 registers (primes/facteurs/ecm_anneau_avx512.h) for moduli up
// to 126 bits.
#include "primes/facteurs/ecm_avx512.h"

#if defined(__x86_64__)

#include <immintrin.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cassert>
#include <numeric>
#include <span>
#include <utility>
#include <vector>

#include "primes/arithmetique/montgomery.h"
#include "primes/arithmetique/montgomery128.h"
#include "primes/arithmetique/racines.h"
#include "primes/arithmetique/zz.h"
#include "primes/facteurs/ecm_chaines.h"
#include "primes/facteurs/ecm_paires.h"
#include "primes/facteurs/ecm_rangees.h"
#include "primes/suivi/suivi.h"

// All of ecm.h and ecm_seconde.h is compiled here for AVX-512, into functions of this file alone: the
// ring that it is given is in an anonymous namespace. Library headers stay outside of the pragma, so that
// nothing compiled for AVX-512 can be taken for the common version of a library function.
#if defined(__clang__)
#pragma clang attribute push(__attribute__((target("avx512f,avx512ifma"))), apply_to = function)
#else
#pragma GCC push_options
#pragma GCC target("avx512f,avx512ifma")
#endif

#include "primes/facteurs/ecm.h"
#include "primes/facteurs/ecm_anneau_avx512.h"
#include "primes/facteurs/ecm_seconde.h"

namespace premiers::facteurs::ecm {
namespace {

/// M is the scalar ring, for the gcds.
template <class M, std::size_t K>
struct AnneauCourt : AnneauHuit<K> {
  using Entier = typename M::Entier;
  using Anneau = AnneauHuit<K>;
  using typename Anneau::Residu;

  M m;
  static_assert(Anneau::voies == voies_avx512);

  static typename Anneau::Membres membres(Entier128 x) {
    typename Anneau::Membres r;
    for (std::size_t i = 0; i < K; ++i) r[i] = bas(x >> (bits_membre * i)) & masque_membre;
    return r;
  }

  explicit AnneauCourt(Entier modulus) : m{modulus} {
    Entier r = 1;
    for (std::size_t i = 0; i < 2 * bits_membre * K; ++i) r = m.somme(r, r);
    this->n = Anneau::diffuser(membres(modulus));
    this->deux_n = Anneau::diffuser(membres(Entier128{modulus} * 2));
    this->r2 = Anneau::diffuser(membres(r));
    this->moins_inverse =
        _mm512_set1_epi64(static_cast<long long>((0 - inverse_2_64(bas(modulus))) & masque_membre));
  }

  using Nombres = std::array<Entier, Anneau::voies>;
  const Entier& module() const { return m.n; }
  /// The residues of small integers, below 2^52.
  [[gnu::always_inline]] Residu entrer(const Nombres& x) const {
    std::array<std::uint64_t, Anneau::voies> mots;
    for (std::size_t j = 0; j < mots.size(); ++j) mots[j] = static_cast<std::uint64_t>(x[j]);
    return this->entrer_mots(mots);
  }
  Nombres lire(const Residu& a) const {
    Nombres r{};
    for (std::size_t i = K; i-- > 0;) {
      const auto membres = Anneau::lire_membre(a, i);
      for (std::size_t j = 0; j < r.size(); ++j) r[j] = (r[j] << bits_membre) + membres[j];
    }
    for (auto& x : r) x = x < m.n ? x : x - m.n;
    return r;
  }
  Entier reunir(const Entier& x, const Entier& y) const { return m.produit(x, y); }
};

using Sigmas = std::array<std::uint64_t, voies_avx512>;

template <class M, std::size_t K>
Entier128 essayer_en(Entier128 n, const Sigmas& sigma, std::size_t b1, std::size_t b2) {
  const AnneauCourt<M, K> a{static_cast<typename M::Entier>(n)};
  return essayer(a, sigma, b1, b2);
}

}  // namespace

Entier128 essayer_huit(Entier128 n, const Sigmas& sigma, std::size_t b1, std::size_t b2) {
  const int taille = bits(n);
  if (taille <= AnneauHuit<1>::bits_maximum) return essayer_en<Montgomery64, 1>(n, sigma, b1, b2);
  if (taille <= AnneauHuit<2>::bits_maximum) return essayer_en<Montgomery128, 2>(n, sigma, b1, b2);
  return essayer_en<Montgomery128, 3>(n, sigma, b1, b2);
}

}  // namespace premiers::facteurs::ecm

#if defined(__clang__)
#pragma clang attribute pop
#else
#pragma GCC pop_options
#endif

#endif
