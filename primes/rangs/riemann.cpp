// SPDX-License-Identifier: MIT
// Gram's series, its coefficients computed by the compiler, and Newton's steps.
#include "primes/rangs/riemann.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace premiers::rangs {

namespace {

/// ln 2^64 is 44.4: behind 128 terms the next is below 10^-5 of the first, and of no effect.
constexpr std::size_t nombre_de_termes = 128;

constexpr long double puissance(long double base, int exposant) {
  long double produit = 1;
  for (int i = 0; i < exposant; ++i) produit *= base;
  return produit;
}

/// zeta(s), s >= 2, by the Euler-Maclaurin formula behind the first terms (L. Euler, 1736): with
/// N = 20 what is left out is below 10^-19.
constexpr long double zeta(int s) {
  constexpr int N = 20;
  long double somme = 0;
  for (int n = 1; n < N; ++n) somme += 1 / puissance(n, s);
  const long double derniere = 1 / puissance(N, s);
  somme += derniere * N / (s - 1) + derniere / 2;
  // B_2j / (2j)! for j = 1 .. 6, each times s (s + 1) ... (s + 2j - 2) N^(-s - 2j + 1).
  constexpr std::array<long double, 6> bernoulli{1.0L / 12,       -1.0L / 720,
                                                 1.0L / 30240,    -1.0L / 1209600,
                                                 1.0L / 47900160, -691.0L / 1307674368000};
  long double montant = s * derniere / N;
  for (std::size_t j = 0; j < bernoulli.size(); ++j) {
    somme += bernoulli[j] * montant;
    const int k = 2 * static_cast<int>(j) + 1;
    montant *= static_cast<long double>(s + k) * (s + k + 1) / (N * N);
  }
  return somme;
}

/// 1 / (k zeta(k + 1)) for k = 1, 2, ...
constexpr std::array<long double, nombre_de_termes> coefficients = [] {
  std::array<long double, nombre_de_termes> c{};
  for (std::size_t i = 0; i < c.size(); ++i) {
    const int k = static_cast<int>(i) + 1;
    c[i] = 1 / (k * zeta(k + 1));
  }
  return c;
}();

constexpr bool proche(long double a, long double b) { return a - b < 1e-17L && b - a < 1e-17L; }
// pi^2 / 6 and Apery's constant.
static_assert(proche(zeta(2), 1.644934066848226436472L));
static_assert(proche(zeta(3), 1.202056903159594285400L));

}  // namespace

long double riemann(long double x) {
  const long double l = std::log(x);
  long double somme = 1;
  long double montant = 1;  // l^k / k!
  for (std::size_t i = 0; i < coefficients.size(); ++i) {
    montant *= l / static_cast<long double>(i + 1);
    const long double terme = montant * coefficients[i];
    somme += terme;
    if (terme < somme * 1e-20L) break;
  }
  return somme;
}

std::int64_t inverse_de_riemann(std::int64_t n) {
  const auto rang = static_cast<long double>(n);
  const long double l = std::log(std::max(rang, 3.0L));
  const long double ll = std::log(l);
  long double x = std::max(rang * (l + ll - 1 + (ll - 2) / l), 2.0L);
  constexpr int tours_de_newton = 4;
  for (int tour = 0; tour < tours_de_newton; ++tour) {
    x = std::max(x - (riemann(x) - rang) * std::log(x), 2.0L);
  }
  constexpr long double plus_grand = 9.223372036854775807e18L;
  return x >= plus_grand ? INT64_MAX : static_cast<std::int64_t>(x);
}

double largeur_pour(double n, double v) {
  // The gaps are ln v in the mean; a few primes can lie much wider apart than that.
  constexpr double ecarts_de_plus = 4;
  return (n + ecarts_de_plus * (1 + std::sqrt(n))) * std::log(v);
}

}  // namespace premiers::rangs
