// SPDX-License-Identifier: MIT
// Buckets: lists that entries are thrown into in any order, to be taken out list by list.
//
// A list is a chain of blocks of 8 KB from a common store, to which emptied blocks return, and the
// last one returned is the first to be used again, while the cache still has it: memory follows what
// is in the buckets, nothing is ever moved (T. Oliveira e Silva, "Fast implementation of the
// segmented sieve of Eratosthenes", 2002). Fast because a throw is one store and one comparison: a
// block starts at a multiple of its size, so the place of the next entry alone tells that a block is
// full (K. Walisch, "primesieve: algorithms", 2022); and because each list's end is one open cache
// line, so that some hundred lists fill without a miss.
//
// The store takes memory in pieces of 4 MB, in large pages where the system gives them, and gives
// it back at its end.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "systeme/grandes_pages.h"

namespace premiers::crible {

/// The store of blocks.
struct Blocs {
  static constexpr std::size_t taille_bloc = std::size_t{1} << 13;

  /// Memory for one block, at a multiple of its size.
  void* prendre() {
    if (libres_.empty()) agrandir();
    void* const bloc = libres_.back();
    libres_.pop_back();
    return bloc;
  }
  void rendre(void* bloc) { libres_.push_back(bloc); }

 private:
  void agrandir();

  std::vector<systeme::GrandesPages> morceaux_;
  std::vector<void*> libres_;
};

/// A row of buckets of numbers of 4 or 8 bytes.
template <class E>
struct Seaux {
  /// A block: the end of the one before it in the list, and entries.
  static constexpr std::size_t par_bloc = Blocs::taille_bloc / sizeof(E);
  static constexpr std::size_t entete = sizeof(E*) / sizeof(E);

  /// Sees to `nombre` empty buckets. Only while all are empty.
  void preparer(std::size_t nombre) { fins_.assign(nombre, nullptr); }

  std::size_t nombre() const { return fins_.size(); }

  /// Throws `entree` into bucket `numero`.
  void jeter(std::size_t numero, E entree) {
    E* ici = fins_[numero];
    if (pleine(ici)) ici = ouvrir(ici);
    *ici = entree;
    fins_[numero] = ici + 1;
  }

  /// Calls f(begin, end) for the pieces of bucket `numero` in turn, and empties it. What f throws
  /// into the same bucket comes as well.
  template <class F>
  void vider(std::size_t numero, F&& f) {
    while (E* fin = fins_[numero]) {
      fins_[numero] = nullptr;
      while (fin != nullptr) {
        E* const bloc = debut(fin);
        E* const avant = *reinterpret_cast<E**>(bloc);
        f(const_cast<const E*>(bloc + entete), const_cast<const E*>(fin));
        blocs_.rendre(bloc);
        fin = avant;
      }
    }
  }

 private:
  /// No room behind the last entry; true of no block at all as well.
  static bool pleine(const E* fin) {
    return reinterpret_cast<std::uintptr_t>(fin) % Blocs::taille_bloc == 0;
  }

  /// The block whose last entry is before `fin`.
  static E* debut(E* fin) {
    const std::size_t reste = reinterpret_cast<std::uintptr_t>(fin) % Blocs::taille_bloc;
    return fin - (reste == 0 ? par_bloc : reste / sizeof(E));
  }

  /// The first place of a new block behind `fin`.
  E* ouvrir(E* fin) {
    auto* const bloc = static_cast<E*>(blocs_.prendre());
    *reinterpret_cast<E**>(bloc) = fin;
    return bloc + entete;
  }

  std::vector<E*> fins_;  // of each list the place behind its last entry
  Blocs blocs_;
};

}  // namespace premiers::crible
