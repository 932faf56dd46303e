// SPDX-License-Identifier: MIT
// How much of the sieving is done?
//
// Cycles come faster and faster, the more large primes there are to meet, so their number is not
// the part of the work. Relations come evenly, but how many will be needed is not known. What is
// known at any moment is the part c of the wanted cycles that has been found, and the part f of them
// that are relations without large prime. When the part r of the work is done, the latter have grown
// like r, and the others like r^a:
//
//   c = f + (1 - f / r) r^a,   that is   r^a = f r^(a-1) + c - f
//
// Relations with one large prime meet in pairs: a = 2, and so it is measured at 65 digits. Two large
// primes make longer cycles: 2.6 fits at 65 and 70 digits when two thirds of the relations have two.
// With a = 2 + the part that have two, r is right within 0.04 in those runs from a twentieth of the
// cycles on.
#pragma once

#include <cstddef>

#include "primes/quadratique/relations.h"

namespace premiers::quadratique {

/// r, for 0 <= f <= c <= 1 and 2 <= a <= 3.
double part_du_travail(double c, double f, double a);

/// The part of the sieving that is done. It never falls, though what it is made from may.
struct Avancement {
  double part(const Recolte& recolte, std::size_t but);
  double atteint = 0;
};

}  // namespace premiers::quadratique
