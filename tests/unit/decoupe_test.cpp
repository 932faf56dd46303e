// SPDX-License-Identifier: MIT
#include "primes/concatenations/decoupe.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "concat_modele.h"
#include "primes/dette/morceaux.h"

namespace premiers::concatenations {
namespace {

using NTL::ZZ;

bool premier_par_division(std::uint64_t n) {
  for (std::uint64_t d = 2; d * d <= n; ++d) {
    if (n % d == 0) return false;
  }
  return n > 1;
}

std::vector<std::string> chemins(const Decoupe& decoupe) {
  std::vector<std::string> liste;
  parcourir_chemins(decoupe, [&](std::string_view texte) { liste.emplace_back(texte); });
  return liste;
}

struct Chemin {
  std::vector<std::size_t> longueurs;
  std::string texte;
};

/// All sets of cuts are tried.
std::vector<std::string> chemins_par_masques(const std::string& chiffres) {
  std::vector<Chemin> liste;
  for (unsigned coupes = 0; coupes < 1U << (chiffres.size() - 1); ++coupes) {
    Chemin chemin{{}, " ( "};
    bool tous_premiers = true;
    std::string morceau;
    for (std::size_t i = 0; i < chiffres.size(); ++i) {
      morceau += chiffres[i];
      if (i + 1 < chiffres.size() && (coupes >> i & 1) == 0) continue;
      tous_premiers = tous_premiers && premier_par_division(std::stoull(morceau));
      chemin.longueurs.push_back(morceau.size());
      chemin.texte += morceau + " ";
      morceau.clear();
    }
    chemin.texte += ") ";
    if (tous_premiers) liste.push_back(chemin);
  }
  std::sort(liste.begin(), liste.end(),
            [](const Chemin& a, const Chemin& b) { return a.longueurs < b.longueurs; });
  std::vector<std::string> textes;
  for (const Chemin& chemin : liste) textes.push_back(chemin.texte);
  return textes;
}

void comparer(std::uint64_t n) {
  const Decoupe decoupe = decouper(NTL::conv<ZZ>(n));
  const std::vector<std::string> attendus = chemins_par_masques(std::to_string(n));
  ASSERT_EQ(chemins(decoupe), attendus) << n;
  ASSERT_EQ(decoupe.chemins.front(), attendus.size()) << n;
}

TEST(Decoupe, EveryWayInOrderForAllNumbersTo20000) {
  for (std::uint64_t n = 1; n < 20'000; ++n) comparer(n);
}

TEST(Decoupe, EveryWayInOrderForRandomNumbersTo12Digits) {
  std::mt19937_64 hasard(5);
  for (int i = 0; i < 60; ++i) {
    std::string chiffres(1, static_cast<char>('1' + hasard() % 9));
    const std::size_t longueur = 6 + hasard() % 7;
    static const std::string frequents = "0123456789237233705";
    while (chiffres.size() < longueur) chiffres += frequents[hasard() % frequents.size()];
    comparer(std::stoull(chiffres));
  }
}

TEST(Decoupe, PiecesAreWrittenWithTheirLeadingZeros) {
  EXPECT_EQ(chemins(decouper(ZZ(307))), (std::vector<std::string>{" ( 3 07 ) ", " ( 307 ) "}));
  EXPECT_EQ(chemins(decouper(ZZ(2003))), (std::vector<std::string>{" ( 2 003 ) ", " ( 2003 ) "}));
}

TEST(Decoupe, WithoutAPrimeAtTheFirstDigitNothingElseIsSought) {
  const Decoupe decoupe = decouper(ZZ(1237));  // 1237 itself is prime
  EXPECT_EQ(decoupe.chemins.front(), 1);
  const Decoupe rien = decouper(ZZ(4235));
  EXPECT_EQ(rien.chemins.front(), 0);
  EXPECT_TRUE(rien.longueurs[1].empty());
}

TEST(Decoupe, ANumberOf199DigitsHasItsWaysCountedExactly) {
  std::string chiffres;
  while (chiffres.size() < 199) chiffres += chiffres.size() % 2 == 0 ? '3' : '7';
  // The sum from the first digit forward, over primes decided by NTL. A piece depends only on its
  // length and its first digit.
  std::vector<bool> premier[2];
  for (std::size_t debut : {0U, 1U}) {
    ZZ morceau;
    for (std::size_t i = debut; i < chiffres.size(); ++i) {
      morceau = 10 * morceau + (chiffres[i] - '0');
      premier[debut].push_back(NTL::ProbPrime(morceau, 10) != 0);
    }
  }
  std::vector<ZZ> sommes(chiffres.size() + 1);
  sommes[0] = 1;
  for (std::size_t t = 0; t < chiffres.size(); ++t) {
    for (std::size_t u = 1; t + u <= chiffres.size(); ++u) {
      if (premier[t % 2][u - 1]) sommes[t + u] += sommes[t];
    }
  }
  ASSERT_GT(NTL::NumBits(sommes.back()), 157);
  EXPECT_EQ(decouper(NTL::conv<ZZ>(chiffres.c_str())).chemins.front(), sommes.back());
}

TEST(DecoupeEnNombre, OwesWhatDividingItsPiecesOwes) {
  for (std::uint64_t n = 1; n <= 20'000; ++n) {
    modele::Table table;
    modele::Concatenations tables{
        [&](const ZZ& S) { return table.est_premier(NTL::conv<unsigned long>(S)); }};
    tables.compter(std::to_string(n));
    dette::Dette dette;
    dette::noter_morceaux(dette, decouper(NTL::conv<ZZ>(n)));
    ASSERT_EQ(modele::premier_apres(dette.borne_due), table.premiers.back()) << n;
  }
}

TEST(Decoupe, ProgressEndsAtOne) {
  double derniere = 0;
  decouper(NTL::conv<ZZ>("23572357235723572357"), [&](double part) {
    EXPECT_GT(part, derniere);
    derniere = part;
  });
  EXPECT_DOUBLE_EQ(derniere, 1);
}

}  // namespace
}  // namespace premiers::concatenations
