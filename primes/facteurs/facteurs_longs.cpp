// SPDX-License-Identifier: MIT
// Which arithmetic ECM (primes/facteurs/ecm_grand.h) uses for a long n: where the processor has AVX-512
// IFMA, eight curves at once (huit.h), and else one curve in scalar Montgomery arithmetic
// (montgomery_long.h). Eight curves at 130 bits, B1 = 200, B2 = 8000: 70 us, and 0.9 ms without
// IFMA.
#include "primes/facteurs/facteurs_longs.h"

#include <cstdint>

#include "primes/facteurs/ecm.h"
#include "primes/facteurs/ecm_chaines.h"
#include "primes/facteurs/ecm_grand.h"
#include "primes/facteurs/ecm_paires.h"
#include "primes/facteurs/huit.h"
#include "primes/facteurs/huit_noyaux.h"

namespace premiers::facteurs {
namespace {

static_assert(EffortEcm::b1_max == ecm::b1_court);
static_assert(EffortEcm::b2_max == ecm::paires_longues.portee);

/// Calls essayer(i) for i = 0, 8, 16 ...: eight curves from the i-th on, or that one alone.
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
                                                 unsigned debut, const Suivi& suivi) {
  return parcourir(n, effort, suivi, [&](unsigned i) {
    return ecm::essayer_courbe_courte(n, ecm::sigma_minimal + debut + i, effort.b1, effort.b2);
  });
}

#if defined(__x86_64__)

std::optional<NTL::ZZ> facteur_ecm_long_ifma(const NTL::ZZ& n, const EffortEcm& effort,
                                             unsigned debut, const Suivi& suivi) {
  return parcourir(n, effort, suivi, [&](unsigned i) {
    return ecm::essayer_huit_courtes(n, ecm::sigma_minimal + debut + i, effort.b1, effort.b2,
                                     ecm::noyaux_ifma);
  });
}

#endif

constexpr Version<decltype(&facteur_ecm_long)> versions[] = {
#if defined(__x86_64__)
    {ecm::besoin_ifma, facteur_ecm_long_ifma},
#endif
    {instructions::aucune, facteur_ecm_long_portable},
};

}  // namespace

Versions<decltype(&facteur_ecm_long)> versions_de_facteur_ecm_long() { return versions; }

bool huit_courbes_a_la_fois(const NTL::ZZ& n) {
  static const bool ici = choisir(versions_de_facteur_ecm_long()).besoin != instructions::aucune;
  return ici && NTL::NumBits(n) <= bits_facteur_long;
}

std::optional<NTL::ZZ> facteur_ecm_long(const NTL::ZZ& n, const EffortEcm& effort, unsigned debut,
                                        const Suivi& suivi) {
  static const auto boucle = choisir(versions_de_facteur_ecm_long()).boucle;
  return boucle(n, effort, debut, suivi);
}

}  // namespace premiers::facteurs
