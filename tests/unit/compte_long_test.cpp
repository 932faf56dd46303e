// SPDX-License-Identifier: MIT
// The prime count at a size where it takes seconds: a program of its own, so that it runs beside the
// others, and only in the build that ships.
#include <gtest/gtest.h>

#include "primes/compte/compte.h"

namespace premiers::compte {
namespace {

// T. Oliveira e Silva, "Tables of values of pi(x) and of pi2(x)" (2007).
TEST(CompteLong, PublishedCountAt10To17) {
  EXPECT_EQ(nombre_premiers(100'000'000'000'000'000), 2623557157654233U);
}

}  // namespace
}  // namespace premiers::compte
