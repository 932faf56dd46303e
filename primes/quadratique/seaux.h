// SPDX-License-Identifier: MIT
// Buckets: the primes of the base that are longer than the sieve array.
//
// Such a prime hits few polynomials, and moving its two roots from one to the next is all the work
// that it makes. That work waits for memory when the whole base is gone through for each
// polynomial. So `lot` polynomials are prepared at once: a stretch of the base that fits the
// first-level cache makes all its moves, and what it hits is written down in one bucket for each
// polynomial. When a polynomial is sieved, its bucket is added to the array.
//
// That moving is cheap is worth more than it seems: the array can be as short as the first-level
// cache, and short arrays have small values, half of which more are smooth than in one that is six
// times as long (T. Kleinjung, "Quadratic sieving", Mathematics of Computation 85, 2016, drives
// this further).
//
// A hit is one word: the position, and the number of the prime in its slice. A slice is a run of
// primes with the same weight, so the weight is not written. The number is what trial division
// reads: the primes that divide at a position are those of its bucket with that position.
//
// Cost: 0.15 ns for each prime and polynomial, one for each hit. Memory: 64 bytes for each prime,
// most of which are never touched. Limits: positions below 2^16.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "primes/arithmetique/processeur.h"
#include "primes/quadratique/polynome.h"

namespace premiers::quadratique {

inline constexpr std::uint32_t bits_numero = 16;
inline constexpr std::size_t tranche_max = std::size_t{1} << bits_numero;
inline constexpr std::uint32_t longueur_max = std::uint32_t{1} << (32 - bits_numero);

/// Roots to be moved by one step each, up or down.
struct Deplacement {
  std::uint32_t* racine_1;
  std::uint32_t* racine_2;
  const std::uint32_t* pas;  // below the primes
  const std::uint32_t* premier;
  std::size_t nombre;    // a multiple of largeur_vecteurs
  std::uint32_t numero;  // of the first one in its slice
  bool monter;
};

struct BouclesSeaux {
  /// Moves the roots, and lists those that are below `longueur` < longueur_max:
  /// root << bits_numero | number in the slice. Gives how many. `liste` has room for all roots and
  /// 16 more.
  std::size_t (*verser)(Deplacement d, std::uint32_t longueur, std::uint32_t* liste);
  /// Appends `debut` + number for each of n hits at that position.
  void (*chercher)(const std::uint32_t* touches, std::size_t n, std::uint32_t position,
                   std::uint32_t debut, std::vector<std::uint32_t>& liste);
};

Versions<BouclesSeaux> versions_des_seaux();

struct Seaux {
  /// For the primes from index `debut` (a multiple of largeur_vecteurs) on, and positions below
  /// `longueur`, which is not above these primes.
  Seaux(const Base& base, std::size_t debut, std::uint32_t longueur);
  /// Moves the roots of these primes along the polynomials from the current one to the last one
  /// before the next multiple of `lot`, and fills their buckets. To be called for each polynomial
  /// whose rank in its family is a multiple of `lot`.
  void remplir(Polynomes& polynomes);
  /// Adds the weights of the primes where they hit the polynomial of that rank.
  void ajouter(std::size_t rang, std::uint8_t* octets) const;
  /// Appends the indices of the primes that hit that position of the polynomial of that rank.
  void diviseurs(std::size_t rang, std::uint32_t position, std::vector<std::uint32_t>& liste) const;

  /// Polynomials at once. Fewer wait for memory, more have no room in the second-level cache: 4 to
  /// 16.
  static constexpr std::size_t lot = 8;

  struct Tranche {
    std::size_t debut;
    std::size_t fin;
    std::uint8_t poids;
  };
  const Base& base;
  std::uint32_t longueur;
  std::size_t capacite;  // of a bucket
  std::vector<Tranche> tranches;
  Tableau<std::uint32_t> touches;   // bucket after bucket, in each slice after slice
  std::vector<std::size_t> bornes;  // [slice * lot + bucket]: where its hits begin
};

}  // namespace premiers::quadratique
