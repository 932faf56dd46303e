// SPDX-License-Identifier: MIT
// The kernels of the ring of eight lanes, for any way to multiply 52 by 52 bits (`M`).
//
// A product is Montgomery's, limb by limb: row i adds a[i] b, then the multiple f n that makes limb i
// zero modulo 2^52, and carries its upper bits. All loops are unrolled by pack expansion, which no
// compiler can decide otherwise; a column is a register, and begins where the first row reaches it. The
// next row's products need not wait for f, so the processor takes both at once.
//
// M gives: Chiffre, what it multiplies; preparer, a limb's low 52 bits as one; module, a limb of n as
// one; quotient; and ajouter, which adds both halves of a product to two columns, each with a bias that
// M knows: biais_bas for a low half, biais_haut for a high one. A column begins at minus all that it
// will get.
//
// To be included where the target has AVX-512, and nowhere else.
#pragma once

#include <immintrin.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>

#include "primes/facteurs/huit.h"

namespace premiers::facteurs::ecm {

inline constexpr std::uint64_t masque_membre = (std::uint64_t{1} << Huit::bits_membre) - 1;

[[gnu::always_inline]] inline __m512i diffuser(std::uint64_t x) {
  return _mm512_set1_epi64(static_cast<long long>(x));
}
/// Residues are aligned, but gcc 12 forgets that for the temporaries of a conditional expression.
[[gnu::always_inline]] inline __m512i lire_membre(const Huit::Residu& a, std::size_t i) {
  return _mm512_loadu_si512(a.membres[i].data());
}
[[gnu::always_inline]] inline void ecrire_membre(Huit::Residu& r, std::size_t i, __m512i v) {
  _mm512_storeu_si512(r.membres[i].data(), v);
}

template <class M, std::size_t K>
struct NoyauxHuit {
  using Chiffre = typename M::Chiffre;
  using Residu = Huit::Residu;
  using Module = Huit::Module;
  template <std::size_t N>
  using Suite = std::make_index_sequence<N>;

  /// Where column k begins. Below K it gets one low half more after it has been read for f.
  static constexpr std::uint64_t debut(std::size_t k) {
    const std::uint64_t bas = k < K ? 2 * k + 1 : 2 * (2 * K - 1 - k);
    const std::uint64_t haut = k < K ? 2 * k : 2 * (2 * K - k);
    return 0 - (bas * M::biais_bas + haut * M::biais_haut);
  }

  template <std::size_t... I>
  [[gnu::always_inline]] static void commencer(__m512i* t, std::index_sequence<I...>) {
    ((t[I] = diffuser(debut(I))), ...);
  }

  template <std::size_t... J>
  [[gnu::always_inline]] static void preparer(Chiffre* chiffres, const Residu& b,
                                              std::index_sequence<J...>) {
    ((chiffres[J] = M::preparer(lire_membre(b, J))), ...);
  }

  /// t += a b, one limb by all.
  template <std::size_t... J>
  [[gnu::always_inline]] static void ajouter_a_b(__m512i* t, Chiffre a, const Chiffre* b,
                                                 std::index_sequence<J...>) {
    (M::ajouter(t[J], t[J + 1], a, b[J]), ...);
  }

  /// t += f n.
  template <std::size_t... J>
  [[gnu::always_inline]] static void ajouter_f_n(__m512i* t, Chiffre f, const Module& m,
                                                 std::index_sequence<J...>) {
    (M::ajouter(t[J], t[J + 1], f, M::module(m, J)), ...);
  }

  [[gnu::always_inline]] static void ligne(__m512i* t, const Module& m, __m512i a, const Chiffre* b,
                                           std::uint64_t debut_du_haut) {
    t[K] = diffuser(debut_du_haut);
    ajouter_a_b(t, M::preparer(a), b, Suite<K>{});
    ajouter_f_n(t, M::quotient(t[0], m), m, Suite<K>{});
    t[1] += (t[0] - diffuser(M::biais_bas)) >> Huit::bits_membre;
  }

  template <std::size_t... I>
  [[gnu::always_inline]] static void lignes(__m512i* t, const Module& m, const Residu& a,
                                            const Chiffre* b, std::index_sequence<I...>) {
    (ligne(t + I, m, lire_membre(a, I), b, debut(K + I)), ...);
  }

  /// The columns from K on, their carries carried upwards.
  template <std::size_t... I>
  [[gnu::always_inline]] static void finir(Residu& r, __m512i* t, std::index_sequence<I...>) {
    ((t[I + 1] += t[I] >> Huit::bits_membre, ecrire_membre(r, I, t[I] & diffuser(masque_membre))),
     ...);
    ecrire_membre(r, K - 1, t[K - 1]);
  }

  static void produit(const Module& m, Residu& r, const Residu& a, const Residu& b) {
    __m512i t[2 * K];
    Chiffre chiffres[K];
    preparer(chiffres, b, Suite<K>{});
    commencer(t, Suite<K>{});
    lignes(t, m, a, chiffres, Suite<K>{});
    finir(r, t + K, Suite<K - 1>{});
  }

  /// Adds to every limb the carry, or the borrow, of the limb below.
  template <std::size_t... I>
  [[gnu::always_inline]] static void propager(Residu& r, __m512i* v, std::index_sequence<I...>) {
    ((v[I + 1] += v[I] >> Huit::bits_membre, ecrire_membre(r, I, v[I])), ...);
    ecrire_membre(r, K - 1, v[K - 1]);
  }

  [[gnu::always_inline]] static __m512i difference_en(const Module& m, const Residu& a,
                                                      const Residu& b, std::size_t i) {
    return lire_membre(a, i) + (diffuser(m.deux_n[i]) - lire_membre(b, i));
  }

  static void somme(const Module& /*m*/, Residu& r, const Residu& a, const Residu& b) {
    __m512i v[K];
    for (std::size_t i = 0; i < K; ++i) v[i] = lire_membre(a, i) + lire_membre(b, i);
    propager(r, v, Suite<K - 1>{});
  }

  static void difference(const Module& m, Residu& r, const Residu& a, const Residu& b) {
    __m512i v[K];
    for (std::size_t i = 0; i < K; ++i) v[i] = difference_en(m, a, b, i);
    propager(r, v, Suite<K - 1>{});
  }

  static void papillon(const Module& m, Residu& s, Residu& d, const Residu& a, const Residu& b) {
    __m512i v[K], w[K];
    for (std::size_t i = 0; i < K; ++i) {
      v[i] = lire_membre(a, i) + lire_membre(b, i);
      w[i] = difference_en(m, a, b, i);
    }
    propager(s, v, Suite<K - 1>{});
    propager(d, w, Suite<K - 1>{});
  }

  static constexpr Huit::Noyaux noyaux{produit, somme, difference, papillon};
};

template <class M, std::size_t... I>
Huit::Noyaux noyaux_de_longueur(std::size_t membres, std::index_sequence<I...>) {
  static constexpr std::array<Huit::Noyaux, sizeof...(I)> tous{
      NoyauxHuit<M, Huit::membres_min + I>::noyaux...};
  return tous[membres - Huit::membres_min];
}

template <class M>
Huit::Noyaux noyaux_de_longueur(std::size_t membres) {
  return noyaux_de_longueur<M>(
      membres, std::make_index_sequence<Huit::membres_max - Huit::membres_min + 1>{});
}

}  // namespace premiers::facteurs::ecm
