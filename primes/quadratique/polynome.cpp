// SPDX-License-Identifier: MIT
#include "primes/quadratique/polynome.h"

#include <algorithm>
#include <bit>
#include <cmath>

#include "primes/quadratique/vecteurs.h"

namespace premiers::quadratique {

namespace {

// The next number of a fixed random sequence (G. Steele, D. Lea, C. Flood, "Fast splittable
// pseudorandom number generators", 2014).
std::uint64_t tirer(std::uint64_t& etat) {
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

// Draws all primes of a but one from the reserve and takes the last one to fit. Of a few such
// draws the best that has not been used yet; empty if there was none.
std::vector<std::size_t> tirer_facteurs(Polynomes& s) {
  constexpr int essais = 12;
  std::vector<std::size_t> meilleur;
  double meilleur_ecart = 1e9;
  std::vector<std::size_t> choix;
  const std::size_t fin = std::min(s.reserve_fin, s.limite);
  for (int essai = 0; essai < essais; ++essai) {
    choix.clear();
    double reste = s.taille_a;
    while (choix.size() + 1 < s.nombre) {
      const std::size_t i = s.reserve_debut + tirer(s.alea) % (fin - s.reserve_debut);
      if (std::find(choix.begin(), choix.end(), i) != choix.end()) continue;
      choix.push_back(i);
      reste -= s.base.logarithme[i];
    }
    const std::size_t dernier = plus_proche(s.base, reste);
    if (dernier >= s.limite) continue;
    if (std::find(choix.begin(), choix.end(), dernier) != choix.end()) continue;
    const double ecart = std::abs(reste - s.base.logarithme[dernier]);
    if (ecart >= meilleur_ecart) continue;
    choix.push_back(dernier);
    std::sort(choix.begin(), choix.end());
    if (s.deja.contains(choix)) continue;
    meilleur = choix;
    meilleur_ecart = ecart;
  }
  return meilleur;
}

// 1 / q modulo all p of the base, q the prime at `rang`. With h = 1 / p mod q, found in a table,
// p h - 1 is a multiple of q, and p - (p h - 1) / q is the inverse: no Euclid, one table per q.
Tableau<std::uint32_t> inverses_de(const Base& base, std::size_t rang) {
  const std::uint32_t q = base.premier[rang];
  std::vector<std::uint32_t> modulo_q(q);
  modulo_q[1] = 1;
  for (std::uint32_t i = 2; i < q; ++i) {
    modulo_q[i] = produit_mod(q - q / i, modulo_q[q % i], q);
  }
  Tableau<std::uint32_t> inverses(base.premier.size());
  for (std::size_t i = base.ordinaires; i < base.taille; ++i) {
    if (i == rang) continue;
    const std::uint64_t p = base.premier[i];
    inverses[i] = static_cast<std::uint32_t>(p - (p * modulo_q[p % q] - 1) / q);
  }
  return inverses;
}

// The term B_l of b, and its quotient by a modulo every p, for the new a. |B_l| < a; the first
// term is odd, the others even, which makes every b odd.
void preparer_terme(Polynomes& s, const NTL::ZZ& a, std::size_t l) {
  const Base& base = s.base;
  const std::size_t rang = s.facteurs[l];
  const std::uint32_t q = base.premier[rang];
  const NTL::ZZ autres = a / static_cast<long>(q);
  const auto autres_q = static_cast<std::uint32_t>(NTL::rem(autres, static_cast<long>(q)));
  const std::uint32_t gamma = produit_mod(base.racine[rang], puissance_mod(autres_q, q - 2, q), q);
  NTL::ZZ terme = autres * static_cast<long>(gamma);
  const bool a_corriger = NTL::IsOdd(terme) != (l == 0 ? 1L : 0L);
  if (a_corriger) terme -= a;
  s.termes[l] = entier256(terme);

  std::uint32_t* const pas = s.pas[l].data();
  const std::uint32_t* const p = base.premier.data();
  const std::size_t n = base.premier.size();
  std::fill_n(s.tampon.begin(), n, gamma);
  vecteurs().multiplier(pas, s.inverses[rang].data(), s.tampon.data(), p, base.reciproque.data(),
                        n);
  if (a_corriger) {
    std::fill_n(s.tampon.begin(), n, 1);
    vecteurs().descendre(pas, s.tampon.data(), p, n);
  }
  for (const std::size_t i : s.facteurs) pas[i] = 0;
}

// The roots of the first polynomial of a family, b the sum of all B_l:
// x = (+-root - b) / 2a = +-root / 2a - (sum of the steps) / 2, plus demi.
void preparer_racines(Polynomes& s) {
  const Base& base = s.base;
  const std::size_t n = base.premier.size();
  const std::uint32_t* const p = base.premier.data();
  const auto moitie = [](std::uint32_t v, std::uint32_t impair) {
    return (v + ((v & 1) != 0 ? impair : 0)) / 2;
  };
  for (std::size_t i = 0; i < n; ++i) s.racine_1[i] = moitie(base.racine[i], p[i]);
  std::fill_n(s.tampon.begin(), n, 0);
  for (std::size_t l = 0; l < s.nombre; ++l) {
    vecteurs().multiplier(s.racine_1.data(), s.racine_1.data(), s.inverses[s.facteurs[l]].data(), p,
                          base.reciproque.data(), n);
    vecteurs().monter(s.tampon.data(), s.pas[l].data(), p, n);
  }
  for (std::size_t i = 0; i < n; ++i) {
    s.tampon[i] = moitie(s.tampon[i], p[i]);
    s.racine_2[i] = p[i] - s.racine_1[i];
  }
  for (Tableau<std::uint32_t>* racines : {&s.racine_1, &s.racine_2}) {
    vecteurs().descendre(racines->data(), s.tampon.data(), p, n);
    vecteurs().monter(racines->data(), s.demi_mod.data(), p, n);
    for (const std::size_t i : s.facteurs) (*racines)[i] = 0;
    for (std::size_t i = 0; i < base.ordinaires; ++i) (*racines)[i] = absente;
    for (std::size_t i = base.taille; i < n; ++i) (*racines)[i] = absente;
  }
}

bool nouvelle_famille(Polynomes& s) {
  s.facteurs = tirer_facteurs(s);
  if (s.facteurs.empty()) return false;
  s.deja.insert(s.facteurs);
  NTL::ZZ a(1);
  for (const std::size_t i : s.facteurs) {
    a *= static_cast<long>(s.base.premier[i]);
    if (s.inverses[i].empty()) s.inverses[i] = inverses_de(s.base, i);
  }
  s.a = entier256(a);
  s.inverse_a = inverse(s.a);
  s.b = Entier256{};
  for (std::size_t l = 0; l < s.nombre; ++l) {
    preparer_terme(s, a, l);
    s.b = somme(s.b, s.termes[l]);
  }
  preparer_racines(s);
  s.rang = 0;
  return true;
}

}  // namespace

Polynomes::Polynomes(const Base& base_, const Reglages& reglages)
    : racine_1(base_.premier.size(), absente),
      racine_2(base_.premier.size(), absente),
      base(base_),
      demi(reglages.demi),
      limite(base_.premier.size()),
      inverses(base_.taille),
      sur_place(base_.premier.size()),
      tampon(base_.premier.size()) {
  taille_a = (static_cast<double>(NTL::NumBits(base.kn)) - 1) / 2 - std::log2(demi);
  nombre = static_cast<std::size_t>(std::max(2L, std::lround(taille_a / reglages.facteur)));
  const std::size_t dernier = base.ordinaires + (base.taille - base.ordinaires) * 3 / 4;
  while (taille_a / static_cast<double>(nombre) > base.logarithme[dernier]) ++nombre;
  const std::size_t milieu = plus_proche(base, taille_a / static_cast<double>(nombre));
  const std::size_t largeur = 8 + 2 * nombre;
  reserve_debut = std::max(base.ordinaires, milieu - std::min(milieu, largeur));
  reserve_fin = std::min(base.taille, milieu + largeur);
  termes.resize(nombre);
  moins_kn = entier256(-base.kn);
  for (const std::uint32_t p : base.premier) demi_mod.push_back(demi % p);
  pas.assign(nombre, Tableau<std::uint32_t>(base.premier.size()));
}

Mouvement Polynomes::mouvement(std::uint32_t rang_voulu) const {
  if (rang_voulu == 0) return {sur_place.data(), true};
  // Gray code: the sign that changes is that of the lowest bit of the rank. It was plus at first.
  const auto l = static_cast<std::size_t>(std::countr_zero(rang_voulu));
  return {pas[l].data(), (rang_voulu >> (l + 1)) % 2 == 0};
}

bool Polynomes::suivant() {
  ++rang;
  if (facteurs.empty() || (rang >> (nombre - 1)) != 0) {
    if (!nouvelle_famille(*this)) return false;
  } else {
    const auto [de_combien, vers_le_haut] = mouvement(rang);
    const auto deplacer = vers_le_haut ? vecteurs().monter : vecteurs().descendre;
    for (Tableau<std::uint32_t>* racines : {&racine_1, &racine_2}) {
      deplacer(racines->data(), de_combien, base.premier.data(), limite);
    }
    // b changes by 2 B_l
    const Entier256& terme = termes[static_cast<std::size_t>(std::countr_zero(rang))];
    const Entier256 double_terme = somme(terme, terme);
    b = somme(b, vers_le_haut ? oppose(double_terme) : double_terme);
  }
  // 4 c = (b^2 - kn) / a: an exact division, done modulo 2^256.
  c = decalage(produit(somme(produit(b, b), moins_kn), inverse_a), 2);
  return true;
}

}  // namespace premiers::quadratique
