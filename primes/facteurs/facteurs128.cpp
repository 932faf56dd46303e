// SPDX-License-Identifier: MIT
// Which arithmetic, and which bounds, ECM uses for an n of a given size:
//
//  - where the processor has AVX-512 IFMA, eight curves at once in limbs of 52 bits
//    (ecm_avx512.cpp);
//  - else one curve, or two side by side, in scalar Montgomery arithmetic of one or two words, lazy
//    about ranges (montgomery_souple.h) where n leaves four bits free.
//
// The bounds suit the worst case, n being a product of two primes of equal size.
#include "primes/facteurs/facteurs128.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

#include "primes/arithmetique/montgomery.h"
#include "primes/arithmetique/montgomery128.h"
#include "primes/arithmetique/montgomery_souple.h"
#include "primes/arithmetique/racines.h"
#include "primes/facteurs/ecm_avx512.h"
#include "primes/facteurs/ecm_chaines.h"
#include "primes/facteurs/ecm_paires.h"
#include "primes/facteurs/ecm_seconde.h"
#include "primes/facteurs/ecm_voies.h"

namespace premiers::facteurs {
namespace {

/// The bounds B1 and B2 for n of at most so many bits. Found by trying all pairs of a grid on
/// random products of two primes of equal size; a fifth more or less costs a few percent.
struct Bornes {
  int bits;
  std::size_t b1, b2;
};
constexpr std::array<Bornes, 11> bornes_scalaires{{{40, 30, 1200},
                                                   {46, 50, 2500},
                                                   {52, 80, 4000},
                                                   {58, 120, 7000},
                                                   {64, 200, 12000},
                                                   {72, 240, 11000},
                                                   {80, 400, 18000},
                                                   {88, 600, 27000},
                                                   {96, 1000, 45000},
                                                   {106, 1500, 60000},
                                                   {128, 2000, 80000}}};
#if defined(__x86_64__)
constexpr std::array<Bornes, 11> bornes_avx512{{{40, 20, 500},
                                                {46, 32, 1000},
                                                {50, 40, 1300},
                                                {54, 55, 1900},
                                                {60, 85, 3600},
                                                {66, 130, 5800},
                                                {74, 220, 10000},
                                                {84, 400, 18000},
                                                {92, 700, 31000},
                                                {102, 900, 42000},
                                                {128, 2000, 60000}}};
#endif

/// Are there chains and pairs for all bounds of a table?
template <std::size_t taille>
constexpr bool a_portee(const std::array<Bornes, taille>& table) {
  return std::all_of(table.begin(), table.end(), [](const Bornes& b) {
    return b.b1 <= ecm::b1_court && b.b2 <= ecm::paires_longues.portee;
  });
}
static_assert(a_portee(bornes_scalaires));
#if defined(__x86_64__)
static_assert(a_portee(bornes_avx512));
#endif

template <std::size_t taille>
const Bornes& choisir(const std::array<Bornes, taille>& table, int bits) {
  return *std::find_if(table.begin(), table.end() - 1,
                       [bits](const Bornes& b) { return bits <= b.bits; });
}

/// Calls essayer(n, sigma, bornes) for curve after curve, `voies` at a time. The first ones get the
/// bounds of a smaller n, because most n that are met have one factor that is small.
template <std::size_t voies, std::size_t taille, class Essayer>
std::optional<Entier128> parcourir(Entier128 n, unsigned courbes,
                                   const std::array<Bornes, taille>& table, Essayer essayer) {
  const Bornes& bornes = choisir(table, bits(n));
  const Bornes& initiales = choisir(table, bits(n) * 4 / 5);
  for (unsigned i = 0; i < courbes; i += voies) {
    std::array<std::uint64_t, voies> sigma;
    for (unsigned j = 0; j < voies; ++j) sigma[j] = ecm::sigma_minimal + i + j;
    const Entier128 f = essayer(n, sigma, i == 0 ? initiales : bornes);
    if (f != 1) return f;
  }
  return std::nullopt;
}

template <class M, std::size_t voies>
Entier128 essayer_voies(Entier128 n, const std::array<std::uint64_t, voies>& sigma,
                        const Bornes& b) {
  const ecm::Voies<M, voies> a{M{static_cast<typename M::Entier>(n)}};
  return ecm::essayer(a, sigma, b.b1, b.b2);
}

/// One curve, or two side by side, whichever is faster for this size.
template <class M, std::size_t voies>
std::optional<Entier128> facteur_scalaire(Entier128 n, unsigned courbes) {
  return parcourir<voies>(n, courbes, bornes_scalaires, essayer_voies<M, voies>);
}

std::optional<Entier128> facteur_ecm_portable(Entier128 n, unsigned courbes) {
  using Souple64 = MontgomerySouple<Montgomery64>;
  using Souple128 = MontgomerySouple<Montgomery128>;
  const int taille = bits(n);
  if (taille <= Souple64::bits_maximum) return facteur_scalaire<Souple64, 1>(n, courbes);
  if (taille <= 64) return facteur_scalaire<Montgomery64, 2>(n, courbes);
  if (taille <= Souple128::bits_maximum) return facteur_scalaire<Souple128, 2>(n, courbes);
  return facteur_scalaire<Montgomery128, 2>(n, courbes);
}

#if defined(__x86_64__)

std::optional<Entier128> facteur_ecm_avx512(Entier128 n, unsigned courbes) {
  if (bits(n) > ecm::bits_maximum_avx512) return facteur_ecm_portable(n, courbes);
  const auto huit = [](Entier128 m, const std::array<std::uint64_t, 8>& sigma, const Bornes& b) {
    return ecm::essayer_huit(m, sigma, b.b1, b.b2);
  };
  return parcourir<ecm::voies_avx512>(n, courbes, bornes_avx512, huit);
}

#endif

constexpr Version<decltype(&facteur_ecm)> versions[] = {
#if defined(__x86_64__)
    {ecm::besoin_avx512, facteur_ecm_avx512},
#endif
    {instructions::aucune, facteur_ecm_portable},
};

}  // namespace

Versions<decltype(&facteur_ecm)> versions_de_facteur_ecm() { return versions; }

bool facteur_ecm_a_huit() {
  static const bool huit = choisir(versions_de_facteur_ecm()).besoin != instructions::aucune;
  return huit;
}

std::optional<Entier128> facteur_ecm(Entier128 n, unsigned courbes) {
  static const auto boucle = choisir(versions_de_facteur_ecm()).boucle;
  return boucle(n, courbes);
}

}  // namespace premiers::facteurs
