// SPDX-License-Identifier: MIT
// Buckets: the primes of the base that are longer than a block of the sieve array.
//
// Such a prime comes by a block rarely. To look into every block for it would cost more than its
// hits are worth; to add it where it hits, in an array of many blocks, would miss the first-level
// cache each time. So the hits are written down first, sorted by block, while the roots move from
// one polynomial to the next, and each block adds what stands in its bucket when its turn comes
// (K. Aoki and H. Ueda, "Sieving using bucket sort", 2004).
//
// A hit is one word: the position, and below it the number of the prime in its slice. A slice is a
// run of primes with the same weight, so the weight is not written. The number is what trial
// division reads later: the primes that divide at a position are those of its bucket with that
// position, which takes one pass of vector comparisons instead of a division per prime.
//
// Cost: at 85 digits about half a nanosecond for each prime that is moved, two for each hit.
// Memory: 4 bytes a hit, 1 MB at 95 digits. Limits: positions below 2^20.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "primes/arithmetique/processeur.h"
#include "primes/quadratique/polynome.h"

namespace premiers::quadratique {

/// Bytes of a block of the sieve array: a first-level cache.
inline constexpr std::uint32_t bits_bloc = 15;
inline constexpr std::uint32_t taille_bloc = std::uint32_t{1} << bits_bloc;

inline constexpr std::uint32_t bits_numero = 12;
inline constexpr std::size_t tranche_max = std::size_t{1} << bits_numero;
/// Positions are below.
inline constexpr std::uint32_t longueur_max = std::uint32_t{1} << (32 - bits_numero);

/// The roots of a slice, to be moved by one step each: up, or down.
struct Deplacement {
  std::uint32_t* racine_1;
  std::uint32_t* racine_2;
  const std::uint32_t* pas;  // below the primes
  const std::uint32_t* premier;
  std::size_t nombre;  // a multiple of largeur_vecteurs, at most tranche_max
  bool monter;
};

struct BouclesSeaux {
  /// Moves the roots, and lists all hits of all these primes below `longueur` <= longueur_max:
  /// position << bits_numero | number in the slice. Gives how many. `liste` has room for them all
  /// and 16 more.
  std::size_t (*verser)(const Deplacement& d, std::uint32_t longueur, std::uint32_t* liste);
  /// Appends `premier` + number for each of n hits at that position of any block.
  void (*chercher)(const std::uint32_t* touches, std::size_t n, std::uint32_t position,
                   std::uint32_t premier, std::vector<std::uint32_t>& liste);
};

Versions<BouclesSeaux> versions_des_seaux();

struct Seaux {
  /// For the primes from index `debut` (a multiple of largeur_vecteurs) on, and positions below
  /// `longueur`: a multiple of taille_bloc, or less than one block.
  Seaux(const Base& base, std::size_t debut, std::uint32_t longueur);
  /// Moves the roots of these primes, as Polynomes::suivant has left it to be done, and fills the
  /// buckets.
  void remplir(Polynomes& polynomes);
  /// Adds the weights of the primes that hit that block.
  void ajouter(std::size_t bloc, std::uint8_t* octets) const;
  /// Appends the indices of the primes that hit that position.
  void diviseurs(std::uint32_t position, std::vector<std::uint32_t>& liste) const;

  struct Tranche {
    std::size_t debut;
    std::size_t fin;
    std::uint8_t poids;
  };
  const Base& base;
  std::uint32_t longueur;
  std::size_t blocs;
  std::vector<Tranche> tranches;
  std::vector<std::vector<std::uint32_t>> seaux;  // [block]: hits, slice after slice
  std::vector<std::size_t> bornes;                // [slice * blocks + block]: where its hits begin
  std::vector<std::uint32_t> liste;               // scratch: the hits of one slice
};

}  // namespace premiers::quadratique
