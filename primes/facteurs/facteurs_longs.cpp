// SPDX-License-Identifier: MIT
#include "primes/facteurs/facteurs_longs.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "primes/arithmetique/gmp_zz.h"
#include "primes/primalite/montgomery_long.h"

namespace premiers {

/// For primes/facteurs/ecm.h: the greatest common divisor of a and n.
template <std::size_t L>
EntierLong<L> pgcd(const EntierLong<L>& a, const EntierLong<L>& n) {
  mpz_t va, vn;
  mpz_roinit_n(va, a.mots.data(), L);
  mpz_roinit_n(vn, n.mots.data(), L);
  EntierGmp g;
  mpz_gcd(g.z, va, vn);
  EntierLong<L> r;
  for (std::size_t i = 0; i < L; ++i) r.mots[i] = mpz_getlimbn(g.z, static_cast<mp_size_t>(i));
  return r;
}

}  // namespace premiers

#include "primes/facteurs/ecm.h"
#include "primes/facteurs/ecm_voies.h"

namespace premiers {
namespace {

template <std::size_t L>
EntierLong<L> en_mots(const NTL::ZZ& n) {
  EntierLong<L> r;
  std::copy_n(NTL::ZZ_limbs_get(n), n.size(), r.mots.begin());
  return r;
}

template <std::size_t L>
std::optional<NTL::ZZ> chercher(const NTL::ZZ& n, const EffortEcm& effort, unsigned premiere) {
  constexpr std::size_t voies = 1;
  using M = MontgomeryLong<L>;
  const ecm::Voies<M, voies> a{M{en_mots<L>(n), en_mots<L>(NTL::power2_ZZ(128 * L) % n)}};
  for (unsigned i = 0; i < effort.courbes; i += voies) {
    const std::array<std::uint32_t, 1> sigma{6 + premiere + i};
    const auto f = ecm::essayer(a, sigma.data(), ecm::paires_longues, effort.b1, effort.b2);
    if (f == 1) continue;
    NTL::ZZ facteur;
    NTL::ZZ_limbs_set(facteur, f.mots.data(), L);
    return facteur;
  }
  return std::nullopt;
}

}  // namespace

std::optional<NTL::ZZ> facteur_ecm_long(const NTL::ZZ& n, const EffortEcm& effort,
                                        unsigned premiere) {
  const long bits = NTL::NumBits(n);
  if (bits <= MontgomeryLong<3>::bits_maximum) return chercher<3>(n, effort, premiere);
  if (bits <= MontgomeryLong<4>::bits_maximum) return chercher<4>(n, effort, premiere);
  if (bits <= MontgomeryLong<5>::bits_maximum) return chercher<5>(n, effort, premiere);
  if (bits <= bits_facteur_long) return chercher<6>(n, effort, premiere);
  return std::nullopt;
}

}  // namespace premiers
