// SPDX-License-Identifier: MIT
// The table of primes by rank, the memory of the whole program: it grows for the life of the
// process and never loses an entry.
//
// Nothing is stored that can be computed in the blink of an eye. The table is two numbers, `np` and
// the prime of that rank, and a way to read: the prime of a rank, or the rank of a value, is found
// from the nearest place that is known (a prime with its rank) by sieving what lies between, or
// else by one count of primes behind an estimate (primes/rangs/riemann.h), whichever costs less
// (primes/rangs/couts.h). The last answers are such places. The low part is kept as bits once
// something has read there again and again (primes/rangs/bits_gardes.h).
//
// Cost of a far jump: that of pi(x), 2 ms at 10^10, 0.2 s at 10^14, two minutes at 2^63. Memory:
// below 160 MB whatever is asked. Limit: the primes below 2^63.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "primes/rangs/bits_gardes.h"
#include "primes/rangs/suite_de_premiers.h"
#include "primes/suivi/suivi.h"

namespace premiers {

/// A prime and its rank; rank 0 has the number 0.
struct Place {
  std::int64_t rang;
  std::int64_t premier;
  bool operator==(const Place&) const = default;
};

struct Table {
  /// The end of the numbers, the last prime below 2^63. The rank is that of T. Oliveira e Silva's
  /// and D. Baugh's counts (OEIS A007053, primes <= 2^63); the prime is 2^63 - 25 (C. Caldwell, The
  /// Prime Pages, "Primes just less than a power of two").
  static constexpr Place fin{216'289'611'853'439'384, 9'223'372'036'854'775'783};

  /// Knows 2 and 3.
  Table() = default;

  /// The number of known primes, which is the rank of the last; at least 2.
  std::int64_t np() const { return dernier_.rang; }
  /// The largest known prime.
  std::int64_t dernier() const { return dernier_.premier; }

  /// The prime of a rank, 0 <= rang <= np(); 0 for rank 0. Reading remembers, so it is not const.
  std::int64_t operator[](std::int64_t rang) { return lire(rang).premier; }
  Place lire(std::int64_t rang, const Suivi& suivi = {});
  /// The largest known prime <= v with its rank; rank 0 if there is none. v may be anything.
  Place jusqu_a(std::int64_t v, const Suivi& suivi = {});

  /// Extends the table to that rank <= fin.rang. No effect if it is known.
  void etendre_au_rang(std::int64_t rang, const Suivi& suivi = {});
  /// Extends the table to the first prime greater than `borne` < fin.premier. No effect if one is
  /// known.
  void etendre_au_dela(std::int64_t borne, const Suivi& suivi = {});
  /// Extends the table to a place beyond the last that the caller has walked to.
  void prolonger(Place derniere) { dernier_ = derniere; }

  /// The known primes from `debut` on, at most `nombre` of them, none above `borne`: to be read
  /// before the table is used in another way.
  rangs::SuiteDePremiers suite(std::int64_t debut, std::int64_t nombre, std::int64_t borne) const;
  /// The primes behind the last known one, in the same way.
  rangs::SuiteDePremiers suivants(std::int64_t nombre, std::int64_t borne) const;

 private:
  Place trouver_rang(std::int64_t rang, const Suivi& suivi);
  Place trouver_valeur(std::int64_t v, const Suivi& suivi);
  Place depuis_une_ancre(const Place& ancre, std::int64_t rang, const Suivi& suivi);
  Place par_un_compte(std::int64_t rang, std::int64_t estime, const Suivi& suivi);
  bool lire_les_bits(std::int64_t v, double cout);
  Place retenir(Place place);

  template <typename Distance>
  Place ancre_la_plus_proche(Distance distance) const;

  Place dernier_{2, 3};
  rangs::BitsGardes gardes_;
  double depense_ = 0;  // what reading the low part has cost so far without its bits, in ns

  /// The last answers, in a ring. With one alone the jumps of an operator cost half as much, with 64
  /// a third; more gain nothing.
  static constexpr std::size_t nombre_d_ancres = 64;
  std::array<Place, nombre_d_ancres> ancres_{};
  std::size_t prochaine_ancre_ = 0;
};

}  // namespace premiers
