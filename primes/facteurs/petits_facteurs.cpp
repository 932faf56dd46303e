// SPDX-License-Identifier: MIT
// The products are put together by the compiler; then one walk for each (petits_facteurs.h).
#include "primes/facteurs/petits_facteurs.h"

#include <array>
#include <cstddef>

#include "primes/arithmetique/gmp_zz.h"
#include "primes/facteurs/petits_diviseurs.h"

namespace premiers::facteurs {
namespace {

constexpr std::size_t nombre_diviseurs = 303;  // the odd primes below the bound
constexpr auto diviseurs = table_diviseurs<nombre_diviseurs>();
static_assert(diviseurs.back().p < borne_petits_facteurs);
static_assert(table_diviseurs<nombre_diviseurs + 1>().back().p == borne_petits_facteurs);

/// diviseurs[debut] ... diviseurs[fin - 1] and their product, which fits a word.
struct Lot {
  std::uint64_t produit;
  std::size_t debut, fin;
};

constexpr bool tient(std::uint64_t produit, std::uint64_t p) {
  return produit <= ~std::uint64_t{0} / p;
}

constexpr std::size_t nombre_lots = [] {
  std::size_t lots = 1;
  std::uint64_t produit = 1;
  for (const auto& d : diviseurs) {
    if (!tient(produit, d.p)) {
      ++lots;
      produit = 1;
    }
    produit *= d.p;
  }
  return lots;
}();

constexpr auto lots = [] {
  std::array<Lot, nombre_lots> table{};
  std::size_t i = 0;
  for (auto& lot : table) {
    lot = {1, i, i};
    while (i < diviseurs.size() && tient(lot.produit, diviseurs[i].p))
      lot.produit *= diviseurs[i++].p;
    lot.fin = i;
  }
  return table;
}();
static_assert(lots.back().fin == nombre_diviseurs);

/// How often p divides n, which is divided by it so often.
std::int64_t retirer(NTL::ZZ& n, std::uint64_t p) {
  std::int64_t exposant = 0;
  while (NTL::divide(n, n, static_cast<long>(p)) != 0) ++exposant;
  return exposant;
}

}  // namespace

std::vector<Facteur64> retirer_petits_facteurs(NTL::ZZ& n) {
  std::vector<Facteur64> trouves;
  const long deux = NTL::MakeOdd(n);
  if (deux > 0) trouves.push_back({2, deux});
  for (const Lot& lot : lots) {
    const std::uint64_t reste = mpn_mod_1(NTL::ZZ_limbs_get(n), n.size(), lot.produit);
    for (std::size_t i = lot.debut; i < lot.fin; ++i) {
      const std::uint64_t p = diviseurs[i].p;
      if (diviseurs[i].divise(reste)) trouves.push_back({p, retirer(n, p)});
    }
  }
  return trouves;
}

}  // namespace premiers::facteurs
