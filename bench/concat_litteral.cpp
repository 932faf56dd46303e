// SPDX-License-Identifier: MIT
// The yardstick of the search of a range: its literal steps over the primes of libprimesieve. Every
// piece of every number is looked up in a bitmap, the starts and lengths are tabulated, every way
// is walked. Prints what choice 2 of the menu prints after its question, whole list.
//
//   g++ -O3 -DNDEBUG -std=c++20 concat_litteral.cpp -lprimesieve -o concat_litteral
//   concat_litteral FIRST LAST > list
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <primesieve.hpp>
#include <vector>

namespace {

struct Recherche {
  std::vector<bool> premier;
  int n0 = 0;
  int a0[24] = {};
  int r0[24] = {};
  int l0[24][24] = {};

  void separer(std::uint64_t n) {
    n0 = 0;
    for (std::uint64_t p = n; p != 0; p /= 10) ++n0;
    for (int i = n0; i >= 1; --i, n /= 10) a0[i] = static_cast<int>(n % 10);
  }

  void scruter() {
    int k2 = 0;
    for (int t = 1; t <= n0; ++t) {
      int j2 = 0;
      std::uint64_t morceau = 0;
      for (int u = 1; u <= n0 - t + 1; ++u) {
        morceau = 10 * morceau + static_cast<std::uint64_t>(a0[t + u - 1]);
        if (!premier[morceau]) continue;
        if (++j2 == 1) r0[++k2] = t;
        l0[k2][j2] = u;
      }
      if (j2 > 0) l0[k2][j2 + 1] = 0;
      if (r0[1] == 0) break;
    }
    r0[k2 + 1] = 0;
  }

  std::uint64_t continuer(int i, int couverts) const {
    if (couverts == n0) return 1;
    ++i;
    while (r0[i] != 0 && r0[i] <= couverts) ++i;
    if (r0[i] != couverts + 1) return 0;
    std::uint64_t chemins = 0;
    for (int j = 1; l0[i][j] != 0; ++j) chemins += continuer(i, couverts + l0[i][j]);
    return chemins;
  }

  std::uint64_t chemins(std::uint64_t n) {
    separer(n);
    scruter();
    if (r0[1] == 0) return 0;
    std::uint64_t total = 0;
    for (int j = 1; l0[1][j] != 0; ++j) total += continuer(1, l0[1][j]);
    return total;
  }
};

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  const std::uint64_t debut = std::strtoull(argv[1], nullptr, 10);
  const std::uint64_t fin = std::strtoull(argv[2], nullptr, 10);
  Recherche recherche;
  recherche.premier.resize(fin + 1);
  primesieve::iterator it;
  for (std::uint64_t p = it.next_prime(); p <= fin; p = it.next_prime()) {
    recherche.premier[p] = true;
  }
  std::uint64_t w2 = 0;
  for (std::uint64_t n = debut; n <= fin; ++n) {
    const std::uint64_t w1 = recherche.chemins(n);
    if (w1 == 0) continue;
    ++w2;
    std::printf("%llu[%llu]  ", static_cast<unsigned long long>(n),
                static_cast<unsigned long long>(w1));
  }
  std::printf(" \n \n \t Il y a  %llu  nombres de ce type. \n ",
              static_cast<unsigned long long>(w2));
}
