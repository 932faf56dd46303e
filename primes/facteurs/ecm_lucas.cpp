// SPDX-License-Identifier: MIT
#include "primes/facteurs/ecm_lucas.h"

#include <algorithm>

#include "primes/crible/premiers_jusqu_a.h"

namespace premiers::ecm {
namespace {

/// How far from p divided by the golden ratio an r is tried.
constexpr std::uint32_t rayon = 15;

/// The operations of the chain for p that r begins, or `plafond` if it has as many or leads nowhere.
unsigned longueur_de_chaine(std::uint32_t p, std::uint32_t r, unsigned plafond) {
  std::uint32_t d = p - r;
  std::uint32_t e = 2 * r - p;
  unsigned longueur = 2;
  while (d != e) {
    if (d < e) std::swap(d, e);
    if (longueur >= plafond) return plafond;
    if (d <= 4 * std::uint64_t{e}) {
      d -= e;
      longueur += 1;
      continue;
    }
    if (d % 2 == e % 2) {
      d = (d - e) / 2;
    } else if (d % 2 == 0) {
      d /= 2;
    } else {
      e /= 2;
    }
    longueur += 2;
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

}  // namespace

std::vector<Multiplicateur> multiplicateurs(std::uint64_t debut, std::uint64_t fin,
                                            const Suivi& suivi) {
  struct Puissance {
    std::uint64_t q;
    std::uint32_t p;
  };
  std::vector<Puissance> puissances;
  for (const std::uint32_t p : premiers_jusqu_a(fin, suivi)) {
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

}  // namespace premiers::ecm
