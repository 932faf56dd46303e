// SPDX-License-Identifier: MIT
// The filter of large sieving primes against exact division: none that has a multiple in the window
// is left out, and hardly any other is kept, which is all that it is for.
#include "primes/crible/touches.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <vector>

#include "primes/arithmetique/bits.h"

namespace premiers {
namespace {

constexpr std::size_t nombre_octets = 2003;

using Filtre = decltype(&touches);

struct Cas {
  std::uint64_t plus_petit;  // candidates from here on
  std::uint64_t debut;       // of the window
  std::uint64_t largeur;
};

/// Candidates of all residues, or every third byte of them: the filter need not know primes.
std::vector<std::uint8_t> candidats(bool tous) {
  std::vector<std::uint8_t> octets(nombre_octets, 0xFF);
  for (std::size_t i = 0; i < octets.size() && !tous; ++i) {
    octets[i] = static_cast<std::uint8_t>(i % 3 == 0 ? i : 0);
  }
  return octets;
}

void comparer(Filtre filtre, const Cas& cas, bool tous) {
  const std::uint64_t premier_octet = cas.plus_petit / 30 + 1;
  const std::uint64_t fin = cas.debut + cas.largeur;
  const auto octets = candidats(tous);
  std::vector<std::uint32_t> gardes(8 * octets.size() + 8);
  gardes.resize(filtre(octets, premier_octet, {cas.debut, fin}, gardes.data()));
  std::size_t superflus = 0;
  std::size_t candidats = 0;
  auto garde = gardes.begin();
  pour_chaque_premier(octets, premier_octet, [&](std::uint64_t p) {
    ++candidats;
    const bool touche = (fin - 1) / p != (cas.debut - 1) / p;
    const bool gardee = garde != gardes.end() && *garde == p;
    if (gardee) ++garde;
    ASSERT_TRUE(gardee || !touche)
        << p << " has a multiple in " << cas.debut << " + " << cas.largeur;
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
  const std::uint64_t premier_octet = (std::uint64_t{1} << 19) / 30 + 1;
  for (std::uint64_t debut = ~std::uint64_t{0} - 10'000'000; debut > 10'000'000; debut /= 7) {
    std::vector<std::uint32_t> gardes(8 * octets.size() + 8);
    gardes.resize(filtre(octets, premier_octet, {debut, debut + 1000}, gardes.data()));
    pour_chaque_premier(octets, premier_octet, [&](std::uint64_t p) {
      if ((debut + 999) / p != (debut - 1) / p) {
        ASSERT_TRUE(std::ranges::binary_search(gardes, p)) << p << " at " << debut;
      }
    });
  }
}

}  // namespace
}  // namespace premiers
