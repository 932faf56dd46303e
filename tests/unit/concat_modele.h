// SPDX-License-Identifier: MIT
// The plain way through the concatenations, for tests: division by the primes in turn, the start
// and length tables, the walk through every way. Slow and literal.
#pragma once

#include <NTL/ZZ.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <sstream>
#include <string>
#include <vector>

namespace modele {

/// The table of primes, grown by one prime whenever division runs out of them.
struct Table {
  std::vector<std::uint64_t> premiers{2, 3};

  bool est_premier(std::uint64_t S) {
    if (S == 2) return true;
    if (S < 2) return false;
    for (std::size_t k = 0;; ++k) {
      if (k == premiers.size()) grandir();
      const std::uint64_t p = premiers[k];
      if (S % p == 0) return false;
      if (p * p > S) return true;
    }
  }

  void grandir() {
    std::uint64_t c = premiers.back();
    bool compose = true;
    while (compose) {
      c += 2;
      compose = false;
      for (std::size_t k = 0; premiers[k] * premiers[k] <= c; ++k) {
        compose = compose || c % premiers[k] == 0;
      }
    }
    premiers.push_back(c);
  }
};

/// The first prime above a bound: what a table that owes it must end with.
inline std::uint64_t premier_apres(std::uint64_t borne) {
  Table table;
  while (table.premiers.back() <= borne) table.grandir();
  return table.premiers.back();
}

inline std::string texte(const NTL::ZZ& n) {
  std::ostringstream flux;
  flux << n;
  return flux.str();
}

/// The pieces and ways of numbers, with tables that live from one number to the next. Positions
/// count from 1, r0[0] and rows 0 are not used. For numbers of at most 40 digits.
struct Concatenations {
  std::function<bool(const NTL::ZZ&)> prem;
  std::vector<std::size_t> r0 = std::vector<std::size_t>(42);
  std::vector<std::vector<std::size_t>> l0 =
      std::vector<std::vector<std::size_t>>(42, std::vector<std::size_t>(42));

  std::uint64_t compter(const std::string& chiffres) {
    scruter(chiffres);
    if (r0[1] == 0) return 0;
    std::uint64_t chemins = 0;
    for (std::size_t j = 1; l0[1][j] != 0; ++j) chemins += suites(1, l0[1][j], chiffres.size());
    return chemins;
  }

 private:
  void scruter(const std::string& chiffres) {
    std::size_t k2 = 0;
    for (std::size_t t = 1; t <= chiffres.size(); ++t) {
      std::size_t j2 = 0;
      for (std::size_t u = 1; u <= chiffres.size() - t + 1; ++u) {
        NTL::ZZ morceau;
        for (std::size_t i = t; i < t + u; ++i) morceau = 10 * morceau + (chiffres[i - 1] - '0');
        if (!prem(morceau)) continue;
        ++j2;
        if (j2 == 1) r0[++k2] = t;
        l0[k2][j2] = u;
      }
      if (j2 > 0) l0[k2][j2 + 1] = 0;
      if (r0[1] == 0) break;
    }
    r0[k2 + 1] = 0;
  }

  /// The ways to go on behind `couverts` digits, from entries after i.
  std::uint64_t suites(std::size_t i, std::size_t couverts, std::size_t n) const {
    if (couverts == n) return 1;
    do {
      ++i;
    } while (r0[i] != 0 && r0[i] <= couverts);
    if (r0[i] != couverts + 1) return 0;
    std::uint64_t chemins = 0;
    for (std::size_t j = 1; l0[i][j] != 0; ++j) chemins += suites(i, couverts + l0[i][j], n);
    return chemins;
  }
};

}  // namespace modele
