// SPDX-License-Identifier: MIT
// What the quadratic sieve gathers in a second, with given settings (primes/quadratique/reglages.h).
//
//   reglages_quadratique N SECONDS [name=value ...] [/ name=value ...] ...
//
// sieves for N with its own settings changed as told, one set after the other in turns of a tenth
// of a second, so that a busy machine disturbs all alike. N: a number, or its bits and a `b` for a
// fixed product of two primes.
#include <NTL/ZZ.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <memory>
#include <string>
#include <vector>

#include "primes/quadratique/base.h"
#include "primes/quadratique/division.h"
#include "primes/quadratique/polynome.h"
#include "primes/quadratique/reglages.h"
#include "primes/quadratique/tamis.h"

namespace {

using namespace premiers::quadratique;

double secondes() { return static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }

struct Essai {
  Reglages reglages;
  Base base;
  double bits_reste = 0;
  std::uint32_t seuil = 0;
  std::unique_ptr<Polynomes> polynomes;
  std::unique_ptr<Tamis> tamis;
  std::unique_ptr<Division> division;
  double temps = 0, temps_division = 0;
  std::uint64_t n_polynomes = 0, candidats = 0, divises = 0, pleines = 0, partielles = 0, doubles = 0;
};

void changer(Reglages& r, double& exposant, const std::string& mot) {
  const auto egal = mot.find('=');
  const std::string nom = mot.substr(0, egal);
  const double v = std::atof(mot.c_str() + egal + 1);
  if (nom == "base") r.base = static_cast<std::size_t>(v);
  if (nom == "demi") r.demi = static_cast<std::uint32_t>(v);
  if (nom == "grand") r.grand = static_cast<std::uint32_t>(v);
  if (nom == "petit") r.petit = static_cast<std::uint32_t>(v);
  if (nom == "tolerance") r.tolerance = v;
  if (nom == "facteur") r.facteur = v;
  if (nom == "exposant") exposant = v;
}

void tourner(Essai& e, double duree) {
  const double debut = secondes();
  const double dernier = e.base.premier[e.base.taille - 1];
  const double borne = dernier * e.reglages.grand;
  double t = debut;
  while (t - debut < duree) {
    if (!e.polynomes->suivant()) break;
    ++e.n_polynomes;
    const auto& liste = e.tamis->cribler(*e.polynomes, e.seuil);
    const double avant = secondes();
    for (const Candidat c : liste) {
      ++e.candidats;
      if (!e.division->diviser(*e.polynomes, c)) continue;
      ++e.divises;
      const auto reste = static_cast<double>(e.division->valeur.reste);
      if (reste == 1) {
        ++e.pleines;
      } else if (reste < borne) {
        ++e.partielles;
      } else if (reste > dernier * dernier && std::log2(reste) < e.bits_reste) {
        const NTL::ZZ z = NTL::conv<NTL::ZZ>(static_cast<unsigned long>(e.division->valeur.reste));
        if (NTL::PowerMod(NTL::ZZ(2), z - 1, z) != 1) ++e.doubles;
      }
    }
    t = secondes();
    e.temps_division += t - avant;
  }
  e.temps += t - debut;
}

// The time until full relations and pairs of partial ones are as many as the base (no use is made
// of double ones). Large primes up to `borne` are met with a frequency as 1 / l.
double duree_simple(double base, double pleines, double partielles, double dernier, double borne) {
  const auto paires = [&](double n) {
    constexpr int pas = 400;
    double somme = 0;
    double distincts = 0;
    for (int tour = 0; tour < 2; ++tour) {
      for (int i = 0; i < pas; ++i) {
        const double u = (i + 0.5) / pas;
        const double l = dernier * std::pow(borne / dernier, u);
        const double combien = l * std::log(borne / dernier) / pas / (2 * std::log(l));
        const double q = 1 / l;
        if (tour == 0) somme += combien * q;
        if (tour == 1) distincts += combien * (1 - std::exp(-n * q / somme));
      }
    }
    return n - distincts;
  };
  double bas = 0;
  double haut = 1e7;
  for (int i = 0; i < 60; ++i) {
    const double t = (bas + haut) / 2;
    (pleines * t + paires(partielles * t) < base ? bas : haut) = t;
  }
  return haut;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) return 2;
  NTL::ZZ n;
  const std::string quoi = argv[1];
  if (quoi.back() == 'b') {
    const long bits = std::atol(argv[1]);
    NTL::SetSeed(NTL::ZZ(bits));
    do n = NTL::GenPrime_ZZ(bits / 2) * NTL::GenPrime_ZZ(bits - bits / 2);
    while (NTL::NumBits(n) != bits);
  } else {
    n = NTL::conv<NTL::ZZ>(argv[1]);
  }
  const double duree = std::atof(argv[2]);
  std::vector<Essai> essais;
  int i = 3;
  do {
    Essai e;
    e.reglages = reglages(NTL::NumBits(n));
    double exposant = 1;
    for (; i < argc && argv[i][0] != '/'; ++i) changer(e.reglages, exposant, argv[i]);
    ++i;
    e.base = construire_base(n, e.reglages.base);
    const double borne = std::log2(static_cast<double>(e.base.premier[e.base.taille - 1]) * e.reglages.grand);
    e.bits_reste = exposant * borne;
    essais.push_back(std::move(e));
  } while (i < argc);
  for (Essai& e : essais) {
    const double exces = e.bits_reste - std::log2(static_cast<double>(e.base.premier[e.base.taille - 1]));
    const double taille = std::log2(e.reglages.demi) + (static_cast<double>(NTL::NumBits(e.base.kn)) - 3) / 2;
    e.seuil = static_cast<std::uint32_t>(std::clamp(taille - e.reglages.tolerance - exces, 10.0, 120.0));
    e.polynomes = std::make_unique<Polynomes>(e.base, e.reglages);
    e.tamis = std::make_unique<Tamis>(e.base, e.reglages);
    e.polynomes->limite = e.tamis->fin;
    e.division = std::make_unique<Division>(e.base, *e.tamis, e.bits_reste);
  }
  for (double t = 0; t < duree; t += 0.1) {
    for (Essai& e : essais) tourner(e, 0.1);
  }
  for (const Essai& e : essais) {
    const Reglages& r = e.reglages;
    std::printf("base=%zu demi=%u grand=%u petit=%u tol=%.1f fact=%.1f seuil=%u s=%zu | ", r.base, r.demi, r.grand,
                r.petit, r.tolerance, r.facteur, e.seuil, e.polynomes->nombre);
    const double t = e.temps;
    const double dernier = e.base.premier[e.base.taille - 1];
    std::printf("us/poly %.1f us/32K %.2f div %.0f%% cand/poly %.2f div/poly %.2f full/s %.1f part/s %.1f dbl/s %.1f all/s %.0f | simple %.2f s, %.0f/R %.2f s\n",
                1e6 * t / e.n_polynomes, 1e6 * t / e.n_polynomes / (2.0 * r.demi / 32768), 100 * e.temps_division / t,
                double(e.candidats) / e.n_polynomes, double(e.divises) / e.n_polynomes, e.pleines / t, e.partielles / t, e.doubles / t,
                (e.pleines + e.partielles + e.doubles) / t,
                duree_simple(static_cast<double>(e.base.taille), e.pleines / t, e.partielles / t, dernier, dernier * r.grand),
                0.165 * dernier * r.grand / std::log(dernier * r.grand) / 2,
                0.165 * dernier * r.grand / std::log(dernier * r.grand) / 2 / ((e.pleines + e.partielles + e.doubles) / t));
  }
}
