// SPDX-License-Identifier: MIT
// The numbers of a range whose digits can be cut into consecutive primes, each with its number of
// ways. The method and its costs are told in parcours.h, the start entry that a search carries from
// one number to the next in report.h.
#pragma once

#include <NTL/ZZ.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string_view>

#include "primes/dette.h"
#include "primes/suivi/suivi.h"

namespace premiers {

struct Recherche {
  NTL::ZZ debut;  ///< 1 <= debut <= fin, both included,
  NTL::ZZ fin;    ///< of at most `chiffres_max` digits (else std::invalid_argument)
  /// Keep only the primes that have two ways at least; otherwise every number that has one.
  bool premiers_seuls;

  static constexpr std::size_t chiffres_max = 256;
};

/// Hears the numbers kept, ten at a time and in order: effectifs[d] is the number of ways of the
/// number with the digits `tete` and then d; 0 if it is not kept. Either function may be empty.
struct Gardes {
  /// Numbers of so few digits that their ways fit into 64 bits.
  std::function<void(std::string_view tete, std::span<const std::uint64_t, 10> effectifs)> petits;
  std::function<void(std::string_view tete, std::span<const NTL::ZZ, 10> effectifs)> grands;
};

/// Searches the range; gives how many numbers are kept. Notes what dividing each of its numbers,
/// and the pieces of each that is examined, obliges the table of primes to.
std::uint64_t chercher_concatenations(const Recherche& recherche, const Gardes& gardes,
                                      Dette& dette, const Suivi& suivi = {});

}  // namespace premiers
