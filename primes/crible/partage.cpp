// SPDX-License-Identifier: MIT
// First the border that time asks for, then what memory leaves of it (partage.h).
#include "primes/crible/partage.h"

#include <algorithm>
#include <bit>
#include <cmath>

#include "primes/arithmetique/racines.h"
#include "primes/crible/crible_garde.h"
#include "systeme/memoire.h"

namespace premiers::crible {

namespace {

// The constants of the border, in nanoseconds on a Xeon at 2.5 GHz; only their ratios matter. Half
// or twice `depart` costs some percent.
constexpr double depart = 13;   // to start a prime
constexpr double regard = 1.0;  // to see that a prime has no multiple in a round
constexpr double detour = 1.0;  // for a multiple of a prime that is not kept, above one that is

/// The primes up to here are kept in a window of so many integers, for the sake of time.
double borne_de_temps(double largeur, double tour) {
  const double reste = depart / largeur - regard / tour;
  return reste > 0 ? detour / reste : HUGE_VAL;
}

double nombre_de_premiers(double x) { return x / (std::log(x) - 1.1); }

/// The multiples of primes from a to b whose cofactor is prime to 210, for each integer.
double multiples_par_entier(double a, double b) {
  return 48.0 / 210 * std::log(std::log(b) / std::log(a));
}

std::uint64_t memoire_des_gardes(std::uint64_t plus_petit, std::uint64_t borne) {
  if (borne <= plus_petit) return 0;
  const double nombre = nombre_de_premiers(static_cast<double>(borne)) -
                        nombre_de_premiers(static_cast<double>(plus_petit));
  return CribleGarde::memoire(nombre, borne);
}

/// What the rounds take: entries, with a part of a block too much for each bucket.
std::uint64_t memoire_du_tour(std::uint64_t tour, std::uint64_t borne, std::uint64_t racine) {
  if (borne >= racine) return 0;
  const double entrees =
      30 * static_cast<double>(tour) *
      multiples_par_entier(static_cast<double>(borne), static_cast<double>(racine));
  return static_cast<std::uint64_t>(4 * entrees) +
         (tour / CribleGarde::taille_segment + 1) * Blocs::taille_bloc;
}

constexpr std::uint64_t divers = std::uint64_t{8} << 20;  // pieces that are not full, tables

}  // namespace

Partage partager(std::uint64_t octet, std::uint64_t octet_fin, std::uint64_t plus_petit,
                 std::uint64_t memoire) {
  const std::uint64_t longueur = octet_fin - octet;
  const std::uint64_t racine = racine_carree(30 * octet_fin - 1);
  Partage p{};
  p.tour = std::clamp(std::bit_ceil(longueur), Partage::tour_min, Partage::tour_max);
  p.notes = true;
  for (;;) {
    const double largeur = 30 * static_cast<double>(longueur);
    const double voulue =
        borne_de_temps(largeur, std::min(largeur, 30 * static_cast<double>(p.tour)));
    p.borne = voulue < static_cast<double>(racine) ? static_cast<std::uint64_t>(voulue) : racine;
    p.borne = std::max(p.borne, plus_petit);
    while (p.borne > plus_petit && memoire_des_gardes(plus_petit, p.borne) > memoire / 2) {
      p.borne = std::max(p.borne - p.borne / 8, plus_petit);
    }
    p.notes = p.notes && p.borne < racine && longueur > p.tour;
    p.memoire = memoire_des_gardes(plus_petit, p.borne) +
                memoire_du_tour(std::min(p.tour, longueur), p.borne, racine) +
                (p.notes ? (racine - p.borne) / 30 : 0) + divers;
    if (p.memoire <= memoire) return p;
    if (p.notes) {
      p.notes = false;
    } else if (p.tour > Partage::tour_min) {
      p.tour /= 2;
    } else {
      return p;
    }
  }
}

Partage partager_selon_le_systeme(std::uint64_t octet, std::uint64_t octet_fin,
                                  std::uint64_t plus_petit, std::uint64_t memoire) {
  const Partage p = partager(octet, octet_fin, plus_petit, memoire);
  // What is small is not worth the question, which reads files of the system.
  constexpr std::uint64_t peu = std::uint64_t{24} << 20;
  if (p.memoire <= peu) return p;
  // Half of what is there: address space goes in larger pieces than memory, and others want some.
  const std::uint64_t libre = systeme::memoire_libre() / 2;
  return p.memoire <= libre ? p : partager(octet, octet_fin, plus_petit, libre);
}

}  // namespace premiers::crible
