// SPDX-License-Identifier: MIT
// The prime count: published values, and every part against its definition computed slowly.
#include "primes/compte/compte.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <stdexcept>
#include <vector>

#include "primes/arithmetique/racines.h"
#include "primes/compte/difficiles.h"
#include "primes/compte/faciles.h"
#include "primes/compte/lucy.h"
#include "primes/compte/p2.h"
#include "primes/compte/phi.h"
#include "primes/compte/roue2310.h"
#include "primes/compte/segment.h"
#include "primes/compte/table_facteurs.h"
#include "primes/compte/tables.h"
#include "primes/crible/crible.h"

namespace premiers::compte {
namespace {

using Nombre = std::uint64_t;

// pi(n) for all n <= borne, by the sieve of Eratosthenes at its plainest.
std::vector<Nombre> pi_naif(Nombre borne) {
  std::vector<bool> compose(borne + 1);
  std::vector<Nombre> pi(borne + 1);
  for (Nombre n = 2; n <= borne; ++n) {
    pi[n] = pi[n - 1] + (compose[n] ? 0 : 1);
    for (Nombre m = n * n; m <= borne && !compose[n]; m += n) compose[m] = true;
  }
  return pi;
}

std::vector<Nombre> premiers_naifs(Nombre borne) {
  const std::vector<Nombre> pi = pi_naif(borne);
  std::vector<Nombre> premiers{0};
  for (Nombre n = 2; n <= borne; ++n) {
    if (pi[n] != pi[n - 1]) premiers.push_back(n);
  }
  return premiers;
}

// phi(x, a) by Legendre's recursion.
Nombre phi_naif(const std::vector<Nombre>& premiers, Nombre x, Nombre a) {
  if (a == 0 || x == 0) return x;
  return phi_naif(premiers, x, a - 1) - phi_naif(premiers, x / premiers[a], a - 1);
}

// The same, where x < p_{a+1}^2 with a plain pi.
Nombre phi_court(const std::vector<Nombre>& premiers, const std::vector<Nombre>& pi, Nombre x,
                 Nombre a) {
  const Nombre q = premiers[a + 1];
  if (x < q) return x > 0;
  return x < q * q ? pi[x] - a + 1 : phi_naif(premiers, x, a);
}

// Möbius value, smallest and largest prime factor.
struct Factorise {
  int mu = 1;
  Nombre petit = std::numeric_limits<Nombre>::max();
  Nombre grand = 1;
};
Factorise factoriser(Nombre n) {
  Factorise f;
  for (Nombre p = 2; n > 1; ++p) {
    if (p * p > n) p = n;
    if (n % p != 0) continue;
    n /= p;
    f.mu = n % p == 0 ? 0 : -f.mu;
    while (n % p == 0) n /= p;
    f.petit = std::min(f.petit, p);
    f.grand = p;
  }
  return f;
}

// The combinatorial count with bounds of one's own choice.
Nombre par_feuilles(Nombre x, Nombre y, Nombre z) {
  const Plan plan(x, y, z);
  return feuilles_ordinaires(plan) + feuilles_faciles(plan) + feuilles_difficiles(plan) +
         plan.nombre() - 1 - compte_p2(plan);
}

Nombre racine_cubique(Nombre x) {
  auto r = static_cast<Nombre>(std::cbrt(static_cast<double>(x)));
  while (r * r * r > x) --r;
  while ((r + 1) * (r + 1) * (r + 1) <= x) ++r;
  return r;
}

// What repeats a law with many values does so with fewer under the sanitizers, which look at memory.
#if defined(PREMIERS_ASSAINI)
constexpr int un_sur = 7;
#else
constexpr int un_sur = 1;
#endif

TEST(Compte, EveryXUpTo30000) {
  const std::vector<Nombre> pi = pi_naif(30000);
  for (Nombre x = 0; x <= 30000; x += x < 5000 ? 1 : un_sur) {
    ASSERT_EQ(nombre_premiers(x), pi[x]) << x;
    ASSERT_EQ(compte_lucy(x), pi[x]) << x;
  }
}

// The number of primes up to 10^k: OEIS A006880.
TEST(CompteLent, PublishedPowersOfTen) {
  constexpr std::array<Nombre, 15> publies{
      0,       4,        25,        168,        1229,        9592,         78498,        664579,
      5761455, 50847534, 455052511, 4118054813, 37607912018, 346065536839, 3204941750802};
  Nombre x = 1;
  for (std::size_t k = 0; k < publies.size(); ++k, x *= 10) {
    EXPECT_EQ(nombre_premiers(x), publies[k]) << "10^" << k;
  }
}

// T. Oliveira e Silva, "Tables of values of pi(x) and of pi2(x)" (2007).
TEST(CompteLent, PublishedCountAt10To16) {
  EXPECT_EQ(nombre_premiers(10'000'000'000'000'000), 279238341033925U);
}

// The number of primes up to 2^k: OEIS A007053.
TEST(CompteLent, PublishedPowersOfTwo) {
  constexpr std::array<Nombre, 47> publies{0,
                                           1,
                                           2,
                                           4,
                                           6,
                                           11,
                                           18,
                                           31,
                                           54,
                                           97,
                                           172,
                                           309,
                                           564,
                                           1028,
                                           1900,
                                           3512,
                                           6542,
                                           12251,
                                           23000,
                                           43390,
                                           82025,
                                           155611,
                                           295947,
                                           564163,
                                           1077871,
                                           2063689,
                                           3957809,
                                           7603553,
                                           14630843,
                                           28192750,
                                           54400028,
                                           105097565,
                                           203280221,
                                           393615806,
                                           762939111,
                                           1480206279,
                                           2874398515,
                                           5586502348,
                                           10866266172,
                                           21151907950,
                                           41203088796,
                                           80316571436,
                                           156661034233,
                                           305761713237,
                                           597116381732,
                                           1166746786182,
                                           2280998753949};
  for (std::size_t k = 0; k < publies.size(); ++k) {
    EXPECT_EQ(nombre_premiers(Nombre{1} << k), publies[k]) << "2^" << k;
  }
}

TEST(CompteEnNombre, RandomXOfEverySizeAsByLucy) {
  std::mt19937_64 hasard(1);
  for (int i = 0; i < 150; ++i) {
    const double grandeur = std::uniform_real_distribution<double>(1.0, 10.5)(hasard);
    const auto x = static_cast<Nombre>(std::pow(10.0, grandeur));
    EXPECT_EQ(nombre_premiers(x), compte_lucy(x)) << x;
  }
}

TEST(CompteLent, DifferencesOfLargeXAsByTheSieve) {
  std::mt19937_64 hasard(2);
  for (const double grandeur : {11.0, 12.0, 12.7, 13.3, 13.9}) {
    const auto a = static_cast<Nombre>(std::pow(10.0, grandeur)) + hasard() % 1000000;
    const Nombre b = a + hasard() % 20000000;
    EXPECT_EQ(nombre_premiers(b) - nombre_premiers(a), crible::compter_par_crible(a + 1, b)) << a;
  }
}

TEST(CompteEnNombre, AroundPerfectPowers) {
  for (const Nombre n : {2001u, 4472u, 4473u, 7919u, 12343u, 31623u, 65536u, 99991u}) {
    for (const Nombre x : {n * n - 1, n * n, n * n + 1})
      EXPECT_EQ(nombre_premiers(x), compte_lucy(x));
  }
  for (const Nombre n : {271u, 272u, 499u, 1000u, 1009u, 1999u, 2000u}) {
    const Nombre cube = n * n * n;
    for (const Nombre x : {cube - 1, cube, cube + 1}) EXPECT_EQ(nombre_premiers(x), compte_lucy(x));
  }
  for (const Nombre n : {16u, 17u, 19u, 23u, 31u, 43u, 44u, 47u}) {
    const Nombre x = n * n * n * n * n * n;
    for (const Nombre v : {x - 1, x, x + 1}) EXPECT_EQ(nombre_premiers(v), compte_lucy(v));
  }
}

TEST(Compte, RefusesWhatItsArithmeticIsNotMadeFor) {
  EXPECT_THROW(nombre_premiers(Nombre{1} << 63U), std::invalid_argument);
  EXPECT_THROW(nombre_premiers(std::numeric_limits<Nombre>::max()), std::invalid_argument);
  EXPECT_NO_THROW(Plan(1'000'000, 101, 101));
  EXPECT_THROW(Plan(9'999, 50, 50), std::invalid_argument);
  EXPECT_THROW(Plan(Nombre{1} << 63U, 3'000'000, 3'000'000), std::invalid_argument);
  EXPECT_THROW(Plan(1'000'000, 100, 101), std::invalid_argument);  // y = cbrt(x)
  EXPECT_THROW(Plan(1'000'000, 102, 101), std::invalid_argument);
  EXPECT_THROW(Plan(1'000'000, 101, 1001), std::invalid_argument);                // z > sqrt(x)
  EXPECT_THROW(Plan(1'000'000'000'000, 10'100, 131'300), std::invalid_argument);  // z = 13 y
  EXPECT_THROW(Plan(1'000'000'000'000'000'000, 64'000'001, 64'000'001), std::invalid_argument);
}

TEST(CompteEnNombre, LeavesAreRightForEveryXOfARange) {
  const std::vector<Nombre> pi = pi_naif(20000);
  for (Nombre x = 15000; x <= 20000; x += 3) {
    const Nombre racine = racine_carree(x);
    ASSERT_EQ(par_feuilles(x, racine_cubique(x) + 1, racine), pi[x]) << x;
    ASSERT_EQ(par_feuilles(x, racine, racine), pi[x]) << x;
  }
}

// y just above the cube root, y = sqrt(x), and z from y to sqrt(x): no choice may matter.
TEST(Compte, LeavesAreRightWhateverYAndZ) {
  std::mt19937_64 hasard(3);
  for (int i = 0; i < 250 / un_sur; ++i) {
    const double grandeur = std::uniform_real_distribution<double>(5.0, 9.5)(hasard);
    auto x = static_cast<Nombre>(std::pow(10.0, grandeur));
    if (i % 5 == 0) x = racine_carree(x) * racine_carree(x) - hasard() % 2;
    if (i % 5 == 1) x = static_cast<Nombre>(std::pow(racine_cubique(x), 3)) - hasard() % 2;
    const Nombre racine = racine_carree(x);
    const Nombre cubique = racine_cubique(x) + 1;
    const Nombre y =
        i % 7 == 0 ? racine : cubique + hasard() % (racine - cubique) / (1 + hasard() % 8);
    const Nombre z = i % 3 == 0 ? y : std::min(racine, y + hasard() % (11 * y));
    EXPECT_EQ(par_feuilles(x, y, z), compte_lucy(x)) << x << ' ' << y << ' ' << z;
  }
}

TEST(Compte, EveryTermAsItIsDefined) {
  const std::vector<Nombre> premiers = premiers_naifs(100000);
  const std::vector<Nombre> pi = pi_naif(100000);
  struct Cas {
    Nombre x, y, z;
  };
  for (const Cas c : {Cas{1000000, 101, 101},
                      {1000000, 320, 960},
                      {5000000, 200, 2000},
                      {5000000, 900, 900},
                      {7000001, 192, 384}}) {
    Nombre ordinaires = 0;
    std::vector<Factorise> f;
    for (Nombre m = 0; m <= c.z; ++m) f.push_back(factoriser(m));
    for (Nombre m = 1; m <= c.z; ++m) {
      if (f[m].petit <= 19 || f[m].grand > c.y) continue;
      ordinaires += static_cast<Nombre>(f[m].mu) * phi_naif(premiers, c.x / m, 8);
    }
    Nombre faciles = 0;
    Nombre difficiles = 0;
    for (Nombre b = 9; premiers[b] <= c.y; ++b) {
      const Nombre q = premiers[b];
      for (Nombre m = c.z / q + 1; m <= c.z; ++m) {
        if (f[m].mu == 0 || f[m].petit <= q || f[m].grand > c.y) continue;
        const Nombre n = c.x / (m * q);
        const Nombre feuille = static_cast<Nombre>(-f[m].mu) * phi_court(premiers, pi, n, b - 1);
        (n < q * q ? faciles : difficiles) += feuille;
      }
    }
    Nombre p2 = 0;
    for (Nombre b = pi[c.y] + 1; premiers[b] * premiers[b] <= c.x; ++b) {
      p2 += pi[c.x / premiers[b]] - b + 1;
    }
    const Plan plan(c.x, c.y, c.z);
    EXPECT_EQ(feuilles_ordinaires(plan), ordinaires) << c.x << ' ' << c.y << ' ' << c.z;
    for (const auto& v : versions_de_feuilles_faciles()) {
      if (!jouable(v.besoin)) continue;
      EXPECT_EQ(v.boucle(plan, {}), faciles) << c.x << ' ' << c.y << ' ' << c.z;
    }
    EXPECT_EQ(feuilles_difficiles(plan), difficiles) << c.x << ' ' << c.y << ' ' << c.z;
    for (const auto& v : versions_de_compte_p2()) {
      if (!jouable(v.besoin)) continue;
      EXPECT_EQ(v.boucle(plan, {}), p2) << c.x << ' ' << c.y << ' ' << c.z;
    }
  }
}

TEST(CompteTables, PhiOfEightPrimesAsByLegendre) {
  const std::vector<Nombre> premiers = premiers_naifs(100);
  for (Nombre x = 0; x < 3000; ++x) ASSERT_EQ(phi_8(x), phi_naif(premiers, x, 8)) << x;
  std::mt19937_64 hasard(4);
  for (Nombre x : {510509u, 510510u, 510511u, 9699689u, 9699690u}) {
    EXPECT_EQ(phi_8(x), phi_naif(premiers, x, 8)) << x;
  }
  for (int i = 0; i < 1000; ++i) {
    const Nombre x = hasard() >> hasard() % 64;
    EXPECT_EQ(phi_8(x), phi_naif(premiers, x, 8)) << x;
  }
}

TEST(CompteTables, PiByWindows) {
  const std::vector<Nombre> pi = pi_naif(100000);
  const TablePi table(100000);
  for (Nombre n = 5; n <= 100000; ++n) ASSERT_EQ(table(n), pi[n]) << n;
  crible::Fenetres fenetres(0, 240 * 400 - 1);
  TablePi fenetre;
  for (const std::size_t nombre : {1u, 7u, 200u, 192u}) {
    fenetre.avancer(fenetres, nombre);
    ASSERT_EQ(fenetre.fin() - fenetre.debut(), 240 * nombre);
    for (Nombre n = std::max<Nombre>(5, fenetre.debut()); n < fenetre.fin(); ++n) {
      ASSERT_EQ(fenetre(n), pi[n]) << n;
    }
  }
}

TEST(CompteTables, PrimesAtTheirRanks) {
  const std::vector<Nombre> naifs = premiers_naifs(200000);
  for (const Nombre borne : {5u, 6u, 7u, 30u, 31u, 199999u, 200000u}) {
    const std::vector<std::uint32_t> premiers = premiers_par_rang(borne);
    const auto fin = std::upper_bound(naifs.begin(), naifs.end(), borne);
    ASSERT_TRUE(std::equal(premiers.begin(), premiers.end(), naifs.begin(), fin)) << borne;
  }
}

TEST(CompteTables, FactorsOfEveryM) {
  for (const auto& [y, z] : {std::pair<Nombre, Nombre>{100, 100}, {100, 1299}, {70000, 71000}}) {
    const TableFacteurs table(premiers_par_rang(y), z);
    for (std::size_t i = 1; i < Roue2310::nombre(z); ++i) {
      const Nombre m = Roue2310::valeur(i);
      ASSERT_EQ(Roue2310::nombre(m), i + 1);
      ASSERT_EQ(Roue2310::nombre(m - 1), i);
      const Factorise f = factoriser(m);
      for (const std::uint32_t q : {13u, 17u, 97u, 251u, 65521u}) {
        const bool convient = f.mu != 0 && f.petit > q && f.grand <= y;
        ASSERT_EQ(table.convient(i, q), convient) << m << ' ' << q;
        if (convient) {
          ASSERT_EQ(table.pair(i), f.mu == 1) << m;
        }
      }
    }
  }
}

// Flags, counts and totals of consecutive segments, as primes are taken out by either way.
void verifier_segment(const SegmentCompte::Noyaux& noyaux) {
  const std::array<std::uint32_t, 3> fond_bas{7, 11, 13};
  const std::array<std::uint32_t, 2> fond_haut{17, 19};
  constexpr std::array<std::uint32_t, 10> premiers{23, 29, 31, 37, 41, 43, 47, 53, 1009, 30011};
  SegmentCompte s(1024);
  s.noyaux = noyaux;
  const Motif motif_23(std::span(premiers.data(), 1));
  std::vector<Multiple> multiples;
  for (const std::uint32_t q : premiers) multiples.push_back(Multiple::initial(q, 0));
  for (int tour = 0; tour < 6; ++tour, s.octet += 1024) {
    std::vector<Nombre> restent;
    for (Nombre n = s.bas(); n < s.haut(); ++n) {
      const auto divise = [n](Nombre p) { return n % p == 0; };
      constexpr std::array<Nombre, 8> petits{2, 3, 5, 7, 11, 13, 17, 19};
      if (std::none_of(petits.begin(), petits.end(), divise)) restent.push_back(n);
    }
    s.commencer(Motif(fond_bas), Motif(fond_haut));
    for (std::size_t i = 0; i < premiers.size(); ++i) {
      ASSERT_EQ(s.total, restent.size());
      for (const Nombre pas : {31u, 4001u}) {  // with and without the block counts summed up
        Compteur compteur(s, 30720 / pas);
        Nombre attendu = 0;
        std::vector<Question> questions;
        for (Nombre n = 5; n < 30720; n += pas) {
          const bool moins = n % 3 == 0;
          questions.push_back(static_cast<Question>(2 * n + moins));
          const auto compte = static_cast<Nombre>(
              std::upper_bound(restent.begin(), restent.end(), s.bas() + n) - restent.begin());
          attendu += moins ? 0 - compte : compte;
        }
        ASSERT_EQ(compteur(questions), attendu) << tour << ' ' << premiers[i];
      }
      if (i == 0) {
        s.poser(motif_23);
      } else {
        s.rayer(multiples[i]);
      }
      std::erase_if(restent, [q = premiers[i]](Nombre n) { return n % q == 0; });
    }
  }
}

TEST(CompteSegment, EveryVersionCountsLikeAPlainSieve) {
  for (const auto& v : SegmentCompte::versions_des_noyaux()) {
    if (jouable(v.besoin)) verifier_segment(v.boucle);
  }
}

TEST(CompteSuivi, ProgressGrowsFrom0To1) {
  double derniere = 0;
  std::size_t appels = 0;
  nombre_premiers(10'000'000'000'000, [&](double part) {
    EXPECT_GE(part, derniere);
    EXPECT_LE(part, 1.0);
    derniere = part;
    ++appels;
  });
  EXPECT_GT(appels, 10u);
  EXPECT_GT(derniere, 0.9);
}

TEST(CompteSuivi, AnExceptionAbandonsTheWork) {
  std::size_t appels = 0;
  const auto jeter = [&](double) {
    if (++appels == 5) throw std::runtime_error("assez");
  };
  EXPECT_THROW(nombre_premiers(1'000'000'000'000, jeter), std::runtime_error);
  EXPECT_EQ(nombre_premiers(1'000'000'000'000), 37607912018u);
}

}  // namespace
}  // namespace premiers::compte
