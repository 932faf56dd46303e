// SPDX-License-Identifier: MIT
// The reserve, and the draws from it: of some, the one whose product fits best.
#include "primes/quadratique/coefficients.h"

#include <algorithm>
#include <cmath>

namespace premiers::quadratique {

namespace {

// The next number of a fixed random sequence (G. Steele, D. Lea, C. Flood, "Fast splittable
// pseudorandom number generators", 2014).
std::uint64_t hasard(std::uint64_t& etat) {
  etat += 0x9e3779b97f4a7c15;
  std::uint64_t z = etat;
  z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9;
  z = (z ^ (z >> 27)) * 0x94d049bb133111eb;
  return z ^ (z >> 31);
}

// The entry of the base nearest to 2^taille.
std::size_t plus_proche(const Base& base, double taille) {
  const auto debut = base.logarithme.begin() + static_cast<std::ptrdiff_t>(base.ordinaires);
  const auto fin = base.logarithme.begin() + static_cast<std::ptrdiff_t>(base.taille);
  auto ici = std::lower_bound(debut, fin, static_cast<float>(taille));
  if (ici == fin || (ici != debut && taille - *(ici - 1) < *ici - taille)) --ici;
  return static_cast<std::size_t>(ici - base.logarithme.begin());
}

bool contient(const std::vector<std::size_t>& choix, std::size_t i) {
  return std::find(choix.begin(), choix.end(), i) != choix.end();
}

}  // namespace

Coefficients::Coefficients(const Base& base, const Reglages& reglages)
    : taille((static_cast<double>(NTL::NumBits(base.kn)) - 1) / 2 - std::log2(reglages.demi)),
      nombre(static_cast<std::size_t>(std::max(2L, std::lround(taille / reglages.facteur)))),
      base_(base) {
  // Primes of a should not come from the end of the base, which the buckets hold.
  const std::size_t dernier = base.ordinaires + (base.taille - base.ordinaires) * 3 / 4;
  while (taille / static_cast<double>(nombre) > base.logarithme[dernier]) ++nombre;
  const std::size_t milieu = plus_proche(base, taille / static_cast<double>(nombre));
  // Effect: how many different a there are, and how far their primes are from the middle. Twice as many to
  // each side as a takes, and some more where it takes few, so that even small n do not run out.
  const std::size_t largeur = 8 + 2 * nombre;
  reserve_debut_ = std::max(base.ordinaires, milieu - std::min(milieu, largeur));
  reserve_fin_ = std::min(base.taille, milieu + largeur);
}

// Draws all primes of a but one from the reserve and takes the last one to fit; `ecart` becomes how much
// it misses the wished size by. Empty if no last one will do.
std::vector<std::size_t> Coefficients::tirer(double& ecart, std::size_t limite) {
  std::vector<std::size_t> choix;
  const std::size_t fin = std::min(reserve_fin_, limite);
  double reste = taille;
  while (choix.size() + 1 < nombre) {
    const std::size_t i = reserve_debut_ + hasard(alea_) % (fin - reserve_debut_);
    if (contient(choix, i)) continue;
    choix.push_back(i);
    reste -= base_.logarithme[i];
  }
  const std::size_t dernier = plus_proche(base_, reste);
  if (dernier >= limite || contient(choix, dernier)) return {};
  ecart = std::abs(reste - base_.logarithme[dernier]);
  choix.push_back(dernier);
  std::sort(choix.begin(), choix.end());
  return choix;
}

std::vector<std::size_t> Coefficients::suivant(std::size_t limite) {
  // Effect: how near a comes to its wished size, on which the size of the values depends. Sensible: 4 to
  // 40, which take the same time at 41, 55 and 60 digits; a single draw takes 1.4, 1.2 and 2.0 of it.
  constexpr int essais = 12;
  std::vector<std::size_t> meilleur;
  double meilleur_ecart = 1e9;
  for (int essai = 0; essai < essais; ++essai) {
    double ecart = meilleur_ecart;
    std::vector<std::size_t> choix = tirer(ecart, limite);
    if (choix.empty() || ecart >= meilleur_ecart || deja_.contains(choix)) continue;
    meilleur = std::move(choix);
    meilleur_ecart = ecart;
  }
  if (!meilleur.empty()) deja_.insert(meilleur);
  return meilleur;
}

}  // namespace premiers::quadratique
