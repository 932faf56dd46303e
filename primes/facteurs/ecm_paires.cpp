// SPDX-License-Identifier: MIT
// The two lists, made by the compiler here and nowhere else.
#include "primes/facteurs/ecm_paires.h"

namespace premiers::facteurs::ecm {

constinit const Paires<210, 60> paires_courtes;
constinit const Paires<420, 240> paires_longues;

}  // namespace premiers::facteurs::ecm
