// SPDX-License-Identifier: MIT
// Arithmetic modulo an odd n of many words without division, lazy about ranges: what
// montgomery_souple.h is up to 128 bits, beyond.
//
// P. L. Montgomery, "Modular multiplication without trial division", Mathematics of Computation 44
// (1985). Multiplying and cancelling alternate word by word, so that a product never takes more
// than L words between two steps. With n < 2^(64 L - 4) products are left in [0, 2n) and sums and
// differences of products in (0, 4n) without any correction, because 4n 4n < 2^(64 L) n.
//
// The length is a number like any other, not a type: only the kernels are compiled for each length,
// so that their loops are unrolled, and who computes in the ring is written and compiled once. A
// product takes 2 L^2 + L multiplications.
#pragma once

#include <NTL/ZZ.h>

#include <array>
#include <cstddef>
#include <cstdint>

namespace premiers {
inline namespace arithmetique {

/// The ring Z/nZ for odd n. Arguments of `somme`, `difference` and the like must be products (or
/// entered numbers); those of `produit` may be anything that these functions give. A result may be
/// one of the arguments. Residues are not unique: `lire` tells what they stand for.
struct MontgomeryLong {
  static constexpr std::size_t mots_min = 2;
  static constexpr std::size_t mots_max = 11;  ///< 700 bits, which is 210 digits
  static constexpr long bits_maximum(std::size_t mots) { return 64 * static_cast<long>(mots) - 4; }

  /// The words, the lowest first; those beyond the length mean nothing.
  struct Residu {
    std::array<std::uint64_t, mots_max> mots;
  };

  /// What the kernels know of n: its words and those of 2n, and -1 / n modulo 2^64.
  struct Module {
    Residu n, deux_n;
    std::uint64_t oppose;
  };

  /// The loops for one length.
  struct Noyaux {
    void (*produit)(const Module& m, Residu& r, const Residu& x, const Residu& y);
    void (*somme)(const Module& m, Residu& r, const Residu& x, const Residu& y);
    void (*difference)(const Module& m, Residu& r, const Residu& x, const Residu& y);
    /// Both at once.
    void (*papillon)(const Module& m, Residu& somme, Residu& difference, const Residu& x,
                     const Residu& y);
    /// r becomes r (x - y); r is neither of them.
    void (*fois_ecart)(const Module& m, Residu& r, const Residu& x, const Residu& y);
  };
  /// Those for `mots` words, mots_min <= mots <= mots_max.
  static Noyaux noyaux_de_longueur(std::size_t mots);

  /// n odd, 3 <= n < 2^bits_maximum(mots_max).
  explicit MontgomeryLong(const NTL::ZZ& n);

  void produit(Residu& r, const Residu& x, const Residu& y) const {
    noyaux.produit(nombre, r, x, y);
  }
  void somme(Residu& r, const Residu& x, const Residu& y) const { noyaux.somme(nombre, r, x, y); }
  void difference(Residu& r, const Residu& x, const Residu& y) const {
    noyaux.difference(nombre, r, x, y);
  }
  void papillon(Residu& s, Residu& d, const Residu& x, const Residu& y) const {
    noyaux.papillon(nombre, s, d, x, y);
  }
  void fois_ecart(Residu& r, const Residu& x, const Residu& y) const {
    noyaux.fois_ecart(nombre, r, x, y);
  }

  // One lane, for who also computes in rings of several (primes/facteurs/ecm.h).
  static constexpr std::size_t voies = 1;
  using Entier = NTL::ZZ;
  using Nombres = std::array<NTL::ZZ, voies>;
  const NTL::ZZ& module() const { return n; }
  /// The residue of an integer, 0 <= x < n, and the integer in [0, n) of a residue.
  Residu entrer(const Nombres& x) const;
  Nombres lire(const Residu& x) const;

  NTL::ZZ n;
  std::size_t longueur;  // in words
  NTL::ZZ r_inverse;     // 1 / 2^(64 longueur) modulo n
  Module nombre;
  Noyaux noyaux;
};

}  // namespace arithmetique
}  // namespace premiers
