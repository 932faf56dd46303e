// SPDX-License-Identifier: MIT
// The elimination, group of columns by group of columns, then the members read off (algebre.h).
#include "primes/quadratique/algebre.h"

#include <algorithm>
#include <array>
#include <bit>

#include "primes/quadratique/vecteurs.h"

namespace premiers::quadratique {

namespace {

constexpr std::size_t aucun = ~std::size_t{0};

// How far the elimination has come.
struct Pivots {
  std::vector<std::size_t> ligne_de;    // the row of each column's pivot; aucun if it has none
  std::vector<std::uint8_t> est_pivot;  // for each row
};

constexpr std::size_t colonnes_de_groupe = 16;
constexpr std::size_t groupes_de_mot = 64 / colonnes_de_groupe;

using Groupe = std::array<std::size_t, colonnes_de_groupe>;  // the pivot row of each column

// The entries of a row in group g of columns.
std::uint64_t motif(const Matrice& a, std::size_t ligne, std::size_t g) {
  return (a.bits[ligne * a.mots + g / groupes_de_mot] >>
          (colonnes_de_groupe * (g % groupes_de_mot))) &
         0xffff;
}

// Adds a row to another one, from the word of group g on: a row that is not yet a pivot, or is one
// of this group, has only zeros to the left of it.
void ajouter_ligne(Matrice& a, std::size_t g, std::size_t ligne, std::size_t terme) {
  for (std::size_t j = g / groupes_de_mot; j < a.mots; ++j) {
    a.bits[ligne * a.mots + j] ^= a.bits[terme * a.mots + j];
  }
}

// Finds a pivot for each column of group g that can have one. Only the rows that become pivots
// are changed: they are eliminated among themselves.
Groupe chercher_pivots(Matrice& a, std::size_t g, Pivots& pivots) {
  Groupe ligne_de;
  ligne_de.fill(aucun);
  std::array<std::uint64_t, colonnes_de_groupe> motif_de{};
  std::size_t trouves = 0;
  for (std::size_t r = 0; r < a.lignes && trouves < colonnes_de_groupe; ++r) {
    if (pivots.est_pivot[r] != 0) continue;
    const std::uint64_t avant = motif(a, r, g);
    std::uint64_t reste = avant;
    for (std::size_t c = 0; c < colonnes_de_groupe; ++c) {
      if (((avant >> c) & 1) != 0) reste ^= motif_de[c];
    }
    if (reste == 0) continue;
    for (std::size_t c = 0; c < colonnes_de_groupe; ++c) {
      if (ligne_de[c] != aucun && ((avant >> c) & 1) != 0) ajouter_ligne(a, g, r, ligne_de[c]);
    }
    const auto nouvelle = static_cast<std::size_t>(std::countr_zero(reste));
    for (std::size_t c = 0; c < colonnes_de_groupe; ++c) {
      if (((motif_de[c] >> nouvelle) & 1) == 0) continue;
      ajouter_ligne(a, g, ligne_de[c], r);
      motif_de[c] ^= reste;
    }
    ligne_de[nouvelle] = r;
    motif_de[nouvelle] = reste;
    pivots.est_pivot[r] = 1;
    ++trouves;
  }
  return ligne_de;
}

// For each pattern of eight bits the sum of the pivot rows, `lignes`, that clears it.
void remplir_sommes(const Matrice& a, std::size_t g, const std::size_t* lignes,
                    std::uint64_t* sommes) {
  const std::size_t largeur = a.mots - g / groupes_de_mot;
  std::fill_n(sommes, largeur, 0);
  for (std::size_t i = 1; i < 256; ++i) {
    const std::uint64_t* const avant = sommes + (i & (i - 1)) * largeur;
    std::uint64_t* const somme = sommes + i * largeur;
    const std::size_t pivot = lignes[std::countr_zero(i)];
    if (pivot == aucun) {
      std::copy_n(avant, largeur, somme);
    } else {
      const std::uint64_t* const terme = &a.bits[pivot * a.mots + g / groupes_de_mot];
      for (std::size_t j = 0; j < largeur; ++j) somme[j] = avant[j] ^ terme[j];
    }
  }
}

// Clears the columns of group g in all rows but their pivots.
void eliminer_groupe(Matrice& a, std::size_t g, Pivots& pivots,
                     std::vector<std::uint64_t>& sommes) {
  const Groupe ligne_de = chercher_pivots(a, g, pivots);
  const std::size_t largeur = a.mots - g / groupes_de_mot;
  remplir_sommes(a, g, ligne_de.data(), sommes.data());
  remplir_sommes(a, g, ligne_de.data() + 8, sommes.data() + 256 * largeur);
  // The pivot rows clear themselves and are put back from their copies among the sums.
  vecteurs().eliminer(a.bits.data(), a.lignes, a.mots, g, sommes.data());
  for (std::size_t c = 0; c < colonnes_de_groupe; ++c) {
    if (ligne_de[c] == aucun) continue;
    const std::size_t copie = 256 * (c / 8) + (std::size_t{1} << (c % 8));
    std::copy_n(&sommes[copie * largeur], largeur,
                &a.bits[ligne_de[c] * a.mots + g / groupes_de_mot]);
    pivots.ligne_de[colonnes_de_groupe * g + c] = ligne_de[c];
  }
}

}  // namespace

Matrice::Matrice(std::size_t lignes_, std::size_t colonnes_)
    : lignes(lignes_), colonnes(colonnes_), mots((colonnes_ + 63) / 64), bits(lignes_ * mots) {}

void Matrice::inverser(std::size_t ligne, std::size_t colonne) {
  bits[ligne * mots + colonne / 64] ^= std::uint64_t{1} << (colonne % 64);
}

std::vector<Ensemble> noyau(Matrice& matrice, std::size_t maximum,
                            const std::function<void()>& signe_de_vie) {
  Pivots pivots{std::vector<std::size_t>(64 * matrice.mots, aucun),
                std::vector<std::uint8_t>(matrice.lignes)};
  std::vector<std::uint64_t> sommes(2 * 256 * matrice.mots);
  for (std::size_t g = 0; colonnes_de_groupe * g < matrice.colonnes; ++g) {
    eliminer_groupe(matrice, g, pivots, sommes);
    if (signe_de_vie && g % 4 == 3) signe_de_vie();
  }

  // A column without pivot is the sum of the pivot columns of the rows in which it has a 1.
  std::vector<Ensemble> membres;
  for (std::size_t libre = 0; libre < matrice.colonnes && membres.size() < maximum; ++libre) {
    if (pivots.ligne_de[libre] != aucun) continue;
    Ensemble membre;
    for (std::size_t c = 0; c < libre; ++c) {
      const std::size_t r = pivots.ligne_de[c];
      if (r == aucun) continue;
      if (((matrice.bits[r * matrice.mots + libre / 64] >> (libre % 64)) & 1) != 0) {
        membre.push_back(static_cast<std::uint32_t>(c));
      }
    }
    membre.push_back(static_cast<std::uint32_t>(libre));
    membres.push_back(std::move(membre));
  }
  return membres;
}

}  // namespace premiers::quadratique
