// SPDX-License-Identifier: MIT
// Which multiples of a point the second stage of ECM compares, found by the compiler
// (once, in ecm_paires.cpp).
//
// The stage wants one prime factor q of the group order in (B1, B2]. With D = 210 every such q > D / 2 is
// k D +- j with j coprime to D and j < D/2; then kD Q and j Q have the same x, and x(kD Q) - x(j Q)
// shares the factor with n. One product covers both kD - j and kD + j, so a pair (k, j) is listed
// when at least one of the two is prime (P. L. Montgomery, "Speeding the Pollard and elliptic curve
// methods of factorization", Mathematics of Computation 48, 1987).
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <span>

namespace premiers::facteurs::ecm {

struct Paire {
  std::uint16_t geant;  ///< k
  std::uint16_t bebe;   ///< index of j among the baby steps
};

/// The lists for one D (a multiple of 6) and all k <= geants.
template <std::size_t D, std::size_t geants>
struct Paires {
  static constexpr std::size_t pas_de_geant = D;
  static constexpr std::size_t geants_max = geants;
  static constexpr std::size_t portee = D * geants;  ///< the greatest B2
  /// The numbers below D/2 that are coprime to D.
  static constexpr std::size_t bebes = [] {
    std::size_t n = 0;
    for (std::size_t j = 1; j < D / 2; ++j) n += std::gcd(j, D) == 1 ? 1 : 0;
    return n;
  }();

  std::array<std::uint16_t, bebes> residus{};     ///< the j, in increasing order
  std::array<Paire, bebes * geants> paires{};     ///< by increasing k
  std::array<std::uint32_t, geants + 2> debut{};  ///< debut[k]: the first pair of k

  constexpr Paires() {
    std::array<bool, D * geants + D> compose{};
    for (std::size_t p = 3; p * p < compose.size(); p += 2) {
      if (compose[p]) continue;
      for (std::size_t m = p * p; m < compose.size(); m += 2 * p) compose[m] = true;
    }
    std::size_t n = 0;
    for (std::size_t j = 1; j < D / 2; ++j) {
      if (std::gcd(j, D) == 1) residus[n++] = static_cast<std::uint16_t>(j);
    }
    n = 0;
    for (std::size_t k = 1; k <= geants; ++k) {
      debut[k] = static_cast<std::uint32_t>(n);
      for (std::size_t b = 0; b < bebes; ++b) {
        if (compose[k * D - residus[b]] && compose[k * D + residus[b]]) continue;
        paires[n++] = {static_cast<std::uint16_t>(k), static_cast<std::uint16_t>(b)};
      }
    }
    debut[geants + 1] = static_cast<std::uint32_t>(n);
  }
};

/// For B2 up to 12600, and up to 100800.
extern const Paires<210, 60> paires_courtes;
extern const Paires<420, 240> paires_longues;

/// Such lists, whatever their D.
struct ListePaires {
  std::size_t pas_de_geant, portee;
  std::span<const std::uint16_t> residus;
  std::span<const Paire> paires;
  std::span<const std::uint32_t> debut;

  template <std::size_t D, std::size_t geants>
  explicit ListePaires(const Paires<D, geants>& p)
      : pas_de_geant{D}, portee{p.portee}, residus{p.residus}, paires{p.paires}, debut{p.debut} {}
};

/// The shorter one that reaches b2.
inline ListePaires liste_paires(std::size_t b2) {
  return b2 <= paires_courtes.portee ? ListePaires{paires_courtes} : ListePaires{paires_longues};
}

}  // namespace premiers::facteurs::ecm
