// SPDX-License-Identifier: MIT
// The ring of eight lanes from outside: integers in, integers out (primes/facteurs/huit.h).
#include "primes/facteurs/huit.h"

#include <cassert>

#include "primes/arithmetique/zz.h"
#include "primes/facteurs/huit_noyaux.h"

namespace premiers::facteurs::ecm {
namespace {

using Membres = std::array<std::uint64_t, Huit::membres_max>;

Membres en_membres(NTL::ZZ x) {
  Membres r;
  for (std::uint64_t& membre : r) {
    membre = en_entier64(NTL::trunc_ZZ(x, Huit::bits_membre));
    x >>= Huit::bits_membre;
  }
  return r;
}

std::size_t longueur_pour(long bits) {
  std::size_t membres = Huit::membres_min;
  while (bits > Huit::bits_maximum(membres)) ++membres;
  assert(membres <= Huit::membres_max);
  return membres;
}

constexpr Version<Huit::NoyauxParLongueur> les_versions[] = {
#if defined(__x86_64__)
    {besoin_ifma, noyaux_ifma},
    {besoin_reels, noyaux_reels},
#endif
    {instructions::aucune, nullptr},
};

}  // namespace

Versions<Huit::NoyauxParLongueur> Huit::versions_des_noyaux() { return les_versions; }

Huit::NoyauxParLongueur Huit::noyaux_d_ici() {
  static const auto boucle = choisir(versions_des_noyaux()).boucle;
  return boucle;
}

Huit::Huit(const NTL::ZZ& modulus, NoyauxParLongueur par_longueur)
    : n{modulus}, longueur{longueur_pour(NTL::NumBits(n))}, noyaux{par_longueur(longueur)} {
  const NTL::ZZ base = NTL::power2_ZZ(bits_membre);
  r_inverse = NTL::InvMod(NTL::power2_ZZ(bits_membre * static_cast<long>(longueur)) % n, n);
  nombre.n = en_membres(n);
  nombre.deux_n = en_membres(2 * n);
  nombre.inverse = en_entier64(base - NTL::InvMod(n % base, base));
  for (std::size_t i = 0; i < membres_max; ++i) {
    nombre.n_reel[i] = static_cast<double>(nombre.n[i]);
  }
  nombre.inverse_reel = static_cast<double>(nombre.inverse);
}

Huit::Residu Huit::entrer(const Nombres& x) const {
  Residu r;
  for (std::size_t j = 0; j < voies; ++j) {
    const auto membres = en_membres((x[j] << (bits_membre * static_cast<long>(longueur))) % n);
    for (std::size_t i = 0; i < membres_max; ++i) r.membres[i][j] = membres[i];
  }
  return r;
}

Huit::Nombres Huit::lire(const Residu& a) const {
  Nombres x;
  for (std::size_t j = 0; j < voies; ++j) {
    for (std::size_t i = longueur; i-- > 0;) {
      const NTL::ZZ membre = en_zz(a.membres[i][j]);
      x[j] =
          (x[j] << bits_membre) + (i + 1 < longueur ? NTL::trunc_ZZ(membre, bits_membre) : membre);
    }
    x[j] = x[j] * r_inverse % n;
  }
  return x;
}

}  // namespace premiers::facteurs::ecm
