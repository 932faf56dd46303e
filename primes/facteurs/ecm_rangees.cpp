// SPDX-License-Identifier: MIT
// The rows are filled by the sieve.
#include "primes/facteurs/ecm_rangees.h"

#include <cassert>
#include <numeric>

#include "primes/crible/premiers_jusqu_a.h"

namespace premiers::facteurs::ecm {
namespace {

constexpr std::size_t D = Rangees::pas_de_geant;

constexpr auto table_residus = [] {
  std::array<std::uint16_t, Rangees::bebes> t{};
  std::size_t n = 0;
  for (std::size_t j = 1; j < D / 2; ++j) {
    if (std::gcd(j, D) == 1) t[n++] = static_cast<std::uint16_t>(j);
  }
  return t;
}();
static_assert(table_residus.back() == D / 2 - 2);

/// indice[j]: the place of j among them.
constexpr auto indice = [] {
  std::array<std::uint8_t, D / 2> t{};
  for (std::size_t i = 0; i < table_residus.size(); ++i) {
    t[table_residus[i]] = static_cast<std::uint8_t>(i);
  }
  return t;
}();

}  // namespace

const std::array<std::uint16_t, Rangees::bebes>& Rangees::residus() { return table_residus; }

Rangees::Rangees(std::uint64_t b1, std::uint64_t b2, const Suivi& suivi)
    : k0{(b1 + 1 + D / 2) / D} {
  assert(D / 2 <= b1 && b1 < b2);
  bits.resize((b2 + D / 2) / D + 1 - k0);
  crible::pour_les_premiers(b1 + 1, b2, suivi, [this](std::uint64_t q) {
    const std::uint64_t k = (q + D / 2) / D;
    const std::size_t i = indice[q > k * D ? q - k * D : k * D - q];
    bits[k - k0][i / 64] |= std::uint64_t{1} << (i % 64);
  });
}

}  // namespace premiers::facteurs::ecm
