// SPDX-License-Identifier: MIT
// Choosing the multiplier, and square roots modulo the primes of the base; what for is told in base.h.
#include "primes/quadratique/base.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <span>

#include "primes/crible/premiers_jusqu_a.h"

namespace premiers::quadratique {

namespace {

// A square root of a != 0 modulo an odd prime p, or 0 if there is none (A. Tonelli, 1891). One
// power tells both: if a is no square, its part of order 2^m has the largest order there is.
std::uint32_t racine_mod(std::uint32_t a, std::uint32_t p) {
  const auto s = static_cast<std::uint32_t>(std::countr_zero(p - 1));
  const std::uint32_t impair = (p - 1) >> s;
  const std::uint32_t puissance = puissance_mod(a, impair / 2, p);
  std::uint32_t racine = produit_mod(a, puissance, p);
  std::uint32_t ecart = produit_mod(racine, puissance, p);  // racine^2 = a * ecart
  std::uint32_t generateur = 0;                             // of order 2^ordre
  for (std::uint32_t ordre = s; ecart != 1;) {
    std::uint32_t m = 0;  // ecart has order 2^m
    for (std::uint32_t e = ecart; e != 1; e = produit_mod(e, e, p)) ++m;
    if (m == s) return 0;
    if (generateur == 0) {
      std::uint32_t non_carre = 2;
      while (puissance_mod(non_carre, (p - 1) / 2, p) == 1) ++non_carre;
      generateur = puissance_mod(non_carre, impair, p);
    }
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
// of the values by sqrt(k). The bound 150 is beyond nearly all that win; the first 40 primes tell
// enough (their weight falls as log p / p).
std::uint32_t choisir_multiplicateur(const NTL::ZZ& n, std::span<const std::uint32_t> premiers) {
  constexpr std::uint32_t plus_grand = 150;
  constexpr std::size_t assez = 40;
  struct Choix {
    std::uint32_t k;
    float note;
  };
  std::vector<Choix> choix;
  const auto n_8 = static_cast<std::uint32_t>(NTL::rem(n, 8));
  for (std::uint32_t k = 1; k < plus_grand; k += 2) {
    const bool avec_carre = k % 9 == 0 || k % 25 == 0 || k % 49 == 0 || k % 121 == 0;
    if (k * n_8 % 8 != 1 || avec_carre) continue;
    choix.push_back({k, -0.5F * std::log(static_cast<float>(k))});
  }
  for (std::size_t i = 0; i < assez && i < premiers.size(); ++i) {
    const std::uint32_t p = premiers[i];
    const auto n_p = static_cast<std::uint32_t>(NTL::rem(n, static_cast<long>(p)));
    std::array<bool, 256> carre{};
    for (std::uint32_t x = 1, x2 = 1; x <= p / 2; x2 += 2 * x + 1, ++x) {
      while (x2 >= p) x2 -= p;
      carre[x2] = true;
    }
    const float apport = std::log(static_cast<float>(p)) / static_cast<float>(p);
    for (Choix& c : choix) {
      const std::uint32_t kn = c.k * n_p % p;
      c.note += kn == 0 ? apport : carre[kn] ? 2 * apport : 0.0F;
    }
  }
  const auto meilleur = std::max_element(
      choix.begin(), choix.end(), [](const Choix& c, const Choix& d) { return c.note < d.note; });
  return meilleur->k;
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
  const std::vector<std::uint32_t> tous = crible::premiers_jusqu_a(borne);
  const std::span premiers = std::span{tous}.subspan(1);  // the odd ones

  Base base;
  base.multiplicateur = choisir_multiplicateur(n, premiers);
  base.kn = n * static_cast<long>(base.multiplicateur);
  ajouter(base, 1, 0);  // -1
  ajouter(base, 2, 1);
  for (const std::uint32_t p : premiers) {
    if (p > base.multiplicateur) break;
    if (base.multiplicateur % p != 0) continue;
    ajouter(base, p, 0);
    if (NTL::divide(n, static_cast<long>(p)) != 0) base.diviseur = p;
  }
  base.ordinaires = base.premier.size();
  for (const std::uint32_t p : premiers) {
    if (base.premier.size() >= taille || p >= borne_premiers) break;
    const auto a = static_cast<std::uint32_t>(NTL::rem(base.kn, static_cast<long>(p)));
    if (a == 0 && base.multiplicateur % p != 0) base.diviseur = p;
    const std::uint32_t racine = a == 0 ? 0 : racine_mod(a, p);
    if (racine != 0) ajouter(base, p, racine);
  }
  base.taille = base.premier.size();
  while (base.premier.size() % largeur_vecteurs != 0) ajouter(base, 1, 0);
  return base;
}

}  // namespace premiers::quadratique
