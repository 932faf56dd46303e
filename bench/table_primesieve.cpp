// SPDX-License-Identifier: MIT
// The table of primes as libprimesieve makes it: a vector of 64-bit integers up to a bound. The
// time and the peak memory of the process are the measure.
//
//   table_primesieve BOUND        prints how many primes there are, and the last
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <primesieve.hpp>
#include <vector>

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  const std::uint64_t borne = std::strtoull(argv[1], nullptr, 10);
  std::vector<std::uint64_t> premiers;
  primesieve::generate_primes(borne, &premiers);
  std::printf("%zu %llu\n", premiers.size(), static_cast<unsigned long long>(premiers.back()));
}
