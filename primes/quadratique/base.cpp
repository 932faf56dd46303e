// SPDX-License-Identifier: MIT
#include "primes/quadratique/base.h"

#include <array>
#include <bit>
#include <cmath>
#include <numbers>

namespace premiers::quadratique {

namespace {

// The odd primes up to `borne`, by Eratosthenes' sieve.
std::vector<std::uint32_t> premiers_impairs(std::uint32_t borne) {
  std::vector<bool> compose(borne / 2 + 1);  // [i] stands for 2i + 1
  std::vector<std::uint32_t> liste;
  for (std::uint32_t p = 3; p <= borne; p += 2) {
    if (compose[p / 2]) continue;
    liste.push_back(p);
    for (std::uint64_t m = std::uint64_t{p} * p; m <= borne; m += 2 * std::uint64_t{p}) {
      compose[m / 2] = true;
    }
  }
  return liste;
}

bool est_carre_mod(std::uint32_t a, std::uint32_t p) {
  return puissance_mod(a, (p - 1) / 2, p) == 1;
}

// A square root of a square a != 0 modulo an odd prime p (A. Tonelli, 1891).
std::uint32_t racine_mod(std::uint32_t a, std::uint32_t p) {
  if (p % 4 == 3) return puissance_mod(a, (p + 1) / 4, p);
  const auto s = static_cast<std::uint32_t>(std::countr_zero(p - 1));
  const std::uint32_t impair = (p - 1) >> s;
  std::uint32_t non_carre = 2;
  while (est_carre_mod(non_carre, p)) ++non_carre;
  std::uint32_t generateur = puissance_mod(non_carre, impair, p);  // of order 2^s
  std::uint32_t racine = puissance_mod(a, (impair + 1) / 2, p);
  std::uint32_t ecart = puissance_mod(a, impair, p);  // racine^2 = a * ecart
  for (std::uint32_t ordre = s; ecart != 1;) {
    std::uint32_t m = 0;  // ecart has order 2^m < 2^ordre
    for (std::uint32_t e = ecart; e != 1; e = produit_mod(e, e, p)) ++m;
    std::uint32_t facteur = generateur;
    for (std::uint32_t i = m + 1; i < ordre; ++i) facteur = produit_mod(facteur, facteur, p);
    racine = produit_mod(racine, facteur, p);
    generateur = produit_mod(facteur, facteur, p);
    ecart = produit_mod(ecart, generateur, p);
    ordre = m;
  }
  return racine;
}

// The multiplier with the greatest expected share of small primes in the values, less the growth
// of the values by sqrt(k). Squarefree, kn = 1 mod 8. The bound 150 is far beyond what wins; the
// first 80 primes tell enough (their weight falls as log p / p).
std::uint32_t choisir_multiplicateur(const NTL::ZZ& n, const std::vector<std::uint32_t>& premiers) {
  constexpr std::uint32_t plus_grand = 150;
  constexpr std::size_t assez = 80;
  std::array<float, plus_grand> note{};
  for (std::uint32_t k = 1; k < plus_grand; k += 2) {
    note[k] = -0.5F * std::log(static_cast<float>(k));
  }
  for (std::size_t i = 0; i < assez && i < premiers.size(); ++i) {
    const std::uint32_t p = premiers[i];
    const auto n_p = static_cast<std::uint32_t>(NTL::rem(n, static_cast<long>(p)));
    std::array<bool, 512> carre{};
    for (std::uint32_t x = 1; x <= p / 2; ++x) carre[x * x % p] = true;
    const float apport = std::log(static_cast<float>(p)) / static_cast<float>(p);
    std::uint32_t kn = 0;
    const std::uint32_t deux_n = 2 * n_p % p;
    kn = n_p;
    for (std::uint32_t k = 1; k < plus_grand; k += 2) {
      if (kn == 0) {
        note[k] += apport;
      } else if (carre[kn]) {
        note[k] += 2 * apport;
      }
      kn += deux_n;
      if (kn >= p) kn -= p;
    }
  }
  const auto n_8 = static_cast<std::uint32_t>(NTL::rem(n, 8));
  std::uint32_t meilleur = 0;
  for (std::uint32_t k = 1; k < plus_grand; k += 2) {
    if (k * n_8 % 8 != 1) continue;
    if (k % 9 == 0 || k % 25 == 0 || k % 49 == 0 || k % 121 == 0) continue;
    if (meilleur == 0 || note[k] > note[meilleur]) meilleur = k;
  }
  return meilleur;
}

void ajouter(Base& base, std::uint32_t p, std::uint32_t racine) {
  base.premier.push_back(p);
  base.racine.push_back(racine);
  base.reciproque.push_back(1.0F / static_cast<float>(p));
  base.logarithme.push_back(std::log2(static_cast<float>(p)));
  base.poids.push_back(static_cast<std::uint8_t>(std::lround(base.logarithme.back())));
}

}  // namespace

std::uint32_t puissance_mod(std::uint32_t a, std::uint32_t e, std::uint32_t p) {
  std::uint32_t r = 1;
  for (; e != 0; e >>= 1) {
    if ((e & 1) != 0) r = produit_mod(r, a, p);
    a = produit_mod(a, a, p);
  }
  return r;
}

Base construire_base(const NTL::ZZ& n, std::size_t taille) {
  // Half of the primes will do; the 2*taille-th prime is below this bound (J. Rosser), and one
  // half more is for the unlucky.
  const double rang = 3.0 * static_cast<double>(taille) + 50;
  const auto borne = static_cast<std::uint32_t>(rang * (std::log(rang) + std::log(std::log(rang))));
  const std::vector<std::uint32_t> premiers = premiers_impairs(borne);

  Base base;
  base.multiplicateur = choisir_multiplicateur(n, premiers);
  base.kn = n * static_cast<long>(base.multiplicateur);
  ajouter(base, 1, 0);  // -1
  ajouter(base, 2, 1);
  for (const std::uint32_t p : premiers) {
    if (p > base.multiplicateur) break;
    if (base.multiplicateur % p == 0) ajouter(base, p, 0);
  }
  base.ordinaires = base.premier.size();
  for (const std::uint32_t p : premiers) {
    if (base.premier.size() >= taille || p >= borne_premiers) break;
    const auto a = static_cast<std::uint32_t>(NTL::rem(base.kn, static_cast<long>(p)));
    if (a == 0 && base.multiplicateur % p != 0) base.diviseur = p;
    if (a != 0 && est_carre_mod(a, p)) ajouter(base, p, racine_mod(a, p));
  }
  base.taille = base.premier.size();
  while (base.premier.size() % largeur_vecteurs != 0) ajouter(base, 1, 0);
  return base;
}

}  // namespace premiers::quadratique
