// SPDX-License-Identifier: MIT
// Factorisation of n < 2^64 in three steps:
//  1. division by the odd primes up to 2011 (petits_diviseurs.h), a nanosecond for each;
//  2. what is left is tested for primality, and most often it is prime or 1;
//  3. else it is split by ECM (facteurs128.h), and the parts go back to step 2.
//     Squares of primes are seen by their square root. Behind the last curve stands Brent's rho
//     (rho.h), so that no n is missed.
//
// Means, in microseconds on a Zen 4 core, with AVX-512 IFMA and without: random 64-bit
// integers 5.3 and 5.3, products of two primes of 32 bits 39 and 56.
#include "primes/facteurs/facteurs64.h"

#include <algorithm>
#include <bit>

#include "primes/arithmetique/entier128.h"
#include "primes/arithmetique/montgomery.h"
#include "primes/arithmetique/racines.h"
#include "primes/facteurs/facteurs128.h"
#include "primes/facteurs/petits_diviseurs.h"
#include "primes/facteurs/rho.h"
#include "primes/primalite/primalite.h"

namespace premiers::facteurs {
namespace {

// 2 * 3 * 5 * ... * 47 < 2^64 < 2 * 3 * ... * 53: no integer has sixteen prime factors.
constexpr std::uint64_t primorielle_47 = 614889782588491410;
static_assert(primorielle_47 ==
              2ULL * 3 * 5 * 7 * 11 * 13 * 17 * 19 * 23 * 29 * 31 * 37 * 41 * 43 * 47);
static_assert(primorielle_47 > ~std::uint64_t{0} / 53);
static_assert(Facteurs64::capacite == 15);

/// Effect: more divisors spare curves to n with small factors and cost the others a nanosecond
/// each. Sensible: 100 to 1000. Mean over random 64-bit integers: 96: 6.1, 304: 5.4, 1008: 5.1
/// microseconds; small integers and tables in cache speak for the smaller number.
constexpr std::size_t nombre_diviseurs = 304;
constexpr auto diviseurs = table_diviseurs<nombre_diviseurs>();
constexpr std::uint64_t borne_diviseurs = diviseurs.back().p;

/// How many curves are tried before rho: enough that it is hardly ever needed.
constexpr unsigned courbes_maximum = 160;

/// A proper factor of the odd composite n, which has no factor below borne_diviseurs.
std::uint64_t diviser(std::uint64_t n, unsigned courbes) {
  const std::uint64_t r = racine_carree(n);
  if (r * r == n) return r;
  if (const auto f = facteur_ecm(n, courbes)) return bas(*f);
  return facteur_rho(Montgomery64{n});
}

void noter(Facteurs64& f, std::uint64_t p, std::int64_t exposant) {
  std::size_t i = f.nombre;
  while (i > 0 && f.puissances[i - 1].premier > p) --i;
  if (i > 0 && f.puissances[i - 1].premier == p) {
    f.puissances[i - 1].exposant += exposant;
    return;
  }
  std::move_backward(f.puissances.begin() + i, f.puissances.begin() + f.nombre,
                     f.puissances.begin() + f.nombre + 1);
  f.puissances[i] = {p, exposant};
  ++f.nombre;
}

/// Notes the factors of the odd n in the table; gives what is left of n. Whether n has become less
/// than p^2, and so is prime, is asked once in `lot` divisors only.
std::uint64_t diviser_par_les_petits(Facteurs64& f, std::uint64_t n) {
  constexpr std::size_t lot = 16;
  static_assert(nombre_diviseurs % lot == 0);
  for (std::size_t i = 0; i < nombre_diviseurs; i += lot) {
    if (n < diviseurs[i].p * diviseurs[i].p) break;
    for (std::size_t j = i; j < i + lot; ++j) {
      const PetitDiviseur& d = diviseurs[j];
      if (!d.divise(n)) continue;
      std::int64_t exposant = 0;
      do {
        n = d.quotient(n);
        ++exposant;
      } while (d.divise(n));
      noter(f, d.p, exposant);
    }
  }
  return n;
}

/// Notes the prime factors of n > 1, which is prime or has none below borne_diviseurs.
void decomposer(Facteurs64& f, std::uint64_t n, unsigned courbes) {
  if (n < borne_diviseurs * borne_diviseurs || primalite::est_premier(n)) return noter(f, n, 1);
  const std::uint64_t d = diviser(n, courbes);
  decomposer(f, d, courbes);
  decomposer(f, n / d, courbes);
}

Facteurs64 facteurs(std::uint64_t n, unsigned courbes) {
  Facteurs64 f;
  if (n < 2) return f;
  const int deux = std::countr_zero(n);
  if (deux > 0) noter(f, 2, deux);
  n >>= deux;
  n = diviser_par_les_petits(f, n);
  if (n > 1) decomposer(f, n, courbes);
  return f;
}

}  // namespace

Facteurs64 facteurs(std::uint64_t n) { return facteurs(n, courbes_maximum); }

Facteurs64 facteurs_sans_courbes(std::uint64_t n) { return facteurs(n, 0); }

std::uint64_t plus_petit_facteur(std::uint64_t n) {
  if (n < 2) return n;
  if (n % 2 == 0) return 2;
  for (const auto& d : diviseurs) {
    if (d.divise(n)) return d.p;
  }
  return facteurs(n)[0].premier;
}

}  // namespace premiers::facteurs
