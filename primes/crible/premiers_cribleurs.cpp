// SPDX-License-Identifier: MIT
// The bitmap of the first primes, and the nested sieve that follows on it.
#include "primes/crible/premiers_cribleurs.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "primes/arithmetique/roue.h"
#include "primes/crible/fenetres.h"

namespace premiers::crible {

namespace {

constexpr std::size_t taille_table = 65536 / 30 + 1;

/// Sieve of Eratosthenes on the wheel, plain, for the compiler.
constexpr std::array<std::uint8_t, taille_table> table = [] {
  std::array<std::uint8_t, taille_table> t{};
  for (auto& o : t) o = 0xFF;
  t[0] = 0xFE;
  for (std::size_t i = 1; i < 8 * 9; ++i) {
    if ((t[i / 8] >> (i % 8) & 1) == 0) continue;
    const std::size_t p = 30 * (i / 8) + residus[i % 8];
    for (std::size_t j = i; j < i + 8; ++j) {  // cofactors from p on, one for each residue
      const std::size_t m = p * (30 * (j / 8) + residus[j % 8]);
      const std::uint8_t masque = sans_drapeau(m);
      for (std::size_t o = m / 30; o < taille_table; o += p) {
        t[o] = static_cast<std::uint8_t>(t[o] & masque);
      }
    }
  }
  return t;
}();

static_assert(30 * 9 * 30 * 9 >= 30 * taille_table, "all primes up to the root are used");

// Bytes sieved ahead at most: half an L1 cache, 0.5 million integers.
constexpr std::uint64_t avance_max = std::uint64_t{1} << 14;

constexpr std::uint64_t octet_max = (std::uint64_t{1} << 32) / 30 + 1;

}  // namespace

PremiersCribleurs::PremiersCribleurs() = default;
PremiersCribleurs::~PremiersCribleurs() = default;

std::span<const std::uint8_t> PremiersCribleurs::suivants(std::uint64_t octet_fin) {
  if (octet >= octet_fin) return {};
  if (octet < taille_table) {
    const std::uint64_t n = std::min<std::uint64_t>(octet_fin, taille_table) - octet;
    const auto drapeaux = std::span{table}.subspan(octet, n);
    octet += n;
    return drapeaux;
  }
  if (fenetres == nullptr) {
    fenetres = std::make_unique<Fenetres>(30 * octet, 30 * octet_max - 1,
                                          ChoixDesFenetres{.taille = avance_max});
  }
  if (!fenetres->suivante_avant(octet_fin)) return {};
  octet += fenetres->octets().size();
  return fenetres->octets();
}

}  // namespace premiers::crible
