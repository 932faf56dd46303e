// SPDX-License-Identifier: MIT
#include "primes/quadratique/crible_quadratique.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <random>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "primes/quadratique/algebre.h"
#include "primes/quadratique/base.h"
#include "primes/quadratique/entier.h"
#include "primes/quadratique/polynome.h"
#include "primes/quadratique/reglages.h"
#include "primes/quadratique/tamis.h"
#include "primes/quadratique/vecteurs.h"

namespace premiers::quadratique {
namespace {

using quadratique::Entier256;

NTL::ZZ nombre(const std::string& chiffres) { return NTL::conv<NTL::ZZ>(chiffres.c_str()); }

std::string texte(const NTL::ZZ& n) {
  std::ostringstream flux;
  flux << n;
  return flux.str();
}

// The whole contract: what comes back divides n and is neither 1 nor n.
void verifier(const NTL::ZZ& n) {
  const auto facteur = facteur_quadratique(n);
  ASSERT_TRUE(facteur.has_value()) << texte(n);
  EXPECT_GT(*facteur, 1) << texte(n);
  EXPECT_LT(*facteur, n) << texte(n);
  EXPECT_EQ(n % *facteur, 0) << texte(n);
}

NTL::ZZ produit_de_deux(long bits_p, long bits_q) {
  const NTL::ZZ p = NTL::GenPrime_ZZ(bits_p);
  NTL::ZZ q = NTL::GenPrime_ZZ(bits_q);
  while (q == p) q = NTL::GenPrime_ZZ(bits_q);
  return p * q;
}

TEST(CribleQuadratiqueLent, ProductsOfTwoEqualPrimesOfEverySize) {
  NTL::SetSeed(NTL::ZZ(20250101));
  for (long bits = 66; bits <= 160; ++bits) {
    for (int i = 0; i < (bits < 100 ? 8 : bits < 130 ? 2 : 1); ++i)
      verifier(produit_de_deux(bits / 2, bits - bits / 2));
  }
}

TEST(CribleQuadratique, SmallNumbersDownToItsLimit) {
  NTL::SetSeed(NTL::ZZ(50));
  for (long bits = 52; bits < 66; ++bits) {
    for (int i = 0; i < 20; ++i) verifier(produit_de_deux(bits / 2, bits - bits / 2));
  }
}

TEST(CribleQuadratique, FactorsOfUnequalSize) {
  NTL::SetSeed(NTL::ZZ(11));
  for (long petit = 11; petit <= 55; petit += 4) verifier(produit_de_deux(petit, 120 - petit));
}

TEST(CribleQuadratique, ThreeFactorsAndMore) {
  NTL::SetSeed(NTL::ZZ(3));
  for (long bits = 24; bits <= 44; bits += 4) {
    verifier(produit_de_deux(bits, bits) * NTL::GenPrime_ZZ(bits));
  }
  verifier(produit_de_deux(25, 26) * produit_de_deux(27, 28));
  const NTL::ZZ p = NTL::GenPrime_ZZ(30);
  verifier(p * p * NTL::GenPrime_ZZ(40));  // squareful, but no perfect power
}

TEST(CribleQuadratique, FactorsCloseToEachOther) {
  for (const char* debut : {"1000000000000", "123456789012345678", "99999999999999999999"}) {
    const NTL::ZZ p = NTL::NextPrime(nombre(debut));
    verifier(p * NTL::NextPrime(p + 2));
  }
}

TEST(CribleQuadratique, EveryResidueModulo8SoThatTheMultiplierMatters) {
  NTL::SetSeed(NTL::ZZ(8));
  std::vector<int> vus(8);
  while (vus[1] < 10 || vus[3] < 10 || vus[5] < 10 || vus[7] < 10) {
    const NTL::ZZ n = produit_de_deux(48, 48);
    ++vus[static_cast<std::size_t>(NTL::rem(n, 8))];
    verifier(n);
  }
}

// 5 * 10^44 + 17711 and 126582278481012658227848101265822806309.
TEST(CribleQuadratique, NumbersThatOnceMadeALibraryHang) {
  verifier(nombre("500000000000000000000000000000000000000017711"));
  verifier(nombre("126582278481012658227848101265822806309"));
}

// 2^128 + 1 = 59649589127497217 * 5704689200685129054721 (M. Morrison and J. Brillhart, 1970).
TEST(CribleQuadratique, TheSeventhFermatNumber) {
  const NTL::ZZ f7 = NTL::power2_ZZ(128) + 1;
  const auto facteur = facteur_quadratique(f7);
  ASSERT_TRUE(facteur.has_value());
  const NTL::ZZ p = nombre("59649589127497217");
  EXPECT_TRUE(*facteur == p || *facteur == f7 / p);
}

// The first primes from pi 2^(b/2-2) and e 2^(b/2-2) on, b = 180 and 200, by PARI/GP's nextprime;
// isprime proves them. Each product has b bits; 220 bits: crible_quadratique_long_test.cpp.
TEST(CribleQuadratiqueLent, ProductsOfKnownPrimesOf180And200Bits) {
  constexpr const char* facteurs[][2] = {
      {"972275833250902676681726357", "841267478377831446005903777"},
      {"995610453248924340922087778507", "861457897858899400710045393487"}};
  long bits = 180;
  for (const auto& [grand, petit] : facteurs) {
    const NTL::ZZ n = nombre(grand) * nombre(petit);
    ASSERT_EQ(NTL::NumBits(n), bits);
    const auto facteur = facteur_quadratique(n);
    ASSERT_TRUE(facteur.has_value()) << bits;
    EXPECT_TRUE(*facteur == nombre(grand) || *facteur == nombre(petit)) << texte(*facteur);
    bits += 20;
  }
}

TEST(CribleQuadratique, SmallFactorsAndSquaresAreFoundToo) {
  NTL::SetSeed(NTL::ZZ(5));
  for (const long petit : {3L, 5L, 7L, 11L, 101L, 997L}) verifier(NTL::GenPrime_ZZ(90) * petit);
  const NTL::ZZ p = NTL::GenPrime_ZZ(50);
  EXPECT_EQ(facteur_quadratique(p * p), p);
}

TEST(CribleQuadratique, WhatItIsNotMadeForGivesNothingAndEnds) {
  EXPECT_FALSE(facteur_quadratique(NTL::ZZ(0)).has_value());
  EXPECT_FALSE(facteur_quadratique(NTL::ZZ(-15)).has_value());
  EXPECT_FALSE(facteur_quadratique(NTL::ZZ(15)).has_value());
  EXPECT_FALSE(facteur_quadratique(NTL::power2_ZZ(100)).has_value());
  EXPECT_FALSE(facteur_quadratique(NTL::power2_ZZ(400) + 1).has_value());
  EXPECT_FALSE(facteur_quadratique(NTL::power2_ZZ(89) - 1).has_value());  // a Mersenne prime
  const NTL::ZZ p = NTL::NextPrime(nombre("10000000000"));
  EXPECT_FALSE(facteur_quadratique(p * p * p).has_value());
}

TEST(CribleQuadratique, TheSameNumberGivesTheSameFactor) {
  NTL::SetSeed(NTL::ZZ(77));
  const NTL::ZZ n = produit_de_deux(50, 50) * NTL::GenPrime_ZZ(20);
  const auto une_fois = facteur_quadratique(n);
  NTL::SetSeed(NTL::ZZ(78));  // the library's random state must not matter
  EXPECT_EQ(facteur_quadratique(n), une_fois);
}

TEST(CribleQuadratique, ProgressGrowsFrom0To1AndMayAbandonTheWork) {
  NTL::SetSeed(NTL::ZZ(9));
  const NTL::ZZ n = produit_de_deux(70, 70);
  double dernier = 0;
  int appels = 0;
  std::vector<Etape::Genre> genres;
  const auto entendre = [&](double part) {
    EXPECT_GE(part, dernier);
    EXPECT_LE(part, 1);
    dernier = part;
    ++appels;
  };
  const auto annoncer = [&](const Etape& etape) {
    if (etape.genre == Etape::Genre::algebre) {
      EXPECT_GT(dernier, 0.9);
    }
    dernier = 0;
    genres.push_back(etape.genre);
  };
  const auto facteur = facteur_quadratique(n, Suivi{entendre, annoncer});
  EXPECT_TRUE(facteur.has_value());
  ASSERT_GE(genres.size(), 2U);
  EXPECT_EQ(genres.front(), Etape::Genre::crible);
  EXPECT_EQ(genres.back(), Etape::Genre::algebre);
  EXPECT_GT(appels, 10);
  EXPECT_THROW(facteur_quadratique(n, [](double) { throw std::runtime_error("assez"); }),
               std::runtime_error);
}

TEST(CribleQuadratiqueEntier, AgreesWithTheBigIntegers) {
  NTL::SetSeed(NTL::ZZ(256));
  for (int i = 0; i < 2000; ++i) {
    const NTL::ZZ a = NTL::RandomBits_ZZ(120) - NTL::RandomBits_ZZ(120);
    const NTL::ZZ b = NTL::RandomBits_ZZ(125) - NTL::RandomBits_ZZ(120);
    const long x = NTL::RandomBits_long(40) - NTL::RandomBits_long(40);
    const Entier256 u = quadratique::entier256(a);
    const Entier256 v = quadratique::entier256(b);
    EXPECT_EQ(quadratique::grand_entier(u), a);
    EXPECT_EQ(quadratique::grand_entier(somme(u, v)), a + b);
    EXPECT_EQ(quadratique::grand_entier(oppose(u)), -a);
    EXPECT_EQ(quadratique::grand_entier(produit(u, x)), a * x);
    EXPECT_EQ(quadratique::grand_entier(produit(u, v)), a * b);
    const NTL::ZZ quart = (a - (a % 4)) / 4;  // % of the library is never negative: rounds down
    EXPECT_EQ(quadratique::grand_entier(decalage(u, 2)), quart);
    EXPECT_EQ(negatif(u), a < 0);
    const NTL::ZZ impair = 2 * abs(a) + 1;
    const Entier256 w = quadratique::entier256(impair);
    EXPECT_EQ(quadratique::grand_entier(produit(w, quadratique::inverse(w))), 1);
  }
}

TEST(CribleQuadratiqueEntier, DividesWhatCanBeDividedAndLeavesTheRest) {
  NTL::SetSeed(NTL::ZZ(257));
  for (int i = 0; i < 2000; ++i) {
    const NTL::ZZ a = NTL::RandomBits_ZZ(10 + i % 220);
    const long p = 2 * NTL::RandomBnd(1L << (1 + i % 20)) + 3;
    Entier256 v = quadratique::entier256(a);
    const bool oui = divise(v, longueur(v), static_cast<std::uint64_t>(p),
                            inverse_2_64(static_cast<std::uint64_t>(p)));
    EXPECT_EQ(oui, a % p == 0);
    EXPECT_EQ(quadratique::grand_entier(v), oui ? a / p : a);
    Entier256 fois = quadratique::entier256(a * p);
    EXPECT_TRUE(divise(fois, longueur(fois), static_cast<std::uint64_t>(p),
                       inverse_2_64(static_cast<std::uint64_t>(p))));
    EXPECT_EQ(quadratique::grand_entier(fois), a);
  }
}

TEST(CribleQuadratiqueVecteurs, ListEachByteOnce) {
  std::mt19937 hasard(1);
  for (const std::size_t n : {64U, 128U, 640U}) {
    for (const unsigned rarete : {1U, 3U, 50U, 1000U}) {
      std::vector<std::uint8_t> octets(n);
      std::vector<std::uint32_t> leves;
      for (std::uint32_t i = 0; i < n; ++i) {
        octets[i] = static_cast<std::uint8_t>(hasard() % 128 + (hasard() % rarete == 0 ? 128 : 0));
        if (octets[i] >= 128) leves.push_back(i);
      }
      std::vector<std::uint32_t> liste;
      quadratique::vecteurs().relever(octets.data(), n, liste);
      EXPECT_EQ(liste, leves);
    }
  }
}

TEST(CribleQuadratiqueBase, HasSquareRootsOfKnAndMissesNoPrime) {
  NTL::SetSeed(NTL::ZZ(6));
  for (int i = 0; i < 20; ++i) {
    const NTL::ZZ n = produit_de_deux(60, 60);
    const quadratique::Base base = quadratique::construire_base(n, 400);
    EXPECT_EQ(base.kn, n * static_cast<long>(base.multiplicateur));
    EXPECT_EQ(base.kn % 8, 1);
    std::size_t carres = 0;
    for (std::size_t j = base.ordinaires; j < base.taille; ++j) {
      const long p = base.premier[j];
      const long t = base.racine[j];
      EXPECT_EQ(t * t % p, base.kn % p);
      ++carres;
    }
    // Counted once more, by Jacobi's symbol.
    std::size_t compte = 0;
    NTL::PrimeSeq suite;
    suite.reset(3);
    for (long p = suite.next(); p <= base.premier[base.taille - 1]; p = suite.next()) {
      if (NTL::Jacobi(NTL::ZZ(base.kn % p), NTL::ZZ(p)) == 1) ++compte;
    }
    EXPECT_EQ(carres, compte);
  }
}

TEST(CribleQuadratiqueBase, HoldsTheOddPrimesOfTheMultiplier) {
  NTL::SetSeed(NTL::ZZ(8));
  int premiers_multiplicateurs = 0;
  for (int i = 0; i < 40; ++i) {
    const quadratique::Base base = quadratique::construire_base(produit_de_deux(60, 60), 200);
    const std::uint32_t k = base.multiplicateur;
    std::vector<std::uint32_t> attendus;
    for (std::uint32_t p = 3; p <= k; p += 2) {
      if (k % p == 0 && NTL::ProbPrime(static_cast<long>(p))) attendus.push_back(p);
    }
    const std::vector<std::uint32_t> trouves(
        base.premier.begin() + 2,
        base.premier.begin() + static_cast<std::ptrdiff_t>(base.ordinaires));
    EXPECT_EQ(trouves, attendus) << k;
    premiers_multiplicateurs += attendus.size() == 1 && attendus.front() == k ? 1 : 0;
  }
  EXPECT_GT(premiers_multiplicateurs, 0);
}

TEST(CribleQuadratiquePolynomes, EveryRootOfEveryPolynomialIsOne) {
  NTL::SetSeed(NTL::ZZ(7));
  const NTL::ZZ n = produit_de_deux(50, 50);
  const quadratique::Reglages reglages = quadratique::reglages(100);
  const quadratique::Base base = quadratique::construire_base(n, reglages.base);
  quadratique::Polynomes polynomes(base, reglages);
  for (int i = 0; i < 100; ++i) {
    ASSERT_TRUE(polynomes.suivant());
    const NTL::ZZ a = quadratique::grand_entier(polynomes.famille.a);
    const NTL::ZZ b = quadratique::grand_entier(polynomes.b);
    const NTL::ZZ c = quadratique::grand_entier(polynomes.c);
    EXPECT_EQ(b * b - 4 * a * c, base.kn);
    for (std::size_t j = base.ordinaires; j < base.taille; ++j) {
      const long p = base.premier[j];
      if (a % p == 0) continue;
      for (const std::uint32_t racine : {polynomes.racine_1[j], polynomes.racine_2[j]}) {
        EXPECT_LT(racine, base.premier[j]);
        const NTL::ZZ x = NTL::to_ZZ(racine) - NTL::to_ZZ(polynomes.demi);
        EXPECT_EQ(((a * x + b) * x + c) % p, 0);
      }
    }
  }
}

TEST(CribleQuadratiquePolynomesLent, CoefficientsHaveTheWishedSizeAndAreNeverTheSame) {
  NTL::SetSeed(NTL::ZZ(14));
  for (const long bits : {66L, 100L, 160L, 224L, 225L, 300L, 350L}) {
    const quadratique::Reglages reglages = quadratique::reglages(bits);
    const quadratique::Base base =
        quadratique::construire_base(produit_de_deux(bits / 2, bits - bits / 2), reglages.base);
    EXPECT_EQ(base.taille, reglages.base) << bits;  // no bound on the primes has cut it off
    quadratique::Polynomes polynomes(base, reglages);
    const quadratique::Tamis tamis(base, reglages);
    polynomes.limite = tamis.fin;
    std::set<std::string> vus;
    const std::size_t familles = bits < 100 ? 50 : bits < 300 ? 100 : 8;
    double ecart = 0;
    for (std::size_t i = 0; i < familles; ++i) {
      polynomes.rang =
          (std::uint32_t{1} << (polynomes.coefficients.nombre - 1)) - 1;  // the last of its family
      ASSERT_TRUE(polynomes.suivant()) << bits << ", " << i;
      const NTL::ZZ a = quadratique::grand_entier(polynomes.famille.a);
      const NTL::ZZ b = quadratique::grand_entier(polynomes.b);
      EXPECT_TRUE(vus.insert(texte(a)).second) << bits << ", " << i;
      EXPECT_EQ(b * b - 4 * a * quadratique::grand_entier(polynomes.c), base.kn);
      EXPECT_EQ(polynomes.famille.facteurs.size(), polynomes.coefficients.nombre);
      EXPECT_LT(polynomes.famille.facteurs.back(), tamis.fin);  // the buckets hold no prime of a
      ecart += std::abs(NTL::log(a) / std::log(2.0) - polynomes.coefficients.taille);
    }
    EXPECT_LT(ecart / static_cast<double>(vus.size()), bits < 100 ? 1 : 0.3) << bits;
  }
}

// A sieve whose array is much shorter than most primes of the base, so that most go through the
// buckets, over more than one family of polynomials.
struct PetitCrible {
  explicit PetitCrible(const NTL::ZZ& n)
      : reglages{1500, 1024, 50, 60, 20, 1, 10},
        base(quadratique::construire_base(n, reglages.base)),
        polynomes(base, reglages),
        tamis(base, reglages) {
    polynomes.limite = tamis.fin;
  }
  /// The indices of the primes from `debut` on, but those of a, that divide at that position.
  std::vector<std::uint32_t> diviseurs(std::size_t debut, std::uint32_t position) const {
    const NTL::ZZ x = NTL::to_ZZ(position) - NTL::to_ZZ(polynomes.demi);
    const NTL::ZZ a = quadratique::grand_entier(polynomes.famille.a);
    const NTL::ZZ q = (a * x + quadratique::grand_entier(polynomes.b)) * x +
                      quadratique::grand_entier(polynomes.c);
    std::vector<std::uint32_t> liste;
    for (std::size_t i = debut; i < base.taille; ++i) {
      const long p = base.premier[i];
      if (q % p == 0 && a % p != 0) liste.push_back(static_cast<std::uint32_t>(i));
    }
    return liste;
  }
  quadratique::Reglages reglages;
  quadratique::Base base;
  quadratique::Polynomes polynomes;
  quadratique::Tamis tamis;
};

TEST(CribleQuadratiqueTamis, BucketsHoldTheLongPrimesThatDivideAndNoOthers) {
  NTL::SetSeed(NTL::ZZ(12));
  PetitCrible crible(produit_de_deux(60, 60));
  ASSERT_LT(crible.tamis.fin, crible.base.taille / 2);
  std::size_t trouves = 0;
  std::size_t familles = 0;
  for (int i = 0; i < 150; ++i) {
    ASSERT_TRUE(crible.polynomes.suivant());
    familles += crible.polynomes.rang == 0 ? 1 : 0;
    crible.tamis.cribler(crible.polynomes, 100);
    for (std::uint32_t x = static_cast<std::uint32_t>(i) % 64; x < crible.tamis.longueur; x += 64) {
      std::vector<std::uint32_t> lus;
      crible.tamis.seaux.diviseurs(crible.polynomes.rang, x, lus);
      std::sort(lus.begin(), lus.end());
      ASSERT_EQ(lus, crible.diviseurs(crible.tamis.fin, x)) << "polynomial " << i << " at " << x;
      trouves += lus.size();
    }
  }
  EXPECT_GT(trouves, 500U);
  EXPECT_GE(familles, 2U);
}

TEST(CribleQuadratiqueTamis, GivesThePositionsWhoseLogarithmsReachTheThreshold) {
  NTL::SetSeed(NTL::ZZ(13));
  PetitCrible crible(produit_de_deux(60, 60));
  constexpr std::uint32_t seuil = 30;
  std::size_t trouves = 0;
  for (int i = 0; i < 3; ++i) {
    ASSERT_TRUE(crible.polynomes.suivant());
    const std::vector<quadratique::Candidat> lus = crible.tamis.cribler(crible.polynomes, seuil);
    trouves += lus.size();
    std::size_t j = 0;
    for (std::uint32_t x = 0; x < crible.tamis.longueur; ++x) {
      std::uint32_t somme = 0;
      for (const std::uint32_t d : crible.diviseurs(crible.tamis.debut, x)) {
        std::uint32_t poids = crible.base.poids[d];
        for (const auto& tranche : crible.tamis.seaux.tranches) {
          if (tranche.debut <= d && d < tranche.fin) poids = tranche.poids;
        }
        somme += poids;
      }
      if (somme < seuil) continue;
      ASSERT_LT(j, lus.size());
      EXPECT_EQ(lus[j].position, x);
      EXPECT_EQ(lus[j].somme, somme);
      ++j;
    }
    EXPECT_EQ(j, lus.size());
  }
  EXPECT_GT(trouves, 20U);
}

TEST(CribleQuadratiqueAlgebre, KernelMembersSumToZeroAndAreAsManyAsTheyMustBe) {
  std::uint64_t etat = 1;
  const auto tirer = [&etat] {
    etat = etat * 6364136223846793005U + 1442695040888963407U;
    return etat >> 33;
  };
  for (const std::size_t lignes : {1U, 7U, 8U, 63U, 64U, 65U, 200U, 333U}) {
    for (const std::size_t colonnes : {lignes, lignes + 1, lignes + 20}) {
      quadratique::Matrice matrice(lignes, colonnes);
      for (std::size_t i = 0; i < lignes * colonnes / 8; ++i) {
        matrice.inverser(tirer() % lignes, tirer() % colonnes);
      }
      const quadratique::Matrice copie = matrice;
      const auto base = quadratique::noyau(matrice, colonnes);
      EXPECT_GE(base.size(), colonnes - lignes);
      for (const auto& membre : base) {
        ASSERT_FALSE(membre.empty());
        for (std::size_t r = 0; r < lignes; ++r) {
          std::uint64_t somme = 0;
          for (const std::size_t c : membre)
            somme ^= copie.bits[r * copie.mots + c / 64] >> (c % 64);
          EXPECT_EQ(somme & 1, 0U);
        }
      }
    }
  }
}

}  // namespace
}  // namespace premiers::quadratique
