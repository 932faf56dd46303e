// SPDX-License-Identifier: MIT
// The filter of large sieving primes against exact division: none that has an odd multiple in the
// window is left out, and hardly any other is kept, which is all that it is for. And the multiples
// themselves against a plain walk from one to the next.
#include "primes/crible/touches.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <random>
#include <vector>

#include "primes/arithmetique/bits.h"
#include "primes/arithmetique/roue.h"

namespace premiers::crible {
namespace {

constexpr std::size_t nombre_octets = 2003;

using Filtre = decltype(&touches);

struct Cas {
  std::uint64_t plus_petit;  // candidates from here on
  std::uint64_t debut;       // of the window
  std::uint64_t largeur;
};

/// Does an odd number lie between debut / p and (fin - 1) / p?
bool a_un_multiple_impair(std::uint64_t p, std::uint64_t debut, std::uint64_t fin) {
  return ((fin - 1) / p + 1) / 2 != ((debut - 1) / p + 1) / 2;
}

/// Candidates of all residues, or every third byte of them: the filter need not know primes.
std::vector<std::uint8_t> candidats(bool tous) {
  std::vector<std::uint8_t> octets(nombre_octets, 0xFF);
  for (std::size_t i = 0; i < octets.size() && !tous; ++i) {
    octets[i] = static_cast<std::uint8_t>(i % 3 == 0 ? i : 0);
  }
  return octets;
}

void comparer(Filtre filtre, const Cas& cas, bool tous) {
  const std::uint64_t octet_initial = cas.plus_petit / 30 + 1;
  const std::uint64_t fin = cas.debut + cas.largeur;
  const auto octets = candidats(tous);
  std::vector<std::uint32_t> gardes(8 * octets.size() + 16);
  gardes.resize(filtre(octets, octet_initial, {cas.debut, fin}, gardes.data()));
  std::size_t superflus = 0;
  std::size_t candidats = 0;
  auto garde = gardes.begin();
  pour_chaque_premier(octets, octet_initial, [&](std::uint64_t p) {
    ++candidats;
    const bool touche = a_un_multiple_impair(p, cas.debut, fin);
    const bool gardee = garde != gardes.end() && *garde == p;
    if (gardee) ++garde;
    ASSERT_TRUE(gardee || !touche)
        << p << " has an odd multiple in " << cas.debut << " + " << cas.largeur;
    superflus += gardee && !touche ? 1 : 0;
  });
  EXPECT_EQ(garde, gardes.end()) << "something that was no candidate, or out of order";
  EXPECT_LE(superflus, candidats / 100) << cas.plus_petit << " at " << cas.debut;
}

/// What this processor gets, and the plain version.
struct Touches : testing::TestWithParam<Filtre> {};
INSTANTIATE_TEST_SUITE_P(, Touches, testing::Values(&touches, versions_de_touches().back().boucle),
                         [](const auto& filtre) {
                           return filtre.index == 0 ? "here" : "portable";
                         });

TEST_P(Touches, NoneIsLeftOutAndHardlyAnyTooMuch) {
  for (const std::uint64_t plus_petit :
       {1ULL << 24, 1ULL << 28, 3'000'000'000ULL, 4'294'900'000ULL}) {
    for (const std::uint64_t debut :
         {9'000'000'000'000'000'000ULL, 1'000'000'000'000'000'000ULL, 123'456'789'012'345ULL}) {
      for (const std::uint64_t largeur : {1ULL, 1000ULL, 1'000'000ULL, 40'000'000ULL}) {
        comparer(GetParam(), {plus_petit, debut, largeur}, true);
        comparer(GetParam(), {plus_petit, debut, largeur}, false);
      }
    }
  }
}

TEST_P(Touches, NoneOfTheSmallestIsLeftOutAtTheUpperEnd) {
  const Filtre filtre = GetParam();
  const auto octets = candidats(true);
  const std::uint64_t octet_initial = (std::uint64_t{1} << 19) / 30 + 1;
  for (std::uint64_t debut = ~std::uint64_t{0} - 10'000'000; debut > 10'000'000; debut /= 7) {
    std::vector<std::uint32_t> gardes(8 * octets.size() + 16);
    gardes.resize(filtre(octets, octet_initial, {debut, debut + 1000}, gardes.data()));
    pour_chaque_premier(octets, octet_initial, [&](std::uint64_t p) {
      if (a_un_multiple_impair(p, debut, debut + 1000)) {
        ASSERT_TRUE(std::ranges::binary_search(gardes, p)) << p << " at " << debut;
      }
    });
  }
}

using Listage = decltype(&multiples);

/// What `multiples` should give, sorted.
std::vector<std::uint32_t> multiples_un_par_un(const std::vector<std::uint32_t>& candidats,
                                               const Fenetre& w) {
  std::vector<std::uint32_t> liste;
  for (const std::uint64_t p : candidats) {
    for (std::uint64_t q = (w.debut + p - 1) / p; q * p < w.fin; ++q) {
      if (q % 2 == 0 || q % 3 == 0 || q % 5 == 0 || q % 7 == 0) continue;
      const std::uint64_t m = q * p - w.debut;
      const std::uint64_t bit = indice_suivant[m % 30];
      liste.push_back(static_cast<std::uint32_t>(8 * (m / 30) + bit));
    }
  }
  std::ranges::sort(liste);
  return liste;
}

void comparer_les_multiples(Listage lister, const std::vector<std::uint32_t>& candidats,
                            const Fenetre& w) {
  const std::uint64_t place = candidats.size() * ((w.fin - w.debut) / (1U << 20) + 1) + 8;
  constexpr std::uint32_t garde = 0xFFFFFFFF;
  std::vector<std::uint32_t> liste(place + 1, garde);
  const std::size_t n = lister(candidats, w, liste.data());
  ASSERT_EQ(liste.back(), garde) << "wrote behind the room that it asks for";
  liste.resize(n);
  std::ranges::sort(liste);
  ASSERT_EQ(liste, multiples_un_par_un(candidats, w)) << w.debut << " to " << w.fin;
}

/// A number prime to 30, less than 30 from n.
std::uint32_t premier_a_30(std::uint64_t n) {
  return static_cast<std::uint32_t>(n / 30 * 30 + residus[n % 8]);
}

/// Of both loops.
struct Multiples : testing::TestWithParam<Listage> {};
INSTANTIATE_TEST_SUITE_P(, Multiples,
                         testing::Values(&multiples, versions_de_multiples().back().boucle),
                         [](const auto& listage) {
                           return listage.index == 0 ? "here" : "portable";
                         });

TEST_P(Multiples, AsByAPlainWalk) {
  std::mt19937_64 hasard(1);
  for (const std::uint64_t plus_petit :
       {1ULL << 19, 1ULL << 24, 3'037'000'000ULL, (1ULL << 32) - 1000}) {
    for (const std::uint64_t debut : {1'099'511'628'000ULL, 999'999'999'999'999'990ULL}) {
      for (const std::uint64_t largeur : {30ULL, 1'000'020ULL, 30ULL << 25}) {
        const std::uint64_t ici = debut / 30 * 30 + 30 * (hasard() % 1000);
        std::vector<std::uint32_t> candidats;
        for (std::uint32_t i = 0; i < 37; ++i) {
          candidats.push_back(premier_a_30(plus_petit + 30 + hasard() % 900));
          comparer_les_multiples(GetParam(), candidats, {ici, ici + largeur});
        }
      }
    }
  }
}

// Where the quotient is a whole number, or the last below one, rounding decides about it.
TEST_P(Multiples, WhereTheWindowStartsOrEndsAtAMultiple) {
  std::mt19937_64 hasard(2);
  for (int essai = 0; essai < 20000; ++essai) {
    const std::uint64_t p = premier_a_30((1ULL << 20) + hasard() % 3'000'000'000);
    const std::uint64_t q = ((1ULL << 63) - hasard() % (1ULL << 62)) / p;
    const std::uint64_t debut = p * q / 30 * 30;
    comparer_les_multiples(GetParam(), {static_cast<std::uint32_t>(p)}, {debut, debut + 30});
    comparer_les_multiples(GetParam(), {static_cast<std::uint32_t>(p)}, {debut - 30, debut});
    comparer_les_multiples(GetParam(), {static_cast<std::uint32_t>(p)}, {debut + 30, debut + 60});
  }
}

TEST_P(Multiples, UpToTheEndOfTheNumbers) {
  constexpr std::uint64_t fin = ((1ULL << 63) / 30 + 1) * 30;
  std::mt19937_64 hasard(3);
  std::vector<std::uint32_t> candidats;
  for (int i = 0; i < 1000; ++i) {
    candidats.push_back(premier_a_30((1ULL << 22) + hasard() % 3'000'000'000));
  }
  comparer_les_multiples(GetParam(), candidats, {fin - 30'000'000, fin});
}

}  // namespace
}  // namespace premiers::crible
