// SPDX-License-Identifier: MIT
// Kernels over GF(2): the elimination on bits is the yardstick of the sparse methods.
#include "primes/quadratique/algebre.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <random>
#include <set>
#include <stdexcept>
#include <vector>

#include "primes/quadratique/blocs.h"
#include "primes/quadratique/creuse.h"
#include "primes/quadratique/filtrage.h"
#include "primes/quadratique/lanczos.h"
#include "primes/quadratique/noyau.h"
#include "primes/quadratique/produits.h"

namespace premiers::quadratique {
namespace {

using Hasard = std::mt19937_64;

// ---- Matrices --------------------------------------------------------------------------------------

/// As the quadratic sieve makes them: the row of the i-th prime p has an entry in one of p columns,
/// times `facteur`; row 0 and row 1 in every second one.
MatriceCreuse matrice_de_crible(std::size_t lignes, std::size_t colonnes, double facteur,
                                unsigned graine) {
  Hasard hasard(graine);
  MatriceCreuse m{lignes, std::vector<Ensemble>(colonnes)};
  for (std::uint32_t i = 0; i < lignes; ++i) {
    const double premier = (i + 1) * std::log(i + 2.0);
    std::bernoulli_distribution present(std::min(0.5, facteur / premier));
    for (Ensemble& colonne : m.colonnes) {
      if (present(hasard)) colonne.push_back(i);
    }
  }
  return m;
}

/// Adds columns that are sums of up to five earlier ones, equal to one, or empty.
void planter(MatriceCreuse& m, std::size_t combien, Hasard& hasard) {
  for (; combien > 0; --combien) {
    Ensemble somme;
    for (std::size_t k = hasard() % 6; k > 0; --k) {
      somme = difference_symetrique(somme, m.colonnes[hasard() % m.colonnes.size()]);
    }
    const auto place = static_cast<std::ptrdiff_t>(hasard() % (m.colonnes.size() + 1));
    m.colonnes.insert(m.colonnes.begin() + place, somme);
  }
}

Matrice en_bits(const MatriceCreuse& creuse) {
  Matrice m(creuse.lignes, creuse.colonnes.size());
  for (std::size_t j = 0; j < creuse.colonnes.size(); ++j) {
    for (const std::uint32_t i : creuse.colonnes[j]) m.inverser(i, j);
  }
  return m;
}

std::size_t dimension_du_noyau(const MatriceCreuse& creuse) {
  Matrice m = en_bits(creuse);
  return noyau(m, creuse.colonnes.size()).size();
}

/// How many of the sets, of numbers below `borne`, are independent: those that are left when the
/// kernel of the matrix that they are the columns of is taken away.
std::size_t independants(const std::vector<Ensemble>& ensembles, std::size_t borne) {
  return ensembles.size() - dimension_du_noyau({borne, ensembles});
}

/// Sums to zero, by counting; not empty; increasing.
void verifier_membre(const MatriceCreuse& m, const Ensemble& membre) {
  ASSERT_FALSE(membre.empty());
  EXPECT_TRUE(std::is_sorted(membre.begin(), membre.end(), std::less_equal<>()));
  std::vector<unsigned> entrees(m.lignes);
  for (const std::uint32_t j : membre) {
    ASSERT_LT(j, m.colonnes.size());
    for (const std::uint32_t i : m.colonnes[j]) ++entrees[i];
  }
  for (const unsigned e : entrees) ASSERT_EQ(e % 2, 0U);
}

void verifier_membres(const MatriceCreuse& m, const std::vector<Ensemble>& membres) {
  for (const Ensemble& membre : membres) verifier_membre(m, membre);
  EXPECT_EQ(independants(membres, m.colonnes.size()), membres.size());
}

// ---- Sets and blocks -------------------------------------------------------------------------------

TEST(Creuse, SumsOfSets) {
  EXPECT_EQ(difference_symetrique({1, 3, 5}, {2, 3, 6}), (Ensemble{1, 2, 5, 6}));
  EXPECT_EQ(difference_symetrique({1, 3}, {1, 3}), Ensemble{});
  Ensemble e{7, 1, 7, 3, 7, 1};
  garder_impairs(e);
  EXPECT_EQ(e, (Ensemble{3, 7}));
  EXPECT_EQ(somme({{0, 1}, {1, 2}, {2, 3}}, {0, 2}, 4), (Ensemble{0, 1, 2, 3}));
  EXPECT_EQ(somme({{0, 1}, {1, 2}, {2, 3}}, {0, 1}, 4), (Ensemble{0, 2}));
}

bool bit(std::uint64_t mot, std::size_t i) { return ((mot >> i) & 1) != 0; }

Mots mots_au_hasard(std::size_t n, Hasard& hasard) {
  Mots x(n);
  for (std::uint64_t& mot : x) mot = hasard();
  return x;
}

TEST(Blocs, ProductsAgreeWithTheirDefinitionBitByBit) {
  Hasard hasard(64);
  for (const std::size_t n : {0U, 1U, 63U, 200U}) {
    const Mots x = mots_au_hasard(n, hasard);
    const Mots y = mots_au_hasard(n, hasard);
    Bloc m;
    for (std::uint64_t& mot : m) mot = hasard();
    Mots r = y;
    ajouter_produit(r, x, m);
    const Bloc interieur = produit_interieur(x, y);
    for (std::size_t c = 0; c < 64; ++c) {
      for (std::size_t k = 0; k < n; ++k) {
        bool attendu = bit(y[k], c);
        for (std::size_t b = 0; b < 64; ++b) attendu ^= bit(x[k], b) && bit(m[b], c);
        ASSERT_EQ(bit(r[k], c), attendu);
      }
      for (std::size_t b = 0; b < 64; ++b) {
        bool attendu = false;
        for (std::size_t k = 0; k < n; ++k) attendu ^= bit(x[k], b) && bit(y[k], c);
        ASSERT_EQ(bit(interieur[b], c), attendu);
      }
    }
  }
}

TEST(Blocs, SmallProducts) {
  Hasard hasard(65);
  Bloc a;
  Bloc b;
  for (std::size_t i = 0; i < 64; ++i) {
    a[i] = hasard();
    b[i] = hasard();
  }
  EXPECT_EQ(produit(a, unite()), a);
  EXPECT_EQ(produit(unite(), a), a);
  EXPECT_EQ(somme(a, a), Bloc{});
  EXPECT_EQ(produit(somme(a, b), a), somme(produit(a, a), produit(b, a)));
  Mots r(64);
  ajouter_produit(r, Mots(a.begin(), a.end()), b);
  const Bloc ab = produit(a, b);
  EXPECT_EQ(r, Mots(ab.begin(), ab.end()));
  EXPECT_EQ(colonnes_de(a, 1)[5], a[5] & 1);
}

/// B and B^T B by the columns, one entry at a time; the rows of B may come in any order.
TEST(Produits, AgreeWithTheColumns) {
  Hasard hasard(66);
  for (const std::size_t lignes : {1U, 50U, 64U, 300U}) {
    for (const double facteur : {0.5, 8.0, 200.0}) {
      const MatriceCreuse m = matrice_de_crible(lignes, lignes + 7, facteur, 1);
      const MatriceDeProduits b(m);
      const Mots x = mots_au_hasard(m.colonnes.size(), hasard);
      Mots y(lignes);
      Mots z(m.colonnes.size());
      for (std::size_t j = 0; j < z.size(); ++j) {
        for (const std::uint32_t i : m.colonnes[j]) y[i] ^= x[j];
      }
      for (std::size_t j = 0; j < z.size(); ++j) {
        for (const std::uint32_t i : m.colonnes[j]) z[j] ^= y[i];
      }
      EXPECT_EQ(b.gram(x), z);
      Mots image = b.image(x);
      std::sort(image.begin(), image.end());
      std::sort(y.begin(), y.end());
      EXPECT_EQ(image, y);
    }
  }
  // Both kinds of rows have been met.
  const MatriceDeProduits b(matrice_de_crible(300, 307, 8, 1));
  EXPECT_GT(b.denses.size(), 0U);
  EXPECT_GT(b.lignes.size(), 0U);
}

// ---- Kernels ---------------------------------------------------------------------------------------

TEST(Lanczos, FindsTheWholeKernelWhenItIsSmall) {
  Hasard hasard(1);
  for (const std::size_t lignes : {70U, 100U, 200U, 500U, 1000U}) {
    for (unsigned graine = 1; graine <= 4; ++graine) {
      MatriceCreuse m = matrice_de_crible(lignes, lignes, 6, graine);
      planter(m, hasard() % 20, hasard);
      const std::size_t dimension = dimension_du_noyau(m);
      const auto membres = noyau_lanczos(m, graine);
      verifier_membres(m, membres);
      // 64 random sums of fewer than 40 vectors miss a dimension once in 2^24 times.
      if (dimension < 40) {
        EXPECT_EQ(membres.size(), dimension) << lignes << " " << graine;
      }
    }
  }
}

TEST(Lanczos, GivesDozensOfMembersOfALargeKernel) {
  const MatriceCreuse m = matrice_de_crible(1000, 1200, 6, 3);
  const auto membres = noyau_lanczos(m, 1);
  EXPECT_GE(membres.size(), 32U);
  EXPECT_LE(membres.size(), 64U);
  verifier_membres(m, membres);
}

// The last block, of less rank than the others, is where the method could fail.
TEST(LanczosEnNombre, EverySeedSucceeds) {
  const MatriceCreuse m = matrice_de_crible(300, 304, 20, 6);
  const std::size_t dimension = dimension_du_noyau(m);
  for (std::uint64_t graine = 1; graine <= 100; ++graine) {
    EXPECT_EQ(noyau_lanczos(m, graine).size(), dimension) << graine;
  }
}

TEST(Lanczos, AMatrixOfFullRankHasNoMember) {
  MatriceCreuse m{500, std::vector<Ensemble>(500)};
  for (std::uint32_t i = 0; i < 500; ++i) {
    for (std::uint32_t j = i; j < 500; j += 1 + i % 7 + j % 11) m.colonnes[j].push_back(i);
  }
  ASSERT_EQ(dimension_du_noyau(m), 0U);
  EXPECT_TRUE(noyau_lanczos(m, 1).empty());
  EXPECT_TRUE(noyau(m).empty());
}

TEST(Lanczos, TheSameSeedGivesTheSameMembers) {
  const MatriceCreuse m = matrice_de_crible(600, 610, 6, 4);
  EXPECT_EQ(noyau_lanczos(m, 5), noyau_lanczos(m, 5));
  EXPECT_NE(noyau_lanczos(m, 5), noyau_lanczos(m, 6));
}

TEST(Filtrage, KeepsTheKernelAndLeavesNoLightRow) {
  Hasard hasard(2);
  for (const std::size_t lignes : {1U, 5U, 40U, 200U, 700U}) {
    for (unsigned graine = 1; graine <= 6; ++graine) {
      MatriceCreuse m = matrice_de_crible(lignes, lignes + lignes / 10, 1 + graine, graine);
      planter(m, hasard() % 10, hasard);
      const MatriceReduite r = filtrer(m, m.colonnes.size());  // no column is superfluous
      EXPECT_LE(r.matrice.colonnes.size(), m.colonnes.size());
      EXPECT_EQ(dimension_du_noyau(r.matrice), dimension_du_noyau(m));
      std::vector<unsigned> poids(r.matrice.lignes);
      for (const Ensemble& colonne : r.matrice.colonnes) {
        for (const std::uint32_t i : colonne) ++poids[i];
      }
      for (const unsigned p : poids) EXPECT_GE(p, 2U);
      EXPECT_EQ(independants(r.origines, m.colonnes.size()), r.origines.size());
    }
  }
}

/// A column is the sum of its origins, up to the numbers of the rows: as many entries, and the sums
/// of two columns too.
TEST(Filtrage, EachColumnIsTheSumOfItsOrigins) {
  const MatriceCreuse m = matrice_de_crible(400, 430, 4, 7);
  const MatriceReduite r = filtrer(m, 20);
  ASSERT_EQ(r.origines.size(), r.matrice.colonnes.size());
  std::size_t sommes = 0;
  for (std::size_t j = 0; j < r.origines.size(); ++j) {
    const Ensemble ici = somme(m.colonnes, r.origines[j], m.lignes);
    EXPECT_EQ(ici.size(), r.matrice.colonnes[j].size());
    sommes += r.origines[j].size() > 1 ? 1 : 0;
    if (j == 0) continue;
    const Ensemble avant = somme(m.colonnes, r.origines[j - 1], m.lignes);
    EXPECT_EQ(difference_symetrique(ici, avant).size(),
              difference_symetrique(r.matrice.colonnes[j], r.matrice.colonnes[j - 1]).size());
  }
  EXPECT_GT(sommes, 20U);
}

TEST(Filtrage, KeepsSoManyColumnsMoreThanRows) {
  const MatriceCreuse m = matrice_de_crible(300, 600, 4, 8);
  for (const std::size_t surplus : {5U, 20U, 100U}) {
    const MatriceReduite r = filtrer(m, surplus);
    EXPECT_EQ(r.matrice.colonnes.size(), r.matrice.lignes + surplus);
  }
}

void verifier_noyau(const MatriceCreuse& m) {
  const auto membres = noyau(m);
  verifier_membres(m, membres);
  EXPECT_EQ(membres.empty(), dimension_du_noyau(m) == 0) << m.lignes;
}

TEST(Noyau, OfMatricesOfEverySizeWithPlantedDependencies) {
  Hasard hasard(3);
  for (std::size_t lignes = 1; lignes <= 1000; lignes += 1 + lignes / 4) {
    for (unsigned graine = 1; graine <= 3; ++graine) {
      MatriceCreuse m = matrice_de_crible(lignes, lignes, 3 * graine, graine);
      m.lignes += hasard() % 5;  // rows without entries
      planter(m, hasard() % 6, hasard);
      verifier_noyau(m);
    }
  }
}

TEST(Noyau, OfMatricesWithoutColumnsWithoutRowsAndWithEmptyOnes) {
  EXPECT_TRUE(noyau(MatriceCreuse{}).empty());
  EXPECT_TRUE(noyau(MatriceCreuse{5, {}}).empty());
  EXPECT_EQ(noyau(MatriceCreuse{0, {{}}}), (std::vector<Ensemble>{{0}}));
  EXPECT_EQ(noyau(MatriceCreuse{3, {{1}, {}, {2}}}), (std::vector<Ensemble>{{1}}));
  EXPECT_EQ(noyau(MatriceCreuse{3, {{0, 2}, {1}, {0, 2}}}), (std::vector<Ensemble>{{0, 2}}));
}

// Large enough that block Lanczos has to do it, after filtering.
TEST(NoyauLent, OfALargeMatrix) {
  MatriceCreuse m = matrice_de_crible(6000, 6005, 40, 5);
  std::size_t appels = 0;
  ASSERT_GT(filtrer(m, 20).matrice.colonnes.size(), 4000U);
  const auto membres = noyau(m, [&appels] { ++appels; });
  EXPECT_GE(membres.size(), 5U);
  EXPECT_GT(appels, 100U);
  verifier_membres(m, membres);
  EXPECT_THROW(noyau(m, [] { throw std::runtime_error("assez"); }), std::runtime_error);
  int avant = 0;  // in the middle of the rounds of block Lanczos
  EXPECT_THROW(noyau(m,
                     [&avant] {
                       if (++avant == 100) throw std::runtime_error("assez");
                     }),
               std::runtime_error);
}

}  // namespace
}  // namespace premiers::quadratique
