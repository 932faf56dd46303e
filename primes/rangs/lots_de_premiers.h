// SPDX-License-Identifier: MIT
// The primes between two bounds, one batch after the other, below 2^63: from the windows of a sieve
// (primes/crible/fenetres.h), from bytes that are sieved already, or from deciding the numbers one by
// one where they are so few and so far out that the sieving primes would cost more
// (primes/rangs/couts.h).
//
// Cost: that of the cheaper way, and a nanosecond for each prime. Memory: 32 KB for the batch, and the
// window's.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>

#include "primes/crible/fenetres.h"
#include "primes/rangs/intervalle.h"
#include "primes/suivi/suivi.h"

namespace premiers::rangs {

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
  std::optional<crible::Fenetres> fenetres_;
  std::size_t lus_ = 0;  // bytes of the window already read
  std::unique_ptr<std::uint64_t[]> lot_;
  std::size_t nombre_ = 0;  // of primes in the batch
};

}  // namespace premiers::rangs
