// SPDX-License-Identifier: MIT
// The primes between two bounds, listed or only counted, below 2^63. Three ways lead to them, and
// the cheapest is taken (primes/rangs/couts.h): sieving the interval, deciding
// its numbers one by one where it is so narrow and high that the sieving primes would cost more,
// and, for the count alone, the difference of two combinatorial counts.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>

#include "primes/crible/crible.h"
#include "primes/suivi/suivi.h"
#include "systeme/grandes_pages.h"

namespace premiers {

/// The integers from `debut` to `fin`, both included. What lies below 1 holds no prime.
struct Intervalle {
  std::int64_t debut;
  std::int64_t fin;
};

/// How many primes lie in the interval.
/// `memoire`: the budget of the sieve, in bytes.
std::int64_t compter_premiers(Intervalle bornes, const Suivi& suivi = {},
                              std::uint64_t memoire = CribleGrand::memoire_max);

/// The sieved bytes of an interval of numbers >= 7, window after window.
struct Fenetres {
  /// `memoire`: the budget of the sieve, in bytes.
  Fenetres(std::uint64_t debut, std::uint64_t fin,
           std::uint64_t memoire = CribleGrand::memoire_max);
  /// The same from bytes that are sieved already: those of 0 .. 29 and on, beyond `fin`.
  Fenetres(std::uint64_t debut, std::uint64_t fin, std::span<const std::uint8_t> cribles);

  /// Sieves the next window; false once the interval is done. `suivi` hears the part of the
  /// interval that is done.
  bool suivante(const Suivi& suivi);
  /// The window; what lies outside the interval is clear.
  std::span<const std::uint8_t> octets() const { return {tampon_.data(), taille_}; }
  std::uint64_t premier_octet() const { return octet_; }

 private:
  std::uint64_t debut_;
  std::uint64_t fin_;
  std::uint64_t octet_;
  std::size_t taille_ = 0;
  std::optional<Crible> crible_;
  std::span<const std::uint8_t> cribles_;
  systeme::GrandesPages tampon_;
};

/// The primes of an interval in increasing order, batch after batch.
struct LotsDePremiers {
  /// Prepares the way that costs less: a sieve, or deciding the numbers one by one.
  /// `memoire`: the budget of the sieve, in bytes.
  LotsDePremiers(Intervalle bornes, std::uint64_t memoire);
  /// Reads what is sieved already: the bytes of 0 .. 29 and on, beyond bornes.fin.
  LotsDePremiers(Intervalle bornes, std::span<const std::uint8_t> cribles);

  /// The next batch; empty once there is no prime left. It is valid until the next call. `suivi`
  /// hears the part of the interval that is done.
  std::span<const std::uint64_t> suivant(const Suivi& suivi = {});

 private:
  explicit LotsDePremiers(Intervalle bornes);
  void prendre_les_petits();
  void prendre_du_crible(const Suivi& suivi);
  void decider_un_par_un(const Suivi& suivi);

  std::uint64_t debut_;
  std::uint64_t fin_;
  std::uint64_t position_;  // the first number not yet looked at
  std::optional<Fenetres> fenetres_;
  std::size_t lus_ = 0;  // bytes of the window already read
  std::unique_ptr<std::uint64_t[]> lot_;
  std::size_t nombre_ = 0;  // of primes in the batch
};

}  // namespace premiers
