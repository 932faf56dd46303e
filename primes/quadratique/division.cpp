// SPDX-License-Identifier: MIT
// The value is divided in the order in which it is most often given up (division.h).
#include "primes/quadratique/division.h"

#include <algorithm>
#include <bit>

#include "primes/quadratique/vecteurs.h"

namespace premiers::quadratique {

namespace {

// By so many bits the logarithms of a sieve may be wrong: ten of them are rounded, and a prime
// that divides twice is counted once. 3 to 6: less loses relations, more divides in vain.
constexpr double marge = 4;

// What is being divided: a positive number and the words that it takes.
struct Reste {
  Entier256 v;
  std::size_t mots;
};

unsigned bits(const Reste& r) {
  return static_cast<unsigned>(64 * (r.mots - 1)) +
         static_cast<unsigned>(std::bit_width(r.v.mot[r.mots - 1]));
}

// Divides by 2 as often as possible and notes it.
void retirer_2(Entier256& v, std::vector<std::uint32_t>& facteurs) {
  while ((v.mot[0] & 1) == 0) {
    const auto bits = static_cast<unsigned>(std::min(std::countr_zero(v.mot[0]), 63));
    v = decalage(v, bits);
    facteurs.insert(facteurs.end(), bits, 1);
  }
}

// Divides by the prime of that index as often as possible and notes it.
void retirer(Division& s, Reste& r, std::uint32_t i) {
  while (divise(r.v, r.mots, s.base.premier[i], s.inverses[i])) {
    s.valeur.facteurs.push_back(i);
    if (r.v.mot[r.mots - 1] == 0) --r.mots;  // v stays positive: one word remains
  }
}

// Appends to `trouves` the primes with debut <= index < fin that divide the value at that position.
void reperer(Division& s, const Polynomes& polynomes, std::uint32_t position, std::size_t debut,
             std::size_t fin) {
  vecteurs().reperer(position, s.base.premier.data(), s.base.reciproque.data(),
                     polynomes.racine_1.data(), polynomes.racine_2.data(), debut, fin, s.trouves);
}

// Divides by all primes of the base, those first that were not sieved; false if what remains is more
// than 64 bits, or surely too large.
bool retirer_tous(Division& s, const Polynomes& polynomes, Candidat candidat, Reste& r) {
  s.trouves.clear();
  const std::size_t fin_petits = vecteurs_entiers(s.tamis.debut);
  reperer(s, polynomes, candidat.position, 0, fin_petits);
  for (std::uint32_t i = 2; i < s.base.ordinaires; ++i) retirer(s, r, i);  // the primes of k
  std::size_t vus = 0;
  for (; vus < s.trouves.size() && s.trouves[vus] < s.tamis.debut; ++vus) {
    retirer(s, r, s.trouves[vus]);
  }
  if (bits(r) > s.bits_reste + marge + candidat.somme) return false;

  reperer(s, polynomes, candidat.position, fin_petits, s.tamis.fin);
  s.tamis.seaux.diviseurs(polynomes.rang, candidat.position, s.trouves);
  for (; vus < s.trouves.size(); ++vus) retirer(s, r, s.trouves[vus]);
  for (const std::size_t i : polynomes.famille.facteurs) {
    retirer(s, r, static_cast<std::uint32_t>(i));
  }
  return r.mots == 1;
}

}  // namespace

Division::Division(const Base& base_, const Tamis& tamis_, double bits_reste_)
    : base(base_), tamis(tamis_), bits_reste(bits_reste_), inverses(base_.taille) {
  for (std::size_t i = 2; i < base.taille; ++i) inverses[i] = inverse_2_64(base.premier[i]);
}

bool Division::diviser(const Polynomes& polynomes, Candidat candidat) {
  const std::int64_t x = static_cast<std::int64_t>(candidat.position) - polynomes.demi;
  const Entier256 ax_b = somme(produit(polynomes.famille.a, x), polynomes.b);
  Entier256 q = somme(produit(ax_b, x), polynomes.c);
  std::vector<std::uint32_t>& facteurs = valeur.facteurs;
  facteurs.clear();
  if (negatif(q)) {
    q = oppose(q);
    facteurs.push_back(0);
  }
  retirer_2(q, facteurs);
  Reste r{q, longueur(q)};
  if (!retirer_tous(*this, polynomes, candidat, r)) return false;
  valeur.reste = r.v.mot[0];
  // (2ax + b)^2 = 4 a Q
  facteurs.insert(facteurs.end(), polynomes.famille.facteurs.begin(),
                  polynomes.famille.facteurs.end());
  facteurs.insert(facteurs.end(), 2, 1);
  const Entier256 u = somme(ax_b, produit(polynomes.famille.a, x));
  valeur.u = negatif(u) ? oppose(u) : u;
  return true;
}

}  // namespace premiers::quadratique
