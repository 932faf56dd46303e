// SPDX-License-Identifier: MIT
// The portable ring of lanes for ECM (primes/facteurs/ecm.h): `nombre` residues of
// primes/arithmetique/montgomery.h and its like, up to 128 bits.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace premiers::facteurs::ecm {

/// `nombre` residues of the ring M that undergo the same operations. This is fast only when all of
/// it is inlined, which compilers do not decide reliably by themselves (gcc: several times
/// slower).
template <class M, std::size_t nombre>
struct Voies {
  using Entier = typename M::Entier;
  using Residu = std::array<Entier, nombre>;
  static constexpr std::size_t voies = nombre;

  M m;

  [[gnu::always_inline]] void produit(Residu& r, const Residu& x, const Residu& y) const {
    for (std::size_t i = 0; i < nombre; ++i) r[i] = m.produit(x[i], y[i]);
  }
  [[gnu::always_inline]] void somme(Residu& r, const Residu& x, const Residu& y) const {
    for (std::size_t i = 0; i < nombre; ++i) r[i] = m.somme(x[i], y[i]);
  }
  [[gnu::always_inline]] void difference(Residu& r, const Residu& x, const Residu& y) const {
    for (std::size_t i = 0; i < nombre; ++i) r[i] = m.difference(x[i], y[i]);
  }
  [[gnu::always_inline]] void papillon(Residu& s, Residu& d, const Residu& x,
                                       const Residu& y) const {
    for (std::size_t i = 0; i < nombre; ++i) {
      const Entier ecart = m.difference(x[i], y[i]);
      s[i] = m.somme(x[i], y[i]);
      d[i] = ecart;
    }
  }
  [[gnu::always_inline]] void fois_ecart(Residu& r, const Residu& x, const Residu& y) const {
    for (std::size_t i = 0; i < nombre; ++i) r[i] = m.produit(r[i], m.difference(x[i], y[i]));
  }

  using Nombres = std::array<Entier, nombre>;
  const Entier& module() const { return m.n; }
  /// The residues of small integers, which have 64 bits at most.
  Residu entrer(const Nombres& x) const {
    Residu r;
    for (std::size_t i = 0; i < nombre; ++i) r[i] = m.entrer(static_cast<std::uint64_t>(x[i]));
    return r;
  }
  Nombres lire(const Residu& x) const { return x; }
  /// A number that shares with n what x and y, read, do.
  Entier reunir(const Entier& x, const Entier& y) const { return m.produit(x, y); }
};

}  // namespace premiers::facteurs::ecm
