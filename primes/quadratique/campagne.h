// SPDX-License-Identifier: MIT
// The first half of the quadratic sieve: one polynomial after the other is sieved, what looks smooth
// is divided, and what is a relation is kept.
#pragma once

#include <cstddef>
#include <cstdint>

#include "primes/quadratique/base.h"
#include "primes/quadratique/division.h"
#include "primes/quadratique/polynome.h"
#include "primes/quadratique/reglages.h"
#include "primes/quadratique/relations.h"
#include "primes/quadratique/scission.h"
#include "primes/quadratique/tamis.h"

namespace premiers::quadratique {

struct Campagne {
  /// `scission` may be null: then values with two large primes are not used. `base` must stay.
  Campagne(const Base& base, const Reglages& reglages, Scission scission);
  /// Sieves one polynomial more; false if there is none left, which happens for small n only.
  bool avancer();

  BornesDesRestes bornes;
  Scission scission;
  std::uint32_t seuil;  // logarithm, to base 2, that the sieved primes have to reach
  Polynomes polynomes;
  Tamis tamis;
  Division division;
  Recolte recolte;
};

}  // namespace premiers::quadratique
