// SPDX-License-Identifier: MIT
// Integers of 256 bits in two's complement: what the values of a polynomial are kept in.
//
// A general big integer costs an allocation and a call for each sum; here a sum is four additions
// that the compiler lays out in a row. Values of the quadratic sieve are about sqrt(n) times the
// length of the interval, so 256 bits serve numbers of more than 380 bits.
#pragma once

#include <NTL/ZZ.h>

#include <array>
#include <cstddef>
#include <cstdint>

#include "primes/arithmetique/entier128.h"
#include "primes/arithmetique/montgomery.h"

namespace premiers::quadratique {

struct Entier256 {
  std::array<std::uint64_t, 4> mot{};  // least significant first
};

inline bool negatif(const Entier256& v) { return (v.mot[3] >> 63) != 0; }

/// a + b, modulo 2^256.
inline Entier256 somme(const Entier256& a, const Entier256& b) {
  Entier256 r;
  std::uint64_t retenue = 0;
  for (std::size_t i = 0; i < 4; ++i) {
    const Entier128 s = static_cast<Entier128>(a.mot[i]) + b.mot[i] + retenue;
    r.mot[i] = static_cast<std::uint64_t>(s);
    retenue = static_cast<std::uint64_t>(s >> 64);
  }
  return r;
}

/// -v, modulo 2^256.
inline Entier256 oppose(const Entier256& v) {
  Entier256 r;
  for (std::size_t i = 0; i < 4; ++i) r.mot[i] = ~v.mot[i];
  return somme(r, Entier256{{1, 0, 0, 0}});
}

/// v * x, modulo 2^256.
inline Entier256 produit(const Entier256& v, std::int64_t x) {
  const std::uint64_t absolu =
      x < 0 ? -static_cast<std::uint64_t>(x) : static_cast<std::uint64_t>(x);
  Entier256 r;
  std::uint64_t retenue = 0;
  for (std::size_t i = 0; i < 4; ++i) {
    const Entier128 s = static_cast<Entier128>(v.mot[i]) * absolu + retenue;
    r.mot[i] = static_cast<std::uint64_t>(s);
    retenue = static_cast<std::uint64_t>(s >> 64);
  }
  return x < 0 ? oppose(r) : r;
}

/// a * b, modulo 2^256.
inline Entier256 produit(const Entier256& a, const Entier256& b) {
  Entier256 r;
  for (std::size_t i = 0; i < 4; ++i) {
    std::uint64_t retenue = 0;
    for (std::size_t j = 0; i + j < 4; ++j) {
      const Entier128 s = static_cast<Entier128>(a.mot[i]) * b.mot[j] + r.mot[i + j] + retenue;
      r.mot[i + j] = static_cast<std::uint64_t>(s);
      retenue = static_cast<std::uint64_t>(s >> 64);
    }
  }
  return r;
}

/// v / 2^bits rounded down, 0 < bits < 64, for v of either sign.
inline Entier256 decalage(const Entier256& v, unsigned bits) {
  Entier256 r;
  for (std::size_t i = 0; i < 3; ++i) {
    r.mot[i] = (v.mot[i] >> bits) | (v.mot[i + 1] << (64 - bits));
  }
  r.mot[3] = static_cast<std::uint64_t>(static_cast<std::int64_t>(v.mot[3]) >> bits);
  return r;
}

/// The number of words of v >= 0 without its leading zero words.
inline std::size_t longueur(const Entier256& v) {
  std::size_t mots = 4;
  while (mots > 0 && v.mot[mots - 1] == 0) --mots;
  return mots;
}

/// 1 / v modulo 2^256, for odd v.
inline Entier256 inverse(const Entier256& v) {
  Entier256 x{{inverse_2_64(v.mot[0]), 0, 0, 0}};
  for (int bits = 64; bits < 256; bits *= 2) {
    x = produit(x, somme(Entier256{{2, 0, 0, 0}}, oppose(produit(v, x))));
  }
  return x;
}

/// Replaces v >= 0 of `mots` words by v / p and says yes if p (odd) divides it; else says no and
/// leaves v as it is. `inverse` is inverse_2_64(p). No division is done: the quotient is built
/// from its low end, and p divides v if and only if nothing is left over at the high end
/// (T. Jebelean, "An algorithm for exact division", 1993).
inline bool divise(Entier256& v, std::size_t mots, std::uint64_t p, std::uint64_t inverse) {
  Entier256 quotient;
  std::uint64_t retenue = 0;
  for (std::size_t i = 0; i < mots; ++i) {
    const std::uint64_t reste = v.mot[i] - retenue;
    quotient.mot[i] = reste * inverse;
    retenue = static_cast<std::uint64_t>((static_cast<Entier128>(quotient.mot[i]) * p) >> 64) +
              (v.mot[i] < retenue ? 1U : 0U);
  }
  if (retenue != 0) return false;
  v = quotient;
  return true;
}

/// z as 256 bits; |z| < 2^255.
inline Entier256 entier256(const NTL::ZZ& z) {
  std::array<unsigned char, 32> octets{};
  NTL::BytesFromZZ(octets.data(), z, 32);  // absolute value, least significant byte first
  Entier256 v;
  for (std::size_t i = 0; i < 32; ++i) {
    v.mot[i / 8] |= static_cast<std::uint64_t>(octets[i]) << (8 * (i % 8));
  }
  return z < 0 ? oppose(v) : v;
}

inline NTL::ZZ grand_entier(const Entier256& v) {
  const Entier256 absolu = negatif(v) ? oppose(v) : v;
  std::array<unsigned char, 32> octets{};
  for (std::size_t i = 0; i < 32; ++i) {
    octets[i] = static_cast<unsigned char>(absolu.mot[i / 8] >> (8 * (i % 8)));
  }
  const NTL::ZZ z = NTL::ZZFromBytes(octets.data(), 32);
  return negatif(v) ? -z : z;
}

}  // namespace premiers::quadratique
