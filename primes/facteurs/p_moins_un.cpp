// SPDX-License-Identifier: MIT
#include "primes/facteurs/p_moins_un.h"

#include <algorithm>

#include "primes/crible/premiers_jusqu_a.h"

namespace premiers::ecm {
namespace {

/// The greatest power of p up to b1.
std::uint64_t plus_grande_puissance(std::uint64_t p, std::uint64_t b1) {
  std::uint64_t q = p;
  while (q <= b1 / p) q *= p;
  return q;
}

}  // namespace

NTL::ZZ premiere_phase_moins_un(const NTL::ZZ& n, std::uint64_t b1, NTL::ZZ& x,
                                const Suivi& suivi) {
  constexpr std::size_t lot = 256;  // primes: an exponent of some 4000 bits, 1 ms
  const std::vector<std::uint32_t> premiers = premiers_jusqu_a(b1, suivi);
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

}  // namespace premiers::ecm
