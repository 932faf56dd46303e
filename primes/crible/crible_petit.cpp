// SPDX-License-Identifier: MIT
// The crossing-off loops of the small primes, one instance for each residue mod 30.
#include "primes/crible/crible_petit.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "primes/arithmetique/roue.h"
#include "primes/crible/precrible.h"

namespace premiers {

namespace {

// Bytes sieved at a time. Should fit into the L1 data cache (32 KB on nearly all processors of the
// last twenty years); half or twice as much costs some 10 %.
constexpr std::size_t taille_bloc = std::size_t{1} << 15;

// Primes up to here are worked off block by block, the others in the whole segment: the setup for
// each block outweighs the better cache at last. At most taille_bloc; 2^13 costs 6 % below 2^32.
constexpr std::uint32_t dernier_par_bloc = 1u << 15;

using Listes = CriblePetit::Listes;
using Cribleur = CriblePetit::Cribleur;
using Indices = std::make_index_sequence<8>;

/// Crosses off the period at `octets`, all of which is inside the segment.
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

/// The periods that start before the segment.
template <std::size_t R>
void entamer(std::vector<Cribleur>& liste, std::span<std::uint8_t> segment) {
  const auto taille = static_cast<std::int64_t>(segment.size());
  for (Cribleur& c : liste) {
    if (c.debut >= 0) continue;
    rayer_coupee<R>(segment.data(), c.debut, segment.size(), c.k, Indices{});
    const std::int64_t p = 30 * std::int64_t{c.k} + residus[R];
    if (c.debut + p <= taille) c.debut += static_cast<std::int32_t>(p);
  }
}

/// The whole periods up to byte `fin` of the segment.
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

/// The periods that the end of the segment cuts through.
template <std::size_t R>
void finir(std::vector<Cribleur>& liste, std::span<std::uint8_t> segment) {
  const auto taille = static_cast<std::int32_t>(segment.size());
  for (Cribleur& c : liste) {
    if (c.debut >= 0 && c.debut < taille) {
      rayer_coupee<R>(segment.data(), c.debut, segment.size(), c.k, Indices{});
    }
    c.debut -= taille;
  }
}

/// Calls f.operator()<R>(listes[R]) for all eight residues.
template <class F>
void pour_chaque_residu(CriblePetit::Listes& listes, F&& f) {
  [&]<std::size_t... R>(std::index_sequence<R...>) { (f.template operator()<R>(listes[R]), ...); }
  (Indices{});
}

}  // namespace

void CriblePetit::ajouter(std::uint32_t p, std::uint64_t octet) {
  // Periods start at the bytes p j; the first of interest contains p * p or byte `octet`.
  const std::uint64_t j = std::max<std::uint64_t>(p / 30, octet / p);
  const auto debut = static_cast<std::int64_t>(p * j - octet);
  Listes& listes = p <= dernier_par_bloc ? par_bloc : par_segment;
  listes[indice_suivant[p % 30]].push_back({p / 30, static_cast<std::int32_t>(debut)});
}

void CriblePetit::cribler(std::span<std::uint8_t> segment, std::uint64_t octet) {
  const auto tout_entamer = [&](Listes& listes, std::size_t fin) {
    pour_chaque_residu(listes,
                       [&]<std::size_t R>(auto& liste) { entamer<R>(liste, segment.first(fin)); });
  };
  const auto tout_avancer = [&](Listes& listes, std::size_t fin) {
    pour_chaque_residu(listes,
                       [&]<std::size_t R>(auto& liste) { avancer<R>(liste, segment.data(), fin); });
  };
  const auto tout_finir = [&](Listes& listes) {
    pour_chaque_residu(listes, [&]<std::size_t R>(auto& liste) { finir<R>(liste, segment); });
  };
  for (std::size_t debut = 0; debut < segment.size(); debut += taille_bloc) {
    const std::size_t fin = std::min(debut + taille_bloc, segment.size());
    precribler(segment.subspan(debut, fin - debut), octet + debut);
    if (debut == 0) tout_entamer(par_bloc, fin);
    tout_avancer(par_bloc, fin);
  }
  tout_finir(par_bloc);
  tout_entamer(par_segment, segment.size());
  tout_avancer(par_segment, segment.size());
  tout_finir(par_segment);
}

}  // namespace premiers
