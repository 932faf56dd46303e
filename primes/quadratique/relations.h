// SPDX-License-Identifier: MIT
// Relations: what the quadratic sieve gathers.
//
// A relation says u^2 = product of primes of the base, times two large primes of which one or both
// may be 1, modulo kn. It is worth something when its large primes are met again (graphe.h).
//
// A relation takes 48 bytes here, and its factors stand in a tight list; what holds them grows
// without being copied, or half as much again would be lost in gaps. With the graph and the tables, a
// million relations take 130 MB. Different coefficients a that share all primes but one lead to the
// same u now and then; a relation that is there already is not taken again, or it would count as a
// cycle that says u^2 = u^2.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <vector>

#include "primes/quadratique/division.h"
#include "primes/quadratique/graphe.h"
#include "primes/quadratique/listes_serrees.h"
#include "primes/quadratique/scission.h"

namespace premiers::quadratique {

struct Relation {
  Entier256 u;
  std::uint32_t place;   // of its factors, indices into the base, in Recolte::facteurs
  std::uint32_t nombre;  // of factors
  GrandsPremiers grands;
};

struct Recolte {
  explicit Recolte(const Base& base);
  /// Adds a relation, u^2 = the primes of the value, and the large ones; false if it is known. Puts
  /// the factors into order.
  bool ajouter(Valeur& valeur, GrandsPremiers grands);
  /// How many independent products without large prime can be made.
  std::size_t cycles() const { return graphe.cycles(); }
  /// Makes the graph and the table anew, after relations have been taken out, or after `alleger`.
  void recompter();
  /// Gives back the graph and the table, which only gathering needs.
  void alleger();

  const Base& base;
  std::deque<Relation> relations;
  std::size_t pleines = 0;  // relations without large prime
  std::size_t doubles = 0;  // with two
  ListesSerrees facteurs;   // of all relations
  Graphe graphe;
  std::vector<std::uint32_t> table;  // hashed by u: index + 1, or 0
};

}  // namespace premiers::quadratique
