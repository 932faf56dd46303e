// SPDX-License-Identifier: MIT
// Where windows of decades pay, and the tests of what nobody has looked up.
#include "primes/concatenations/oracle.h"

#include <cmath>

#include "primes/primalite/primalite.h"

namespace premiers::concatenations {

namespace {

/// Whether sieving costs less than testing the numbers up to decade d, for so many numbers. A test
/// takes about as long as the sieve takes for a hundred numbers, or for ten sieving primes: `par_nombre`.
/// With a tenth of it searches of 10^6 numbers of 15 digits take 1.8 times as long, with ten times as much
/// the same. Narrower ranges than `au_moins` do not earn a sieve's preparation; with ten times as many
/// searches of 10^5 numbers of 12 to 18 digits take 1.6 to 2.7 times as long, with a tenth the same.
bool vaut_une_fenetre(std::uint64_t largeur, std::uint64_t d) {
  constexpr std::uint64_t au_moins = 100'000;
  constexpr double par_nombre = 100;
  const double racine = std::sqrt(10 * static_cast<double>(d));
  return d <= crible::DecadesGlissantes::derniere_max && largeur >= au_moins &&
         static_cast<double>(largeur) * par_nombre > racine;
}

/// The work of four tests, in the unit of `Commun::travailler`. Effect: how often progress is told and
/// nothing else, so the order of magnitude is enough: a microsecond for words, two for each bit of long
/// numbers, as they take at 100 to 300 bits.
unsigned cout_des_tests(std::uint64_t) { return 20; }
unsigned cout_des_tests(const NTL::ZZ& v) { return static_cast<unsigned>(NTL::NumBits(v)) * 40; }

}  // namespace

template <typename Taille>
Oracle<Taille>::Oracle(Commun& commun, const std::string& debut, const std::string& fin)
    : commun_(commun) {
  if constexpr (std::is_same_v<Taille, Petits>) {
    const std::size_t n = debut.size();
    const std::uint64_t largeur = std::stoull(fin) - std::stoull(debut) + 1;
    for (std::size_t place = 0; place + 1 < n; ++place) {
      const bool meme_tete = debut.compare(0, place, fin, 0, place) == 0;
      const std::string derniere =
          meme_tete ? fin.substr(place, n - 1 - place) : std::string(n - 1 - place, '9');
      const std::uint64_t d = std::stoull(derniere);
      if (d >= commun.decades.nombre() && vaut_une_fenetre(largeur, d)) {
        fenetres_[place] = std::make_unique<crible::DecadesGlissantes>(d);
      }
    }
  }
}

template <typename Taille>
unsigned Oracle<Taille>::tester(const Valeur& v, Chiffres voulus) {
  commun_.travailler(cout_des_tests(v));
  unsigned t = 0;
  for (std::size_t i = 0; i < crible::finales.size(); ++i) {
    const unsigned finale = crible::finales[i];
    if ((voulus >> finale & 1) != 0 && primalite::est_premier(Valeur(10 * v + finale)))
      t |= 1U << i;
  }
  return t;
}

template struct Oracle<Petits>;
template struct Oracle<Grands>;

}  // namespace premiers::concatenations
