// SPDX-License-Identifier: MIT
// See primes/arithmetique/zz.h. NTL's byte order is the little-endian one on every machine.
#include "primes/arithmetique/zz.h"

#include <array>
#include <cstring>

#include "primes/arithmetique/gmp_zz.h"

namespace premiers {
inline namespace arithmetique {
namespace {

template <class Entier>
NTL::ZZ depuis_octets(Entier n) {
  std::array<unsigned char, sizeof(Entier)> octets{};
  for (auto& octet : octets) {
    octet = static_cast<unsigned char>(n & 0xff);
    n >>= 8;
  }
  return NTL::ZZFromBytes(octets.data(), static_cast<long>(octets.size()));
}

template <class Entier>
Entier vers_octets(const NTL::ZZ& n) {
  std::array<unsigned char, sizeof(Entier)> octets{};
  NTL::BytesFromZZ(octets.data(), n, static_cast<long>(octets.size()));
  Entier resultat = 0;
  for (std::size_t i = octets.size(); i-- > 0;) resultat = (resultat << 8) | octets[i];
  return resultat;
}

}  // namespace

NTL::ZZ en_zz(std::uint64_t n) { return depuis_octets(n); }
NTL::ZZ en_zz(Entier128 n) { return depuis_octets(n); }
std::uint64_t en_entier64(const NTL::ZZ& n) { return vers_octets<std::uint64_t>(n); }
Entier128 en_entier128(const NTL::ZZ& n) { return vers_octets<Entier128>(n); }

std::string en_decimal(const NTL::ZZ& n) {
  const VueGmp vue(n);
  std::string texte(mpz_sizeinbase(vue.z, 10) + 1, '\0');  // room for the NUL
  mpz_get_str(texte.data(), 10, vue.z);
  texte.resize(std::strlen(texte.data()));
  if (n < 0) texte.insert(0, 1, '-');
  return texte;
}

}  // namespace arithmetique
}  // namespace premiers
