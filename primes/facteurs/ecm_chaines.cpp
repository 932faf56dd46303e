// SPDX-License-Identifier: MIT
// The search for the shortest chain of a prime, and the lists of multipliers.
#include "primes/facteurs/ecm_chaines.h"

#include <algorithm>
#include <cassert>

#include "primes/crible/premiers_jusqu_a.h"

namespace premiers::facteurs::ecm {
namespace {

/// How far from p divided by the golden ratio an r is tried.
constexpr std::uint32_t rayon = 15;

/// The number of instructions of the chain for p that r begins, or `plafond` if it has as many or leads
/// nowhere.
unsigned longueur_de_chaine(std::uint32_t p, std::uint32_t r, unsigned plafond) {
  std::uint32_t d = p - r;
  std::uint32_t e = 2 * r - p;
  unsigned longueur = 2;
  while (d != e) {
    if (d < e) std::swap(d, e);
    if (longueur >= plafond) return plafond;
    longueur += avancer(d, e) == Regle::soustraire ? 1 : 2;
  }
  return d == 1 ? std::min(longueur, plafond) : plafond;
}

std::uint32_t meilleur_depart(std::uint32_t p) {
  if (p == 2) return 0;
  std::uint32_t meilleur = (p + 1) / 2;  // always a chain: e = 1
  unsigned plafond = longueur_de_chaine(p, meilleur, ~0U);
  const auto centre = static_cast<std::uint32_t>(p / 1.6180339887498949);
  const std::uint32_t debut = std::max(meilleur, centre - std::min(centre, rayon));
  for (std::uint32_t r = debut; r <= centre + rayon && r < p; ++r) {
    const unsigned longueur = longueur_de_chaine(p, r, plafond);
    if (longueur < plafond) {
      plafond = longueur;
      meilleur = r;
    }
  }
  return meilleur;
}

/// p if q is a power of the prime p, else 1: the factor by which lcm(1..q) exceeds lcm(1..q-1).
std::uint32_t facteur_nouveau(std::uint32_t q) {
  std::uint32_t p = 2;
  while (p * p <= q && q % p != 0) ++p;
  if (q % p != 0) p = q;
  while (q % p == 0) q /= p;
  return q == 1 ? p : 1;
}

struct Programme {
  std::vector<Instruction> instructions;
  std::vector<std::size_t> fin;  ///< fin[b1]: where the prefix for b1 ends
  std::uint8_t place = 0;        ///< where the product is

  Programme() {
    // Room for all, so that what has been given stays where it is.
    instructions.reserve(capacite);
    for (const std::uint32_t p : {3U, 2U, 2U}) multiplier(p);
    fin.assign(2, instructions.size());
  }

  void multiplier(std::uint32_t p) {
    place = parcourir({p, meilleur_depart(p)}, place,
                      [this](const Instruction& i) { instructions.push_back(i); });
    assert(instructions.size() <= capacite);
  }
  void prolonger(std::size_t b1) {
    while (fin.size() <= b1) {
      const auto p = facteur_nouveau(static_cast<std::uint32_t>(fin.size()));
      if (p > 1) multiplier(p);
      fin.push_back(instructions.size());
    }
  }

  static constexpr std::size_t capacite = 5000;
};

}  // namespace

std::span<const Instruction> programme(std::size_t b1) {
  assert(2 <= b1 && b1 <= b1_court);
  static Programme p;
  p.prolonger(b1);
  return {p.instructions.data(), p.fin[b1]};
}

std::vector<Multiplicateur> multiplicateurs(std::uint64_t debut, std::uint64_t fin,
                                            const Suivi& suivi) {
  struct Puissance {
    std::uint64_t q;
    std::uint32_t p;
  };
  std::vector<Puissance> puissances;
  for (const std::uint32_t p : crible::premiers_jusqu_a(fin, suivi)) {
    for (std::uint64_t q = p; q <= fin; q *= p) {
      if (q > debut) puissances.push_back({q, p});
    }
  }
  std::sort(puissances.begin(), puissances.end(),
            [](const Puissance& a, const Puissance& b) { return a.q < b.q; });
  std::vector<Multiplicateur> resultat;
  resultat.reserve(puissances.size());
  constexpr std::size_t cadence = 256;  // 2 ms
  for (const auto& [q, p] : puissances) {
    if (suivi && resultat.size() % cadence == 0) suivi(0);
    resultat.push_back({p, meilleur_depart(p)});
  }
  return resultat;
}

}  // namespace premiers::facteurs::ecm
