// SPDX-License-Identifier: MIT
// Two sieves that run towards each other: one gives the primes p from sqrt(x) down to y, the other
// counts the primes up to x / p, which goes up from sqrt(x) to x / y. Each word of flags is counted
// about once, so the sieve of the long side is nearly all of the cost.
//
// With b = pi(sqrt(x)), the sum of pi(p) - 1 is b (b - 1) / 2 - a (a - 1) / 2.
#include "primes/compte/p2.h"

#include <algorithm>
#include <bit>
#include <cassert>
#include <span>
#include <vector>

#include "primes/arithmetique/bits.h"
#include "primes/arithmetique/racines.h"
#include "primes/crible/fenetres.h"
#include "primes/crible/premiers_jusqu_a.h"

namespace premiers::compte {

namespace {

// Gives the primes of ]y, fin] in decreasing order, a stretch at a time.
struct Descente {
  std::uint64_t y;
  std::uint64_t fin;
  std::vector<std::uint32_t> premiers{};  // increasing

  // Effect: integers sieved at a time. A stretch costs its sieve's start, so it should be long beside
  // the sieving primes, which stay below 65536. Sensible: 30 times 2^17 to 2^21.
  static constexpr std::uint64_t entiers_par_lot = 30 * (std::uint64_t{1} << 18);

  // The next stretch into `premiers`; false when there is none.
  bool suivante() {
    premiers.clear();
    while (premiers.empty() && fin > y) {
      const std::uint64_t debut = std::max(y, fin - std::min(fin, entiers_par_lot)) + 1;
      crible::pour_les_premiers(debut, fin, {}, [this](std::uint64_t p) {
        premiers.push_back(static_cast<std::uint32_t>(p));
      });
      fin = debut - 1;
    }
    return !premiers.empty();
  }
};

// Counts the primes up to ever larger bounds, all <= sommet.
struct Montee {
  // In whole words.
  Montee(std::uint64_t sommet, const Suivi& rapport)
      : fenetres(0, sommet / 240 * 240 + 239), suivi(rapport) {}

  crible::Fenetres fenetres;
  const Suivi& suivi;
  std::span<const std::uint8_t> octets{};
  std::uint64_t origine = 0;  // the integer that the segment starts at
  std::uint64_t fin = 0;      // and the one after it
  std::size_t mot = 0;        // words of the segment already counted
  std::uint64_t compte = 3;   // primes before that word; 2, 3 and 5 have no flag

  void segment_suivant() {
    [[maybe_unused]] const bool encore = fenetres.suivante(suivi);
    assert(encore);  // all bounds are <= sommet
    octets = fenetres.octets();
    origine = fin;
    fin += 30 * octets.size();
    mot = 0;
  }
};

[[gnu::always_inline]] inline std::uint64_t monter_jusqu_a(Montee& m, std::uint64_t n) {
  const auto avancer = [&m](std::size_t jusqu_a) {
    const std::uint8_t* octets = m.octets.data();
    std::uint64_t compte = m.compte;
    for (std::size_t mot = m.mot; mot < jusqu_a; ++mot) {
      compte += static_cast<std::uint64_t>(std::popcount(lire_mot(octets + 8 * mot)));
    }
    m.compte = compte;
    m.mot = jusqu_a;
  };
  while (n >= m.fin) {
    avancer(m.octets.size() / 8);
    m.segment_suivant();
  }
  const std::uint64_t i = n - m.origine;
  avancer(i / 240);
  return m.compte + compter_jusqu_a(lire_mot(m.octets.data() + 8 * m.mot), i % 240);
}

// Sum of pi(x / p) over one stretch of primes, from the largest down.
[[gnu::always_inline]] inline std::uint64_t sommer(Montee& m, std::uint64_t x,
                                                   const std::vector<std::uint32_t>& p) {
  std::uint64_t somme = 0;
  for (std::size_t i = p.size(); i-- > 0;) somme += monter_jusqu_a(m, x / p[i]);
  return somme;
}

template <auto sommer_lot>
std::uint64_t p2_par(const Plan& plan, const Suivi& suivi) {
  const std::uint64_t a = plan.nombre();
  Descente descente{plan.y, racine_carree(plan.x)};
  Montee montee(plan.x / plan.y, suivi);
  std::uint64_t somme = 0;
  std::uint64_t b = a;
  while (descente.suivante()) {
    somme += sommer_lot(montee, plan.x, descente.premiers);
    b += descente.premiers.size();
  }
  return somme - (b * (b - 1) / 2 - a * (a - 1) / 2);
}

constexpr Version<decltype(&compte_p2)> versions[] = {
#if defined(__x86_64__)
    {instructions::popcnt, p2_par<Pour<sommer>::popcnt>},
#endif
    {instructions::aucune, p2_par<Pour<sommer>::tous>},
};

}  // namespace

Versions<decltype(&compte_p2)> versions_de_compte_p2() { return versions; }

std::uint64_t compte_p2(const Plan& plan, const Suivi& suivi) {
  return choisir(versions_de_compte_p2()).boucle(plan, suivi);
}

}  // namespace premiers::compte
