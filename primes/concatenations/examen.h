// SPDX-License-Identifier: MIT
// The ends of the tree: ten numbers that differ in their last digit are examined, each is kept or not,
// and who listens is told. There are three ways to keep a number, as the plain search knows them:
//
// - primes are sought: only primes are examined, and kept if there is another way than the number itself;
// - numbers are sought, and one of their beginnings is prime: each is kept if there is a way;
// - numbers are sought, and no beginning is prime: the number itself may be, or the start entry that is
//   carried over from the number before leads to ways (report.h).
#pragma once

#include <cstddef>
#include <string>

#include "primes/concatenations/commun.h"
#include "primes/concatenations/noeud.h"
#include "primes/concatenations/report.h"

namespace premiers::concatenations {

template <typename Taille>
struct Examen {
  explicit Examen(Commun& commun) : commun_(commun) {}

  /// The digits after the first m are no longer those of the number before.
  void changer(std::size_t m) { communs_ = communs_ < m ? communs_ : m; }

  /// For the third way: the m-th digit, m >= 1, is set, and ends these prime pieces.
  void fixer(std::size_t m, const Coupures<Taille>& morceaux) { report_.fixer(m, morceaux); }

  /// Examines the numbers of `chiffres` that end in the digits de .. a instead of the last; leaves the
  /// ways of those that are kept in the node of their other digits, 0 for all others.
  void examiner(Noeud<Taille>& noeud, std::string& chiffres, std::size_t de, std::size_t a);

 private:
  void garder_premiers(Noeud<Taille>& noeud, std::string& chiffres, std::size_t de, std::size_t a);
  void garder_entames(std::string& chiffres, std::size_t de, std::size_t a);
  void garder_non_entames(Noeud<Taille>& noeud, std::string& chiffres, std::size_t de,
                          std::size_t a);
  void dire(std::string& chiffres, std::size_t d, Morceaux morceaux);

  Commun& commun_;
  Report<Taille> report_;
  std::size_t communs_ = 0;  // the digits shared with the last number that was told
};

}  // namespace premiers::concatenations
