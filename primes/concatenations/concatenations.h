// SPDX-License-Identifier: MIT
// The numbers of a range whose digits can be cut into consecutive primes, each with its number of
// ways. The method and its costs are told in parcours.h, the three ways to keep a number in examen.h, the
// start entry that a search carries from one number to the next in report.h.
#pragma once

#include <NTL/ZZ.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string_view>

#include "primes/suivi/suivi.h"

namespace premiers::concatenations {

struct Recherche {
  NTL::ZZ debut;  ///< 1 <= debut <= fin, both included,
  NTL::ZZ fin;    ///< of at most `chiffres_max` digits (else std::invalid_argument)
  /// Keep only the primes that have two ways at least; otherwise every number that has one.
  bool premiers_seuls;

  /// Effect: how long the numbers may be, and some hundred kilobytes of memory. Sensible: more than the
  /// 199 characters of the longest word that an operator can type.
  static constexpr std::size_t chiffres_max = 256;
};

/// Hears the numbers kept, ten at a time and in order: effectifs[d] is the number of ways of the
/// number with the digits `tete` and then d; 0 if it is not kept. Either function may be empty.
struct Gardes {
  /// Numbers of so few digits that their ways fit into 64 bits.
  std::function<void(std::string_view tete, std::span<const std::uint64_t, 10> effectifs)> petits;
  std::function<void(std::string_view tete, std::span<const NTL::ZZ, 10> effectifs)> grands;
};

/// Which pieces of a number the plain search divides.
enum class Morceaux {
  nombre_entier,  ///< none but the number itself
  du_debut,       ///< those that begin at its first digit
  tous,
};

/// Hears of every number of the range, in order, which of its pieces the plain search divides; the
/// first `communs` digits are those of the number before. May be empty.
using Examens =
    std::function<void(std::string_view chiffres, std::size_t communs, Morceaux morceaux)>;

/// Searches the range; gives how many numbers are kept.
std::uint64_t chercher_concatenations(const Recherche& recherche, const Gardes& gardes,
                                      const Examens& examens = {}, const Suivi& suivi = {});

}  // namespace premiers::concatenations
