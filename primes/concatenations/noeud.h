// SPDX-License-Identifier: MIT
// A node of the tree of leading digits: what is known of some digits, and of the ten numbers that have one
// more.
#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include "primes/concatenations/chiffres.h"
#include "primes/concatenations/tailles.h"
#include "primes/crible/decades.h"

namespace premiers::concatenations {

template <typename Taille>
struct Noeud {
  using Compte = typename Taille::Compte;

  struct Coupure {
    Compte chemins;                  ///< how many ways lead to it
    typename Taille::Valeur valeur;  ///< the digits after it
    std::size_t place;               ///< the number of digits before it
  };

  /// One of the beginnings of these digits is prime.
  bool entame = false;
  /// The cuts reached by a way, the first one always; all while a report may need them.
  std::vector<Coupure> coupures;

  // The ten children.
  Chiffres premiers = 0;  ///< which are prime
  std::array<Compte, 10> chemins{};
  /// The pieces that end with their last digit; while a report may ask.
  std::array<Coupures<Taille>, 10> morceaux{};

  bool premier(std::size_t d) const { return (premiers >> d & 1) != 0; }
};

}  // namespace premiers::concatenations
