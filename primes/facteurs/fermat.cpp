// SPDX-License-Identifier: MIT
// One square for each multiplier (fermat.h).
#include "primes/facteurs/fermat.h"

namespace premiers::facteurs {

namespace {

// More multipliers find more, a square root each; twice as many, hardly anything that people type.
constexpr long multiplicateur_max = 64;

}  // namespace

std::optional<NTL::ZZ> facteur_de_fermat(const NTL::ZZ& n) {
  NTL::ZZ x, y, ecart;
  for (long k = 1; k <= multiplicateur_max; ++k) {
    const NTL::ZZ kn = 4 * k * n;
    NTL::SqrRoot(x, kn);
    if (x * x < kn) ++x;
    ecart = x * x - kn;
    NTL::SqrRoot(y, ecart);
    if (y * y != ecart) continue;
    const NTL::ZZ d = NTL::GCD(x - y, n);
    if (d > 1 && d < n) return d;
  }
  return std::nullopt;
}

}  // namespace premiers::facteurs
