// SPDX-License-Identifier: MIT
#include "primes/quadratique/reglages.h"

#include <array>
#include <cstdlib>

namespace premiers::quadratique {

namespace {

struct Ligne {
  double bits;
  double base;
  double demi;
  double grand;
  double petit;
  double tolerance;
  double facteur;
};

constexpr std::array<Ligne, 9> lignes{{
    {66, 50, 4096, 10, 10, 12, 7},
    {80, 70, 8192, 15, 15, 14, 7},
    {100, 120, 16384, 20, 20, 16, 8},
    {120, 300, 16384, 30, 25, 18, 9},
    {133, 550, 16384, 30, 30, 20, 9},
    {166, 2200, 32768, 50, 40, 24, 10},
    {200, 6000, 65536, 60, 50, 26, 11},
    {233, 15000, 131072, 80, 60, 28, 11},
    {380, 100000, 524288, 120, 80, 32, 12},
}};

}  // namespace

Reglages reglages(long bits) {
  const auto taille = static_cast<double>(bits);
  std::size_t i = 1;
  while (i + 1 < lignes.size() && taille > lignes[i].bits) ++i;
  const Ligne& bas = lignes[i - 1];
  const Ligne& haut = lignes[i];
  double part = (taille - bas.bits) / (haut.bits - bas.bits);
  if (part < 0) part = 0;
  if (part > 1) part = 1;
  const auto entre = [part](double x, double y) { return x + (y - x) * part; };
  Reglages r{};
  r.base = static_cast<std::size_t>(entre(bas.base, haut.base));
  r.demi = static_cast<std::uint32_t>(entre(bas.demi, haut.demi)) / 64 * 64;
  r.grand = static_cast<std::uint32_t>(entre(bas.grand, haut.grand));
  r.petit = static_cast<std::uint32_t>(entre(bas.petit, haut.petit));
  r.tolerance = entre(bas.tolerance, haut.tolerance);
  r.facteur = entre(bas.facteur, haut.facteur);
  // TUNING-ONLY
  if (const char* e = std::getenv("QS_BASE")) r.base = static_cast<std::size_t>(std::atof(e));
  if (const char* e = std::getenv("QS_DEMI")) r.demi = static_cast<std::uint32_t>(std::atof(e));
  if (const char* e = std::getenv("QS_GRAND")) r.grand = static_cast<std::uint32_t>(std::atof(e));
  if (const char* e = std::getenv("QS_PETIT")) r.petit = static_cast<std::uint32_t>(std::atof(e));
  if (const char* e = std::getenv("QS_TOL")) r.tolerance = std::atof(e);
  if (const char* e = std::getenv("QS_FACT")) r.facteur = std::atof(e);
  // END
  return r;
}

}  // namespace premiers::quadratique
