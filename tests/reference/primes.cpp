// SPDX-License-Identifier: MIT
// The table of primes by rank, extended one prime at a time, and the two tests by trial division.
#include <cmath>

#include "etat.h"

namespace reference {

namespace {

/// Makes sure that rank k exists, one prime at most.
void etendre_au_rang(Etat& e) {
  if (e.k >= 3 && e.k > e.np) Suiv(e);
}

std::int64_t& premier_de_rang(Etat& e, std::int64_t rang) {
  return e.Nprem.at(static_cast<std::size_t>(rang));
}

}  // namespace

void Suiv(Etat& e) {
  e.j = 1;
  for (;;) {
    const std::int64_t c = premier_de_rang(e, e.np) + 2 * e.i;
    const std::int64_t d = premier_de_rang(e, e.j);
    if (std::sqrt(static_cast<double>(c)) < static_cast<double>(d)) break;
    const std::int64_t r = c % d;
    e.j += 1;
    if (r == 0) {
      e.i += 1;
      e.j = 1;
    }
  }
  e.np += 1;
  e.Nprem.push_back(0);
  premier_de_rang(e, e.np) = premier_de_rang(e, e.np - 1) + 2 * e.i;
  e.i = 1;
}

int prem(Etat& e) {
  e.k = 0;
  e.reste = 1;
  e.i = 1;
  if (e.S == 2) return 1;
  if (e.S == 1) return 0;
  if (e.S == 0) return 0;
  e.rS = NTL::SqrRoot(e.S);
  while (e.reste != 0) {
    e.k += 1;
    etendre_au_rang(e);
    const std::int64_t p = premier_de_rang(e, e.k);
    e.reste = e.S % p;
    if (e.reste == 0) return 0;
    if (e.rS < p) return 1;
  }
  return 2;
}

int prem1(Etat& e) {
  e.reste1 = 1;
  e.i = 1;
  e.rS1 = static_cast<std::int64_t>(std::sqrt(static_cast<double>(e.S3)));
  e.k = 0;
  for (;;) {
    e.k += 1;
    etendre_au_rang(e);
    const std::int64_t p = premier_de_rang(e, e.k);
    e.reste1 = e.S3 % p;
    if (e.reste1 == 0) return 0;
    if (p > e.rS1) return 1;
  }
}

}  // namespace reference
