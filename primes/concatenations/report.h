// SPDX-License-Identifier: MIT
// The start entry that a search for any numbers carries over from one number to the next.
//
// The plain search keeps the positions at which prime pieces start in r0[1], r0[2] ..., increasing,
// and leaves r0[1] alone until it finds one; it gives a number up after the pieces at its first
// digit only if r0[1] is then 0. So a number none of whose beginnings is prime
// - has no way if the number examined before it left r0[1] = 0;
// - else has all its pieces scanned, and its first start s > 1, if any, goes to r0[1]; 0 if none.
// The enumeration then takes the pieces at s for first pieces, as if they began at the first digit:
// one of length l is believed to cover the digits 1 .. l. It goes on with a start at l + 1 among
// r0[2] ..., which are all greater than s: the entry s is used up. Hence l + 1 > s, that is l >= s,
// or l + 1 is no start; l itself is less than the number of digits, so no way ends there. With
// W[m] = the ways believed to cover m digits, for m >= s,
//   W[m] = [m >= s and the piece of length m at s is prime] + sum of W[j], s <= j < m, over the
//          prime pieces of the digits j + 1 .. m,
// and the number of ways is W[n].
//
// Cost: one addition for each prime piece of the number, and for most of ten numbers that differ in
// the last digit only, one for each prime piece that ends with it.
#pragma once

#include <array>
#include <cstddef>

#include "primes/concatenations/tailles.h"

namespace premiers::concatenations {

/// The entry, and the pieces of the number in hand: those that end with its m-th digit are told
/// when that digit is set, as the set of the cuts where they begin.
template <typename Taille>
struct Report {
  using Compte = typename Taille::Compte;
  using Morceaux = Coupures<Taille>;

  /// The m-th digit, m >= 1, is set, and ends these prime pieces.
  void fixer(std::size_t m, const Morceaux& morceaux);

  /// Another ten numbers of n digits follow: all digits but the last are set.
  void commencer_dizaine(std::size_t n);

  /// The ways of a number none of whose beginnings is prime, when an entry is carried over;
  /// `derniers` are its prime pieces that end with the last digit. `entree` becomes false if the
  /// number leaves no entry. In the words above, s = depart + 1.
  Compte chemins(const Morceaux& derniers, bool& entree);

 private:
  void couvrir(std::size_t depart);

  static constexpr std::size_t places = Taille::chiffres_max + 1;

  std::size_t n_ = 0;
  std::array<Morceaux, places> morceaux_{};
  /// The first cut where a prime piece among the first m digits begins.
  std::array<std::size_t, places> departs_au_plus_tot_{Morceaux::aucun};
  std::array<Compte, places> couverts_{};
  bool couverts_communs_ = false;  // couverts_ is right for those of the ten that add no start
};

}  // namespace premiers::concatenations
