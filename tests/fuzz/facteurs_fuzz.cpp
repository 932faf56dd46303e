// SPDX-License-Identifier: MIT
// Fuzzes factorisation and primality by their own laws: the product of the factors is the number,
// they are prime by a test of NTL's, increasing, each named once; the tests of all widths agree.
// Input: a byte with a width, then that many bytes of a factor, and so on; N is their product.
#include <NTL/ZZ.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iostream>

#include "primes/arithmetique/zz.h"
#include "primes/facteurs/facteurs.h"
#include "primes/facteurs/facteurs64.h"
#include "primes/primalite/primalite.h"

namespace {

using NTL::ZZ;

/// Every number is to be decomposed within a second, sanitizers and all: short parts make long
/// products, and long parts, which want the quadratic sieve, shorter ones.
constexpr std::size_t octets_d_une_part = 9;
constexpr std::size_t octets_d_une_part_courte = 6;
constexpr long bits_de_parts_courtes = 320;
constexpr long bits_de_parts_longues = 144;

void exiger(bool condition, const char* loi, const ZZ& N) {
  if (condition) return;
  std::cerr << "N = " << N << ": " << loi << "\n";
  std::abort();
}

/// Miller-Rabin to random bases: wrong once in 4^40 at most.
bool premier_selon_ntl(const ZZ& n) { return NTL::ProbPrime(n, 40) != 0; }

void primalite(const ZZ& n) {
  const bool attendu = premier_selon_ntl(n);
  exiger(premiers::primalite::est_premier(n) == attendu, "est_premier is wrong", n);
  if (NTL::NumBits(n) <= 128) {
    exiger(premiers::primalite::est_premier(premiers::en_entier128(n)) == attendu,
           "128 bits: wrong", n);
  }
  if (NTL::NumBits(n) <= 64) {
    exiger(premiers::primalite::est_premier(premiers::en_entier64(n)) == attendu, "64 bits: wrong",
           n);
  }
}

void decomposition(const ZZ& N) {
  const premiers::facteurs::Facteurs facteurs = premiers::facteurs::decomposer(N);
  ZZ produit(1);
  ZZ precedent(1);
  for (const auto& [premier, exposant] : facteurs) {
    exiger(premier > precedent, "the factors do not increase", N);
    exiger(exposant >= 1, "an exponent below 1", N);
    exiger(premier_selon_ntl(premier), "a factor is composite", N);
    produit *= NTL::power(premier, static_cast<long>(exposant));
    precedent = premier;
  }
  exiger(produit == N, "the product of the factors is another number", N);
  if (N > 1 && NTL::NumBits(N) <= 64) {
    const ZZ petit =
        NTL::conv<ZZ>(premiers::facteurs::plus_petit_facteur(premiers::en_entier64(N)));
    exiger(petit == facteurs.front().premier, "another smallest factor at 64 bits", N);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* octets, std::size_t taille) {
  ZZ N(1);
  long bits_max = bits_de_parts_courtes;
  while (taille > 1) {
    const std::size_t n = std::min(1 + octets[0] % octets_d_une_part, taille - 1);
    const ZZ part = NTL::ZZFromBytes(octets + 1, static_cast<long>(n));
    octets += n + 1;
    taille -= n + 1;
    if (part == 0) continue;
    primalite(part);
    if (n > octets_d_une_part_courte) bits_max = bits_de_parts_longues;
    if (NTL::NumBits(N) + NTL::NumBits(part) > bits_max) break;
    N *= part;
    primalite(N);
  }
  decomposition(N);
  return 0;
}
