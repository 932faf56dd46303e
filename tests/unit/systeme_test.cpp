// SPDX-License-Identifier: MIT
// What the program asks of the operating system and can be seen from inside: memory.
#include "systeme/systeme.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <span>
#include <vector>

namespace premiers::systeme {
namespace {

TEST(Peupler, LeavesTheBytesAsTheyAre) {
  std::vector<std::byte> octets(1 << 20, std::byte{0x5A});
  const std::span tous{octets};
  for (const std::size_t debut : {0U, 1U, 4095U, 4096U, 5000U}) {
    for (const std::size_t taille : {0U, 1U, 4095U, 4096U, 8192U, 1'000'000U}) {
      peupler(tous.subspan(debut, taille));
      ASSERT_EQ(std::ranges::count(octets, std::byte{0x5A}), 1 << 20) << debut << " " << taille;
    }
  }
}

TEST(MemoireLibre, IsWhatCanBeTaken) {
  const std::uint64_t libre = memoire_libre();
  ASSERT_GT(libre, std::uint64_t{1} << 20);
  std::vector<std::byte> octets(
      static_cast<std::size_t>(std::min(libre / 2, std::uint64_t{1} << 24)));
  peupler(octets);
  octets.back() = std::byte{1};
  EXPECT_EQ(octets.front(), std::byte{0});
}

}  // namespace
}  // namespace premiers::systeme
