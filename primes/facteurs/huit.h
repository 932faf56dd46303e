// SPDX-License-Identifier: MIT
// Eight residues modulo the same n, as lanes of vector registers: the ring of the elliptic curves that
// go on for long (ecm_grand.h).
//
// A residue is K limbs of 52 bits, each a vector of eight lanes. As in
// primes/arithmetique/montgomery_souple.h nothing is corrected: products are left in [0, 2n), sums and
// differences in (0, 4n), for n < 2^(52 K - 4). Limbs of products are below 2^52, the highest apart. A
// sum only carries upwards and leaves the carry standing in the lower limb, too: who multiplies reads
// the low 52 bits.
//
// The length is a number like any other, not a type: only the kernels are compiled for each
// length, so that their loops are unrolled, and curves are written once for all of them. Two sets of
// kernels (huit_noyaux.h): for processors that multiply 52-bit integers, and for those that only
// multiply floating-point numbers. Measured without the former, with 7 limbs: eight products take 170
// ns, three to four times less than in primes/arithmetique/montgomery_long.h.
#pragma once

#include <NTL/ZZ.h>

#include <array>
#include <cstddef>
#include <cstdint>

#include "primes/arithmetique/processeur.h"

namespace premiers::facteurs::ecm {

struct Huit {
  static constexpr std::size_t voies = 8;
  static constexpr int bits_membre = 52;
  static constexpr std::size_t membres_min = 2;
  static constexpr std::size_t membres_max = 14;
  static constexpr long bits_maximum(std::size_t membres) {
    return bits_membre * static_cast<long>(membres) - 4;
  }

  struct alignas(64) Residu {
    std::array<std::array<std::uint64_t, voies>, membres_max> membres;
  };

  /// What the kernels know of n: its limbs and those of 2n, and -1 / n modulo 2^52; the first and the
  /// last as floating-point numbers, too.
  struct Module {
    std::array<std::uint64_t, membres_max> n, deux_n;
    std::array<double, membres_max> n_reel;
    std::uint64_t inverse;
    double inverse_reel;
  };

  /// The loops for one length. The result may be one of the arguments.
  struct Noyaux {
    void (*produit)(const Module& m, Residu& r, const Residu& a, const Residu& b);
    void (*somme)(const Module& m, Residu& r, const Residu& a, const Residu& b);
    void (*difference)(const Module& m, Residu& r, const Residu& a, const Residu& b);
    void (*papillon)(const Module& m, Residu& somme, Residu& difference, const Residu& a,
                     const Residu& b);
  };
  /// Those for `membres` limbs, membres_min <= membres <= membres_max.
  using NoyauxParLongueur = Noyaux (*)(std::size_t membres);
  /// The last version is none (nullptr): there is no ring of eight lanes on a plain processor.
  static Versions<NoyauxParLongueur> versions_des_noyaux();
  /// The best one for this processor.
  static NoyauxParLongueur noyaux_d_ici();

  /// n odd, 2^64 < n < 2^bits_maximum(membres_max); `par_longueur` is no nullptr.
  Huit(const NTL::ZZ& n, NoyauxParLongueur par_longueur);

  /// Results may be one of the arguments. Sums and differences are of products or entered numbers only:
  /// the carry that a sum leaves standing would count twice.
  void produit(Residu& r, const Residu& x, const Residu& y) const {
    noyaux.produit(nombre, r, x, y);
  }
  void somme(Residu& r, const Residu& x, const Residu& y) const { noyaux.somme(nombre, r, x, y); }
  void difference(Residu& r, const Residu& x, const Residu& y) const {
    noyaux.difference(nombre, r, x, y);
  }
  /// Both at once.
  void papillon(Residu& s, Residu& d, const Residu& x, const Residu& y) const {
    noyaux.papillon(nombre, s, d, x, y);
  }
  /// r becomes r (x - y); r is neither of them.
  void fois_ecart(Residu& r, const Residu& x, const Residu& y) const {
    Residu ecart;
    noyaux.difference(nombre, ecart, x, y);
    noyaux.produit(nombre, r, r, ecart);
  }

  using Entier = NTL::ZZ;
  using Nombres = std::array<NTL::ZZ, voies>;
  /// The residues of integers, 0 <= x < n.
  Residu entrer(const Nombres& x) const;
  /// The integers in [0, n) of the residues.
  Nombres lire(const Residu& a) const;
  const NTL::ZZ& module() const { return n; }
  /// A number that shares with n what x and y do.
  NTL::ZZ reunir(const NTL::ZZ& x, const NTL::ZZ& y) const { return NTL::MulMod(x, y, n); }

  NTL::ZZ n;
  std::size_t longueur;  // in limbs
  NTL::ZZ r_inverse;     // 1 / 2^(52 longueur) modulo n
  Module nombre;
  Noyaux noyaux;
};

}  // namespace premiers::facteurs::ecm
