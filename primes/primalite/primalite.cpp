// SPDX-License-Identifier: MIT
// Primality, by size of n:
//
//  n < 2^64            Baillie-PSW: Miller-Rabin to base 2, then a Lucas test. Proven, because
//                      J. Feitsma listed all base-2 pseudoprimes below 2^64 ("The pseudoprimes
//                      below 2^64", 2013) and none of them passes the Lucas test used here
//                      (D. Jacobsen, "Pseudoprime statistics, tables, and data", 2014; PARI/GP
//                      user's guide, `ispseudoprime`).
//  n < 3.317... 10^24  Miller-Rabin to the first thirteen primes as bases. Proven by J. Sorenson
//                      and J. Webster, "Strong pseudoprimes to twelve prime bases", Mathematics of
//                      Computation 86 (2017).
//  n < 2^128           Baillie-PSW in two-limb arithmetic.
//  beyond              Baillie-PSW of GMP (`mpz_probab_prime_p` with 24 repetitions is exactly
//                      that since GMP 6.2).
//
// Baillie-PSW is from R. Baillie and S. Wagstaff, "Lucas pseudoprimes", Mathematics of Computation
// 35 (1980). The Lucas test is the one with Q = 1 ("almost extra strong"): only the sequence V is
// needed, its two products per bit do not wait for each other, and so it costs hardly more than
// another base of Miller-Rabin.
#include "primes/primalite/primalite.h"

#include <gmp.h>

#include <array>
#include <bit>
#include <cstddef>

#include "primes/arithmetique/gmp_zz.h"
#include "primes/arithmetique/montgomery.h"
#include "primes/arithmetique/montgomery128.h"
#include "primes/arithmetique/racines.h"
#include "primes/arithmetique/zz.h"

namespace premiers::primalite {
namespace {

/// The bases of Sorenson and Webster; also the primes tried by division.
constexpr std::array<unsigned, 13> petits{2, 3, 5, 7, 11, 13, 17, 19, 23, 29, 31, 37, 41};
constexpr unsigned suivant = 43;  // every n < suivant^2 without a factor in `petits` is prime

/// 2^d in the ring of m: to multiply by the base is to double.
template <class Montgomery>
typename Montgomery::Entier puissance_de_deux(const Montgomery& m, typename Montgomery::Entier d) {
  auto x = m.un;
  for (int i = bits(d) - 1; i >= 0; --i) {
    x = m.carre(x);
    const auto double_x = m.somme(x, x);
    x = ((d >> i) & 1) != 0 ? double_x : x;
  }
  return x;
}

/// base^d in the ring of m, four bits of d at a time.
template <class Montgomery>
typename Montgomery::Entier puissance(const Montgomery& m, unsigned base,
                                      typename Montgomery::Entier d) {
  std::array<typename Montgomery::Entier, 16> puissances{m.un, m.entrer(base)};
  for (std::size_t i = 2; i < puissances.size(); ++i) {
    puissances[i] = m.produit(puissances[i - 1], puissances[1]);
  }
  auto x = m.un;
  for (int i = (bits(d) - 1) / 4 * 4; i >= 0; i -= 4) {
    for (int j = 0; j < 4; ++j) x = m.carre(x);
    x = m.produit(x, puissances[static_cast<std::size_t>((d >> i) & 15)]);
  }
  return x;
}

/// One round of Miller-Rabin on the ring of m, to `base` < m.n.
template <class Montgomery>
bool passe_fort(const Montgomery& m, unsigned base) {
  using Entier = typename Montgomery::Entier;
  const Entier moins_un = m.n - m.un;
  const int s = zeros_finals(static_cast<Entier>(m.n - 1));
  const Entier d = (m.n - 1) >> s;
  Entier x = base == 2 ? puissance_de_deux(m, d) : puissance(m, base, d);
  if (x == m.un || x == moins_un) return true;
  for (int i = 1; i < s; ++i) {
    x = m.carre(x);
    if (x == moins_un) return true;
  }
  return false;
}

/// (2 / n)^zeros for odd n of which the last three bits are given.
int symbole_de_deux(unsigned n_mod_8, int zeros) {
  return zeros % 2 != 0 && (n_mod_8 == 3 || n_mod_8 == 5) ? -1 : 1;
}

/// The Jacobi symbol (a / n) for a > 0 and odd n, by quadratic reciprocity.
template <class Entier>
int jacobi(std::uint64_t a, Entier n) {
  int zeros = std::countr_zero(a);
  a >>= zeros;
  int signe = symbole_de_deux(static_cast<unsigned>(n & 7), zeros);
  if ((a & 3) == 3 && (n & 3) == 3) signe = -signe;
  auto b = static_cast<std::uint64_t>(n % a);
  while (b != 0) {  // wanted: (b / a)
    zeros = std::countr_zero(b);
    b >>= zeros;
    signe *= symbole_de_deux(static_cast<unsigned>(a & 7), zeros);
    if ((a & 3) == 3 && (b & 3) == 3) signe = -signe;
    const std::uint64_t reste = a % b;
    a = b;
    b = reste;
  }
  return a == 1 ? signe : 0;
}

/// The smallest odd P >= 3 with (P^2 - 4 / n) = -1. 0 if n is seen to be composite on the way: it
/// shares a factor with some P^2 - 4, or it is a square, for which there is no such P.
template <class Entier>
unsigned parametre_lucas(Entier n) {
  constexpr unsigned doute = 27;  // one n of some thousands that is no square comes so far
  for (unsigned p = 3;; p += 2) {
    const std::uint64_t discriminant = std::uint64_t{p} * p - 4;
    const int symbole = jacobi(discriminant, n);
    if (symbole == -1) return p;
    if (symbole == 0 && n > discriminant) return 0;
    if (p == doute && est_carre(n)) return 0;
  }
}

/// The Lucas test for n + 1 = d 2^s: V_d = +-2, or V_(d 2^r) = 0 for some r < s - 1. The ladder
/// holds v = V_k and w = V_(k+1): V_2k = V_k^2 - 2, V_(2k+1) = V_k V_(k+1) - P.
template <class Montgomery>
bool passe_lucas(const Montgomery& m) {
  using Entier = typename Montgomery::Entier;
  const unsigned parametre = parametre_lucas(m.n);
  if (parametre == 0) return false;
  const Entier deux = m.somme(m.un, m.un);
  const Entier p = m.entrer(parametre);
  const int s = zeros_finals(static_cast<Entier>(m.n + 1));  // n + 1 > 0: 3 divides 2^64 - 1
  const Entier d = (m.n + 1) >> s;
  Entier v = p;
  Entier w = m.difference(m.carre(p), deux);
  for (int i = bits(d) - 2; i >= 0; --i) {
    const bool impair = ((d >> i) & 1) != 0;
    const Entier milieu = m.difference(m.produit(v, w), p);
    const Entier bord = m.difference(m.carre(impair ? w : v), deux);
    v = impair ? milieu : bord;
    w = impair ? bord : milieu;
  }
  if (v == deux || v == m.n - deux) return true;
  for (int r = 0; r < s - 1; ++r) {
    if (v == 0) return true;
    v = m.difference(m.carre(v), deux);
  }
  return false;
}

/// n < 2^64 or 2^128 has no factor in `petits` and is greater than they: Baillie-PSW.
template <class Montgomery>
bool passe_bpsw(const Montgomery& m) {
  return passe_fort(m, 2) && passe_lucas(m);
}

/// 3317044064679887385961981, the smallest composite that passes all thirteen bases.
constexpr Entier128 limite_treize_bases = Entier128{3317044064679} * 1000000000000 + 887385961981;

}  // namespace

bool est_premier(std::uint64_t n) {
  for (const unsigned p : petits) {
    if (n % p == 0) return n == p;
  }
  if (n < suivant * suivant) return n > 1;
  return passe_bpsw(Montgomery64{n});
}

bool est_premier(Entier128 n) {
  if (haut(n) == 0) return est_premier(bas(n));
  for (const unsigned p : petits) {
    if (n % p == 0) return false;
  }
  const Montgomery128 m{n};
  if (n >= limite_treize_bases) return passe_bpsw(m);
  for (const unsigned base : petits) {
    if (!passe_fort(m, base)) return false;
  }
  return true;
}

bool est_premier(const NTL::ZZ& n) {
  if (NTL::sign(n) <= 0) return false;
  if (NTL::NumBits(n) <= 128) return est_premier(en_entier128(n));
  constexpr int bpsw = 24;
  return mpz_probab_prime_p(VueGmp(n).z, bpsw) != 0;
}

}  // namespace premiers::primalite
