// SPDX-License-Identifier: MIT
// Which arithmetic ECM (primes/facteurs/ecm.h) uses for a long n: where the processor has AVX-512 IFMA,
// eight curves at once (ecm_long_avx512.cpp), and else one curve in scalar Montgomery arithmetic
// (montgomery_long.h). Eight curves at 130 bits, B1 = 200, B2 = 8000: 70 us, and 0.9 ms without
// IFMA.
#include "primes/facteurs/facteurs_longs.h"

#include <array>
#include <cstdint>

#include "primes/arithmetique/montgomery_long.h"
#include "primes/facteurs/ecm.h"
#include "primes/facteurs/ecm_avx512.h"
#include "primes/facteurs/ecm_long_avx512.h"
#include "primes/facteurs/ecm_voies.h"

namespace premiers {
namespace {

static_assert(EffortEcm::b1_max == ecm::b1_maximal);
static_assert(EffortEcm::b2_max == ecm::paires_longues.portee);

/// The curves of index i and following. Suyama's parameters are good from 6 on.
template <std::size_t voies>
std::array<std::uint32_t, voies> sigmas(unsigned i) {
  std::array<std::uint32_t, voies> s;
  for (auto& sigma : s) sigma = 6 + i++;
  return s;
}

template <std::size_t L>
NTL::ZZ essayer_une(const NTL::ZZ& n, unsigned courbe, const EffortEcm& effort) {
  const ecm::Voies<MontgomeryLong<L>, 1> a{MontgomeryLong<L>{n}};
  const auto s = sigmas<1>(courbe);
  return en_zz(ecm::essayer(a, s.data(), ecm::paires_longues, effort.b1, effort.b2));
}

NTL::ZZ essayer_une(const NTL::ZZ& n, unsigned courbe, const EffortEcm& effort) {
  return a_la_longueur(NTL::NumBits(n), [&]<std::size_t L>(Longueur<L>) {
    return essayer_une<L>(n, courbe, effort);
  });
}

/// Calls essayer(i) for the curves from the i-th on, every eighth.
template <class Essayer>
std::optional<NTL::ZZ> parcourir(const NTL::ZZ& n, const EffortEcm& effort, const Suivi& suivi,
                                 Essayer essayer) {
  if (NTL::NumBits(n) > bits_facteur_long) return std::nullopt;
  for (unsigned i = 0; i < effort.courbes; i += 8) {
    if (suivi) suivi(0);
    const NTL::ZZ f = essayer(i);
    if (f != 1) return f;
  }
  return std::nullopt;
}

std::optional<NTL::ZZ> facteur_ecm_long_portable(const NTL::ZZ& n, const EffortEcm& effort,
                                                 unsigned premiere, const Suivi& suivi) {
  return parcourir(n, effort, suivi,
                   [&](unsigned i) { return essayer_une(n, premiere + i, effort); });
}

#if defined(__x86_64__)

std::optional<NTL::ZZ> facteur_ecm_long_avx512(const NTL::ZZ& n, const EffortEcm& effort,
                                               unsigned premiere, const Suivi& suivi) {
  if (NTL::NumBits(n) > ecm::bits_huit_long) {
    return facteur_ecm_long_portable(n, effort, premiere, suivi);
  }
  return parcourir(n, effort, suivi, [&](unsigned i) {
    return ecm::essayer_huit_long(n, sigmas<8>(premiere + i), effort.b1, effort.b2);
  });
}

#endif

constexpr Version<decltype(&facteur_ecm_long)> versions[] = {
#if defined(__x86_64__)
    {ecm::besoin_avx512, facteur_ecm_long_avx512},
#endif
    {instructions::aucune, facteur_ecm_long_portable},
};

}  // namespace

Versions<decltype(&facteur_ecm_long)> versions_de_facteur_ecm_long() { return versions; }

bool huit_courbes_a_la_fois(const NTL::ZZ& n) {
  static const bool ici = choisir(versions_de_facteur_ecm_long()).besoin != instructions::aucune;
  return ici && NTL::NumBits(n) <= ecm::bits_huit_long;
}

std::optional<NTL::ZZ> facteur_ecm_long(const NTL::ZZ& n, const EffortEcm& effort,
                                        unsigned premiere, const Suivi& suivi) {
  static const auto boucle = choisir(versions_de_facteur_ecm_long()).boucle;
  return boucle(n, effort, premiere, suivi);
}

}  // namespace premiers
