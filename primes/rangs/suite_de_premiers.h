// SPDX-License-Identifier: MIT
// Consecutive primes from a value on, batch after batch, until there are so many or they pass a
// bound, in constant memory.
//
// Where only their number is given, the interval that should hold them is estimated and listed, and
// another one behind it as long as some are missing. What is kept as bits is read there.
#pragma once

#include <cstdint>
#include <limits>
#include <optional>
#include <span>

#include "primes/rangs/bits_gardes.h"
#include "primes/rangs/lots_de_premiers.h"
#include "primes/suivi/suivi.h"

namespace premiers::rangs {

struct SuiteDePremiers {
  /// No limit but the other one.
  static constexpr std::int64_t sans_limite = std::numeric_limits<std::int64_t>::max();

  /// The primes p with debut <= p <= fin, at most `nombre` of them. `gardes` must stay as it is for
  /// as long as the suite is used.
  SuiteDePremiers(const BitsGardes& gardes, std::int64_t debut, std::int64_t nombre,
                  std::int64_t fin);

  /// The next batch, which is valid until the next call; empty once there is no prime left. `suivi`
  /// hears the part of the work that is done.
  std::span<const std::uint64_t> suivant(const Suivi& suivi = {});

 private:
  void ouvrir();

  const BitsGardes& gardes_;
  std::int64_t debut_;  // of what no batch has been taken from yet
  std::int64_t reste_;  // how many primes may still come
  std::int64_t fin_;
  std::optional<LotsDePremiers> lots_;
};

}  // namespace premiers::rangs
