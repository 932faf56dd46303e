// SPDX-License-Identifier: MIT
// The first primes, kept as bits: the part of the table of primes that is worth keeping once
// something reads there again and again.
//
// One bit for each integer coprime to 30 (primes/arithmetique/roue.h), and for each line of 64
// bytes the number of primes before it. Marks tell the line of every 4,096th rank: a rank is found by
// binary search among the forty lines between two marks and a walk of eight words within one, the rank
// of a value by its line alone. Memory: 1/30 byte for each integer, a sixteenth more for the counts.
// Reading: some tens of nanoseconds to 200, as the caches have it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace premiers::rangs {

struct BitsGardes {
  /// What is kept reaches no further than this: 17 MiB. A reading beyond counts within 2 ms; up to
  /// here sieving once costs some 50 ms.
  static constexpr std::int64_t borne_max = 30 * (std::int64_t{1} << 24) - 1;

  /// The integers up to this one are covered.
  std::int64_t borne() const { return static_cast<std::int64_t>(30 * taille_) - 1; }
  /// How many primes are covered; 0 before the first `etendre`.
  std::int64_t nombre() const { return nombre_; }

  /// Covers the integers up to `borne` <= borne_max, and those of the same line. No effect if they
  /// are.
  void etendre(std::int64_t borne);

  /// The prime of a rank, 1 <= rang <= nombre().
  std::int64_t premier(std::int64_t rang) const;
  /// How many primes are <= v, 0 <= v <= borne().
  std::int64_t rang(std::int64_t v) const;

  /// The flags, from those of 0 .. 29 on; 2, 3 and 5 have none.
  std::span<const std::uint8_t> octets() const { return {octets_.get(), taille_}; }

 private:
  void faire_place(std::size_t taille);
  std::size_t ligne(std::uint32_t n, std::size_t initiale, std::size_t finale) const;
  void poser_reperes();

  std::unique_ptr<std::uint8_t[]> octets_;
  std::size_t capacite_ = 0;            // how many bytes there is room for
  std::size_t taille_ = 0;              // how many there are, whole lines
  std::vector<std::uint32_t> avant_;    // the number of flags before each line
  std::vector<std::uint32_t> reperes_;  // the line of the flags 1, 4,097, 8,193 ...
  std::int64_t nombre_ = 0;
};

}  // namespace premiers::rangs
