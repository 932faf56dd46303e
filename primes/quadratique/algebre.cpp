// SPDX-License-Identifier: MIT
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

// The eight entries of a row in group g of columns.
std::uint64_t octet(const Matrice& a, std::size_t ligne, std::size_t g) {
  return (a.bits[ligne * a.mots + g / 8] >> (8 * (g % 8))) & 255;
}

// Adds a row to another one, from the word of group g on: a row that is not yet a pivot, or is one
// of this group, has only zeros to the left of it.
void ajouter_ligne(Matrice& a, std::size_t g, std::size_t ligne, std::size_t terme) {
  for (std::size_t j = g / 8; j < a.mots; ++j) {
    a.bits[ligne * a.mots + j] ^= a.bits[terme * a.mots + j];
  }
}

// Finds a pivot for each of the eight columns of group g that can have one. Only the rows that
// become pivots are changed: they are eliminated among themselves.
std::array<std::size_t, 8> chercher_pivots(Matrice& a, std::size_t g, Pivots& pivots) {
  std::array<std::size_t, 8> ligne_de;
  ligne_de.fill(aucun);
  std::size_t trouves = 0;
  for (std::size_t r = 0; r < a.lignes && trouves < 8; ++r) {
    if (pivots.est_pivot[r] != 0 || octet(a, r, g) == 0) continue;
    std::uint64_t reste = octet(a, r, g);
    for (std::size_t c = 0; c < 8; ++c) {
      if (ligne_de[c] != aucun && ((reste >> c) & 1) != 0) reste ^= octet(a, ligne_de[c], g);
    }
    if (reste == 0) continue;
    for (std::size_t c = 0; c < 8; ++c) {
      if (ligne_de[c] != aucun && ((octet(a, r, g) >> c) & 1) != 0) {
        ajouter_ligne(a, g, r, ligne_de[c]);
      }
    }
    const auto nouvelle = static_cast<std::size_t>(std::countr_zero(reste));
    for (const std::size_t pivot : ligne_de) {
      if (pivot != aucun && ((octet(a, pivot, g) >> nouvelle) & 1) != 0) {
        ajouter_ligne(a, g, pivot, r);
      }
    }
    ligne_de[nouvelle] = r;
    pivots.est_pivot[r] = 1;
    ++trouves;
  }
  return ligne_de;
}

// Clears the columns of group g in all rows but their pivots: for each of the 256 patterns that a
// row can have there, the sum of pivot rows that clears it is made once.
void eliminer_groupe(Matrice& a, std::size_t g, Pivots& pivots,
                     std::vector<std::uint64_t>& sommes) {
  const std::array<std::size_t, 8> ligne_de = chercher_pivots(a, g, pivots);
  const std::size_t largeur = a.mots - g / 8;
  for (std::size_t motif = 1; motif < 256; ++motif) {
    const std::uint64_t* avant = &sommes[(motif & (motif - 1)) * largeur];
    std::uint64_t* somme = &sommes[motif * largeur];
    const std::size_t pivot = ligne_de[static_cast<std::size_t>(std::countr_zero(motif))];
    if (pivot == aucun) {
      std::copy_n(avant, largeur, somme);
    } else {
      const std::uint64_t* terme = &a.bits[pivot * a.mots + g / 8];
      for (std::size_t j = 0; j < largeur; ++j) somme[j] = avant[j] ^ terme[j];
    }
  }
  // The pivot rows clear themselves and are put back from their copies among the sums.
  vecteurs().eliminer(a.bits.data(), a.lignes, a.mots, g, sommes.data());
  for (std::size_t c = 0; c < 8; ++c) {
    if (ligne_de[c] == aucun) continue;
    std::copy_n(&sommes[(std::size_t{1} << c) * largeur], largeur,
                &a.bits[ligne_de[c] * a.mots + g / 8]);
    pivots.ligne_de[8 * g + c] = ligne_de[c];
  }
}

}  // namespace

Matrice::Matrice(std::size_t lignes_, std::size_t colonnes_)
    : lignes(lignes_), colonnes(colonnes_), mots((colonnes_ + 63) / 64), bits(lignes_ * mots) {}

void Matrice::inverser(std::size_t ligne, std::size_t colonne) {
  bits[ligne * mots + colonne / 64] ^= std::uint64_t{1} << (colonne % 64);
}

std::vector<std::vector<std::size_t>> noyau(Matrice& matrice, std::size_t maximum) {
  Pivots pivots{std::vector<std::size_t>(64 * matrice.mots, aucun),
                std::vector<std::uint8_t>(matrice.lignes)};
  std::vector<std::uint64_t> sommes(256 * matrice.mots);
  for (std::size_t g = 0; 8 * g < matrice.colonnes; ++g) {
    std::fill_n(sommes.begin(), matrice.mots, 0);
    eliminer_groupe(matrice, g, pivots, sommes);
  }

  // A column without pivot is the sum of the pivot columns of the rows in which it has a 1.
  std::vector<std::vector<std::size_t>> base;
  for (std::size_t libre = 0; libre < matrice.colonnes && base.size() < maximum; ++libre) {
    if (pivots.ligne_de[libre] != aucun) continue;
    std::vector<std::size_t> membre;
    for (std::size_t c = 0; c < libre; ++c) {
      const std::size_t r = pivots.ligne_de[c];
      if (r == aucun) continue;
      if (((matrice.bits[r * matrice.mots + libre / 64] >> (libre % 64)) & 1) != 0) {
        membre.push_back(c);
      }
    }
    membre.push_back(libre);
    base.push_back(std::move(membre));
  }
  return base;
}

}  // namespace premiers::quadratique
