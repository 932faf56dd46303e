// SPDX-License-Identifier: MIT
// Choosing columns, a round, and what the last round leaves to an elimination (lanczos.h).
#include "primes/quadratique/lanczos.h"

#include <algorithm>
#include <array>
#include <bit>
#include <optional>
#include <random>
#include <utility>

#include "primes/arithmetique/entier128.h"
#include "primes/quadratique/blocs.h"
#include "primes/quadratique/produits.h"

namespace premiers::quadratique {

namespace {

// Which columns S of a block are used, and W = S (S^T V^T A V S)^-1 S^T.
struct Choix {
  std::uint64_t colonnes = tous;
  Bloc inverse{};
};

// Adds row `pivot` to all others that have a bit in that column of `ou`.
void annuler(Bloc& ou, Bloc& autre, std::size_t pivot, std::size_t colonne) {
  for (std::size_t i = 0; i < 64; ++i) {
    if (i == pivot || ((ou[i] >> colonne) & 1) == 0) continue;
    ou[i] ^= ou[pivot];
    autre[i] ^= autre[pivot];
  }
}

// Brings a row with a bit in column c of `ou` to place c, of those at
// ordre[j], ordre[j + 1], ...
bool chercher_pivot(Bloc& ou, Bloc& autre, const std::array<std::size_t, 64>& ordre,
                    std::size_t j) {
  const std::size_t c = ordre[j];
  for (std::size_t k = j; k < 64; ++k) {
    if (((ou[ordre[k]] >> c) & 1) == 0) continue;
    std::swap(ou[ordre[k]], ou[c]);
    std::swap(autre[ordre[k]], autre[c]);
    return true;
  }
  return false;
}

// Inverts as much of t as possible (Montgomery, section 8): columns that were left out of the block
// before come first.
std::optional<Choix> choisir_colonnes(Bloc t, std::uint64_t avant) {
  std::array<std::size_t, 64> ordre{};
  std::size_t debut = 0;
  std::size_t fin = 64;
  for (std::size_t c = 64; c-- > 0;) ordre[((avant >> c) & 1) != 0 ? --fin : debut++] = c;
  Choix choix{0, unite()};
  for (std::size_t j = 0; j < 64; ++j) {
    const std::size_t c = ordre[j];
    if (chercher_pivot(t, choix.inverse, ordre, j)) {
      annuler(t, choix.inverse, c, c);
      choix.colonnes |= std::uint64_t{1} << c;
    } else {
      if (!chercher_pivot(choix.inverse, t, ordre, j)) return std::nullopt;
      annuler(choix.inverse, t, c, c);
      t[c] = choix.inverse[c] = 0;
    }
  }
  return choix;
}

// A block, and what later ones need of it.
struct Ronde {
  Mots v;
  Bloc vav{};   // V^T A V
  Bloc va2v{};  // V^T A^2 V
  Choix choix;
};

bool nul(const Bloc& b) {
  return std::all_of(b.begin(), b.end(), [](std::uint64_t mot) { return mot == 0; });
}

// V_{i+1} from A V_i and the blocks i, i - 1, i - 2 (Montgomery, theorem 3).
Mots bloc_suivant(Mots av, const Ronde& e0, const Ronde& e1, const Ronde& e2) {
  const std::uint64_t s = e0.choix.colonnes;
  for (std::uint64_t& mot : av) mot &= s;
  const Bloc d = somme(unite(), produit(e0.choix.inverse, somme(colonnes_de(e0.va2v, s), e0.vav)));
  ajouter_produit(av, e0.v, d);
  ajouter_produit(av, e1.v, produit(e1.choix.inverse, colonnes_de(e0.vav, s)));
  const Bloc gauche = produit(e2.choix.inverse, somme(unite(), produit(e1.vav, e1.choix.inverse)));
  const Bloc droite = somme(colonnes_de(e1.va2v, e1.choix.colonnes), e1.vav);
  ajouter_produit(av, e2.v, colonnes_de(produit(gauche, droite), s));
  return av;
}

// What the rounds come to: X - Y, and the last block, which A sends to its own complement.
struct Arrivee {
  Mots x;
  Mots v;
};

std::optional<Arrivee> parcourir(const MatriceDeProduits& b, std::uint64_t graine,
                                 const std::function<void()>& signe_de_vie) {
  std::mt19937_64 hasard(graine);
  Mots x(b.colonnes);
  for (std::uint64_t& mot : x) mot = hasard();
  const Mots v0 = b.gram(x);
  Ronde e0{v0, {}, {}, {}};
  Ronde e1{Mots(b.colonnes), {}, {}, {}};
  Ronde e2 = e1;
  for (std::size_t reste = b.colonnes / 60 + 20; reste > 0; --reste) {
    if (signe_de_vie) signe_de_vie();
    Mots av = b.gram(e0.v);
    e0.vav = produit_interieur(e0.v, av);
    if (nul(e0.vav)) return Arrivee{std::move(x), std::move(e0.v)};
    e0.va2v = produit_interieur(av, av);
    const auto choix = choisir_colonnes(e0.vav, e1.choix.colonnes);
    if (!choix) return std::nullopt;
    e0.choix = *choix;
    ajouter_produit(x, e0.v, produit(e0.choix.inverse, produit_interieur(e0.v, v0)));
    Mots suivant = bloc_suivant(std::move(av), e0, e1, e2);
    e2 = std::exchange(e1, std::exchange(e0, Ronde{std::move(suivant), {}, {}, {}}));
  }
  return std::nullopt;
}

// Rows of 128 bits in echelon form, by the place of their lowest bit.
struct Echelons {
  std::array<Entier128, 128> ligne{};

  void ajouter(Entier128 l) {
    while (l != 0) {
      const auto c = static_cast<std::size_t>(zeros_finals(l));
      if (ligne[c] == 0) {
        ligne[c] = l;
        return;
      }
      l ^= ligne[c];
    }
  }

  // Every vector on which all rows vanish is a sum of these.
  std::vector<Entier128> noyau() const {
    std::vector<Entier128> membres;
    for (std::size_t libre = 0; libre < 128; ++libre) {
      if (ligne[libre] != 0) continue;
      Entier128 u = Entier128{1} << libre;
      for (std::size_t c = libre; c-- > 0;) {
        if (ligne[c] != 0 && impair(ligne[c] & u)) u |= Entier128{1} << c;
      }
      membres.push_back(u);
    }
    return membres;
  }

  static bool impair(Entier128 mots) {
    return (std::popcount(bas(mots)) + std::popcount(haut(mots))) % 2 != 0;
  }
};

// The sums of columns of [X - Y, V] that B sends to zero, as far as they are independent.
std::vector<Ensemble> membres(const MatriceDeProduits& b, const Arrivee& arrivee) {
  const auto paire = [](std::uint64_t x, std::uint64_t v) { return Entier128{v} << 64 | x; };
  Echelons images;
  const Mots bx = b.image(arrivee.x);
  const Mots bv = b.image(arrivee.v);
  for (std::size_t i = 0; i < bx.size(); ++i) images.ajouter(paire(bx[i], bv[i]));
  const std::vector<Entier128> sommes = images.noyau();

  // A member is what its sum has in each column; echelons of these tell which are independent.
  std::vector<Entier128> valeurs(b.colonnes);
  Echelons independants;
  for (std::size_t j = 0; j < b.colonnes; ++j) {
    const Entier128 ici = paire(arrivee.x[j], arrivee.v[j]);
    for (std::size_t k = 0; k < sommes.size(); ++k) {
      if (Echelons::impair(ici & sommes[k])) valeurs[j] |= Entier128{1} << k;
    }
    independants.ajouter(valeurs[j]);
  }
  std::vector<Ensemble> resultat;
  for (std::size_t k = 0; k < sommes.size() && resultat.size() < 64; ++k) {
    if (independants.ligne[k] == 0) continue;
    Ensemble membre;
    for (std::uint32_t j = 0; j < b.colonnes; ++j) {
      if (((valeurs[j] >> k) & 1) != 0) membre.push_back(j);
    }
    resultat.push_back(std::move(membre));
  }
  return resultat;
}

}  // namespace

std::vector<Ensemble> noyau_lanczos(const MatriceCreuse& matrice, std::uint64_t graine,
                                    const std::function<void()>& signe_de_vie) {
  const MatriceDeProduits b(matrice);
  const auto arrivee = parcourir(b, graine, signe_de_vie);
  if (!arrivee) return {};
  return membres(b, *arrivee);
}

}  // namespace premiers::quadratique
