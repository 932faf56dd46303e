// SPDX-License-Identifier: MIT
// How a long computation tells how far it is, and what it is busy with, without knowing who listens.
#pragma once

#include <concepts>
#include <functional>
#include <utility>

#include "primes/suivi/etape.h"

namespace premiers {
inline namespace suivi {

/// What long work calls now and then (every few milliseconds). Empty: nobody listens. It may throw: the
/// work is then abandoned, whatever it had already finished stays valid.
struct Suivi {
  using Part = std::function<void(double)>;
  using Annonce = std::function<void(const Etape&)>;

  Suivi() = default;
  template <std::invocable<double> F>
  Suivi(F f) : part{std::move(f)} {}  // a function that only hears the part will do
  Suivi(Part p, Annonce a) : part{std::move(p)}, annonce{std::move(a)} {}

  explicit operator bool() const { return static_cast<bool>(part); }

  /// The part of the work, or of its present step, that is done, 0 to 1; 0 where nobody knows.
  void operator()(double fait) const { part(fait); }
  /// From now on the work is busy with this.
  void annoncer(const Etape& etape) const {
    if (annonce) annonce(etape);
  }

  Part part;
  Annonce annonce;
};

/// For one step of a longer work, and the one way to hand a part of it on: hears 0 to 1 of the step,
/// tells `debut` to `fin` of the whole. What counts for nothing goes from 0 to 0. Valid as long as
/// `suivi`.
inline Suivi etape(const Suivi& suivi, double debut, double fin) {
  if (!suivi) return {};
  return {[&suivi, debut, fin](double part) { suivi(debut + part * (fin - debut)); },
          suivi.annonce};
}

}  // namespace suivi
}  // namespace premiers
