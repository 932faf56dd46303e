// SPDX-License-Identifier: MIT
// The numbers of the range are the leaves of a tree: a node is a string of leading digits, its ten
// children have one digit more. All that numbers share with their neighbours is worked out once,
// at the node where they part.
//
// A cut after j digits of a node is described by the number of ways to reach it and by the value of
// the digits after it. The ways to reach the end of a child are the sum of the ways to reach those
// cuts from which the digits to its end form a prime; for all ten children this is one look-up per
// cut (oracle.h). Cuts that no way reaches are dropped at once. So ten numbers of nine digits cost about
// five look-ups. Which of the ten are kept, at the end of the tree, is examen.h.
#pragma once

#include <string>

#include "primes/concatenations/commun.h"

namespace premiers::concatenations {

/// Goes through the numbers debut .. fin, of as many digits as Taille allows at most, both of the same
/// length.
template <typename Taille>
void parcourir(Commun& commun, const std::string& debut, const std::string& fin);

}  // namespace premiers::concatenations
