// SPDX-License-Identifier: MIT
#include "primes/concatenations/concatenations.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <span>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "concat_modele.h"
#include "primes/dette/recherche.h"
#include "primes/facteurs/facteurs.h"

namespace premiers::concatenations {
namespace {

using NTL::ZZ;
using Liste = std::vector<std::pair<std::string, std::string>>;  // number, ways

/// Searches and notes, as the dialogue does.
std::uint64_t chercher_et_noter(const Recherche& recherche, const Gardes& gardes,
                                dette::Dette& dette, const Suivi& suivi = {}) {
  dette::NotesDeRecherche notes(dette, recherche);
  const std::uint64_t effectif = chercher_concatenations(recherche, gardes, notes.examens(), suivi);
  dette::noter_recherche(dette, notes);
  return effectif;
}

struct Resultat {
  Liste liste;
  std::uint64_t effectif = 0;
  std::uint64_t borne_due = 0;
};

Resultat chercher(const ZZ& debut, const ZZ& fin, bool premiers_seuls) {
  Resultat r;
  const auto garder = [&](std::string_view tete, const auto& effectifs) {
    for (std::size_t d = 0; d < 10; ++d) {
      std::ostringstream chemins;
      chemins << effectifs[d];
      if (effectifs[d] != 0) {
        r.liste.emplace_back(std::string(tete) + std::to_string(d), chemins.str());
      }
    }
  };
  dette::Dette dette;
  r.effectif = chercher_et_noter({debut, fin, premiers_seuls}, {garder, garder}, dette);
  r.borne_due = dette.borne_due;
  return r;
}

std::uint64_t compter(const ZZ& debut, const ZZ& fin, bool premiers_seuls) {
  return chercher_concatenations({debut, fin, premiers_seuls}, {});
}

/// The search, number by number; `prem` is asked for each number and each piece in turn.
template <typename Prem>
Liste chercher_litteralement(const ZZ& debut, const ZZ& fin, bool premiers_seuls, Prem prem) {
  modele::Concatenations tables{prem};
  Liste liste;
  for (ZZ N = debut; N <= fin; ++N) {
    const bool premier = prem(N);
    if (premiers_seuls && !premier) continue;
    const std::uint64_t chemins = tables.compter(modele::texte(N));
    if (chemins > (premiers_seuls ? 1U : 0U)) {
      liste.emplace_back(modele::texte(N), std::to_string(chemins));
    }
  }
  return liste;
}

/// Compares list, count and the growth of the table with division by the primes in turn.
void comparer(std::uint64_t debut, std::uint64_t fin, bool premiers_seuls) {
  SCOPED_TRACE(std::to_string(debut) + " .. " + std::to_string(fin));
  modele::Table table;
  const auto prem = [&](const ZZ& S) { return table.est_premier(NTL::conv<unsigned long>(S)); };
  const ZZ de = NTL::conv<ZZ>(debut);
  const ZZ a = NTL::conv<ZZ>(fin);
  const Liste attendue = chercher_litteralement(de, a, premiers_seuls, prem);
  const Resultat r = chercher(de, a, premiers_seuls);
  EXPECT_EQ(r.liste, attendue);
  EXPECT_EQ(r.effectif, attendue.size());
  EXPECT_EQ(modele::premier_apres(r.borne_due), table.premiers.back());
}

/// Numbers with few primes at their beginning, so that start entries are carried over.
std::uint64_t nombre_au_hasard(std::mt19937_64& hasard) {
  static const std::string debuts = "14689014689123457";
  static const std::string suites = "0123456789014680146814680";
  std::string chiffres(1, debuts[hasard() % debuts.size()]);
  const std::size_t longueur = hasard() % 7;
  while (chiffres.size() <= longueur) chiffres += suites[hasard() % suites.size()];
  return std::max(1ULL, std::stoull(chiffres));
}

// What repeats a law with many values does so with fewer under the sanitizers, which look at memory.
#if defined(PREMIERS_ASSAINI)
constexpr int un_sur = 3;
#else
constexpr int un_sur = 1;
#endif

TEST(Concatenations, SmallRangesAgreeWithTheLiteralSearch) {
  for (std::uint64_t debut = 1; debut <= 60; ++debut) {
    for (std::uint64_t fin = debut; fin <= 130; fin += 3 * un_sur) {
      comparer(debut, fin, false);
      comparer(debut, fin, true);
    }
  }
}

TEST(Concatenations, RandomRangesAgreeWithTheLiteralSearch) {
  std::mt19937_64 hasard(20240607);
  for (int i = 0; i < 600 / un_sur; ++i) {
    const std::uint64_t debut = nombre_au_hasard(hasard);
    comparer(debut, debut + hasard() % (i % 4 == 0 ? 700 : 60), i % 4 == 3);
  }
}

TEST(Concatenations, RangesThatCrossAPowerOfTenAgreeWithTheLiteralSearch) {
  for (std::uint64_t puissance = 10; puissance <= 10'000'000; puissance *= 10) {
    for (std::uint64_t avant : {1U, 2U, 9U, 10U, 11U, 70U}) {
      comparer(puissance - std::min(avant, puissance - 1), puissance + avant, false);
      comparer(puissance - std::min(avant, puissance - 1), puissance + avant, true);
    }
  }
}

TEST(Concatenations, SingleNumbersAgreeWithTheLiteralSearch) {
  for (std::uint64_t n = 1; n <= 3000; n += n < 200 ? 1 : un_sur) {
    comparer(n, n, false);
    comparer(n, n, true);
  }
}

TEST(Concatenations, RangesWithoutAnyPrimeOweWhatTheirPiecesOwe) {
  // Inside of gaps between primes.
  for (const auto& [debut, fin] : {std::pair{114U, 126U},
                                   {1328U, 1360U},
                                   {4832U, 4860U},
                                   {9552U, 9586U},
                                   {31398U, 31468U},
                                   {155922U, 156006U},
                                   {360654U, 360748U},
                                   {492114U, 492226U},
                                   {4652354U, 4652506U}}) {
    for (unsigned de = debut; de < fin; de += 5) {
      comparer(de, fin, false);
      comparer(de, fin, true);
    }
  }
}

TEST(Concatenations, TheStartEntryIsCarriedOver) {
  const Resultat r = chercher(ZZ(421), ZZ(423), false);
  EXPECT_EQ(r.liste, (Liste{{"421", "1"}, {"423", "1"}}));
}

TEST(Concatenations, TheStartEntryCarriedOverIsUsedUp) {
  // 12: the piece 2 begins at the second digit, so its length 1 would lead back to itself.
  EXPECT_EQ(chercher(ZZ(11), ZZ(12), false).liste, (Liste{{"11", "1"}}));
}

TEST(Concatenations, LeadingZerosOfAPieceVanish) {
  EXPECT_EQ(chercher(ZZ(2002), ZZ(2003), false).liste, (Liste{{"2002", "1"}, {"2003", "2"}}));
}

// From tests/derive_concatenations.py.
TEST(ConcatenationsEnNombre, KnownCountsOfPrimes) {
  const std::uint64_t attendus[] = {0, 4, 57, 485, 4138, 35248, 306608};
  ZZ puissance(10);
  for (const std::uint64_t attendu : attendus) {
    EXPECT_EQ(compter(ZZ(1), puissance - 1, true), attendu) << puissance;
    puissance *= 10;
  }
}

TEST(ConcatenationsEnNombre, KnownCountsOfNumbers) {
  const std::uint64_t attendus[] = {4, 37, 352, 3458, 34451, 341746, 3395875};
  ZZ puissance(10);
  for (const std::uint64_t attendu : attendus) {
    EXPECT_EQ(compter(ZZ(1), puissance - 1, false), attendu) << puissance;
    puissance *= 10;
  }
}

TEST(Concatenations, NumbersBeyondTheLookedUpOnesAgreeWithTheLiteralSearch) {
  std::mt19937_64 hasard(77);
  const auto prem = [](const ZZ& S) { return NTL::ProbPrime(S, 20) != 0; };
  for (int i = 0; i < 60; ++i) {
    std::string chiffres(1, static_cast<char>('1' + hasard() % 9));
    const std::size_t longueur = 9 + hasard() % 20;
    while (chiffres.size() < longueur) {
      chiffres += static_cast<char>('0' + (hasard() % 3 == 0 ? 0 : hasard() % 10));
    }
    const ZZ debut = NTL::conv<ZZ>(chiffres.c_str());
    const ZZ fin = debut + static_cast<long>(hasard() % 40);
    SCOPED_TRACE(chiffres);
    const bool premiers_seuls = i % 3 == 0;
    EXPECT_EQ(chercher(debut, fin, premiers_seuls).liste,
              chercher_litteralement(debut, fin, premiers_seuls, prem));
  }
}

/// A search that begins at a prime owes nothing to the number before it, so a wide one, which
/// sieves long pieces, must keep what narrow ones keep, which test them.
TEST(ConcatenationsLent, AWideRangeKeepsWhatItsPartsKeep) {
  for (const char* chiffres : {"123456789012345", "4680146801468", "999999900000", "61999950000"}) {
    for (const bool premiers_seuls : {false, true}) {
      ZZ debut = NTL::conv<ZZ>(chiffres);
      while (!NTL::ProbPrime(debut, 20)) ++debut;
      ZZ fin = debut + 150'000;
      Resultat parties;
      for (ZZ de = debut; de <= fin;) {
        ZZ suivant = std::min(ZZ(de + 30'000), ZZ(fin + 1));
        while (suivant <= fin && !NTL::ProbPrime(suivant, 20)) ++suivant;
        const Resultat partie = chercher(de, suivant - 1, premiers_seuls);
        parties.effectif += partie.effectif;
        parties.liste.insert(parties.liste.end(), partie.liste.begin(), partie.liste.end());
        de = suivant;
      }
      const Resultat r = chercher(debut, fin, premiers_seuls);
      EXPECT_EQ(r.effectif, parties.effectif) << chiffres;
      EXPECT_TRUE(r.liste == parties.liste) << chiffres;
    }
  }
}

TEST(Concatenations, TheTwoSizesOfNumbersMeetSeamlessly) {
  const auto prem = [](const ZZ& S) { return NTL::ProbPrime(S, 20) != 0; };
  for (const long exposant : {19L, 20L}) {
    const ZZ milieu = NTL::power_ZZ(10, exposant);
    EXPECT_EQ(chercher(milieu - 60, milieu + 140, false).liste,
              chercher_litteralement(milieu - 60, milieu + 140, false, prem));
  }
}

/// What division by the primes in turn obliges the table to, found by dividing; a factor above 10^7,
/// of a number below 2^100, by decomposing.
std::uint64_t note(const ZZ& S) {
  if (S <= 2) return 0;
  const ZZ racine = NTL::SqrRoot(S);
  NTL::PrimeSeq suite;
  for (long p = suite.next(); p <= racine && p <= 10'000'000; p = suite.next()) {
    if (NTL::divide(S, p)) return static_cast<std::uint64_t>(p) - 1;
    if (p > 1'000'000'000) break;
  }
  if (NTL::NumBits(S) > 100) return 0;
  if (racine <= 10'000'000 || NTL::ProbPrime(S, 20)) return NTL::conv<unsigned long>(racine);
  return NTL::conv<unsigned long>(facteurs::decomposer(S).front().premier) - 1;
}

TEST(ConcatenationsLent, GrowthBeyondTheExactBound) {
  // Long numbers of mostly zeros: their pieces are beyond 2^100, or small.
  for (const char* chiffres :
       {"100000000000000000000000000000", "400000000000000000000000000000680",
        "600000000000000000000000901", "200000000000000000000000000004001"}) {
    for (const bool premiers_seuls : {false, true}) {
      std::uint64_t borne = 2;
      const auto prem = [&](const ZZ& S) {
        borne = std::max(borne, note(S));
        return NTL::ProbPrime(S, 20) != 0;
      };
      const ZZ debut = NTL::conv<ZZ>(chiffres);
      const Liste attendue = chercher_litteralement(debut, debut + 12, premiers_seuls, prem);
      const Resultat r = chercher(debut, debut + 12, premiers_seuls);
      EXPECT_EQ(r.liste, attendue) << chiffres;
      EXPECT_EQ(r.borne_due, borne) << chiffres;
    }
  }
}

/// `note` for many numbers of few digits that are not zero: the primes once, and no decomposition.
struct NotesLitterales {
  std::vector<long> premiers;
  std::uint64_t borne = 2;

  NotesLitterales() {
    NTL::PrimeSeq suite;
    for (long p = suite.next(); p <= 10'000'000; p = suite.next()) premiers.push_back(p);
  }

  void noter(const ZZ& S) {
    if (S <= 2) return;
    const ZZ racine = NTL::SqrRoot(S);
    for (const long p : premiers) {
      if (p > racine) break;
      if (NTL::divide(S, p) == 0) continue;
      borne = std::max(borne, static_cast<std::uint64_t>(p) - 1);
      return;
    }
    if (racine <= 10'000'000) borne = std::max(borne, NTL::conv<std::uint64_t>(racine));
    // Beyond 2^100 nothing more is noted; nothing lies between the two here.
    ASSERT_TRUE(racine <= 10'000'000 || NTL::NumBits(S) > 100) << S;
  }
};

/// What a range owes of round numbers: no piece between 10^14 and 2^100 is without a small factor.
std::uint64_t borne_litterale(const ZZ& debut, const ZZ& fin, bool premiers_seuls) {
  NotesLitterales notes;
  const auto prem = [&](const ZZ& S) {
    notes.noter(S);
    return S > 1 && NTL::ProbPrime(S, 20) != 0;
  };
  chercher_litteralement(debut, fin, premiers_seuls, prem);
  return notes.borne;
}

// Beyond 2^100 small factors are noted, found for many numbers together; here each number and each
// piece is divided. The ranges lie around the ends of such stretches, five digits wide, and around
// changes of the number of digits.
TEST(ConcatenationsLent, RoundNumbersOweWhatDividingThemOwes) {
  struct Cas {
    long exposant;
    long depuis, largeur;
  };
  for (const auto [exposant, depuis, largeur] :
       {Cas{32, 0, 12}, Cas{35, 99'990, 21}, Cas{36, 199'999, 1}, Cas{36, 9'995, 11},
        Cas{38, 0, 150}, Cas{39, 0, 0}, Cas{39, 1, 0}, Cas{34, 5, 1}, Cas{33, 299'950, 120},
        Cas{33, -2, 42}}) {
    const ZZ debut = NTL::power_ZZ(10, exposant) + depuis;
    for (const bool premiers_seuls : {false, true}) {
      EXPECT_EQ(chercher(debut, debut + largeur, premiers_seuls).borne_due,
                borne_litterale(debut, debut + largeur, premiers_seuls))
          << "10^" << exposant << " + " << depuis << ", " << largeur;
    }
  }
}

// 19 digits are the most whose ways are counted in 64 bits; 20 are counted without a limit.
TEST(Concatenations, NumbersAroundNineteenDigitsAgreeWithTheLiteralSearch) {
  std::mt19937_64 hasard(19);
  const auto prem = [](const ZZ& S) { return S > 1 && NTL::ProbPrime(S, 20) != 0; };
  for (int i = 0; i < 60; ++i) {
    const std::size_t longueur = 18 + static_cast<std::size_t>(i % 3);
    std::string chiffres(1, "14689"[hasard() % 5]);  // no prime: entries are carried over
    while (chiffres.size() < longueur) chiffres += "0123456789014680"[hasard() % 16];
    const ZZ debut = NTL::conv<ZZ>(chiffres.c_str());
    const ZZ fin = debut + static_cast<long>(hasard() % 60);
    const Liste attendue = chercher_litteralement(debut, fin, i % 4 == 3, prem);
    EXPECT_EQ(chercher(debut, fin, i % 4 == 3).liste, attendue) << chiffres;
  }
}

TEST(Concatenations, WaysBeyond64BitsAreCountedExactly) {
  // 7 and 3 in turn: with 73, 37, 373 ... there are more ways than 2^64. The sum runs forward here,
  // over primes decided by NTL.
  std::string chiffres;
  while (chiffres.size() < 120) chiffres += chiffres.size() % 2 == 0 ? "7" : "3";
  std::vector<ZZ> chemins(chiffres.size() + 1);
  chemins[0] = 1;
  for (std::size_t t = 0; t < chiffres.size(); ++t) {
    ZZ morceau;
    for (std::size_t u = t; u < chiffres.size(); ++u) {
      morceau = 10 * morceau + (chiffres[u] - '0');
      if (NTL::ProbPrime(morceau, 10)) chemins[u + 1] += chemins[t];
    }
  }
  ASSERT_GT(NTL::NumBits(chemins.back()), 64);
  const ZZ N = NTL::conv<ZZ>(chiffres.c_str());
  EXPECT_EQ(chercher(N, N, false).liste, (Liste{{chiffres, modele::texte(chemins.back())}}));
}

// From tests/derive_concatenations.py --longs: every piece of every number decided by Miller-Rabin in
// Python. The numbers are 1000 * tete + the first of each pair; the second is how many ways they have.
struct Garde {
  int fin;
  const char* chemins;
};

void comparer_150_chiffres(const char* tete, int derniere, bool premiers_seuls,
                           std::span<const Garde> attendus) {
  const ZZ debut = 1000 * NTL::conv<ZZ>(tete);
  Liste attendue;
  for (const auto& [fin, chemins] : attendus) {
    attendue.emplace_back(modele::texte(debut + fin), chemins);
  }
  const Resultat r = chercher(debut, debut + derniere, premiers_seuls);
  EXPECT_EQ(r.liste, attendue);
  EXPECT_EQ(r.effectif, attendus.size());
}

// Primes begin at the first digit.
constexpr const char* avec_departs =
    "235756334722614547602275147520012934977898907230473841040842118492476115526201"
    "244966529340160765416056281964037779324962553512090490781703261289424";
// None does among these digits, so the entry that is carried over matters.
constexpr const char* sans_depart =
    "483692120645724107629110409522678788242623820083668382954490962130954245774819"
    "347180333744347426469462318160889375493662910150440002125929802847542";

TEST(Concatenations, NumbersOf150DigitsKeepWhatALiteralSearchKeeps) {
  constexpr Garde attendus[] = {
      {1, "89653"},    {3, "95423"},    {7, "90225"},    {9, "5804"},     {11, "338499"},
      {17, "6224"},    {19, "178290"},  {21, "12123"},   {23, "33650"},   {27, "178290"},
      {32, "89619"},   {33, "179858"},  {35, "89619"},   {37, "179675"},  {39, "90023"},
      {43, "62394"},   {47, "88671"},   {49, "6247"},    {51, "21293"},   {53, "130751"},
      {57, "1972"},    {59, "89619"},   {61, "92206"},   {63, "89619"},   {67, "95592"},
      {69, "1559"},    {72, "131196"},  {73, "137192"},  {75, "131196"},  {77, "263921"},
      {79, "89619"},   {81, "110881"},  {87, "2706"},    {89, "15895"},   {91, "89924"},
      {92, "116685"},  {93, "206354"},  {95, "116685"},  {97, "132580"},  {99, "15895"},
      {102, "130751"}, {103, "220370"}, {105, "130751"}, {107, "130796"}, {109, "141963"},
      {111, "219525"}, {112, "92"},     {113, "220577"}, {115, "92"},     {117, "310081"},
      {119, "225646"}, {121, "184951"}, {122, "130751"}, {123, "351121"}, {125, "130751"},
      {127, "219422"}, {129, "232493"}, {131, "137067"}, {132, "226594"}, {133, "226726"},
      {135, "226594"}, {137, "446964"}, {139, "93062"},  {141, "130968"}, {143, "146646"},
      {147, "279747"}, {149, "89200"},  {151, "91178"},  {152, "130751"}, {153, "306855"},
      {155, "130751"}, {157, "220478"}, {159, "220675"}, {161, "146710"}, {163, "89619"},
      {167, "130751"}, {169, "90276"},  {171, "147046"}, {172, "134941"}, {173, "271059"},
      {175, "134941"}, {177, "223859"}, {179, "166433"}, {181, "33385"},  {183, "220370"},
      {187, "89734"},  {189, "220979"}, {191, "219859"}, {192, "3443"},   {193, "93062"},
      {195, "3443"},   {197, "134285"}, {199, "91978"}};
  comparer_150_chiffres(avec_departs, 199, false, attendus);
}

TEST(ConcatenationsLent, PrimesOf150DigitsKeepWhatALiteralSearchKeeps) {
  constexpr Garde attendus[] = {{571, "16110"}, {593, "52009"}};
  comparer_150_chiffres(avec_departs, 999, true, attendus);
}

TEST(Concatenations, AnEntryIsCarriedOverAmongNumbersOf150Digits) {
  constexpr Garde attendus[] = {
      {91, "1"},     {92, "1"},    {93, "5"},     {95, "1"},    {97, "1389"}, {99, "554"},
      {101, "1"},    {102, "101"}, {103, "1"},    {105, "101"}, {107, "101"}, {109, "556"},
      {111, "1766"}, {112, "43"},  {113, "1"},    {115, "43"},  {117, "145"}, {119, "146"},
      {121, "561"},  {122, "101"}, {123, "203"},  {125, "101"}, {127, "279"}, {129, "201"},
      {131, "103"},  {132, "700"}, {133, "1254"}, {135, "700"}, {137, "801"}, {139, "277"},
      {141, "656"},  {143, "655"}, {147, "107"},  {149, "1"},   {151, "556"}, {152, "101"},
      {153, "203"},  {155, "101"}, {157, "1213"}, {159, "101"}, {161, "657"}, {167, "102"},
      {169, "1200"}, {171, "655"}, {172, "103"},  {173, "758"}, {175, "103"}, {177, "662"},
      {179, "144"},  {181, "144"}, {183, "1212"}, {187, "1"},   {189, "102"}, {191, "98"},
      {192, "1"},    {193, "749"}, {195, "1"},    {197, "209"}, {199, "1110"}};
  comparer_150_chiffres(sans_depart, 199, false, attendus);
}

TEST(Concatenations, RefusesWhatIsNoRange) {
  EXPECT_THROW(chercher_concatenations({ZZ(0), ZZ(5), false}, {}), std::invalid_argument);
  EXPECT_THROW(chercher_concatenations({ZZ(6), ZZ(5), false}, {}), std::invalid_argument);
  EXPECT_THROW(chercher_concatenations({ZZ(1), NTL::power_ZZ(10, 256), false}, {}),
               std::invalid_argument);
}

TEST(Concatenations, ProgressRisesAndAbandonedWorkLeavesNoNote) {
  double derniere = 0;
  dette::Dette dette;
  const auto suivi = [&](double part) {
    EXPECT_GE(part, derniere);
    EXPECT_LE(part, 1);
    derniere = part;
  };
  const ZZ debut = NTL::power_ZZ(10, 30);
  chercher_et_noter({debut, debut + 300, false}, {}, dette, suivi);
  EXPECT_GT(dette.borne_due, dette::Dette{}.borne_due);
  EXPECT_GT(derniere, 0);
  struct Assez {};
  dette::Dette intacte;
  EXPECT_THROW(
      chercher_et_noter({debut, debut + 300, false}, {}, intacte, [](double) { throw Assez{}; }),
      Assez);
  EXPECT_EQ(intacte.borne_due, dette::Dette{}.borne_due);
}

}  // namespace
}  // namespace premiers::concatenations
