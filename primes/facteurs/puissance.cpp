// SPDX-License-Identifier: MIT
// The exponents 2, 3, 5, 7, 9 ..., as far as the length allows; the library says whether a root is
// exact.
#include "primes/facteurs/puissance.h"

#include <gmp.h>

#include "primes/arithmetique/gmp_zz.h"

namespace premiers::facteurs {

std::optional<PuissanceParfaite> puissance_parfaite(const NTL::ZZ& n) {
  constexpr long bits_du_plus_petit_facteur = 10;
  const VueGmp vue{n};
  EntierGmp racine;
  const long exposant_max = NTL::NumBits(n) / bits_du_plus_petit_facteur;
  for (long e = 2; e <= exposant_max; e += e == 2 ? 1 : 2) {
    // A composite exponent is found as its smallest prime before it is tried itself.
    const bool exacte = e == 2 ? mpz_perfect_square_p(vue.z) != 0
                               : mpz_root(racine.z, vue.z, static_cast<unsigned long>(e)) != 0;
    if (!exacte) continue;
    if (e == 2) mpz_sqrt(racine.z, vue.z);
    return PuissanceParfaite{en_zz(racine), e};
  }
  return std::nullopt;
}

}  // namespace premiers::facteurs
