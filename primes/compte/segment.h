// SPDX-License-Identifier: MIT
// A segment of flags that one prime after the other is taken out of, while the number of flags left
// up to any n is asked in between: the counting sieve of the hard leaves.
//
// A flag is a bit on the wheel of 30 (primes/arithmetique/roue.h). Each block of 8 words, a cache
// line, has a count of its own, kept up to date by crossing off. Counting up to n is a sum of block
// counts, done beforehand where many n are asked, and of at most 8 words.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "primes/arithmetique/processeur.h"

namespace premiers::compte {

/// The flags of the integers without some small prime factors: words that repeat after `periode`,
/// continued by one block so that no block wraps.
struct Motif {
  /// Primes > 5; their product, at least 8, is the period.
  explicit Motif(std::span<const std::uint32_t> facteurs);

  std::uint32_t periode = 1;
  std::vector<std::uint64_t> mots;
};

/// Where the next multiple of a prime q lies that is to be crossed off.
struct Multiple {
  std::uint32_t q = 0;
  std::uint32_t octet = 0;     // from the start of the segment
  std::uint8_t cofacteur = 0;  // index of the residue of its cofactor

  /// The first multiple from integer 30 * octet_bas on, by a cofactor coprime to 30; 7 <= q < 2^17.
  static Multiple initial(std::uint32_t q, std::uint64_t octet_bas);
};

/// A question to the segment: 2 * (n - bas()), plus 1 if the count goes negatively into the sum.
using Question = std::uint32_t;

struct SegmentCompte {
  static constexpr std::size_t mots_par_bloc = 8;
  static constexpr std::size_t octets_par_bloc = 8 * mots_par_bloc;
  static constexpr std::size_t taille_max = std::size_t{1} << 22;
  /// Questions from one block to the next lie so far apart.
  static constexpr Question questions_par_bloc = 2 * 240 * mots_par_bloc;

  /// `taille` in bytes, a multiple of a block, at most `taille_max`.
  explicit SegmentCompte(std::size_t taille);

  std::uint64_t bas() const { return 30 * octet; }
  std::uint64_t haut() const { return 30 * (octet + 8 * mots.size()); }

  /// Starts with the flags common to both patterns.
  void commencer(const Motif& a, const Motif& b);
  /// Takes out what the pattern lacks. Costs a pass over the segment: for primes up to some
  /// hundreds faster than `rayer`.
  void poser(const Motif& motif) { noyaux.poser(*this, motif); }
  /// Crosses off the multiples of a prime, and moves it on to the next segment.
  void rayer(Multiple& multiple);
  /// Sums up the block counts into `avant`.
  void cumuler();

  /// The loops worth a version for the processor at hand.
  struct Noyaux {
    void (*poser)(SegmentCompte& s, const Motif& motif);
    // signed sum of the flags up to n within the block of n
    std::uint64_t (*compter)(const SegmentCompte& s, std::span<const Question> questions);
    // signed sum of the flags before the blocks of n, from `avant`
    std::uint64_t (*compter_avant)(const SegmentCompte& s, std::span<const Question> questions);
  };
  static Versions<Noyaux> versions_des_noyaux();

  std::uint64_t octet = 0;  // the first byte, from that of 0 .. 29
  std::uint64_t total = 0;  // flags left
  std::vector<std::uint64_t> mots;
  std::vector<std::uint16_t> blocs;  // flags left in each block
  std::vector<std::uint32_t> avant;  // flags left before each block, as of `cumuler`
  Noyaux noyaux;                     // the best, unless a test asks for others
};

/// Answers questions with increasing n, as long as nothing is taken out of the segment.
struct Compteur {
  /// `nombre` questions at most are to come.
  Compteur(SegmentCompte& s, std::size_t nombre);

  /// The signed sum, modulo 2^64, of the flags up to n.
  std::uint64_t operator()(std::span<const Question> questions);

 private:
  // Effect: from this many questions on, the block counts are summed up beforehand. Flat from 8
  // to 32.
  static constexpr std::size_t questions_pour_cumul = 16;

  const SegmentCompte& segment_;
  bool cumule_;
  std::size_t bloc_ = 0;     // else: the block of the last question
  std::uint32_t avant_ = 0;  // and the flags before it
};

}  // namespace premiers::compte
