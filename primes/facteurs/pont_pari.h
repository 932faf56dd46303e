// SPDX-License-Identifier: MIT
// The bridge to the PARI library: the primality proofs that are too long for the methods of this
// folder. How the library is started, fed and kept quiet is told in pont_pari.cpp, the only file that
// knows its types.
//
// It must be called by one and the same thread: what the library remembers belongs to the thread that
// started it. The first call starts it (2 ms). A call cannot be interrupted but by the end of the
// process, nor tell how far it is. Without memory it throws std::bad_alloc and can be called again.
#pragma once

#include <NTL/ZZ.h>

namespace premiers::facteurs::pari {

/// Is n prime? Proven, both ways. Numbers up to 1 are not prime.
/// Cost for a prime: 1 ms at 25 digits, 10 at 50, 25 at 100, 0.1 s at 150, 0.3 s at 200.
bool est_premier_prouve(const NTL::ZZ& n);

}  // namespace premiers::facteurs::pari
