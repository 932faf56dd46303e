// SPDX-License-Identifier: MIT
// The portable ring of lanes for ECM (primes/facteurs/ecm.h): `nombre` residues of
// primes/arithmetique/montgomery*.h.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace premiers::ecm {

/// `nombre` residues of the ring M that undergo the same operations. This is fast only when all of
/// it is inlined, which compilers do not decide reliably by themselves (gcc: several times
/// slower).
template <class M, std::size_t nombre>
struct Voies {
  using Entier = typename M::Entier;
  using Residu = std::array<Entier, nombre>;
  static constexpr std::size_t voies = nombre;

  M m;

  [[gnu::always_inline]] Residu produit(const Residu& a, const Residu& b) const {
    Residu r;
    for (std::size_t i = 0; i < nombre; ++i) r[i] = m.produit(a[i], b[i]);
    return r;
  }
  [[gnu::always_inline]] Residu carre(const Residu& a) const {
    Residu r;
    for (std::size_t i = 0; i < nombre; ++i) r[i] = m.carre(a[i]);
    return r;
  }
  [[gnu::always_inline]] Residu somme(const Residu& a, const Residu& b) const {
    Residu r;
    for (std::size_t i = 0; i < nombre; ++i) r[i] = m.somme(a[i], b[i]);
    return r;
  }
  [[gnu::always_inline]] Residu difference(const Residu& a, const Residu& b) const {
    Residu r;
    for (std::size_t i = 0; i < nombre; ++i) r[i] = m.difference(a[i], b[i]);
    return r;
  }

  /// The residues of small integers.
  Residu entrer(const std::array<std::uint64_t, nombre>& x) const {
    Residu r;
    for (std::size_t i = 0; i < nombre; ++i) r[i] = m.entrer(x[i]);
    return r;
  }
  /// For each lane a number that has the same gcd with n as the residue.
  std::array<Entier, nombre> lire(const Residu& a) const { return a; }
};

}  // namespace premiers::ecm
