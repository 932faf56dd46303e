// SPDX-License-Identifier: MIT
// The table of primes by rank, the memory of the whole program: it grows for the life of the
// process and never loses an entry.
//
// One bit for each integer coprime to 30 (primes/arithmetique/roue.h), in blocks that are sieved in
// place and never moved, so growing copies nothing. A small directory holds the number of primes
// before each block, and before each line of 64 bytes within it. Marks tell the line of every
// 4,096th rank; as primes lie evenly, the line of any rank is found in proportion between two marks,
// at most a step or two off, and is fetched from memory while the directory is still being asked.
// The table runs to the prime `dernier`; the rest of the last block is sieved ahead and not part of
// it.
//
// Memory: 1/30 byte for each integer covered, 1/16 of that for the directory, at most 1/16 ahead.
// Growing: the cost of the sieve. Limit: primes below 2^63.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "primes/arithmetique/roue.h"
#include "primes/arithmetique/suivi.h"
#include "primes/crible/crible.h"

namespace premiers {

struct Table {
  /// Knows 2 and 3.
  Table() = default;

  /// The number of known primes, which is the rank of the last; at least 2.
  std::int64_t np() const { return np_; }
  /// The largest known prime.
  std::int64_t dernier() const { return dernier_; }

  /// The prime of a rank, 0 <= rang <= np(); 0 for rank 0.
  std::int64_t operator[](std::int64_t rang) const;

  /// The rank of the largest known prime <= v, 0 if there is none; v may be anything.
  std::int64_t rang(std::int64_t v) const;
  /// The smallest rank whose prime is >= v, for v <= dernier().
  std::int64_t rang_suivant(std::int64_t v) const { return v <= 2 ? 1 : rang(v - 1) + 1; }

  /// Extends the table to that rank. No effect if it is known.
  void etendre_au_rang(std::int64_t rang, const Suivi& suivi = {});
  /// Extends the table to the first prime greater than `borne`. No effect if one is known.
  void etendre_au_dela(std::int64_t borne, const Suivi& suivi = {});

  /// At most about how many more bytes the table takes once it holds that rank, or the first prime
  /// greater than `borne`.
  double octets_jusqu_au_rang(std::int64_t rang) const;
  double octets_jusqu_au_dela(std::int64_t borne) const;

  /// Fills `premiers` with the primes of the ranks from `rang` on, all in the table.
  void lire(std::int64_t rang, std::span<std::int64_t> premiers) const;

  /// Walks the table upward from a rank.
  struct Curseur {
    std::int64_t rang;
    std::int64_t premier;
    /// Goes to the next prime, which must be in the table. 2 ns.
    void avancer() {
      ++rang;
      if (reste_ == 0 && !charger_suivant()) return;
      premier = base_ + valeurs_bits[static_cast<std::size_t>(std::countr_zero(reste_))];
      reste_ &= reste_ - 1;
    }

   private:
    friend struct Table;
    const Table* table_;
    std::size_t bloc_ = 0;
    std::size_t mot_ = 0;      // index of the 8-byte word within the block
    std::uint64_t reste_ = 0;  // the bits of that word not yet met
    std::int64_t base_ = 0;    // the integer that the word starts at
    void charger();
    bool charger_suivant();
  };
  /// A cursor on that rank, 1 <= rang <= np().
  Curseur curseur(std::int64_t rang) const;

  /// Calls f(rank, prime) for the ranks r1 to r in order; nothing if r < r1.
  template <typename F>
  void parcourir(std::int64_t r1, std::int64_t r, F f) const {
    if (r < r1) return;
    for (Curseur c = curseur(r1);; c.avancer()) {
      f(c.rang, c.premier);
      if (c.rang == r) return;
    }
  }

 private:
  /// The directory's grain: one cache line, 1,920 integers.
  static constexpr std::size_t octets_par_ligne = 64;
  struct alignas(octets_par_ligne) Ligne {
    std::array<std::uint8_t, octets_par_ligne> octets;
  };
  struct Bloc {
    std::uint64_t octet;     // the first byte, counted from that of 0 .. 29
    std::size_t lignes;      // how many
    std::int64_t rang;       // the number of primes before the block
    std::uint32_t premiers;  // and in it
    std::unique_ptr<Ligne[]> bits;
    std::unique_ptr<std::uint32_t[]> avant;  // the number of primes before each line, in the block
    std::size_t taille() const { return lignes * octets_par_ligne; }
    std::uint8_t* octets() const { return bits[0].octets.data(); }
  };
  /// Where a line is: in which block, and its number there.
  struct Place {
    std::uint32_t bloc;
    std::uint32_t ligne;
  };

  std::uint64_t octets_cribles() const;
  void cribler_un_bloc(std::uint64_t voulu);
  void compter_les_lignes(Bloc& bloc);
  Place ligne_du_rang(std::int64_t rang) const;
  std::int64_t rang_crible(std::uint64_t v) const;

  std::int64_t np_ = 2;
  std::int64_t dernier_ = 3;
  std::vector<Bloc> blocs_;
  std::vector<Place> reperes_;      // the line of the first rank, and of every 4,096th
  std::int64_t rangs_cribles_ = 3;  // 2, 3 and 5 have no bit
  std::optional<Crible> crible_;
};

}  // namespace premiers
