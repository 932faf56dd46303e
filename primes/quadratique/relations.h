// SPDX-License-Identifier: MIT
// Relations: what the quadratic sieve gathers.
//
// A relation says u^2 = product of primes of the base, times the square of a large prime or times
// one large prime, modulo n. Two relations with the same large prime multiply to one without
// (A. Lenstra and M. Manasse, 1994, tell how much that helps: more than half of what is gathered).
//
// Why it is fast: which primes divide Q(x) is read from the roots - p does if x mod p is one of
// its two - for eight or sixteen primes at once; only those are really divided by, and that by
// multiplication with the inverse modulo 2^64.
#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "primes/quadratique/division.h"
#include "primes/quadratique/polynome.h"

namespace premiers::quadratique {

struct Relation {
  Entier256 u;
  std::size_t debut, fin;  // its part of Recolte::facteurs
  std::uint32_t grand;     // the large prime, or 1
};

/// One column of the matrix: a relation without large prime (twice the same index), or two with
/// the same one.
using Colonne = std::pair<std::uint32_t, std::uint32_t>;

struct Recolte {
  Recolte(const Base& base, const Reglages& reglages);
  /// Looks at the value of the polynomial that was just sieved at that position, and keeps it if it
  /// is a relation.
  void examiner(Division& division, const Polynomes& polynomes, Candidat candidat);

  const Base& base;
  std::uint32_t borne_grand;  // large primes are below
  std::vector<Relation> relations;
  std::vector<std::uint32_t> facteurs;  // of all relations: indices into the base
  std::vector<Colonne> colonnes;
  std::vector<std::uint32_t> table;  // hashed by large prime: its first relation, plus 1
  std::size_t partielles = 0;        // entries of the table
};

/// Removes columns that say nothing, or the same as another one: different a can lead to the same
/// u.
void retirer_doubles(Recolte& recolte);

}  // namespace premiers::quadratique
