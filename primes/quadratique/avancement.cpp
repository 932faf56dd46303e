// SPDX-License-Identifier: MIT
// The equation of avancement.h solved for r, by halving.
#include "primes/quadratique/avancement.h"

#include <algorithm>
#include <cmath>

namespace premiers::quadratique {

double part_du_travail(double c, double f, double a) {
  // The difference of both sides has one change of sign between f and 1, which halving closes in on.
  double bas = f;
  double haut = 1;
  for (int i = 0; i < 20; ++i) {
    const double r = (bas + haut) / 2;
    (std::pow(r, a) < f * std::pow(r, a - 1) + c - f ? bas : haut) = r;
  }
  return haut;
}

double Avancement::part(const Recolte& recolte, std::size_t but) {
  const auto voulus = static_cast<double>(but);
  const double c = std::min(1.0, static_cast<double>(recolte.cycles()) / voulus);
  const double f = std::min(c, static_cast<double>(recolte.pleines) / voulus);
  const auto relations = static_cast<double>(std::max<std::size_t>(1, recolte.relations.size()));
  const double a = 2 + static_cast<double>(recolte.doubles) / relations;
  return atteint = std::max(atteint, part_du_travail(c, f, a));
}

}  // namespace premiers::quadratique
