// SPDX-License-Identifier: MIT
// Decomposes every integer of standard input (one a line) and prints it in the manner of GNU
// `factor`, so that a list can be timed, and compared, against it and against PARI/GP.
#include <NTL/ZZ.h>

#include <cstdint>
#include <iostream>

#include "primes/facteurs/facteurs.h"

int main() {
  std::ios::sync_with_stdio(false);
  NTL::ZZ n;
  while (std::cin >> std::ws && std::cin.peek() != EOF && std::cin >> n) {
    std::cout << n << ':';
    for (const auto& [premier, exposant] : premiers::decomposer(n)) {
      for (std::int64_t i = 0; i < exposant; ++i) std::cout << ' ' << premier;
    }
    std::cout << '\n';
  }
}
