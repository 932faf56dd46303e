// SPDX-License-Identifier: MIT
// The decomposition of an integer of any size, by the fastest method for what is left of it:
//
//   up to 64 bits    facteurs64.h: ECM in machine words.
//   beyond           the primes below 2011 are divided out (petits_facteurs.h). What is left is
//                    proven prime (preuve.h), or recognised as a power (puissance.h), or split, and
//                    the parts are treated in the same way.
//
// Splitting, by size. Times for the product of two primes of equal size, the worst case:
//
//   103 bits         facteurs128.h: ECM until a factor is found. 20 digits 40 us, 30 digits 0.7 ms.
//                    With one or two curves at a time that ends at 80 bits; from there on four
//                    curves, then the quadratic sieve: 30 digits 3 ms (Xeon, 2.5 GHz).
//   350 bits         a little ECM (facteurs_longs.h) for factors that are much shorter than the
//                    other, from 225 bits on curves with larger bounds as well (echelle.h), then
//                    the quadratic sieve (crible_quadratique.h). 40 digits 8 ms, 60 digits 0.6 s.
//   700 bits         curves, level after level, until they have found all factors: for ever, if there
//                    are none in their reach.
//
// All of it is deterministic: the same integer takes the same way every time, on one processor.
#include "primes/facteurs/facteurs.h"

#include <algorithm>
#include <array>
#include <optional>
#include <stdexcept>
#include <vector>

#include "primes/arithmetique/zz.h"
#include "primes/facteurs/echelle.h"
#include "primes/facteurs/facteurs128.h"
#include "primes/facteurs/facteurs64.h"
#include "primes/facteurs/facteurs_longs.h"
#include "primes/facteurs/fermat.h"
#include "primes/facteurs/petits_facteurs.h"
#include "primes/facteurs/preuve.h"
#include "primes/facteurs/puissance.h"
#include "primes/quadratique/crible_quadratique.h"

namespace premiers::facteurs {
namespace {

// ---- Limits, found by timing both methods on products of two equal primes ----------------------

/// Up to here ECM alone beats the sieve if it runs eight curves at once, though from 101 bits on its
/// arithmetic takes a limb more.
constexpr long bits_ecm_a_huit = 103;
/// The same for one or two curves at a time. Both take 1.1 ms at 80 bits, 6.3 and 2.7 ms at 98.
constexpr long bits_ecm_scalaire = 80;
/// Curves before the sieve between the two: none makes random integers dearer, eight the products of
/// two equal primes.
constexpr unsigned courbes_avant_le_crible = 4;
/// More curves than an integer of this size was ever seen to need; behind them stands the sieve.
constexpr unsigned courbes_ecm_seule = 400;
/// Up to here the sieve comes to an end in a bearable time: 105 digits, some hours.
constexpr long bits_crible = 350;

/// From here on curves of the levels of echelle.h pay before the sieve.
constexpr long bits_echelle = 225;

/// What an integer of at least so many bits is worth in ECM before the sieve: in all a tenth of the
/// sieve's time. Half or double of it costs a tenth on random integers of 36 to 60 digits.
struct Palier {
  long bits;
  EffortEcm effort;
};
constexpr std::array<Palier, 5> paliers{{{0, {16, 200, 8000}},
                                         {115, {16, 500, 25000}},
                                         {140, {32, 2000, 100000}},
                                         {170, {128, 2000, 100000}},
                                         {200, {512, 2000, 100000}}}};
/// Where eight curves run at once, these stand for the first level of the ladder, which is for factors
/// of 20 digits: with the smaller bounds, whose second stage needs no rows of bits, they cost less.
constexpr EffortEcm effort_a_huit{2048, 2000, 100000};
constexpr std::uint8_t chiffres_de_l_effort_a_huit = 20;
static_assert(effort_a_huit.a_portee());
static_assert(std::all_of(paliers.begin(), paliers.end(),
                          [](const Palier& p) { return p.effort.a_portee(); }));

// ---- Splitting ---------------------------------------------------------------------------------

/// A factor of n, of at most bits_ecm_a_huit bits, by the curves that pay for its size.
std::optional<NTL::ZZ> facteur_de_deux_mots(const NTL::ZZ& n) {
  const long bits_ecm_seule = facteur_ecm_a_huit() ? bits_ecm_a_huit : bits_ecm_scalaire;
  const bool seule = NTL::NumBits(n) <= bits_ecm_seule;
  const auto f = facteur_ecm(en_entier128(n), seule ? courbes_ecm_seule : courbes_avant_le_crible);
  if (!f) return std::nullopt;
  return en_zz(*f);
}

/// What the curves of `paliers` are meant for.
constexpr std::uint8_t chiffres_d_un_facteur_court = 15;

/// A factor of n that is much shorter than n, if there is one.
std::optional<NTL::ZZ> facteur_court(const NTL::ZZ& n, Echelle& echelle, const Suivi& suivi) {
  unsigned courbes = 0;
  for (const auto& [bits, effort] : paliers) {
    if (NTL::NumBits(n) < bits) break;
    suivi.annoncer({.genre = Etape::Genre::courbes,
                    .chiffres = chiffres_d_un_facteur_court,
                    .nombre = static_cast<std::uint16_t>(courbes + effort.courbes),
                    .numero = courbes + 1});
    if (auto f = facteur_ecm_long(n, effort, courbes, suivi)) return f;
    courbes += effort.courbes;
  }
  if (NTL::NumBits(n) >= bits_echelle && echelle.niveau == 0 && huit_courbes_a_la_fois(n)) {
    suivi.annoncer({.genre = Etape::Genre::courbes,
                    .chiffres = chiffres_de_l_effort_a_huit,
                    .nombre = effort_a_huit.courbes,
                    .numero = 1});
    if (auto f = facteur_ecm_long(n, effort_a_huit, courbes, suivi)) return f;
    echelle = {1, 0};
  }
  return std::nullopt;
}

/// The digits of factors that curves look for, so that they take about a tenth of the time of what
/// comes behind them: 20 at 68 digits, 22.6 at 74, and from 77 on 4/13 of the digits (the rule of
/// yafu, B. Buhrow). A curve at 68 digits takes 11 ms with B1 = 11000, the sieve 14 s.
double profondeur(long bits) {
  if (bits < bits_echelle) return 0;
  if (bits > bits_crible) return profondeur_sans_fin;
  constexpr double chiffres_par_bit = 0.30103;
  const auto taille = static_cast<double>(bits);
  return std::min(20 + 0.122 * (taille - bits_echelle), 4.0 / 13 * chiffres_par_bit * taille);
}

/// What the sieve splits its residues of two large primes with.
std::uint64_t scinder(std::uint64_t m) {
  const auto f = facteur_ecm(m, courbes_ecm_seule);
  return f ? bas(*f) : 0;
}

/// Proper factors of the composite n, which is no perfect power and has no small factor; several where
/// they come together. `echelle` is what curves have been tried.
std::vector<NTL::ZZ> diviser(const NTL::ZZ& n, Echelle& echelle, const Suivi& suivi) {
  const long bits = NTL::NumBits(n);
  if (bits <= bits_ecm_a_huit) {
    if (const auto f = facteur_de_deux_mots(n)) return {*f};
  } else if (const auto proche = facteur_de_fermat(n)) {
    return {*proche};
  } else if (const auto f = facteur_court(n, echelle, suivi)) {
    return {*f};
  }
  auto trouves = facteurs_par_echelle(n, profondeur(bits), echelle, suivi);
  if (!trouves.empty()) return trouves;
  if (bits <= bits_crible) {
    if (const auto f = quadratique::facteur_quadratique(n, suivi, scinder)) return {*f};
  }
  return facteurs_par_echelle(n, profondeur_sans_fin, echelle, suivi);
}

// ---- Collecting --------------------------------------------------------------------------------

void ajouter(Facteurs& facteurs, const NTL::ZZ& premier, std::int64_t exposant) {
  const auto place =
      std::lower_bound(facteurs.begin(), facteurs.end(), premier,
                       [](const Facteur& f, const NTL::ZZ& p) { return f.premier < p; });
  if (place != facteurs.end() && place->premier == premier) {
    place->exposant += exposant;
  } else {
    facteurs.insert(place, {premier, exposant});
  }
}

/// Adds the prime factors of n^exposant; n has none below borne_petits_facteurs, and `echelle` is
/// what curves have been tried on it.
void decomposer(Facteurs& resultat, const NTL::ZZ& n, std::int64_t exposant, Echelle echelle,
                const Suivi& suivi) {
  if (NTL::NumBits(n) <= 64) {
    for (const auto& [p, e] : facteurs(en_entier64(n))) ajouter(resultat, en_zz(p), e * exposant);
  } else if (est_premier_prouve(n, suivi)) {
    ajouter(resultat, n, exposant);
  } else if (const auto puissance = puissance_parfaite(n)) {
    decomposer(resultat, puissance->base, exposant * puissance->exposant, {}, suivi);
  } else {
    NTL::ZZ reste = n;
    for (const NTL::ZZ& trouve : diviser(n, echelle, suivi)) {
      const NTL::ZZ d = NTL::GCD(trouve, reste);  // those before it may have taken a part
      if (d == 1) continue;
      std::int64_t fois = 0;
      for (; NTL::divide(reste, reste, d) != 0; ++fois) {
      }
      decomposer(resultat, d, fois * exposant, {}, suivi);
    }
    decomposer(resultat, reste, exposant, echelle, suivi);
  }
}

}  // namespace

Facteurs decomposer(const NTL::ZZ& N, const Suivi& suivi) {
  if (NTL::NumBits(N) > bits_facteur_long) throw std::length_error{"nombre trop long"};
  Facteurs resultat;
  NTL::ZZ reste = N;
  if (NTL::NumBits(N) > 64) {
    for (const auto& [p, e] : retirer_petits_facteurs(reste)) resultat.push_back({en_zz(p), e});
  }
  decomposer(resultat, reste, 1, {}, suivi);
  return resultat;
}

}  // namespace premiers::facteurs
