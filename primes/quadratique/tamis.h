// SPDX-License-Identifier: MIT
// The sieve array of the quadratic sieve: where is the value of a polynomial probably smooth?
//
// A byte for each position gathers the logarithms of the primes that divide there. It starts at
// 128 less the logarithm that is wanted, so that bit 7 tells when enough has come together.
// The smallest primes are left out (they bring the least for the most work); the tolerance makes
// up for them, and whoever divides looks at them first.
//
// Why it is fast: the array fits the first-level cache, and changing the polynomial costs little
// enough that no longer one is needed. A prime p with k <= length / p < k + 1 comes by k or k + 1
// times; the last time goes to a few bytes of waste behind the array when it falls outside, so
// that no branch has to be guessed (a wrong guess costs as much as ten additions). Primes longer
// than the array come out of buckets (seaux.h).
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "primes/quadratique/polynome.h"
#include "primes/quadratique/reglages.h"
#include "primes/quadratique/seaux.h"

namespace premiers::quadratique {

/// A position that is worth dividing, and the logarithms that the sieve has found there.
struct Candidat {
  std::uint32_t position;
  std::uint32_t somme;
};

struct Tamis {
  /// For positions 0 .. 2 demi - 1; primes below `petit` are left out.
  Tamis(const Base& base, const Reglages& reglages);
  /// Sieves with the roots of the polynomial, and moves those roots that it leaves to others.
  /// Gives the positions where the logarithms (to base 2) of the primes reach `seuil` <= seuil_max.
  const std::vector<Candidat>& cribler(Polynomes& polynomes, std::uint32_t seuil);
  /// A byte starts at 128 - seuil > 0. It does not wrap: rounding makes logarithms by a fifteenth
  /// larger at most from 53 on and a ninth below, so a value of t bits adds some 16 t / 15, and the
  /// settings for 66 to 350 bits keep that some 100 above the threshold at most.
  static constexpr std::uint32_t seuil_max = 120;

  struct alignas(64) Ligne {
    std::uint8_t octets[64];
  };
  const Base& base;
  std::uint32_t longueur;            // of the interval, 2 demi
  std::vector<std::uint8_t> poids;   // log2 of the primes; 0 for those of a
  std::vector<Ligne> lignes;         // the array, in cache lines, and one of waste
  std::vector<std::size_t> paliers;  // [0]: `fin`; [k]: the first index with length / p < k
  std::size_t debut;                 // first index of the base that is sieved
  std::size_t fin;                   // from here on primes go through the buckets
  Seaux seaux;
  std::vector<std::uint32_t> leves;  // scratch
  std::vector<Candidat> candidats;
};

}  // namespace premiers::quadratique
