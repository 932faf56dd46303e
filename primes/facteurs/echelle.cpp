// SPDX-License-Identifier: MIT
// The levels, and how the next curves are taken.
#include "primes/facteurs/echelle.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

#include "primes/facteurs/ecm_grand.h"
#include "primes/facteurs/facteurs_longs.h"
#include "primes/facteurs/huit.h"
#include "primes/facteurs/p_moins_un.h"

namespace premiers::facteurs {
namespace {

using namespace ecm;

struct Niveau {
  double chiffres;
  std::uint64_t b1;
  std::uint64_t courbes;
  std::uint64_t moins_un;  ///< B1 of the P - 1 before the level; 0 for none
};
constexpr std::array<Niveau, 5> niveaux{{{20, 11000, 98, 150000},
                                         {25, 50000, 281, 0},
                                         {30, 250000, 671, 3000000},
                                         {35, 1000000, 1676, 0},
                                         {40, 3000000, 4858, 10000000}}};
constexpr double chiffres_par_niveau = 5;
constexpr std::uint64_t b2_par_b1 = 100;
constexpr std::uint64_t b2_moins_un_max = 500000000;  // 7 MB of rows

/// How many curves of the level belong to this depth.
std::uint64_t courbes_jusqu_a(std::size_t i, double profondeur) {
  if (i + 1 == niveaux.size() && profondeur == profondeur_sans_fin) return ~std::uint64_t{0};
  const Niveau& n = niveaux[i];
  const double part = (profondeur - n.chiffres) / chiffres_par_niveau + 1;
  return static_cast<std::uint64_t>(
      std::lround(static_cast<double>(n.courbes) * std::clamp(part, 0.0, 1.0)));
}

/// No curve is taken twice, nor one of those of facteurs_longs.h; eight at a time may go a little beyond
/// the end of a level.
std::uint64_t sigma(const Echelle& etat) {
  std::uint64_t s = 10000;
  for (unsigned i = 0; i < etat.niveau; ++i) s += niveaux[i].courbes + Huit::voies;
  return s + etat.courbe;
}

/// What the next curve is, of `fin`.
Etape etape(const Echelle& etat, std::uint64_t fin) {
  const bool sans_fin = fin == ~std::uint64_t{0};
  return {.genre = Etape::Genre::courbes,
          .chiffres = static_cast<std::uint8_t>(niveaux[etat.niveau].chiffres),
          .nombre = static_cast<std::uint16_t>(sans_fin ? 0 : fin),
          .numero = static_cast<std::uint32_t>(etat.courbe + 1)};
}

/// The next curves: eight together, where the processor has a way, or one.
std::vector<NTL::ZZ> essayer_les_suivantes(const NTL::ZZ& n, const BornesLongues& bornes,
                                           Echelle& etat, const Suivi& suivi) {
  const std::uint64_t s = sigma(etat);
  if (const auto noyaux = Huit::noyaux_d_ici()) {
    etat.courbe += Huit::voies;
    return essayer_huit_courbes(n, s, bornes, noyaux, suivi);
  }
  ++etat.courbe;
  const NTL::ZZ f = essayer_courbe(n, s, bornes, suivi);
  if (f != 1) return {f};
  return {};
}

std::vector<NTL::ZZ> facteurs_moins_un(const NTL::ZZ& n, std::uint64_t b1, const Suivi& suivi) {
  if (b1 == 0) return {};
  suivi.annoncer({.genre = Etape::Genre::moins_un});
  const std::uint64_t b2 = std::min(b2_par_b1 * b1, b2_moins_un_max);
  if (const NTL::ZZ f = essayer_p_moins_un(n, b1, b2, suivi); f != 1) return {f};
  return {};
}

/// The curves of the level that are still to be done, `fin` in all.
std::vector<NTL::ZZ> facteurs_du_niveau(const NTL::ZZ& n, std::uint64_t fin, Echelle& etat,
                                        const Suivi& suivi) {
  const Niveau& niveau = niveaux[etat.niveau];
  if (etat.courbe >= fin) return {};
  if (etat.courbe == 0) {
    if (auto f = facteurs_moins_un(n, niveau.moins_un, suivi); !f.empty()) return f;
  }
  const BornesLongues bornes{niveau.b1, b2_par_b1 * niveau.b1, suivi};
  while (etat.courbe < fin) {
    suivi.annoncer(etape(etat, fin));
    if (auto f = essayer_les_suivantes(n, bornes, etat, suivi); !f.empty()) return f;
  }
  return {};
}

}  // namespace

std::vector<NTL::ZZ> facteurs_par_echelle(const NTL::ZZ& n, double profondeur, Echelle& etat,
                                          const Suivi& suivi) {
  if (NTL::NumBits(n) > bits_facteur_long) return {};
  for (; etat.niveau < niveaux.size(); ++etat.niveau, etat.courbe = 0) {
    const std::uint64_t fin = courbes_jusqu_a(etat.niveau, profondeur);
    if (auto f = facteurs_du_niveau(n, fin, etat, suivi); !f.empty()) return f;
    if (fin < niveaux[etat.niveau].courbes) return {};
  }
  return {};
}

}  // namespace premiers::facteurs
