// SPDX-License-Identifier: MIT
// phi(x, 7) is periodic up to a linear part: with P = 2 * 3 * 5 * 7 * 11 * 13 * 17 = 510510,
//     phi(x, 7) = floor(x / P) * phi(P, 7) + phi(x mod P, 7),
// and the last term comes from flags and counts by 240 integers as in TablePi, small enough for the
// first-level cache or nearly. One step of Legendre's recursion leads to the eighth prime:
//     phi(x, 8) = phi(x, 7) - phi(x / 19, 7).
#include "primes/compte/phi.h"

#include <bit>
#include <cstddef>
#include <vector>

namespace premiers::compte {

namespace {

constexpr std::uint64_t periode = 510510;
constexpr std::uint64_t par_periode = 1 * 2 * 4 * 6 * 10 * 12 * 16;

struct TablePhi {
  std::vector<std::uint64_t> drapeaux;
  std::vector<std::uint64_t> avant;  // flags set in the words before
};

TablePhi table_phi() {
  constexpr std::size_t nombre = periode / 240 + 1;
  TablePhi table{std::vector<std::uint64_t>(nombre, ~std::uint64_t{0}), {}};
  for (const std::uint32_t p : {7u, 11u, 13u, 17u}) effacer_multiples(table.drapeaux, p);
  std::uint64_t total = 0;
  for (const std::uint64_t mot : table.drapeaux) {
    table.avant.push_back(total);
    total += static_cast<std::uint64_t>(std::popcount(mot));
  }
  return table;
}

std::uint64_t phi_7(const TablePhi& table, std::uint64_t x) {
  const auto reste = static_cast<std::uint32_t>(x % periode);
  return x / periode * par_periode + table.avant[reste / 240] +
         compter_jusqu_a(table.drapeaux[reste / 240], reste % 240);
}

// The leaves n * m for the m > 1 made of primes from rank `rang` on, n being mu-signed.
std::uint64_t feuilles(const Plan& plan, std::uint64_t rang, std::uint64_t n, std::uint64_t signe) {
  std::uint64_t somme = 0;
  for (; rang <= plan.nombre() && n * plan.premiers[rang] <= plan.z; ++rang) {
    const std::uint64_t m = n * plan.premiers[rang];
    somme -= signe * phi_8(plan.x / m);
    if (m * plan.premiers[rang] < plan.z) somme += feuilles(plan, rang + 1, m, -signe);
  }
  return somme;
}

}  // namespace

std::uint64_t phi_8(std::uint64_t x) {
  static const TablePhi table = table_phi();
  return phi_7(table, x) - phi_7(table, x / 19);
}

std::uint64_t feuilles_ordinaires(const Plan& plan) {
  return phi_8(plan.x) + feuilles(plan, rang_phi + 1, 1, 1);
}

}  // namespace premiers::compte
