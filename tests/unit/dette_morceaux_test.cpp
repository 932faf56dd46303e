// SPDX-License-Identifier: MIT
// The notes of pieces, found for stretches of numbers together, against the note of each piece.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "concat_modele.h"
#include "primes/dette/decisions.h"
#include "primes/dette/morceaux.h"
#include "primes/facteurs/etendue.h"

namespace premiers {
namespace {

using NTL::ZZ;

std::size_t communs(const std::string& a, const std::string& b) {
  if (a.size() != b.size()) return 0;
  return static_cast<std::size_t>(std::mismatch(a.begin(), a.end(), b.begin()).first - a.begin());
}

/// Each piece by itself, leading zeros and all.
void noter_tout(dette::Dette& dette, const std::string& chiffres) {
  for (std::size_t t = 0; t < chiffres.size(); ++t) {
    for (std::size_t u = 1; u <= chiffres.size() - t; ++u) {
      dette::noter_prem(
          dette, concatenations::valeur_des_chiffres(std::string_view(chiffres).substr(t, u)));
    }
  }
}

/// The bound after all pieces of `nombre` numbers from there on.
void comparer(const ZZ& debut, std::uint64_t nombre) {
  dette::Dette dette;
  dette::Dette attendue;
  dette::DetteMorceaux morceaux(dette, nombre);
  std::string avant;
  for (std::uint64_t i = 0; i < nombre; ++i) {
    const std::string chiffres = modele::texte(debut + static_cast<long>(i));
    morceaux.noter(chiffres, concatenations::Morceaux::tous, communs(avant, chiffres));
    noter_tout(attendue, chiffres);
    ASSERT_EQ(dette.borne_due, attendue.borne_due) << chiffres;
    avant = chiffres;
  }
}

ZZ lire(const std::string& chiffres) { return NTL::conv<ZZ>(chiffres.c_str()); }

TEST(DetteMorceauxEnNombre, StretchesOfRoundNumbers) {
  const std::string zeros(30, '0');
  comparer(lire("1" + zeros + "00000"), 40);
  comparer(lire("1" + zeros + "99980"), 40);
  comparer(lire("4" + zeros + "0999990"), 25);
  comparer(lire("84" + zeros + "01299993"), 12);
  comparer(lire("6" + zeros + zeros + "00000" + zeros + "00095"), 12);
  comparer(lire("1" + zeros) - 15, 30);
}

// Pieces begin in more places than stretches are kept.
TEST(DetteMorceaux, PiecesThatBeginInManyPlaces) {
  std::string chiffres;
  while (chiffres.size() < 36) chiffres += "2468"[chiffres.size() % 3];
  comparer(lire(chiffres + std::string(30, '0') + "99998"), 4);
}

TEST(DetteMorceaux, AnyNumbers) {
  NTL::SetSeed(ZZ{9});
  for (const long chiffres : {5, 20, 31, 32, 60}) {
    comparer(NTL::RandomBnd(NTL::power_ZZ(10, chiffres)) + 1, 4);
  }
}

/// Notes the number alone, as one of many or by itself, over a debt.
std::uint64_t noter_seul(const ZZ& N, std::uint64_t borne_due, std::uint64_t largeur) {
  dette::Dette dette;
  dette.borne_due = borne_due;
  dette::DetteMorceaux(dette, largeur)
      .noter(modele::texte(N), concatenations::Morceaux::nombre_entier);
  return dette.borne_due;
}

TEST(DetteMorceaux, AFactorCountsIfItRaisesTheBoundByOne) {
  const ZZ cofacteur = NTL::power_ZZ(2, 127) - 1;  // a prime
  for (const std::uint64_t largeur : {1U, 7U, 100'000U}) {
    for (const std::uint64_t p : {5ULL, 101ULL, 5'000'011ULL, 9'999'973ULL, 9'999'991ULL}) {
      const ZZ N = cofacteur * static_cast<long>(p);
      EXPECT_EQ(noter_seul(N, 2, largeur), p - 1);
      EXPECT_EQ(noter_seul(N, p - 2, largeur), p - 1);
      EXPECT_EQ(noter_seul(N, p - 1, largeur), p - 1);
      EXPECT_EQ(noter_seul(N, p, largeur), p);
      // The smallest one counts.
      EXPECT_EQ(noter_seul(3 * N, 2, largeur), 2U);
      EXPECT_EQ(noter_seul(N * 9'999'991, 2, largeur), p - 1);
    }
    EXPECT_EQ(noter_seul(cofacteur, 2, largeur), 2U);
    EXPECT_EQ(noter_seul(cofacteur * 10'000'019, 2, largeur), 2U);
  }
}

// 2^100 has 31 digits. Below, notes are exact; from there on small factors alone count.
TEST(DetteMorceaux, TheBoundOfExactNotesLiesAmongNumbersOf31Digits) {
  const ZZ borne = NTL::power_ZZ(2, 100);
  const ZZ p = NTL::NextPrime(NTL::power_ZZ(2, 40));
  const ZZ sous = NTL::NextPrime(borne / p - 5000) * p;
  const ZZ sur = NTL::NextPrime(borne / p + 1) * p;
  ASSERT_TRUE(sous < borne && borne < sur);
  ASSERT_EQ(modele::texte(sous).size(), modele::texte(sur).size());
  for (const std::uint64_t largeur : {1U, 1000U}) {
    EXPECT_EQ(noter_seul(sous, 2, largeur), NTL::conv<std::uint64_t>(p) - 1);
    EXPECT_EQ(noter_seul(sur, 2, largeur), 2U);
  }
}

}  // namespace
}  // namespace premiers
