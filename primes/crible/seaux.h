// SPDX-License-Identifier: MIT
// Buckets: lists that numbers of 4 bytes are thrown into in any order, to be taken out list by
// list.
//
// A list is a chain of blocks of 16 KB from a common store, to which emptied blocks return: memory
// follows what is in the buckets, nothing is ever moved. Fast because a throw is one store and one
// comparison; and because each list's end is one open cache line, so that a few dozen lists fill
// without a miss.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

namespace premiers {

/// A row of buckets.
struct Seaux {
  /// A little less than 16 KB, so that the ends of the lists do not share the cache sets.
  using Bloc = std::array<std::uint32_t, 4096 - 48>;

  struct Seau {
    std::uint32_t* ici = nullptr;  // the next free place
    std::uint32_t* fin = nullptr;  // the end of the last block
    std::vector<std::unique_ptr<Bloc>> blocs;
  };

  /// Sees to `nombre` empty buckets. Only while all are empty.
  void preparer(std::size_t nombre) { seaux.resize(nombre); }

  /// Throws `valeur` into bucket `numero`.
  void jeter(std::size_t numero, std::uint32_t valeur) { jeter_si(numero, valeur, true); }

  /// Does so if `vraiment`, without a branch on it.
  void jeter_si(std::size_t numero, std::uint32_t valeur, bool vraiment) {
    Seau& s = seaux[numero];
    if (s.ici == s.fin) agrandir(s);
    *s.ici = valeur;
    s.ici += vraiment;
  }

  /// Calls f(begin, end) for the pieces of bucket `numero` in turn, and empties it.
  template <class F>
  void vider(std::size_t numero, F&& f) {
    Seau& s = seaux[numero];
    for (auto& bloc : s.blocs) {
      const bool dernier = &bloc == &s.blocs.back();
      f(bloc->data(), dernier ? s.ici : bloc->data() + bloc->size());
      libres.push_back(std::move(bloc));
    }
    s = Seau{};
  }

  void agrandir(Seau& s);

  std::vector<Seau> seaux;
  std::vector<std::unique_ptr<Bloc>> libres;
};

}  // namespace premiers
