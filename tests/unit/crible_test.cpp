// SPDX-License-Identifier: MIT
// The sieve against slower, independent ways to know the primes: trial division, and the
// Miller-Rabin test with the first twelve primes as bases, which is proven below 2^64 (Sorenson and
// Webster, "Strong pseudoprimes to twelve prime bases", 2015).
#include "primes/crible/crible.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <initializer_list>
#include <random>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

#include "primes/arithmetique/bits.h"
#include "primes/arithmetique/racines.h"
#include "primes/arithmetique/roue.h"
#include "primes/compte/compte.h"
#include "primes/crible/crible_garde.h"
#include "primes/crible/crible_grand.h"
#include "primes/crible/crible_seize.h"
#include "primes/crible/marche.h"
#include "primes/crible/partage.h"
#include "primes/crible/roue_30030.h"

namespace premiers::crible {
namespace {

__extension__ typedef unsigned __int128 U128;

std::uint64_t puissance(std::uint64_t base, std::uint64_t exposant, std::uint64_t n) {
  U128 r = 1;
  U128 b = base % n;
  for (; exposant > 0; exposant >>= 1, b = b * b % n) {
    if (exposant & 1) r = r * b % n;
  }
  return static_cast<std::uint64_t>(r);
}

bool temoin(std::uint64_t base, std::uint64_t n) {
  std::uint64_t d = n - 1;
  int s = 0;
  for (; d % 2 == 0; d /= 2) ++s;
  std::uint64_t x = puissance(base, d, n);
  if (x == 1 || x == n - 1) return false;
  for (; s > 1; --s) {
    x = static_cast<std::uint64_t>(U128{x} * x % n);
    if (x == n - 1) return false;
  }
  return true;
}

bool premier_lent(std::uint64_t n) {
  if (n < 2) return false;
  constexpr std::array<std::uint64_t, 12> bases{2, 3, 5, 7, 11, 13, 17, 19, 23, 29, 31, 37};
  for (const std::uint64_t p : bases) {
    if (n % p == 0) return n == p;
  }
  return std::none_of(bases.begin(), bases.end(), [&](auto b) { return temoin(b, n); });
}

bool premier_par_division(std::uint64_t n) {
  if (n < 2) return false;
  for (std::uint64_t d = 2; d * d <= n; ++d) {
    if (n % d == 0) return false;
  }
  return true;
}

/// The bytes of a window, sieved in segments of `taille` bytes.
std::vector<std::uint8_t> cribler(std::uint64_t octet, std::uint64_t fin, std::size_t taille) {
  Crible crible(octet, fin);
  std::vector<std::uint8_t> octets(fin - octet);
  for (std::size_t i = 0; i < octets.size(); i += taille) {
    crible.remplir(std::span{octets}.subspan(i, std::min(taille, octets.size() - i)));
  }
  return octets;
}

std::vector<std::uint8_t> cribler(std::uint64_t octet, std::uint64_t fin) {
  return cribler(octet, fin, Crible(octet, fin).taille());
}

std::vector<std::uint8_t> octets_lents(std::uint64_t octet, std::uint64_t fin) {
  std::vector<std::uint8_t> octets(fin - octet);
  for (std::uint64_t o = octet; o < fin; ++o) {
    for (std::size_t i = 0; i < 8; ++i) {
      const unsigned bit = premier_lent(30 * o + residus[i]) ? 1u << i : 0;
      octets[o - octet] = static_cast<std::uint8_t>(octets[o - octet] | bit);
    }
  }
  return octets;
}

std::vector<std::uint64_t> premiers_entre(std::uint64_t a, std::uint64_t b) {
  std::vector<std::uint64_t> liste;
  for (std::uint64_t n = a; n <= b; ++n) {
    if (premier_lent(n)) liste.push_back(n);
  }
  return liste;
}

constexpr std::uint64_t dix(int k) { return k == 0 ? 1 : 10 * dix(k - 1); }

TEST(CribleEnNombre, EveryWindowUpToAThousandIsCounted) {
  std::vector<std::uint64_t> pi(1001);
  for (std::uint64_t n = 1; n <= 1000; ++n) pi[n] = pi[n - 1] + premier_par_division(n);
  for (std::uint64_t a = 0; a <= 1000; ++a) {
    for (std::uint64_t b = a; b <= 1000; ++b) {
      ASSERT_EQ(compter_par_crible(a, b), pi[b] - (a > 0 ? pi[a - 1] : 0)) << a << ' ' << b;
    }
  }
}

TEST(Crible, AWindowWhoseBoundsCrossIsEmpty) {
  EXPECT_EQ(compter_par_crible(1, 0), 0u);
  EXPECT_EQ(compter_par_crible(~std::uint64_t{0}, 5), 0u);
}

TEST(Crible, RefusesWhatIsOutOfRange) {
  EXPECT_THROW(Crible(2, 1), std::invalid_argument);
  EXPECT_THROW(Crible(0, Crible::octet_max + 1), std::invalid_argument);
  EXPECT_THROW(compter_par_crible(0, ~std::uint64_t{0}), std::invalid_argument);
  Crible crible(0, 10);
  std::vector<std::uint8_t> trop(11);
  EXPECT_THROW(crible.remplir(trop), std::invalid_argument);
}

// pi(10^k): the classical table, e.g. Riesel, "Prime Numbers and Computer Methods for
// Factorization", 2nd ed. 1994, table 3.
// At byte 0 there is no number below, and in an empty window no part that could be done.
TEST(Crible, NoBytesHaveNoEffect) {
  const std::vector<std::uint8_t> attendus = octets_lents(0, 40);
  int appels = 0;
  Crible crible(0, 40);
  crible.remplir({}, [&](double) { ++appels; });
  Crible(7, 7).remplir({}, [&](double) { ++appels; });
  EXPECT_EQ(appels, 0);
  std::vector<std::uint8_t> octets(40);
  crible.remplir(std::span{octets}.first(11));
  crible.remplir({});
  crible.remplir(std::span{octets}.subspan(11));
  EXPECT_EQ(octets, attendus);
}

TEST(Crible, PublishedValuesOfPi) {
  constexpr std::array<std::uint64_t, 10> pi{0,    4,     25,     168,     1229,
                                             9592, 78498, 664579, 5761455, 50847534};
  const int derniere =
#if defined(PREMIERS_ASSAINI)
      8;
#else
      9;
#endif
  for (int k = 0; k <= derniere; ++k) {
    EXPECT_EQ(compter_par_crible(0, dix(k)), pi[static_cast<std::size_t>(k)]) << k;
  }
}

TEST(Crible, FirstBytesAsByDivision) {
  const auto octets = cribler(0, 4000);
  std::vector<std::uint64_t> trouves;
  pour_chaque_premier(octets, 0, [&](std::uint64_t p) { trouves.push_back(p); });
  std::vector<std::uint64_t> attendus;
  for (std::uint64_t n = 7; n < 120000; ++n) {
    if (premier_par_division(n)) attendus.push_back(n);
  }
  EXPECT_EQ(trouves, attendus);
}

TEST(Crible, RandomWindowsAsByMillerRabin) {
  constexpr int fois =
#if defined(PREMIERS_ASSAINI)
      2;
#else
      6;
#endif
  std::mt19937_64 hasard(1);
  for (int k = 3; k <= 15; ++k) {
    for (int essai = 0; essai < fois; ++essai) {
      const std::uint64_t octet = dix(k) / 30 + hasard() % 100000;
      const std::uint64_t fin = octet + 1 + hasard() % 600;
      ASSERT_EQ(cribler(octet, fin), octets_lents(octet, fin)) << octet << ' ' << fin;
    }
  }
}

TEST(CribleLent, HighWindowsAsByMillerRabin) {
  std::mt19937_64 hasard(2);
  for (const std::uint64_t origine : {dix(16), dix(17), dix(18), Crible::octet_max * 30 - dix(7)}) {
    const std::uint64_t octet = origine / 30 + hasard() % 10000;
    const std::uint64_t fin = octet + 1500;
    ASSERT_EQ(cribler(octet, fin), octets_lents(octet, fin)) << octet;
  }
}

TEST(CribleLent, LastNumbersBeforeTwoToThe63) {
  const std::uint64_t octet = Crible::octet_max - 200;
  EXPECT_EQ(cribler(octet, Crible::octet_max), octets_lents(octet, Crible::octet_max));
  // The largest prime below 2^63 is 2^63 - 25 (C. Caldwell, "The Prime Pages", primes just less
  // than a power of two).
  const std::uint64_t bout = std::uint64_t{1} << 63;
  EXPECT_EQ(compter_par_crible(bout - 25, bout), 1u);
  EXPECT_EQ(compter_par_crible(bout - 24, bout), 0u);
}

TEST(Crible, SeamsOfSegmentsAsByMillerRabin) {
  const std::uint64_t octet = dix(13) / 30 + 7;
  const std::size_t taille = Crible(octet, Crible::octet_max).taille();
  const std::uint64_t fin = octet + 3 * taille + 1000;
  const auto octets = cribler(octet, fin);
  for (const std::uint64_t couture : {taille, 2 * taille, 3 * taille}) {
    const auto ici = octets.begin() + static_cast<std::ptrdiff_t>(couture - 300);
    const std::vector<std::uint8_t> extrait(ici, ici + 600);
    EXPECT_EQ(extrait, octets_lents(octet + couture - 300, octet + couture + 300)) << couture;
  }
}

// Every size of segment must give the same bytes.
TEST(Crible, SegmentsOfEverySizeGiveTheSame) {
  for (const std::uint64_t octet : {std::uint64_t{0}, dix(6) / 30, dix(9), dix(12)}) {
    for (const std::uint64_t taille : {1U, 7U, 64U, 1000U}) {
      const std::uint64_t fin = octet + std::min(200 * taille, std::uint64_t{2000});
      ASSERT_EQ(cribler(octet, fin, taille), cribler(octet, fin)) << octet << ' ' << taille;
    }
  }
}

TEST(Crible, SegmentsOfEverySizeGiveTheSameWithLargeSievingPrimes) {
  const std::uint64_t octet = dix(14) / 30;
  const std::uint64_t fin = octet + 700000;
  const auto attendus = cribler(octet, fin);
  std::mt19937_64 hasard(3);
  Crible crible(octet, fin);
  std::vector<std::uint8_t> octets(fin - octet);
  for (std::size_t i = 0; i < octets.size();) {
    const std::size_t n = std::min<std::size_t>(octets.size() - i, 1 + hasard() % 100000);
    crible.remplir(std::span{octets}.subspan(i, n));
    i += n;
  }
  EXPECT_TRUE(octets == attendus);
}

TEST(Crible, SeveralSegmentsAtOnceGiveTheSame) {
  const std::uint64_t fin = 1500000;
  EXPECT_TRUE(cribler(0, fin, fin) == cribler(0, fin));
}

// Squares and products of neighbouring primes are what a sieve that stops too early, or starts too
// late, lets through. One prime for each class and around each border between them.
TEST(CribleEnNombre, SquaresOfPrimesAtTheEdgeOfAWindow) {
  std::vector<std::uint64_t> cribleurs = premiers_entre(150, 400);
  for (const std::uint64_t p :
       {dix(3), std::uint64_t{8192}, std::uint64_t{16384}, std::uint64_t{32768},
        std::uint64_t{65536}, std::uint64_t{131072}, std::uint64_t{262144}, std::uint64_t{524288},
        std::uint64_t{1048576}, std::uint64_t{2097152}, std::uint64_t{4194304},
        std::uint64_t{8388608}, dix(7), dix(8)}) {
    const auto autour = premiers_entre(p - 100, p + 100);
    cribleurs.insert(cribleurs.end(), autour.begin(), autour.end());
  }
  for (const std::uint64_t p : cribleurs) {
    const std::uint64_t o = p * p / 30;
    for (const auto& [debut, fin] :
         {std::pair{o, o + 1}, std::pair{o, o + 3}, std::pair{o - 3, o + 1}}) {
      ASSERT_EQ(cribler(debut, fin), octets_lents(debut, fin)) << p;
      if (p > dix(6)) break;
    }
  }
}

TEST(CribleLent, SquareOfTheLargestSievingPrime) {
  const auto cribleurs = premiers_entre(3037000499 - 200, 3037000499);
  ASSERT_FALSE(cribleurs.empty());
  const std::uint64_t p = cribleurs.back();  // p * p is just below 2^63
  EXPECT_EQ(cribler(p * p / 30, p * p / 30 + 1), octets_lents(p * p / 30, p * p / 30 + 1));
}

// Growing from 0 without a known end, as a table does, equals windows sieved one by one; the pieces
// grow over the squares of new sieving primes.
TEST(Crible, GrowingWithoutEndGivesTheSameAsWindows) {
  Crible crible(0, Crible::octet_max);
  std::mt19937_64 hasard(4);
  std::vector<std::uint8_t> segment(crible.taille());
  for (std::uint64_t octet = 0; octet < 3000000;) {
    const std::uint64_t borne = octet < 3000 ? 50 : segment.size();
    const auto morceau = std::span{segment}.first(1 + hasard() % borne);
    crible.remplir(morceau);
    const auto attendu = cribler(octet, octet + morceau.size());
    ASSERT_TRUE(std::equal(morceau.begin(), morceau.end(), attendu.begin())) << octet;
    octet += morceau.size();
  }
}

// Large sieving primes come into play here while the window grows.
TEST(Crible, GrowingBeyondTheFirstLargeSievingPrime) {
  constexpr std::uint64_t seuil =
      CribleGrand::debut_des_grands * CribleGrand::debut_des_grands / 30;
  Crible crible(seuil - 500000, Crible::octet_max);
  std::vector<std::uint8_t> segment(crible.taille());
  for (std::uint64_t octet = seuil - 500000; octet < seuil + 2000000; octet += segment.size()) {
    crible.remplir(segment);
    const auto attendu = octets_lents(octet, octet + 100);
    ASSERT_TRUE(std::equal(attendu.begin(), attendu.end(), segment.begin())) << octet;
  }
}

// A window of many rounds of large primes, counted in one piece and in two.
TEST(Crible, TheWholeIsTheSumOfItsParts) {
  const std::uint64_t a = dix(15);
  const std::uint64_t b = a + 30000000;
  const std::uint64_t milieu = a + 11111111;
  EXPECT_EQ(compter_par_crible(a, b),
            compter_par_crible(a, milieu) + compter_par_crible(milieu + 1, b));
}

// A window of three rounds: the later ones take the memory that the earlier ones give back. Its
// count comes from another method as well, the one that sieves no window.
TEST(CribleEnNombre, RoundsOfLargePrimesFollowOnOneAnother) {
  const std::uint64_t a = dix(13);
  const std::uint64_t b = a + 600'000'000;
  EXPECT_EQ(compter_par_crible(a, b), compte::nombre_premiers(b) - compte::nombre_premiers(a - 1));
}

// ---- Large sieving primes, kept or looked for in each round ------------------------------------

/// The bytes of a window after the large sieving primes, which find no flag cleared, in the pieces
/// that `taille` gives.
template <class Taille>
std::vector<std::uint8_t> rayer_les_grands(std::uint64_t octet, std::uint64_t fin,
                                           const Partage& partage, Taille taille) {
  std::vector<std::uint8_t> octets(fin - octet, 0xFF);
  CribleGrand grands(octet, fin, partage);
  for (std::size_t i = 0; i < octets.size();) {
    const std::size_t n = std::min<std::size_t>(octets.size() - i, taille());
    grands.cribler(std::span{octets}.subspan(i, n), {});
    i += n;
  }
  return octets;
}

/// Walks from one odd multiple of p, its square or above, to the next; not before byte `depuis`.
void rayer_multiples(std::vector<std::uint8_t>& octets, std::uint64_t octet, std::uint64_t depuis,
                     std::uint64_t p) {
  const std::uint64_t fin = octet + octets.size();
  std::uint64_t q = std::max(p, (30 * depuis + p - 1) / p | 1);
  for (; p * q < 30 * fin; q += 2) {
    if (q % 3 == 0 || q % 5 == 0) continue;
    std::uint8_t& ici = octets[p * q / 30 - octet];
    ici = static_cast<std::uint8_t>(ici & ~(1U << indice_suivant[p * q % 30]));
  }
}

/// The same as `rayer_les_grands` by walking from multiple to multiple.
std::vector<std::uint8_t> rayer_pas_a_pas(std::uint64_t octet, std::uint64_t fin) {
  std::vector<std::uint8_t> octets(fin - octet, 0xFF);
  const std::uint64_t racine = racine_carree(30 * fin - 1);
  const std::uint64_t premier = CribleGrand::debut_des_grands / 30 + 1;
  if (racine / 30 < premier) return octets;
  pour_chaque_premier(cribler(premier, racine / 30 + 1), premier, [&](std::uint64_t p) {
    if (p <= racine) rayer_multiples(octets, octet, octet, p);
  });
  return octets;
}

/// The flags of the numbers that 7, 11 and 13 do not divide: of the others the large primes may clear
/// any.
std::vector<std::uint8_t> sans_petits_facteurs(std::uint64_t octet, std::uint64_t fin) {
  constexpr std::size_t periode = 7 * 11 * 13;
  std::array<std::uint8_t, periode> motif{};
  for (std::size_t i = 0; i < periode; ++i) {
    for (std::size_t b = 0; b < 8; ++b) {
      const std::uint64_t n = 30 * i + residus[b];
      const bool libre = n % 7 != 0 && n % 11 != 0 && n % 13 != 0;
      motif[i] = static_cast<std::uint8_t>(motif[i] | unsigned{libre} << b);
    }
  }
  std::vector<std::uint8_t> octets(fin - octet);
  for (std::uint64_t o = octet; o < fin; ++o) octets[o - octet] = motif[o % periode];
  return octets;
}

void garder(std::vector<std::uint8_t>& octets, const std::vector<std::uint8_t>& gardes) {
  for (std::size_t i = 0; i < octets.size(); ++i) {
    octets[i] = static_cast<std::uint8_t>(octets[i] & gardes[i]);
  }
}

struct Repartition {
  std::uint64_t borne;
  std::uint64_t tour;
  bool notes;
  bool en_morceaux = true;  // tried in pieces too
};

/// What has a large prime factor is crossed off, but perhaps by a smaller one, and no prime is:
/// candidates of the rounds that are no primes may clear other composite numbers. Both sides hold
/// flags of numbers without small factors only.
void verifier_les_grands(const std::vector<std::uint8_t>& octets,
                         const std::vector<std::uint8_t>& attendus, std::uint64_t octet,
                         const std::string& quoi) {
  std::size_t manques = 0;
  std::size_t de_trop = 0;
  for (std::size_t i = 0; i < octets.size(); ++i) {
    if (octets[i] == attendus[i]) continue;
    manques += (octets[i] & ~attendus[i]) != 0;
    for (unsigned b = 0; b < 8; ++b) {
      const bool seulement_la = (attendus[i] & ~octets[i]) >> b & 1U;
      de_trop += seulement_la && premier_lent(30 * (octet + i) + residus[b]);
    }
  }
  EXPECT_EQ(manques, 0U) << "not crossed off, " << quoi;
  EXPECT_EQ(de_trop, 0U) << "primes crossed off, " << quoi;
}

/// Compares the sieve with the plain walk, with these shares between its two ways.
void comparer_les_grands(std::uint64_t octet, std::uint64_t fin,
                         std::initializer_list<Repartition> repartitions) {
  const auto gardes = sans_petits_facteurs(octet, fin);
  auto attendus = rayer_pas_a_pas(octet, fin);
  garder(attendus, gardes);
  std::mt19937_64 hasard(octet);
  const auto morceau = [&] {
    return hasard() % 3 == 0 ? CribleGarde::taille_segment : 1 + hasard() % 600'000;
  };
  for (const Repartition& r : repartitions) {
    const Partage partage{r.borne, r.tour, r.notes, 0};
    const std::string quoi = std::to_string(octet) + " to " + std::to_string(fin) +
                             ", kept up to " + std::to_string(r.borne);
    auto octets = rayer_les_grands(octet, fin, partage, [] { return CribleGarde::taille_segment; });
    garder(octets, gardes);
    verifier_les_grands(octets, attendus, octet, quoi);
    if (!r.en_morceaux) continue;
    octets = rayer_les_grands(octet, fin, partage, morceau);
    garder(octets, gardes);
    verifier_les_grands(octets, attendus, octet, "in pieces, " + quoi);
  }
}

constexpr std::uint64_t seg = CribleGarde::taille_segment;
constexpr std::uint64_t aucune_gardee = CribleGrand::debut_des_grands;
constexpr std::uint64_t toutes_gardees = std::uint64_t{1} << 32;

void comparer_les_largeurs(std::initializer_list<std::uint64_t> largeurs,
                           std::initializer_list<Repartition> repartitions) {
  std::mt19937_64 hasard(6);
  for (const std::uint64_t largeur : largeurs) {
    const std::uint64_t octet = dix(13) * 3 / 30 + hasard() % 1'000'000;
    comparer_les_grands(octet, octet + largeur, repartitions);
  }
}

// The kept primes by themselves, whatever else this processor would do with them: twelve segments,
// few buckets, which are taken again in a circle, and primes that come in while others wait.
TEST(CribleGarde, MoreSegmentsThanBucketsAndPrimesThatComeInLater) {
  constexpr std::uint64_t borne = 1'300'000;
  const std::uint64_t octet = dix(13) / 30 + 12345;
  const std::uint64_t fin = octet + 11 * seg + 5;
  const auto tous = premiers_entre(CribleGrand::debut_des_grands, borne);
  std::vector<std::uint8_t> attendus(fin - octet, 0xFF);
  std::vector<std::uint8_t> octets(fin - octet, 0xFF);
  CribleGarde gardes(octet, fin, borne);
  std::size_t prochain = 0;
  for (std::uint64_t o = octet; o < fin; o += seg) {
    const std::size_t de_plus = o == octet ? tous.size() / 2 : tous.size() / 20;
    for (const std::size_t la = std::min(tous.size(), prochain + de_plus); prochain < la;
         ++prochain) {
      gardes.ajouter(static_cast<std::uint32_t>(tous[prochain]));
      rayer_multiples(attendus, octet, o, tous[prochain]);
    }
    gardes.rayer(std::span{octets}.subspan(o - octet, std::min(seg, fin - o)));
  }
  ASSERT_EQ(prochain, tous.size());
  const auto libres = sans_petits_facteurs(octet, fin);
  garder(attendus, libres);
  garder(octets, libres);
  EXPECT_TRUE(octets == attendus);
}

TEST(CribleGrand, WindowsAroundASegmentAsByAPlainWalk) {
  comparer_les_largeurs({1, seg, seg + 1}, {{3'000'000, Partage::tour_min, true}});
}

TEST(CribleGrandLent, WindowsOfEveryWidthAsByAPlainWalk) {
  comparer_les_largeurs({1, seg - 1, seg, seg + 1, 2 * seg + 1, 4 * seg + 1},
                        {{aucune_gardee, Partage::tour_min, false},
                         {3'000'000, Partage::tour_min, true},
                         {5'000'000, Partage::tour_max, false},
                         {toutes_gardees, Partage::tour_max, false}});
}

/// The bytes [octet, fin) without the multiples of `cribleurs` by cofactors prime to 210, but the primes
/// themselves.
std::vector<std::uint8_t> rayer_sur_la_roue_de_210(std::uint64_t octet, std::uint64_t fin,
                                                   const std::vector<std::uint64_t>& cribleurs) {
  std::vector<std::uint8_t> octets(fin - octet, 0xFF);
  for (const std::uint64_t p : cribleurs) {
    for (std::uint64_t q = std::max<std::uint64_t>(2, (30 * octet + p - 1) / p); p * q < 30 * fin;
         ++q) {
      if (q % 2 == 0 || q % 3 == 0 || q % 5 == 0 || q % 7 == 0) continue;
      std::uint8_t& ici = octets[p * q / 30 - octet];
      ici = static_cast<std::uint8_t>(ici & ~(1U << indice_suivant[p * q % 30]));
    }
  }
  return octets;
}

// In segments of every size, from the smallest to the largest prime that it takes, in more than a block.
TEST(CribleSeize, AsByAPlainWalkOnTheWheelOf210) {
  std::vector<std::uint64_t> cribleurs =
      premiers_entre(CribleSeize::debut, CribleSeize::debut + 130'000);
  for (const std::uint64_t p :
       {dix(6), std::uint64_t{CribleSeize::dernier}, (std::uint64_t{1} << 24) - 700}) {
    const auto autour = premiers_entre(p - 600, p + 600);
    cribleurs.insert(cribleurs.end(), autour.begin(), autour.end());
  }
  ASSERT_GT(cribleurs.size(), 8 * Marcheurs::places);
  std::mt19937_64 hasard(7);
  for (const std::uint64_t octet :
       {std::uint64_t{0}, dix(12) / 30, Crible::octet_max - 2'000'000}) {
    const std::uint64_t fin = octet + 1'900'000;
    CribleSeize crible;
    for (const std::uint64_t p : cribleurs)
      crible.ajouter(static_cast<std::uint32_t>(p), octet, fin);
    std::vector<std::uint8_t> octets(fin - octet, 0xFF);
    for (std::size_t i = 0; i < octets.size();) {
      const std::size_t voulu = i == 0 ? CribleSeize::taille_segment : 1 + hasard() % 400'000;
      const std::size_t n = std::min(octets.size() - i, voulu);
      crible.cribler(std::span{octets}.subspan(i, n));
      i += n;
    }
    EXPECT_TRUE(octets == rayer_sur_la_roue_de_210(octet, fin, cribleurs)) << octet;
  }
}

// Few buckets, which are taken again in a circle, and rounds that begin while primes wait.
TEST(CribleGrandLent, MoreSegmentsThanBucketsAsByAPlainWalk) {
  const std::uint64_t octet = dix(13) / 30 + 12345;
  comparer_les_grands(octet, octet + 11 * seg + 5,
                      {{1'300'000, Partage::tour_min, true},
                       {2'000'000, 2 * Partage::tour_min, false},
                       {toutes_gardees, Partage::tour_min, false}});
}

// The root of the window's end grows over new primes while the window is sieved.
TEST(CribleGrandLent, PrimesThatComeInLaterAsByAPlainWalk) {
  constexpr std::uint64_t seuil =
      CribleGrand::debut_des_grands * CribleGrand::debut_des_grands / 30;
  comparer_les_grands(seuil + 1'000'000, seuil + 1'000'000 + 12 * seg + 99,
                      {{aucune_gardee, Partage::tour_min, true},
                       {1'048'700, Partage::tour_min, false},
                       {toutes_gardees, Partage::tour_min, false}});
}

// Kept primes in rows, kept primes in buckets, and the border between them.
TEST(CribleGrand, KeptPrimesOnBothSidesOfTheRowsAsByAPlainWalk) {
  const std::uint64_t octet = dix(14) / 30 + 4321;
  comparer_les_grands(octet, octet + 3 * seg, {{toutes_gardees, Partage::tour_max, false}});
}

TEST(CribleLent, LargePrimesUpToTheEndOfTheNumbers) {
  comparer_les_grands(
      Crible::octet_max - seg - 4321, Crible::octet_max,
      {{40'000'000, Partage::tour_min, false}, {600'000'000, Partage::tour_min, true, false}});
}

// Every share is the same work, so the count must be the same, down to a memory that is not enough
// for anything; it is also the difference of two counts by the method that sieves no window.
TEST(CribleGrandLent, LittleMemoryChangesNoCount) {
  const std::uint64_t a = dix(13) + 17;
  const std::uint64_t b = a + 300'000'000;
  const std::uint64_t attendu = compte::nombre_premiers(b) - compte::nombre_premiers(a - 1);
  for (const std::uint64_t mega : {0U, 1U, 20U, 40U, 100U}) {
    EXPECT_EQ(compter_par_crible(a, b, {}, mega << 20), attendu) << mega;
  }
}

// Counted by primesieve 12.16, another program.
TEST(CribleLent, CountsFarOutAsByAnotherProgram) {
  EXPECT_EQ(compter_par_crible(dix(18), dix(18) + dix(8) - 1), 2'414'886U);
  EXPECT_EQ(compter_par_crible(dix(15), dix(15) + dix(9) - 1), 28'946'421U);
  EXPECT_EQ(compter_par_crible(dix(18), dix(18) + dix(8) - 1, {}, 30 << 20), 2'414'886U);
}

TEST(Partage, StaysWithinItsMemory) {
  constexpr std::uint64_t le_moins = std::uint64_t{22} << 20;
  for (std::uint64_t largeur = 1; largeur < std::uint64_t{1} << 40; largeur = 3 * largeur + 1) {
    for (int k = 13; k <= 18; ++k) {
      const std::uint64_t fin = std::min(dix(k) / 30 + largeur, Crible::octet_max);
      for (std::uint64_t memoire = 1 << 20; memoire <= std::uint64_t{1} << 31; memoire *= 2) {
        const Partage p = partager(fin - std::min(fin, largeur), fin, aucune_gardee, memoire);
        ASSERT_LE(p.memoire, std::max(memoire, le_moins)) << largeur << " at 10^" << k;
        ASSERT_GE(p.borne, aucune_gardee);
        ASSERT_LE(p.borne, std::max(aucune_gardee, racine_carree(30 * fin - 1)));
        ASSERT_GE(p.tour, Partage::tour_min);
        ASSERT_LE(p.tour, Partage::tour_max);
      }
    }
  }
}

TEST(Partage, TheWiderTheWindowTheMoreIsKept) {
  constexpr std::uint64_t memoire = std::uint64_t{1} << 31;
  const std::uint64_t octet = dix(18) / 30;
  std::uint64_t avant = 0;
  for (std::uint64_t largeur = 1 << 16; largeur < std::uint64_t{1} << 32; largeur *= 2) {
    const Partage p = partager(octet, octet + largeur, aucune_gardee, memoire);
    EXPECT_GE(p.borne, avant) << largeur;
    EXPECT_EQ(p.notes, largeur > p.tour && p.borne < racine_carree(30 * (octet + largeur) - 1));
    avant = p.borne;
  }
  EXPECT_EQ(avant, racine_carree(30 * (octet + (std::uint64_t{1} << 31)) - 1));
}

TEST(Crible, ACeilingLeavesTheNumbersWithoutASmallFactor) {
  constexpr std::uint64_t plafond = 500;
  const std::uint64_t octet = 40000;
  Crible crible(octet, octet + 100, plafond);
  std::vector<std::uint8_t> octets(100);
  crible.remplir(octets);
  for (std::uint64_t o = 0; o < 100; ++o) {
    for (std::size_t i = 0; i < 8; ++i) {
      const std::uint64_t n = 30 * (octet + o) + residus[i];
      bool libre = true;
      for (std::uint64_t d = 2; d <= plafond; ++d) libre = libre && n % d != 0;
      // A prime or two above the limit may be used as well.
      if (libre == ((octets[o] >> i & 1) != 0)) continue;
      EXPECT_TRUE(libre && !premier_lent(n)) << n;
    }
  }
}

TEST(Crible, ProgressGrowsFrom0To1AndMayAbandonTheWork) {
  double dernier = 0;
  int appels = 0;
  const auto suivi = [&](double part) {
    EXPECT_GE(part, dernier);
    EXPECT_LE(part, 1);
    dernier = part;
    ++appels;
  };
  EXPECT_EQ(compter_par_crible(dix(14), dix(14) + 30000000, suivi),
            compter_par_crible(dix(14), dix(14) + 30000000));
  EXPECT_EQ(dernier, 1);
  EXPECT_GT(appels, 5);
  struct Abandon {};
  EXPECT_THROW(compter_par_crible(dix(14), dix(14) + 30000000, [](double) { throw Abandon{}; }),
               Abandon);
}

TEST(Racine, ExactAroundSquares) {
  for (const std::uint64_t r : {std::uint64_t{0}, std::uint64_t{1}, std::uint64_t{94906267},
                                std::uint64_t{3037000499}, std::uint64_t{4294967295}}) {
    EXPECT_EQ(racine_carree(r * r), r);
    EXPECT_EQ(racine_carree(r * r + 2 * r), r);
    if (r == 0) continue;
    EXPECT_EQ(racine_carree(r * r - 1), r - 1);
  }
  EXPECT_EQ(racine_carree(~std::uint64_t{0}), 4294967295u);
}

TEST(Bits, CountsBeforeEachLine) {
  std::vector<std::uint8_t> octets(64 * 37);
  for (std::size_t i = 0; i < octets.size(); ++i) octets[i] = static_cast<std::uint8_t>(i * i / 7);
  std::vector<std::uint32_t> avant(37);
  std::uint32_t attendu = 0;
  const std::uint32_t nombre = compter_par_ligne(octets.data(), avant);
  for (std::size_t i = 0; i < octets.size(); ++i) {
    if (i % 64 == 0) {
      ASSERT_EQ(avant[i / 64], attendu) << "line " << i / 64;
    }
    for (unsigned bit = 0; bit < 8; ++bit) attendu += octets[i] >> bit & 1U;
  }
  EXPECT_EQ(nombre, attendu);
}

TEST(Bits, CountsAndPrimesOfEveryLength) {
  const auto octets = cribler(0, 100);
  for (std::size_t n = 0; n <= 100; ++n) {
    const auto debut = std::span{octets}.first(n);
    std::vector<std::uint64_t> trouves;
    pour_chaque_premier(debut, 1000, [&](std::uint64_t p) { trouves.push_back(p - 30000); });
    std::vector<std::uint64_t> attendus =
        n == 0 ? std::vector<std::uint64_t>{} : premiers_entre(7, 30 * n);
    ASSERT_EQ(trouves, attendus) << n;
    ASSERT_EQ(compter_bits(debut), attendus.size()) << n;
  }
}

}  // namespace
}  // namespace premiers::crible
