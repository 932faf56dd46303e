// SPDX-License-Identifier: MIT
// What the quadratic sieve gathers, and what it makes of it before the algebra.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <numeric>
#include <optional>
#include <random>
#include <set>
#include <vector>

#include "primes/facteurs/facteurs64.h"
#include "primes/quadratique/avancement.h"
#include "primes/quadratique/campagne.h"
#include "primes/quadratique/crible_quadratique.h"
#include "primes/quadratique/cycles.h"
#include "primes/quadratique/racine.h"
#include "primes/quadratique/resolution.h"

namespace premiers::quadratique {
namespace {

std::uint64_t scinder(std::uint64_t m) { return facteurs::plus_petit_facteur(m); }

// ---- Residues ------------------------------------------------------------------------------------

constexpr std::uint64_t p_max = 1009;
constexpr BornesDesRestes bornes{p_max * p_max, 50000, 700'000'000};

TEST(Scission, AResidueBelowTheSquareIsOneLargePrime) {
  EXPECT_EQ(grands_premiers(1, bornes, scinder), (GrandsPremiers{1, 1}));
  EXPECT_EQ(grands_premiers(49999, bornes, scinder), (GrandsPremiers{1, 49999}));
  EXPECT_EQ(grands_premiers(50021, bornes, scinder), std::nullopt);
  EXPECT_EQ(grands_premiers(1018057, bornes, scinder), std::nullopt);  // a prime below 1009^2
}

TEST(Scission, ProductsOfTwoLargePrimesAreSplitAndTheSmallerComesFirst) {
  EXPECT_EQ(grands_premiers(1013 * 1019, bornes, scinder), (GrandsPremiers{1013, 1019}));
  EXPECT_EQ(grands_premiers(1013 * 1013, bornes, scinder), (GrandsPremiers{1013, 1013}));
  // No curve splits a square.
  EXPECT_EQ(grands_premiers(1013 * 1013, bornes, [](std::uint64_t) -> std::uint64_t { return 0; }),
            (GrandsPremiers{1013, 1013}));
  EXPECT_EQ(grands_premiers(1013 * 49999, bornes, scinder), (GrandsPremiers{1013, 49999}));
}

TEST(Scission, WhatCannotMeetAgainIsDropped) {
  EXPECT_EQ(grands_premiers(1299709, bornes, scinder), std::nullopt);  // a prime
  EXPECT_EQ(grands_premiers(1013 * 50021, bornes, scinder), std::nullopt);
  EXPECT_EQ(grands_premiers(26459ULL * 26479, bornes, scinder), std::nullopt);  // > 700'000'000
  const BornesDesRestes larges{p_max * p_max, 50000, 1ULL << 40};
  EXPECT_EQ(grands_premiers(1013ULL * 1019 * 1021, larges, scinder), std::nullopt);
  EXPECT_EQ(grands_premiers(26459ULL * 26479, larges, scinder), (GrandsPremiers{26459, 26479}));
  EXPECT_EQ(grands_premiers(1013 * 1019, larges, [](std::uint64_t) -> std::uint64_t { return 0; }),
            std::nullopt);
  // A composite factor is no large prime, even where the bound lies above P^2.
  const BornesDesRestes hautes{p_max * p_max, 1ULL << 32, 1ULL << 63};
  EXPECT_EQ(grands_premiers(1013ULL * 1019 * 1021, hautes, scinder), std::nullopt);
}

// ---- Lists -----------------------------------------------------------------------------------------

TEST(ListesSerrees, GiveBackWhatWasPutIn) {
  std::mt19937 hasard(1);
  ListesSerrees listes;
  std::vector<std::vector<std::uint32_t>> toutes;
  std::vector<std::size_t> places;
  for (int i = 0; i < 500; ++i) {
    std::vector<std::uint32_t> liste(hasard() % 30);
    for (std::uint32_t& x : liste) x = static_cast<std::uint32_t>(hasard()) >> hasard() % 32;
    std::sort(liste.begin(), liste.end());
    places.push_back(listes.ajouter(liste));
    toutes.push_back(liste);
  }
  places.push_back(listes.ajouter({0, 0, 127, 128, 255, 256 + 16384, ~0U}));
  toutes.push_back({0, 0, 127, 128, 255, 256 + 16384, ~0U});
  for (std::size_t i = 0; i < toutes.size(); ++i) {
    std::vector<std::uint32_t> lue;
    listes.pour_chaque(places[i], toutes[i].size(), [&](std::uint32_t x) { lue.push_back(x); });
    EXPECT_EQ(lue, toutes[i]);
  }
}

// ---- Graphs ----------------------------------------------------------------------------------------

using Aretes = std::vector<GrandsPremiers>;

// Edges - vertices + components, the components found by handing the smallest label on until
// nothing changes; 1 is always a vertex.
std::size_t cycles_comptes(const Aretes& aretes) {
  std::map<std::uint32_t, std::uint32_t> etiquette{{1, 1}};
  for (const auto& [p, q] : aretes) {
    etiquette[p] = p;
    etiquette[q] = q;
  }
  for (bool change = true; change;) {
    change = false;
    for (const auto& [p, q] : aretes) {
      const std::uint32_t petite = std::min(etiquette[p], etiquette[q]);
      change |= etiquette[p] != petite || etiquette[q] != petite;
      etiquette[p] = etiquette[q] = petite;
    }
  }
  std::set<std::uint32_t> composantes;
  for (const auto& [p, e] : etiquette) composantes.insert(e);
  return aretes.size() + composantes.size() - etiquette.size();
}

// Every large prime occurs an even number of times, and no edge twice.
void verifier_cycle(const Aretes& aretes, const Ensemble& cycle) {
  std::map<std::uint32_t, int> fois;
  std::set<std::uint32_t> vues;
  for (const std::uint32_t a : cycle) {
    ASSERT_LT(a, aretes.size());
    EXPECT_TRUE(vues.insert(a).second);
    ++fois[aretes[a].petit];
    ++fois[aretes[a].grand];
  }
  for (const auto& [p, e] : fois) {
    EXPECT_TRUE(p == 1 || e % 2 == 0) << p;
  }
}

// The number of independent ones among sets of edges.
std::size_t rang(std::vector<Ensemble> ensembles) {
  std::map<std::uint32_t, Ensemble> pivots;
  for (Ensemble& e : ensembles) {
    std::sort(e.begin(), e.end());
    while (!e.empty() && pivots.contains(e.back())) {
      e = difference_symetrique(e, pivots[e.back()]);
    }
    if (!e.empty()) pivots[e.back()] = e;
  }
  return pivots.size();
}

void verifier_graphe(const Aretes& aretes) {
  Graphe graphe;
  for (std::size_t i = 0; i < aretes.size(); ++i) {
    graphe.ajouter(aretes[i].petit, aretes[i].grand);
    if (i < 40) {
      EXPECT_EQ(graphe.cycles(),
                cycles_comptes(
                    Aretes(aretes.begin(), aretes.begin() + static_cast<std::ptrdiff_t>(i) + 1)));
    }
  }
  EXPECT_EQ(graphe.cycles(), cycles_comptes(aretes));
  const auto cycles = cycles_independants(aretes);
  EXPECT_EQ(cycles.size(), graphe.cycles());
  for (const Ensemble& cycle : cycles) verifier_cycle(aretes, cycle);
  EXPECT_EQ(rang(cycles), cycles.size());
}

TEST(Cycles, CountedAndBuiltAgreeOnSmallGraphs) {
  verifier_graphe({});
  verifier_graphe({{1, 1}});
  verifier_graphe({{1, 7}});
  verifier_graphe({{7, 7}});
  verifier_graphe({{1, 7}, {1, 7}});
  verifier_graphe({{7, 11}, {7, 11}, {7, 11}});
  verifier_graphe({{7, 11}, {11, 13}, {7, 13}});
  verifier_graphe({{1, 7}, {7, 11}, {1, 11}, {1, 1}, {1, 1}, {17, 19}, {17, 17}});
}

TEST(Cycles, CountedAndBuiltAgreeOnRandomGraphs) {
  std::mt19937 hasard(2);
  for (int i = 0; i < 200; ++i) {
    const std::size_t sommets = 1 + hasard() % 300;
    Aretes aretes(hasard() % 600);
    for (auto& [p, q] : aretes) {
      p = static_cast<std::uint32_t>(1 + hasard() % sommets);
      q = static_cast<std::uint32_t>(1 + hasard() % sommets);
      if (hasard() % 4 == 0) p = 1;
    }
    verifier_graphe(aretes);
  }
}

// ---- Real relations --------------------------------------------------------------------------------

NTL::ZZ nombre(const char* chiffres) { return NTL::conv<NTL::ZZ>(chiffres); }

// Settings with two large primes where they do not pay yet.
Reglages deux_grands(const NTL::ZZ& n) {
  Reglages r = reglages(NTL::NumBits(n));
  r.exposant = 1.85;
  r.tolerance -= 6;
  return r;
}

// A campaign on the product of the first primes from pi 10^19 and e 10^19 on (PARI/GP's nextprime).
struct Essai {
  explicit Essai(double part)
      : n(nombre("31415926535897932429") * nombre("27182818284590452387")),
        base(construire_base(n, deux_grands(n).base)),
        campagne(base, deux_grands(n), scinder) {
    const double but = part * static_cast<double>(base.taille);
    while (static_cast<double>(campagne.recolte.cycles()) < but && campagne.avancer()) {
    }
  }
  NTL::ZZ n;
  Base base;
  Campagne campagne;
};

Aretes aretes_de(const Recolte& recolte) {
  Aretes aretes;
  for (const Relation& r : recolte.relations) aretes.push_back(r.grands);
  return aretes;
}

// The product of a relation's primes, modulo kn, by the big integers alone.
NTL::ZZ cote_droit(const Recolte& recolte, const Relation& r) {
  NTL::ZZ produit = NTL::to_ZZ(r.grands.petit) * NTL::to_ZZ(r.grands.grand);
  recolte.facteurs.pour_chaque(r.place, r.nombre, [&](std::uint32_t i) {
    produit *= i == 0 ? -1L : static_cast<long>(recolte.base.premier[i]);
  });
  return produit % recolte.base.kn;
}

TEST(Relations, EveryOneHoldsAndNoneIsThereTwice) {
  const Essai essai(0.5);
  const Recolte& recolte = essai.campagne.recolte;
  const auto dernier = recolte.base.premier[recolte.base.taille - 1];
  std::set<std::array<std::uint64_t, 4>> vues;
  std::array<std::size_t, 3> par_nombre{};
  for (const Relation& r : recolte.relations) {
    const NTL::ZZ u = grand_entier(r.u);
    EXPECT_EQ(u * u % recolte.base.kn, cote_droit(recolte, r));
    EXPECT_TRUE(vues.insert(r.u.mot).second);
    for (const std::uint32_t p : {r.grands.petit, r.grands.grand}) {
      EXPECT_TRUE(p == 1 || (p > dernier && NTL::ProbPrime(static_cast<long>(p)) != 0)) << p;
    }
    EXPECT_LE(r.grands.petit, r.grands.grand);
    ++par_nombre[(r.grands.petit > 1 ? 1U : 0U) + (r.grands.grand > 1 ? 1U : 0U)];
  }
  for (const std::size_t combien : par_nombre) EXPECT_GT(combien, 20U);
  EXPECT_EQ(recolte.pleines, par_nombre[0]);
  EXPECT_EQ(recolte.doubles, par_nombre[2]);
}

TEST(Relations, TheirCyclesAreAsManyAsCountedAndFreeOfLargePrimes) {
  const Essai essai(0.5);
  const Aretes aretes = aretes_de(essai.campagne.recolte);
  const auto cycles = cycles_independants(aretes);
  EXPECT_EQ(cycles.size(), essai.campagne.recolte.cycles());
  for (const Ensemble& cycle : cycles) verifier_cycle(aretes, cycle);
  EXPECT_EQ(rang(cycles), cycles.size());
  // Cycles through two large primes are among them.
  EXPECT_TRUE(std::any_of(cycles.begin(), cycles.end(), [](auto& c) { return c.size() > 2; }));
}

TEST(Relations, AKnownOneIsNotTakenAgain) {
  Essai essai(0.1);
  Recolte& recolte = essai.campagne.recolte;
  const std::size_t avant = recolte.relations.size();
  const std::size_t cycles = recolte.cycles();
  for (std::size_t i = 0; i < avant; ++i) {
    Valeur valeur{recolte.relations[i].u, {0, 1}, 1};
    EXPECT_FALSE(recolte.ajouter(valeur, recolte.relations[i].grands));
  }
  EXPECT_EQ(recolte.relations.size(), avant);
  EXPECT_EQ(recolte.cycles(), cycles);
}

TEST(Relations, WhatWasGivenBackIsMadeAnewAndGatheringGoesOn) {
  Essai essai(0.3);
  Recolte& recolte = essai.campagne.recolte;
  const std::size_t cycles = recolte.cycles();
  const std::size_t pleines = recolte.pleines;
  const std::size_t doubles = recolte.doubles;
  recolte.alleger();
  recolte.recompter();
  EXPECT_EQ(recolte.cycles(), cycles);
  EXPECT_EQ(recolte.pleines, pleines);
  EXPECT_EQ(recolte.doubles, doubles);
  for (const Relation& r : std::deque<Relation>(recolte.relations)) {
    Valeur valeur{r.u, {}, 1};
    EXPECT_FALSE(recolte.ajouter(valeur, r.grands));
  }
  const std::size_t avant = recolte.relations.size();
  while (recolte.relations.size() == avant) ASSERT_TRUE(essai.campagne.avancer());
  EXPECT_EQ(recolte.cycles(), cycles_comptes(aretes_de(recolte)));
}

// The exponents counted once more, relation by relation.
TEST(Relations, AColumnHoldsTheOddExponentsOfItsCycle) {
  const Essai essai(0.3);
  const Recolte& recolte = essai.campagne.recolte;
  const auto cycles = cycles_independants(aretes_de(recolte));
  const MatriceCreuse matrice = matrice_des_exposants(recolte, cycles);
  ASSERT_EQ(matrice.colonnes.size(), cycles.size());
  for (std::size_t j = 0; j < cycles.size(); ++j) {
    std::vector<unsigned> exposants(recolte.base.taille);
    for (const std::uint32_t i : cycles[j]) {
      const Relation& r = recolte.relations[i];
      recolte.facteurs.pour_chaque(r.place, r.nombre, [&](std::uint32_t p) { ++exposants[p]; });
    }
    Ensemble impairs;
    for (std::uint32_t p = 0; p < exposants.size(); ++p) {
      if (exposants[p] % 2 != 0) impairs.push_back(p);
    }
    EXPECT_EQ(matrice.colonnes[j], impairs);
  }
}

TEST(Relations, AWrongOneIsSeenAndTakenOutAndTheOthersStay) {
  Essai essai(0.3);
  Recolte& recolte = essai.campagne.recolte;
  EXPECT_EQ(retirer_fausses(essai.n, recolte), 0U);
  const std::deque<Relation> justes = recolte.relations;
  recolte.relations[3].u.mot[1] ^= 4;
  recolte.relations[10].grands.grand += 2;
  --recolte.relations[20].nombre;
  recolte.facteurs.octets[recolte.relations[30].place] ^= 1;
  EXPECT_EQ(retirer_fausses(essai.n, recolte), 4U);
  std::vector<std::array<std::uint64_t, 4>> gardees;
  for (const Relation& r : recolte.relations) gardees.push_back(r.u.mot);
  std::vector<std::array<std::uint64_t, 4>> attendues;
  for (std::size_t i = 0; i < justes.size(); ++i) {
    if (i != 3 && i != 10 && i != 20 && i != 30) attendues.push_back(justes[i].u.mot);
  }
  EXPECT_EQ(gardees, attendues);
  EXPECT_EQ(recolte.cycles(), cycles_comptes(aretes_de(recolte)));
  const auto deux = std::count_if(recolte.relations.begin(), recolte.relations.end(),
                                  [](const Relation& r) { return r.grands.petit > 1; });
  EXPECT_EQ(recolte.doubles, static_cast<std::size_t>(deux));
  // What was taken out may come back.
  Valeur valeur{justes[3].u, {}, 1};
  EXPECT_TRUE(recolte.ajouter(valeur, justes[3].grands));
}

TEST(Relations, AProductThatIsNoSquareHasNoRoot) {
  const Essai essai(0.3);
  const Recolte& recolte = essai.campagne.recolte;
  std::uint32_t sans_grand = 0;
  while (recolte.relations[sans_grand].grands.grand != 1) ++sans_grand;
  EXPECT_EQ(pgcd_des_racines(essai.n, recolte, {sans_grand}), 0);
  // Twice the same relation: a square, and a trivial one.
  const NTL::ZZ trivial = pgcd_des_racines(essai.n, recolte, {sans_grand, sans_grand});
  EXPECT_TRUE(trivial == 1 || trivial == essai.n) << trivial;
}

TEST(Relations, TooFewOfThemGiveNoFactorAndTheyStayForTheNextAttempt) {
  Essai essai(0.2);
  Recolte& recolte = essai.campagne.recolte;
  EXPECT_EQ(facteur_des_relations(essai.n, recolte), std::nullopt);
  while (recolte.cycles() < recolte.base.taille + 10) ASSERT_TRUE(essai.campagne.avancer());
  const auto facteur = facteur_des_relations(essai.n, recolte);
  ASSERT_TRUE(facteur.has_value());
  EXPECT_TRUE(essai.n % *facteur == 0 && *facteur > 1 && *facteur < essai.n);
}

// A prime that occurs once is no square, be it a large one alone.
TEST(Relations, ALargePrimeThatOccursOnceIsSeen) {
  Essai essai(0.1);
  Recolte& recolte = essai.campagne.recolte;
  Valeur valeur{entier256(NTL::ZZ(12345)), {}, 1};
  ASSERT_TRUE(recolte.ajouter(valeur, {1, 1000003}));
  const auto derniere = static_cast<std::uint32_t>(recolte.relations.size() - 1);
  EXPECT_EQ(pgcd_des_racines(essai.n, recolte, {derniere}), 0);
}

// ---- Progress --------------------------------------------------------------------------------------

// What was measured: cycles, relations without large prime, with two, all, and the part of the final
// number of relations, which come evenly.
TEST(Avancement, IsNearThePartOfTheTimeThatWasMeasured) {
  struct Mesure {
    double c, pleines, doubles, relations, but, r;
  };
  constexpr Mesure mesures[] = {
      // 65 digits, one large prime
      {0.100, 691, 0, 8277, 7753, 0.165},
      {0.302, 1724, 0, 20553, 7753, 0.410},
      {0.502, 2560, 0, 30509, 7753, 0.608},
      {0.802, 3604, 0, 42932, 7753, 0.855},
      // 65 and 70 digits, two
      {0.102, 618, 15838, 26786, 7753, 0.245},
      {0.504, 1776, 45440, 76807, 7753, 0.703},
      {0.101, 847, 32741, 48919, 10831, 0.251},
      {0.300, 1795, 70040, 104511, 10831, 0.537},
      {0.500, 2359, 92745, 138425, 10831, 0.711},
      {0.803, 2988, 117973, 176065, 10831, 0.904},
      // 75 digits, with fewer of them
      {0.100, 1458, 6769, 32959, 17967, 0.192},
      {0.500, 4834, 22910, 111432, 17967, 0.648},
      {0.850, 6799, 31979, 155895, 17967, 0.907},
  };
  for (const Mesure& m : mesures) {
    EXPECT_NEAR(part_du_travail(m.c, m.pleines / m.but, 2 + m.doubles / m.relations), m.r, 0.04);
  }
}

TEST(Avancement, GoesFromZeroToOneAndNeverFalls) {
  EXPECT_NEAR(part_du_travail(0, 0, 2), 0, 1e-3);
  EXPECT_NEAR(part_du_travail(1, 0.3, 2.5), 1, 1e-5);
  EXPECT_NEAR(part_du_travail(0.4, 0.4, 2), 0.4, 1e-5);
  const Essai essai(0.3);
  Avancement avancement;
  const std::size_t cycles = essai.campagne.recolte.cycles();
  const double avant = avancement.part(essai.campagne.recolte, 2 * cycles);
  EXPECT_GT(avant, 0.5);
  EXPECT_EQ(avancement.part(essai.campagne.recolte, 3 * cycles), avant);
  EXPECT_NEAR(avancement.part(essai.campagne.recolte, cycles), 1, 1e-5);
}

// ---- Two large primes, from end to end -------------------------------------------------------------

// The smaller prime factor comes out, whichever the sieve gave.
void verifier_deux_grands(const NTL::ZZ& p, const NTL::ZZ& q) {
  const NTL::ZZ n = p * q;
  const auto facteur = facteur_quadratique(n, deux_grands(n), {}, scinder);
  ASSERT_TRUE(facteur.has_value()) << n;
  EXPECT_TRUE(*facteur == p || *facteur == q) << n;
}

TEST(DeuxGrandsPremiersLent, FactorsOfKnownPrimesFrom30To50Digits) {
  NTL::SetSeed(NTL::ZZ(31));
  for (long bits = 50; bits <= 80; bits += 3) {
    verifier_deux_grands(NTL::GenPrime_ZZ(bits), NTL::GenPrime_ZZ(bits + 1));
  }
}

// crible_quadratique_long_test goes beyond.
TEST(DeuxGrandsPremiersLent, FiftySixDigits) {
  NTL::SetSeed(NTL::ZZ(60));
  verifier_deux_grands(NTL::GenPrime_ZZ(92), NTL::GenPrime_ZZ(93));
}

TEST(DeuxGrandsPremiers, FactorsCloseToEachOther) {
  for (const char* debut : {"123456789012345678", "99999999999999999999"}) {
    const NTL::ZZ p = NTL::NextPrime(nombre(debut));
    verifier_deux_grands(p, NTL::NextPrime(p + 2));
  }
}

TEST(DeuxGrandsPremiers, ThreeFactors) {
  NTL::SetSeed(NTL::ZZ(32));
  for (long bits = 36; bits <= 48; bits += 4) {
    const NTL::ZZ n = NTL::GenPrime_ZZ(bits) * NTL::GenPrime_ZZ(bits) * NTL::GenPrime_ZZ(bits);
    const auto facteur = facteur_quadratique(n, deux_grands(n), {}, scinder);
    ASSERT_TRUE(facteur.has_value()) << n;
    EXPECT_TRUE(*facteur > 1 && *facteur < n && n % *facteur == 0) << n << " " << *facteur;
  }
}

}  // namespace
}  // namespace premiers::quadratique
