// SPDX-License-Identifier: MIT
// The crossing-off loops of the small primes, one instance for each residue mod 30.
#include "primes/crible/crible_petit.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "primes/arithmetique/roue.h"
#include "primes/crible/precrible.h"

namespace premiers::crible {

namespace {

// Bytes sieved at a time. Should fit into the L1 data cache (32 KB on nearly all processors of the
// last twenty years); half or twice as much costs some 10 %.
constexpr std::size_t taille_bloc = std::size_t{1} << 15;

// The larger small primes are worked off in so many bytes at a time, which stay in the L2 cache. On
// 1 MB of L2 half or twice as much costs one percent.
constexpr std::size_t taille_tranche = std::size_t{1} << 18;

// Primes up to here are worked off block by block, the others in the whole slice: the setup for
// each block outweighs the better cache at last. At most taille_bloc; 2^13 costs 6 % below 2^32.
constexpr std::uint32_t dernier_par_bloc = 1u << 15;

using Listes = CriblePetit::Listes;
using Cribleur = CriblePetit::Cribleur;
using Indices = std::make_index_sequence<8>;

/// Crosses off the period at `octets`, all of which is inside the stretch.
template <std::size_t R, std::size_t... C>
inline void rayer_periode(std::uint8_t* octets, std::size_t k, std::index_sequence<C...>) {
  ((octets[k * residus[C] + Croix<R, C>::decalage] &= Croix<R, C>::masque), ...);
}

/// Crosses off those multiples of the period at byte `debut` that lie within [0, taille); the
/// others go to a byte that nobody reads.
template <std::size_t R, std::size_t... C>
inline void rayer_coupee(std::uint8_t* octets, std::int64_t debut, std::uint64_t taille,
                         std::int64_t k, std::index_sequence<C...>) {
  std::uint8_t rebut = 0;
  const auto rayer = [&](std::int64_t place, std::uint8_t masque) {
    const auto o = static_cast<std::uint64_t>(place);  // negative becomes large
    std::uint8_t& octet = *(o < taille ? octets + o : &rebut);
    octet &= masque;
  };
  (rayer(debut + k * residus[C] + Croix<R, C>::decalage, Croix<R, C>::masque), ...);
}

/// The periods that start before the stretch, in its first part.
template <std::size_t R>
void entamer(std::vector<Cribleur>& liste, std::span<std::uint8_t> octets) {
  const auto taille = static_cast<std::int64_t>(octets.size());
  for (Cribleur& c : liste) {
    if (c.debut >= 0) continue;
    rayer_coupee<R>(octets.data(), c.debut, octets.size(), c.k, Indices{});
    const std::int64_t p = 30 * std::int64_t{c.k} + residus[R];
    if (c.debut + p <= taille) c.debut += static_cast<std::int32_t>(p);
  }
}

/// The whole periods up to byte `fin` of the stretch.
template <std::size_t R>
void avancer(std::vector<Cribleur>& liste, std::uint8_t* octets, std::size_t fin) {
  for (Cribleur& c : liste) {
    if (c.debut < 0) continue;
    const std::size_t k = c.k;
    const std::size_t p = 30 * k + residus[R];
    auto debut = static_cast<std::size_t>(c.debut);
    for (; debut + p <= fin; debut += p) rayer_periode<R>(octets + debut, k, Indices{});
    c.debut = static_cast<std::int32_t>(debut);
  }
}

/// The periods that the end of the stretch cuts through.
template <std::size_t R>
void finir(std::vector<Cribleur>& liste, std::span<std::uint8_t> octets) {
  const auto taille = static_cast<std::int32_t>(octets.size());
  for (Cribleur& c : liste) {
    if (c.debut >= 0 && c.debut < taille) {
      rayer_coupee<R>(octets.data(), c.debut, octets.size(), c.k, Indices{});
    }
    c.debut -= taille;
  }
}

/// Bytes [debut, fin) of the stretch; the parts come in order, none shorter than a prime but where
/// it is the last.
template <std::size_t R>
void rayer_partie(std::vector<Cribleur>& liste, std::span<std::uint8_t> octets, std::size_t debut,
                  std::size_t fin) {
  if (debut == 0) entamer<R>(liste, octets.first(fin));
  avancer<R>(liste, octets.data(), fin);
  if (fin == octets.size()) finir<R>(liste, octets);
}

/// The same for all residues.
void rayer_partie(Listes& listes, std::span<std::uint8_t> octets, std::size_t debut,
                  std::size_t fin) {
  [&]<std::size_t... R>(std::index_sequence<R...>) {
    (rayer_partie<R>(listes[R], octets, debut, fin), ...);
  }
  (Indices{});
}

}  // namespace

void CriblePetit::ajouter(std::uint32_t p, std::uint64_t octet) {
  // Periods start at the bytes p j; the first of interest contains p * p or byte `octet`.
  const std::uint64_t j = std::max<std::uint64_t>(p / 30, octet / p);
  const auto debut = static_cast<std::int64_t>(p * j - octet);
  Listes& listes = p <= dernier_par_bloc ? par_bloc_ : par_tranche_;
  listes[indice_suivant[p % 30]].push_back({p / 30, static_cast<std::int32_t>(debut)});
}

void CriblePetit::cribler(std::span<std::uint8_t> octets, std::uint64_t octet) {
  for (std::size_t tranche = 0; tranche < octets.size(); tranche += taille_tranche) {
    const std::size_t fin_tranche = std::min(tranche + taille_tranche, octets.size());
    for (std::size_t bloc = tranche; bloc < fin_tranche; bloc += taille_bloc) {
      const std::size_t fin = std::min(bloc + taille_bloc, fin_tranche);
      precribler(octets.subspan(bloc, fin - bloc), octet + bloc);
      rayer_partie(par_bloc_, octets, bloc, fin);
    }
    rayer_partie(par_tranche_, octets, tranche, fin_tranche);
  }
}

}  // namespace premiers::crible
