// SPDX-License-Identifier: MIT
// The first stage of ECM as chains of additions, searched when they are needed.
//
// On a Montgomery curve P + Q can only be computed when P - Q is known, so p P goes along a Lucas
// chain. P. L. Montgomery, "Evaluating recurrences of form X_(m+n) = f(X_m, X_n, X_(m-n)) via Lucas
// chains" (1983): p = (p - r) 2 + (2r - p), and a subtractive Euclid on the two coefficients, which
// halves where it can, is a chain for p. Which r gives the shortest has to be tried; the good ones
// are near p divided by the golden ratio (a chain of Fibonacci numbers is the shortest of all). A
// search costs as much as some dozen products, so its outcome is kept, one r a prime: a list serves
// all the curves of one bound.
//
// A chain is carried out as instructions "place = place a + place b, whose difference is in place c"
// over four places. For small bounds these are kept instead: one program without a decision in it,
// whose prefixes are the programs of smaller bounds, because the prime powers q = p^e stand in
// increasing order and contribute a factor p each.
//
// Cost: 9.12 products a bit of p with `rayon` 15 (9.20 with 5, 9.06 with 120; Montgomery's own ten
// ratios and nine rules: 9.12). 8 us a prime for the search, 8 bytes to keep it, 60 for the program.
// For p < 2^31.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

#include "primes/suivi/suivi.h"

namespace premiers::facteurs::ecm {

/// The point is to be multiplied by p, along the chain that r begins; r = 0 is a doubling.
struct Multiplicateur {
  std::uint32_t p;
  std::uint32_t r;
};

/// What the point has to be multiplied by to come from lcm(1..debut) to lcm(1..fin): a prime for
/// each prime power in (debut, fin], in their order. debut >= 1, fin < 2^31.
std::vector<Multiplicateur> multiplicateurs(std::uint64_t debut, std::uint64_t fin,
                                            const Suivi& suivi = {});

/// place[vers] = place[a] + place[b], where place[ecart] = +-(place[a] - place[b]); `vers` is none of
/// the others. A doubling has a == b, and then `ecart` means nothing.
struct Instruction {
  std::uint8_t vers, a, b, ecart;
};
inline constexpr std::size_t nombre_places = 4;

/// The greatest first-stage bound that there is a program for.
inline constexpr std::size_t b1_court = 2000;

/// 12 lcm(1..b1) times the point in place 0, which comes to the place where the last instruction
/// leaves it: a group order is divisible by 12 on every curve used, so two factors 2 and one 3 are
/// not luck. 2 <= b1 <= b1_court. Made up to the greatest b1 so far, and kept.
std::span<const Instruction> programme(std::size_t b1);

/// The rules of the subtractive Euclid: what is wanted is d A + e B, d > e.
enum class Regle : std::uint8_t {
  soustraire,    ///< (d - e) A + e (A + B)
  moitie_ecart,  ///< (d - e)/2 2A + e (A + B)
  moitie_d,      ///< d/2 2A + e B, and 2A - B = A + (A - B)
  moitie_e       ///< d A + e/2 2B, and A - 2B = (A - B) - B
};

/// Takes the rule for d > e, and gives it.
constexpr Regle avancer(std::uint32_t& d, std::uint32_t& e) {
  if (d <= 4 * std::uint64_t{e}) {
    d -= e;
    return Regle::soustraire;
  }
  if (d % 2 == e % 2) {
    d = (d - e) / 2;
    return Regle::moitie_ecart;
  }
  if (d % 2 == 0) {
    d /= 2;
    return Regle::moitie_d;
  }
  e /= 2;
  return Regle::moitie_e;
}

/// A walk along a chain; `executer` receives every instruction. C = +-(A - B).
template <class F>
struct Chaine {
  std::uint8_t A, B, C;  ///< places
  const F& executer;

  /// The sum goes to a place that none of the three is in.
  std::uint8_t ajouter(std::uint8_t a, std::uint8_t b, std::uint8_t ecart) {
    std::uint8_t vers = 0;
    while (vers == A || vers == B || vers == C) ++vers;
    executer(Instruction{vers, a, b, ecart});
    return vers;
  }

  void suivre(Regle regle) {
    switch (regle) {
      case Regle::soustraire:
        C = std::exchange(B, ajouter(A, B, C));
        return;
      case Regle::moitie_ecart:
        B = ajouter(A, B, C);
        A = ajouter(A, A, A);
        return;
      case Regle::moitie_d:
        C = ajouter(A, C, B);
        A = ajouter(A, A, A);
        return;
      case Regle::moitie_e:
        C = ajouter(C, B, A);
        B = ajouter(B, B, B);
        return;
    }
  }
};

/// Hands the instructions that multiply the point in place `depart` to `executer`; the place of the
/// product.
template <class F>
std::uint8_t parcourir(const Multiplicateur& m, std::uint8_t depart, const F& executer) {
  Chaine<F> c{depart, depart, depart, executer};
  c.A = c.ajouter(depart, depart, depart);  // m P = (p - r) 2P + (2r - p) P
  if (m.r == 0) return c.A;
  std::uint32_t d = m.p - m.r;
  std::uint32_t e = 2 * m.r - m.p;
  while (d != e) {
    if (d < e) {
      std::swap(d, e);
      std::swap(c.A, c.B);
    }
    c.suivre(avancer(d, e));
  }
  return c.ajouter(c.A, c.B, c.C);
}

}  // namespace premiers::facteurs::ecm
