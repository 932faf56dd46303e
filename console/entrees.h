// SPDX-License-Identifier: MIT
// The entries of the listings, "   [ rank : prime ] " and " prime , ", formatted straight into the
// writer's buffer. What an object of these types has written is the writer's once it is gone: make
// one for each batch of primes, and nothing else writes meanwhile.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "console/chiffres.h"
#include "console/sortie.h"

namespace premiers {

/// A place in the writer's buffer, kept by its user while it writes.
struct Plume {
  explicit Plume(Sortie& sortie)
      : sortie_(sortie), ou_(sortie.reserver(0)), fin_(sortie.fin_place()) {}
  ~Plume() { sortie_.avancer(ou_); }
  Plume(const Plume&) = delete;
  Plume& operator=(const Plume&) = delete;

  /// Where to write; at least `octets` bytes are free there.
  char* ou(std::size_t octets) {
    if (static_cast<std::size_t>(fin_ - ou_) < octets) ou_ = continuer(sortie_, ou_, octets);
    return ou_;
  }
  /// Where the writing stopped.
  void avancer(char* ou) { ou_ = ou; }

 private:
  /// By value, so that a pen stays in registers.
  static char* continuer(Sortie& sortie, const char* ou, std::size_t octets) {
    sortie.avancer(ou);
    return sortie.reserver(octets);
  }

  Sortie& sortie_;
  char* ou_;
  char* fin_;
};

template <std::size_t N>
char* copier(char* ou, const char (&texte)[N]) {
  std::memcpy(ou, texte, N);  // the NUL too: a store of a whole word
  return ou + (N - 1);
}

/// Entries of increasing ranks.
struct EntreesRangees {
  explicit EntreesRangees(Sortie& sortie) : plume_(sortie) {}

  /// "   [ rank : prime ] "
  void ecrire(std::int64_t rang, std::int64_t premier) {
    char* ou = rang_.ecrire(plume_.ou(place), static_cast<std::uint64_t>(rang));
    ou = premier_.ecrire(ou, static_cast<std::uint64_t>(premier));
    plume_.avancer(copier(ou, " ] "));
  }

  /// The same, after a break where the rank begins a block: 1, 101, 201 ...
  void ecrire_en_blocs(std::int64_t rang, std::int64_t premier) {
    if ((rang - 1) % 100 == 0) plume_.avancer(copier(plume_.ou(place), " \n \n \n "));
    ecrire(rang, premier);
  }

 private:
  static constexpr std::size_t place = 2 * NombreCroissant::place + 16;

  Plume plume_;
  NombreCroissant rang_{"   [ "};
  NombreCroissant premier_{" : "};
};

/// Entries without ranks, increasing.
struct EntreesSansRang {
  explicit EntreesSansRang(Sortie& sortie) : plume_(sortie) {}

  /// " prime , "
  void ecrire(std::uint64_t premier) {
    plume_.avancer(copier(premier_.ecrire(plume_.ou(place), premier), " , "));
  }

 private:
  static constexpr std::size_t place = NombreCroissant::place + 8;

  Plume plume_;
  NombreCroissant premier_{" "};
};

}  // namespace premiers
