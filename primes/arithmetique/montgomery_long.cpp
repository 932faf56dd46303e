// SPDX-License-Identifier: MIT
// The kernels, one for each length; the ring that chooses among them; what enters it and leaves it.
#include "primes/arithmetique/montgomery_long.h"

#include <algorithm>
#include <cassert>
#include <utility>

#include "primes/arithmetique/entier128.h"
#include "primes/arithmetique/gmp_zz.h"
#include "primes/arithmetique/montgomery.h"
#include "primes/arithmetique/retenues.h"

namespace premiers {
inline namespace arithmetique {
namespace {

using Residu = MontgomeryLong::Residu;
using Module = MontgomeryLong::Module;
using Noyaux = MontgomeryLong::Noyaux;

/// The kernels for L words.
template <std::size_t L>
struct NoyauxLongs {
  static void produit(const Module& m, Residu& r, const Residu& x, const Residu& y) {
    std::array<std::uint64_t, L> t{};
#pragma GCC unroll 16
    for (std::size_t i = 0; i < L; ++i) {  // t = (t + x y[i] + f n) / 2^64
      Entier128 u = Entier128{x.mots[0]} * y.mots[i] + t[0];
      const std::uint64_t f = bas(u) * m.oppose;
      Entier128 v = Entier128{f} * m.n.mots[0] + bas(u);
#pragma GCC unroll 16
      for (std::size_t j = 1; j < L; ++j) {
        u = Entier128{x.mots[j]} * y.mots[i] + t[j] + haut(u);
        v = Entier128{f} * m.n.mots[j] + bas(u) + haut(v);
        t[j - 1] = bas(v);
      }
      t[L - 1] = haut(u) + haut(v);
    }
    std::copy_n(t.begin(), L, r.mots.begin());
  }

  [[gnu::always_inline]] static void ajouter(Residu& r, const Residu& x, const Residu& y) {
    unsigned char retenue = 0;
#pragma GCC unroll 16
    for (std::size_t i = 0; i < L; ++i) r.mots[i] = ajouter_mot(retenue, x.mots[i], y.mots[i]);
  }
  /// x + (2n - y).
  [[gnu::always_inline]] static void retrancher(const Module& m, Residu& r, const Residu& x,
                                                const Residu& y) {
    Residu moins;
    unsigned char emprunt = 0;
#pragma GCC unroll 16
    for (std::size_t i = 0; i < L; ++i) {
      moins.mots[i] = retrancher_mot(emprunt, m.deux_n.mots[i], y.mots[i]);
    }
    ajouter(r, x, moins);
  }

  static void somme(const Module& /*m*/, Residu& r, const Residu& x, const Residu& y) {
    ajouter(r, x, y);
  }
  static void difference(const Module& m, Residu& r, const Residu& x, const Residu& y) {
    retrancher(m, r, x, y);
  }
  static void papillon(const Module& m, Residu& s, Residu& d, const Residu& x, const Residu& y) {
    Residu ecart;
    retrancher(m, ecart, x, y);
    ajouter(s, x, y);
    std::copy_n(ecart.mots.begin(), L, d.mots.begin());
  }
  static void fois_ecart(const Module& m, Residu& r, const Residu& x, const Residu& y) {
    Residu ecart;
    retrancher(m, ecart, x, y);
    produit(m, r, r, ecart);
  }

  static constexpr Noyaux noyaux{produit, somme, difference, papillon, fois_ecart};
};

template <std::size_t... I>
Noyaux choisir_noyaux(std::size_t mots, std::index_sequence<I...>) {
  static constexpr std::array<Noyaux, sizeof...(I)> tous{
      NoyauxLongs<MontgomeryLong::mots_min + I>::noyaux...};
  return tous[mots - MontgomeryLong::mots_min];
}

/// x >= 0, which must fit.
Residu en_mots(const NTL::ZZ& x) {
  Residu r{};
  std::copy_n(NTL::ZZ_limbs_get(x), x.size(), r.mots.begin());
  return r;
}

std::size_t longueur_pour(long bits) {
  std::size_t mots = MontgomeryLong::mots_min;
  while (bits > MontgomeryLong::bits_maximum(mots)) ++mots;
  assert(mots <= MontgomeryLong::mots_max);
  return mots;
}

}  // namespace

Noyaux MontgomeryLong::noyaux_de_longueur(std::size_t mots) {
  return choisir_noyaux(mots, std::make_index_sequence<mots_max - mots_min + 1>{});
}

MontgomeryLong::MontgomeryLong(const NTL::ZZ& modulus)
    : n{modulus},
      longueur{longueur_pour(NTL::NumBits(n))},
      r_inverse{NTL::InvMod(NTL::power2_ZZ(64 * static_cast<long>(longueur)) % n, n)},
      nombre{en_mots(n), en_mots(2 * n), 0},
      noyaux{noyaux_de_longueur(longueur)} {
  nombre.oppose = 0 - inverse_2_64(nombre.n.mots[0]);
}

Residu MontgomeryLong::entrer(const Nombres& x) const {
  return en_mots((x[0] << (64 * static_cast<long>(longueur))) % n);
}

MontgomeryLong::Nombres MontgomeryLong::lire(const Residu& x) const {
  NTL::ZZ mots;
  NTL::ZZ_limbs_set(mots, x.mots.data(), static_cast<long>(longueur));
  return {NTL::MulMod(mots % n, r_inverse, n)};
}

}  // namespace arithmetique
}  // namespace premiers
