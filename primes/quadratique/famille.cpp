// SPDX-License-Identifier: MIT
// What a new coefficient costs: a pass over the base for each of its primes, and one for the roots.
#include "primes/quadratique/famille.h"

#include <algorithm>
#include <bit>
#include <utility>

#include "primes/quadratique/vecteurs.h"

namespace premiers::quadratique {

namespace {

// 1 / q modulo all p of the base, q the prime at `indice`. With h = 1 / p mod q, found in a table,
// p h - 1 is a multiple of q, and p - (p h - 1) / q is the inverse: no Euclid, one table per q.
Tableau<std::uint32_t> inverses_de(const Base& base, std::size_t indice) {
  const std::uint32_t q = base.premier[indice];
  std::vector<std::uint32_t> modulo_q(q);
  modulo_q[1] = 1;
  for (std::uint32_t i = 2; i < q; ++i) {
    modulo_q[i] = produit_mod(q - q / i, modulo_q[q % i], q);
  }
  Tableau<std::uint32_t> inverses(base.premier.size());
  for (std::size_t i = base.ordinaires; i < base.taille; ++i) {
    if (i == indice) continue;
    const std::uint64_t p = base.premier[i];
    inverses[i] = static_cast<std::uint32_t>(p - (p * modulo_q[p % q] - 1) / q);
  }
  return inverses;
}

// The sign that changes on the way to that rank is that of its lowest bit. It was plus at first.
std::size_t terme_qui_change(std::uint32_t rang) {
  return static_cast<std::size_t>(std::countr_zero(rang));
}
bool devient_moins(std::uint32_t rang) { return (rang >> (terme_qui_change(rang) + 1)) % 2 == 0; }

}  // namespace

Famille::Famille(const Base& base, std::uint32_t demi, std::size_t nombre)
    : base_(base),
      termes_(nombre),
      pas_(nombre, Tableau<std::uint32_t>(base.premier.size())),
      inverses_(base.taille),
      sur_place_(base.premier.size()),
      tampon_(base.premier.size()) {
  for (const std::uint32_t p : base.premier) demi_mod_.push_back(demi % p);
}

void Famille::commencer(std::vector<std::size_t> premiers_de_a) {
  facteurs = std::move(premiers_de_a);
  NTL::ZZ grand_a(1);
  for (const std::size_t i : facteurs) {
    grand_a *= static_cast<long>(base_.premier[i]);
    if (inverses_[i].empty()) inverses_[i] = inverses_de(base_, i);
  }
  a = entier256(grand_a);
  inverse_a = inverse(a);
  for (std::size_t l = 0; l < termes_.size(); ++l) preparer_terme(grand_a, l);
}

// The term B_l of b, and its quotient by a modulo every p, for the new a. |B_l| < a; the first
// term is odd, the others even, which makes every b odd.
void Famille::preparer_terme(const NTL::ZZ& grand_a, std::size_t l) {
  const Base& base = base_;
  const std::size_t indice = facteurs[l];
  const std::uint32_t q = base.premier[indice];
  const NTL::ZZ autres = grand_a / static_cast<long>(q);
  const auto autres_q = static_cast<std::uint32_t>(NTL::rem(autres, static_cast<long>(q)));
  const std::uint32_t gamma =
      produit_mod(base.racine[indice], puissance_mod(autres_q, q - 2, q), q);
  NTL::ZZ terme = autres * static_cast<long>(gamma);
  const bool a_corriger = NTL::IsOdd(terme) != (l == 0 ? 1L : 0L);
  if (a_corriger) terme -= grand_a;
  termes_[l] = entier256(terme);

  std::uint32_t* const pas = pas_[l].data();
  const std::uint32_t* const p = base.premier.data();
  const std::size_t n = base.premier.size();
  std::fill_n(tampon_.begin(), n, gamma);
  vecteurs().multiplier(pas, inverses_[indice].data(), tampon_.data(), p, base.reciproque.data(),
                        n);
  if (a_corriger) {
    std::fill_n(tampon_.begin(), n, 1);
    vecteurs().descendre(pas, tampon_.data(), p, n);
  }
  for (const std::size_t i : facteurs) pas[i] = 0;
}

// The roots of the first polynomial of a family, b the sum of all B_l:
// x = (+-root - b) / 2a = +-root / 2a - (sum of the steps) / 2, plus demi.
void Famille::racines_initiales(Tableau<std::uint32_t>& racine_1,
                                Tableau<std::uint32_t>& racine_2) {
  const Base& base = base_;
  const std::size_t n = base.premier.size();
  const std::uint32_t* const p = base.premier.data();
  const auto moitie = [](std::uint32_t v, std::uint32_t impair) {
    return (v + ((v & 1) != 0 ? impair : 0)) / 2;
  };
  for (std::size_t i = 0; i < n; ++i) racine_1[i] = moitie(base.racine[i], p[i]);
  std::fill_n(tampon_.begin(), n, 0);
  for (std::size_t l = 0; l < termes_.size(); ++l) {
    vecteurs().multiplier(racine_1.data(), racine_1.data(), inverses_[facteurs[l]].data(), p,
                          base.reciproque.data(), n);
    vecteurs().monter(tampon_.data(), pas_[l].data(), p, n);
  }
  for (std::size_t i = 0; i < n; ++i) {
    tampon_[i] = moitie(tampon_[i], p[i]);
    racine_2[i] = p[i] - racine_1[i];
  }
  for (Tableau<std::uint32_t>* racines : {&racine_1, &racine_2}) {
    vecteurs().descendre(racines->data(), tampon_.data(), p, n);
    vecteurs().monter(racines->data(), demi_mod_.data(), p, n);
    for (const std::size_t i : facteurs) (*racines)[i] = 0;
    for (std::size_t i = 0; i < base.ordinaires; ++i) (*racines)[i] = absente;
    for (std::size_t i = base.taille; i < n; ++i) (*racines)[i] = absente;
  }
}

Entier256 Famille::b_initial() const {
  Entier256 b{};
  for (const Entier256& terme : termes_) b = somme(b, terme);
  return b;
}

Entier256 Famille::changement_de_b(std::uint32_t rang) const {
  const Entier256& terme = termes_[terme_qui_change(rang)];
  const Entier256 double_terme = somme(terme, terme);
  return devient_moins(rang) ? oppose(double_terme) : double_terme;
}

Mouvement Famille::mouvement(std::uint32_t rang) const {
  if (rang == 0) return {sur_place_.data(), true};
  return {pas_[terme_qui_change(rang)].data(), devient_moins(rang)};
}

}  // namespace premiers::quadratique
