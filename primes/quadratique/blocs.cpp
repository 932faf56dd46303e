// SPDX-License-Identifier: MIT
// The two products by tables of bytes; what is 64 x 64 goes bit by bit (blocs.h).
#include "primes/quadratique/blocs.h"

#include <bit>
#include <cstddef>

namespace premiers::quadratique {

namespace {

constexpr std::size_t octets = 8;
using Table = std::array<std::array<std::uint64_t, 256>, octets>;

std::size_t octet(std::uint64_t mot, std::size_t i) { return (mot >> (8 * i)) & 0xff; }

}  // namespace

Bloc produit_interieur(const Mots& x, const Mots& y) {
  Table sommes{};  // of the words of y where byte i of x has this value
  for (std::size_t k = 0; k < x.size(); ++k) {
    for (std::size_t i = 0; i < octets; ++i) sommes[i][octet(x[k], i)] ^= y[k];
  }
  Bloc r{};
  for (std::size_t i = 0; i < octets; ++i) {
    for (std::size_t valeur = 0; valeur < 256; ++valeur) {
      for (std::size_t b = 0; b < 8; ++b) {
        if (((valeur >> b) & 1) != 0) r[8 * i + b] ^= sommes[i][valeur];
      }
    }
  }
  return r;
}

void ajouter_produit(Mots& r, const Mots& x, const Bloc& m) {
  Table sommes{};  // of the rows of m that the bits of byte i tell
  for (std::size_t i = 0; i < octets; ++i) {
    for (std::size_t valeur = 1; valeur < 256; ++valeur) {
      const auto bit = static_cast<std::size_t>(std::countr_zero(valeur));
      sommes[i][valeur] = sommes[i][valeur & (valeur - 1)] ^ m[8 * i + bit];
    }
  }
  for (std::size_t k = 0; k < x.size(); ++k) {
    std::uint64_t somme = 0;
    for (std::size_t i = 0; i < octets; ++i) somme ^= sommes[i][octet(x[k], i)];
    r[k] ^= somme;
  }
}

Bloc produit(const Bloc& a, const Bloc& b) {
  Bloc r{};
  for (std::size_t i = 0; i < 64; ++i) {
    for (std::uint64_t mot = a[i]; mot != 0; mot &= mot - 1) {
      r[i] ^= b[static_cast<std::size_t>(std::countr_zero(mot))];
    }
  }
  return r;
}

Bloc somme(const Bloc& a, const Bloc& b) {
  Bloc r;
  for (std::size_t i = 0; i < 64; ++i) r[i] = a[i] ^ b[i];
  return r;
}

Bloc unite() {
  Bloc r;
  for (std::size_t i = 0; i < 64; ++i) r[i] = std::uint64_t{1} << i;
  return r;
}

Bloc colonnes_de(const Bloc& a, std::uint64_t masque) {
  Bloc r;
  for (std::size_t i = 0; i < 64; ++i) r[i] = a[i] & masque;
  return r;
}

}  // namespace premiers::quadratique
