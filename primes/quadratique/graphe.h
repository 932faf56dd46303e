// SPDX-License-Identifier: MIT
// The graph of the large primes, and how many cycles it has.
//
// Each prime is a vertex, each relation an edge between its two large primes, and 1 is a vertex
// too: the end of a relation with one large prime, both ends of one without. In the product of the
// relations along a cycle every large prime occurs twice, so a cycle is worth a relation without
// any. There are edges + components - vertices independent ones, and the components are known at
// any moment, while edges come, by R. Tarjan's union of sets ("Efficiency of a good but not linear
// set union algorithm", 1975). So the sieve knows when it may stop (A. Lenstra and M. Manasse, 1994).
//
// Cost: some hundred nanoseconds for an edge (two or three cache misses); 8 bytes for a vertex,
// and 8 to 16 for its place in the table.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <vector>

namespace premiers::quadratique {

struct Graphe {
  Graphe();
  /// Adds an edge; p and q may be equal.
  void ajouter(std::uint32_t p, std::uint32_t q);
  /// How many independent cycles there are.
  std::size_t cycles() const { return aretes + composantes - premiers.size(); }
  /// The number of the vertex p, which is made if it is new: 1 has number 0, the others follow as
  /// they come.
  std::uint32_t numero(std::uint32_t p);

  std::size_t aretes = 0;
  std::size_t composantes = 0;
  std::deque<std::uint32_t> premiers;  // by number
  std::deque<std::uint32_t> parent;    // by number: towards the representative of its component
  std::vector<std::uint32_t> table;    // hashed by prime: number + 1, or 0
};

}  // namespace premiers::quadratique
