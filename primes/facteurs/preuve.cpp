// SPDX-License-Identifier: MIT
// A composite n is given away by `est_premier` (primalite.h), and up to 81 bits its "prime" is
// proven, too. Beyond, one of these theorems of J. Brillhart, D. H. Lehmer and J. L. Selfridge,
// "New primality criteria and factorizations of 2^m +- 1", Mathematics of Computation 29 (1975), in
// the order of their cost:
//
//  N - 1 (theorem 5): n - 1 = F R, F even and completely factored, gcd(F, R) = 1, 2 F^3 > n. If
//     for every prime q | F there is an a with a^(n-1) = 1 and gcd(a^((n-1)/q) - 1, n) = 1, and if
//     with R = 2 F s + r, 0 < r < 2 F, s = 0 or r^2 - 8 s is no square, then n is prime.
//  N + 1 (in substance theorem 13): F | n + 1 completely factored, gcd(F, (n+1)/F) = 1,
//     F > sqrt(n) + 1. Let g be of norm 1 and trace P in (Z/nZ)[sqrt(D)], D = P^2 - 4,
//     gcd(D, n) = 1. If g^(n+1) = 1 and, for every prime q | F, gcd(trace of g^((n+1)/q) - 2, n) = 1,
//     then n is prime. For modulo each prime p | n the order of g divides n + 1, has all of F as a
//     factor, and divides p + 1 or p - 1.
//
// Up to 200 bits a third of n - 1 is worth some curves of ECM: at 30 digits the proof then costs a
// seventh of a general one. Longer n are tried with what small primes leave, which takes microseconds
// and suffices for many numbers that people care about (2^p - 1, k 2^m + 1, n! +- 1). All others
// are given to the PARI library (APRCL, ECPP).
#include "primes/facteurs/preuve.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <vector>

#include "primes/arithmetique/gmp_zz.h"
#include "primes/arithmetique/zz.h"
#include "primes/facteurs/facteurs128.h"
#include "primes/facteurs/facteurs64.h"
#include "primes/facteurs/facteurs_longs.h"
#include "primes/facteurs/petits_facteurs.h"
#include "primes/facteurs/pont_pari.h"
#include "primes/primalite/primalite.h"

namespace premiers::facteurs {
namespace {

/// 2^81 < 3.3 10^24, below which est_premier proves: it moves with that proof only.
constexpr long bits_prouves = 81;
/// Bases, or sequences. Effect: how soon a proof gives up; of those of a prime n one in two or better fits,
/// so it hardly ever does. Sensible: 20 and more.
constexpr int essais = 50;
/// Longer n are not worth ECM: too much of n - 1 would have to be found. Without any, random primes of 30
/// digits take 7 times as long to prove, of 40 digits 2.0, of 50 digits 1.6 and of 60 digits, where this
/// limit lies, the same.
constexpr long bits_ecm = 200;

// ---- What is known of n - 1 or n + 1 -----------------------------------------------------------

/// The primes q of F, and F.
struct PartieConnue {
  NTL::ZZ produit{1};
  std::vector<NTL::ZZ> premiers;

  void ajouter(const NTL::ZZ& q, std::int64_t exposant) {
    premiers.push_back(q);
    produit *= NTL::power(q, static_cast<long>(exposant));
  }
};

/// Takes the small primes out of m.
PartieConnue petite_partie(NTL::ZZ& m) {
  PartieConnue connue;
  for (const auto& [p, e] : retirer_petits_facteurs(m)) connue.ajouter(en_zz(p), e);
  return connue;
}

/// A factor of the composite c that little work finds.
std::optional<NTL::ZZ> facteur_facile(const NTL::ZZ& c) {
  // Up to here the curves of facteurs128.h take c, which go on with larger bounds; after so many of
  // them the proof gives c up and goes on without.
  constexpr long bits_deux_membres = 100;
  constexpr unsigned courbes = 64;
  // Effect: how much of n - 1 is found, for how much work. With a quarter of these curves random
  // primes of 50 digits take 1.3 times as long to prove, with four times as many 0.85; of 40 and 60
  // digits the same.
  constexpr EffortEcm effort{16, 250, 10000};
  static_assert(effort.a_portee());
  if (NTL::NumBits(c) > bits_deux_membres) return facteur_ecm_long(c, effort);
  const auto f = facteur_ecm(en_entier128(c), courbes);
  return f ? std::optional{en_zz(*f)} : std::nullopt;
}

/// Factors m, which has no small factor, as far as it is easy, until 2 F^3 > n.
void completer(PartieConnue& connue, const NTL::ZZ& m, const NTL::ZZ& n) {
  std::vector<NTL::ZZ> a_faire{m};
  while (!a_faire.empty() && 2 * NTL::power(connue.produit, 3) <= n) {
    const NTL::ZZ c = a_faire.back();
    a_faire.pop_back();
    if (NTL::NumBits(c) <= 64) {
      for (const auto& [p, e] : facteurs(en_entier64(c))) connue.ajouter(en_zz(p), e);
    } else if (primalite::est_premier(c)) {
      if (est_premier_prouve(c)) connue.ajouter(c, 1);
    } else if (const auto f = facteur_facile(c)) {
      a_faire.push_back(c / *f);
      a_faire.push_back(*f);
    }
  }
}

// ---- N - 1 -------------------------------------------------------------------------------------

/// Is there a small a with a^(n-1) = 1 and gcd(a^((n-1)/q) - 1, n) = 1?
bool a_une_base(const NTL::ZZ& n, const NTL::ZZ& q) {
  const NTL::ZZ exposant = (n - 1) / q;
  const VueGmp vue_n{n};
  const VueGmp vue_exposant{exposant};
  const VueGmp vue_q{q};
  EntierGmp x;
  EntierGmp y;
  for (unsigned long a = 2; a < 2 + essais; ++a) {
    mpz_set_ui(x.z, a);
    mpz_powm(x.z, x.z, vue_exposant.z, vue_n.z);
    mpz_powm(y.z, x.z, vue_q.z, vue_n.z);
    if (mpz_cmp_ui(y.z, 1) != 0) return false;
    mpz_sub_ui(x.z, x.z, 1);
    mpz_gcd(y.z, x.z, vue_n.z);
    if (mpz_cmp_ui(y.z, 1) == 0) return true;
  }
  return false;
}

bool prouver_par_n_moins_1(const NTL::ZZ& n) {
  NTL::ZZ reste = n - 1;
  PartieConnue connue = petite_partie(reste);
  if (NTL::NumBits(n) <= bits_ecm) completer(connue, reste, n);
  const NTL::ZZ& F = connue.produit;
  const NTL::ZZ R = (n - 1) / F;
  if (2 * NTL::power(F, 3) <= n || NTL::GCD(F, R) != 1) return false;
  const NTL::ZZ s = R / (2 * F);
  const NTL::ZZ r = R % (2 * F);
  const NTL::ZZ d = r * r - 8 * s;
  if (s != 0 && d >= 0 && NTL::SqrRoot(d) * NTL::SqrRoot(d) == d) return false;
  return std::all_of(connue.premiers.begin(), connue.premiers.end(),
                     [&](const NTL::ZZ& q) { return a_une_base(n, q); });
}

// ---- N + 1 -------------------------------------------------------------------------------------

/// V_m and V_(m+1) modulo n of the Lucas sequence V_0 = 2, V_1 = P, V_(i+1) = P V_i - V_(i-1).
struct Lucas {
  NTL::ZZ v, suivant;
};
Lucas lucas(long P, const NTL::ZZ& m, const NTL::ZZ& n) {
  NTL::ZZ v{2};
  NTL::ZZ w{P};
  for (long i = NTL::NumBits(m) - 1; i >= 0; --i) {
    NTL::ZZ& petit = NTL::bit(m, i) != 0 ? v : w;  // the one that becomes V_(2i+1)
    NTL::ZZ& grand = NTL::bit(m, i) != 0 ? w : v;
    petit = (v * w - P) % n;
    grand = (grand * grand - 2) % n;
  }
  return {v, w};
}

/// Is g^(n+1) = 1, and gcd(trace of g^((n+1)/q) - 2, n) = 1 for every q? V_m is the trace of g^m,
/// and g^m = 1 if V_m = 2 and V_(m+1) = P.
bool convient(long P, const NTL::ZZ& n, const std::vector<NTL::ZZ>& premiers) {
  const Lucas fin = lucas(P, n + 1, n);
  if (fin.v != 2 || fin.suivant != P) return false;
  return std::all_of(premiers.begin(), premiers.end(), [&](const NTL::ZZ& q) {
    return NTL::GCD(lucas(P, (n + 1) / q, n).v - 2, n) == 1;
  });
}

bool prouver_par_n_plus_1(const NTL::ZZ& n) {
  NTL::ZZ reste = n + 1;
  const PartieConnue connue = petite_partie(reste);
  const NTL::ZZ& F = connue.produit;
  if ((F - 1) * (F - 1) <= n || NTL::GCD(F, reste) != 1) return false;
  for (long P = 3; P < 3 + essais; ++P) {
    const NTL::ZZ D{P * P - 4};
    if (NTL::Jacobi(D, n) == -1 && convient(P, n, connue.premiers)) return true;
  }
  return false;
}

}  // namespace

bool est_premier_prouve(const NTL::ZZ& n, const Suivi& suivi) {
  if (!primalite::est_premier(n)) return false;
  if (NTL::NumBits(n) <= bits_prouves) return true;
  if (prouver_par_n_moins_1(n) || prouver_par_n_plus_1(n)) return true;
  if (suivi) suivi(0);
  return pari::est_premier_prouve(n);
}

}  // namespace premiers::facteurs
