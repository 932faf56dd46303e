// SPDX-License-Identifier: MIT
// The powers of the first stage, and the Lucas sequence that the second one walks along.
#include "primes/facteurs/p_moins_un.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
#include <vector>

#include "primes/arithmetique/montgomery_long.h"
#include "primes/arithmetique/zz.h"
#include "primes/crible/premiers_jusqu_a.h"
#include "primes/facteurs/ecm_rangees.h"
#include "primes/facteurs/ecm_seconde.h"

namespace premiers::facteurs::ecm {
namespace {

/// The greatest power of p up to b1.
std::uint64_t plus_grande_puissance(std::uint64_t p, std::uint64_t b1) {
  std::uint64_t q = p;
  while (q <= b1 / p) q *= p;
  return q;
}

/// 3^e modulo n for e = lcm(1..b1); where that is 1 modulo a factor of n it ends earlier. Gives the
/// gcd of n and the power less 1: n only where one prime alone makes it so.
NTL::ZZ phase_un(const NTL::ZZ& n, std::uint64_t b1, NTL::ZZ& x, const Suivi& suivi) {
  constexpr std::size_t lot = 256;  // primes: an exponent of some 4000 bits, 1 ms
  const std::vector<std::uint32_t> premiers = crible::premiers_jusqu_a(b1, suivi);
  x = 3;
  for (std::size_t i = 0; i < premiers.size(); i += lot) {
    if (suivi) suivi(0);
    const std::size_t fin = std::min(premiers.size(), i + lot);
    NTL::ZZ exposant{1};
    for (std::size_t j = i; j < fin; ++j) {
      exposant *= premiers::en_zz(plus_grande_puissance(premiers[j], b1));
    }
    const NTL::ZZ avant = x;
    x = NTL::PowerMod(avant, exposant, n);
    NTL::ZZ g = NTL::GCD(x - 1, n);
    if (g == 1) continue;
    if (g != n) return g;
    x = avant;  // once more, prime by prime
    for (std::size_t j = i; j < fin; ++j) {
      for (std::uint64_t q = 1; q <= b1 / premiers[j]; q *= premiers[j]) {
        x = NTL::PowerMod(x, NTL::ZZ{static_cast<long>(premiers[j])}, n);
        g = NTL::GCD(x - 1, n);
        if (g != 1) return g;
      }
    }
  }
  return NTL::ZZ{1};
}

/// The steps of the second stage: V(m) in place of the x of m q.
struct PasMoinsUn {
  using Residu = MontgomeryLong::Residu;
  using Valeur = Point<MontgomeryLong>;  // of which the x counts
  static constexpr std::size_t D = Rangees::pas_de_geant;

  const MontgomeryLong& a;
  Residu reduit_un;  ///< a product with it leaves a number what it is, and makes it a product
  std::vector<Valeur> bebes = std::vector<Valeur>(Rangees::bebes);
  Residu un, precedent, courant;  ///< V(D), V((k - 1) D), V(k D)

  /// V(m + n), given V(m), V(n) and V(m - n).
  Residu lucas(const Residu& vm, const Residu& vn, const Residu& ecart) const {
    Residu r;
    a.produit(r, vm, vn);
    a.difference(r, r, ecart);
    a.produit(r, r, reduit_un);
    return r;
  }

  /// v1 = V(1).
  PasMoinsUn(const MontgomeryLong& anneau, const Residu& v1, std::size_t k0) : a{anneau} {
    partout(a, reduit_un, 1);
    std::array<Residu, nombre_multiples(D)> multiples;  // V(j) at j / 3, for j = 1 or 5 modulo 6
    Residu v0;
    partout(a, v0, 2);
    const Residu v2 = lucas(v1, v1, v0);
    const Residu v3 = lucas(v2, v1, v1);
    const Residu v6 = lucas(v3, v3, v0);
    multiples[0] = v1;
    multiples[1] = lucas(v3, v2, v1);
    multiples[2] = lucas(v6, v1, multiples[1]);
    multiples[3] = lucas(v6, multiples[1], v1);
    for (std::size_t i = 4; i < multiples.size(); ++i) {
      multiples[i] = lucas(multiples[i - 2], v6, multiples[i - 4]);
    }
    const auto& residus = Rangees::residus();
    for (std::size_t i = 0; i < bebes.size(); ++i) bebes[i].x = multiples[residus[i] / 3];
    constexpr std::size_t j = D / 2 - 2;  // D = j + (D - j), and their difference is 4
    un = lucas(multiples[(D - j) / 3], multiples[j / 3], lucas(v2, v2, v0));
    precedent = v0;
    courant = un;
    for (std::size_t k = 1; k < k0; ++k) avancer();
  }

  void avancer() {
    const Residu suivant = lucas(courant, un, precedent);
    precedent = courant;
    courant = suivant;
  }

  void suivants(std::span<Valeur> valeurs, Trouves<MontgomeryLong>& /*trouves*/) {
    for (Valeur& v : valeurs) {
      v.x = courant;
      avancer();
    }
  }
};

/// The second stage: first quickly, and once more where everything was found at once.
NTL::ZZ phase_deux(const MontgomeryLong& a, const NTL::ZZ& v1, const Rangees& rangees,
                   const Suivi& suivi) {
  Trouves<MontgomeryLong> trouves{a};
  for (const Allure allure : {Allure::rapide, Allure::pas_a_pas}) {
    PasMoinsUn pas{a, a.entrer({v1}), rangees.k0};
    trouves.g[0] = 1;
    comparer(pas, std::span<const PasMoinsUn::Valeur>{pas.bebes}, rangees, allure, trouves, suivi);
    if (trouves.g[0] != a.module()) break;
  }
  return trouves.propre();
}

}  // namespace

NTL::ZZ essayer_p_moins_un(const NTL::ZZ& n, std::uint64_t b1, std::uint64_t b2,
                           const Suivi& suivi) {
  NTL::ZZ x;
  const NTL::ZZ g = phase_un(n, b1, x, suivi);
  if (g != 1) return g == n ? NTL::ZZ{1} : g;
  const NTL::ZZ v1 = (x + NTL::InvMod(x, n)) % n;
  return phase_deux(MontgomeryLong{n}, v1, Rangees{b1, b2, suivi}, suivi);
}

}  // namespace premiers::facteurs::ecm
