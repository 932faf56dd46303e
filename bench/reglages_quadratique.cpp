// SPDX-License-Identifier: MIT
// The settings of the quadratic sieve (primes/quadratique/reglages.h), tried.
//
//   reglages_quadratique essayer N SECONDS [name=value ...] [, name=value ...] ...
//       sieves for N with its own settings, changed as told, one set after the other in turns of a
//       tenth of a second, so that a busy machine disturbs all alike. For each set, per second of
//       processor time: full relations, those with one and with two large primes; and how long it
//       would take to gather what a factorisation needs (`duree` below).
//   reglages_quadratique entier N [name=value ...]
//       factors N: seconds, and the relations of each kind that were needed.
//   reglages_quadratique chercher N SECONDS [name=value ...]
//       changes one setting after the other, by steps that become smaller, as long as the time that
//       `essayer` expects goes down.
//
// N: a number, or its length in bits and a `b` for a fixed product of two primes.
#include <NTL/ZZ.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "primes/facteurs/facteurs64.h"
#include "primes/quadratique/base.h"
#include "primes/quadratique/campagne.h"
#include "primes/quadratique/crible_quadratique.h"
#include "primes/quadratique/reglages.h"

namespace {

using namespace premiers::quadratique;

std::uint64_t scinder(std::uint64_t m) { return premiers::facteurs::plus_petit_facteur(m); }

double secondes() { return static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }

NTL::ZZ lire_nombre(const std::string& mot) {
  if (mot.back() != 'b') return NTL::conv<NTL::ZZ>(mot.c_str());
  const long bits = std::atol(mot.c_str());
  NTL::SetSeed(NTL::ZZ(bits));
  while (true) {
    const NTL::ZZ n = NTL::GenPrime_ZZ(bits / 2) * NTL::GenPrime_ZZ(bits - bits / 2);
    if (NTL::NumBits(n) == bits) return n;
  }
}

void changer(Reglages& r, const std::string& mot) {
  const auto egal = mot.find('=');
  const std::string nom = mot.substr(0, egal);
  const double v = std::atof(mot.c_str() + std::min(egal, mot.size() - 1) + 1);
  const auto entier = static_cast<std::uint32_t>(v);
  if (nom == "base")
    r.base = entier;
  else if (nom == "demi")
    r.demi = entier / 64 * 64;
  else if (nom == "grand")
    r.grand = entier;
  else if (nom == "petit")
    r.petit = entier;
  else if (nom == "tolerance")
    r.tolerance = v;
  else if (nom == "facteur")
    r.facteur = v;
  else if (nom == "exposant")
    r.exposant = v;
  else
    std::fprintf(stderr, "%s: no such setting\n", nom.c_str());
}

/// What a campaign has gathered: relations with no, one, two large primes.
struct Sortes {
  double pleines = 0, simples = 0, doubles = 0;
};

Sortes compter(const Recolte& recolte) {
  Sortes k;
  for (const Relation& r : recolte.relations) {
    (r.grands.grand == 1 ? k.pleines : r.grands.petit == 1 ? k.simples : k.doubles) += 1;
  }
  return k;
}

struct Essai {
  Essai(const NTL::ZZ& n, const Reglages& r)
      : reglages(r), base(construire_base(n, r.base)), campagne(base, r, scinder) {}

  void tourner(double duree) {
    const double debut = secondes();
    double t = debut;
    while (t - debut < duree && campagne.avancer()) {
      ++polynomes;
      t = secondes();
    }
    temps += t - debut;
  }

  Reglages reglages;
  Base base;
  Campagne campagne;
  double temps = 0;
  double polynomes = 0;
};

/// The time until full relations and pairs of those with one large prime are as many as the base.
/// Large primes up to `borne` are met with a frequency as 1 / l.
double duree_simple(double base, Sortes k, double dernier, double borne) {
  const auto paires = [&](double n) {
    constexpr int pas = 400;
    std::array<double, 2> sommes{};
    for (const std::size_t tour : {std::size_t{0}, std::size_t{1}}) {
      for (int i = 0; i < pas; ++i) {
        const double l = dernier * std::pow(borne / dernier, (i + 0.5) / pas);
        const double combien = l * std::log(borne / dernier) / pas / (2 * std::log(l));
        sommes[tour] += combien * (tour == 0 ? 1 / l : 1 - std::exp(-n / l / sommes[0]));
      }
    }
    return n - sommes[1];
  };
  double bas = 0;
  double haut = 1e8;
  for (int i = 0; i < 80; ++i) {
    const double t = (bas + haut) / 2;
    (k.pleines * t + paires(k.simples * t) < base ? bas : haut) = t;
  }
  return haut;
}

/// With two large primes cycles come in a rush. At 70 digits, where `entier` measured it with bases
/// of 10800 to 14000, `grand` from 80 to 344 and exponents from 1 to 1.85, it comes when relations
/// with one large prime, and a fifth of those with two, are so many:
double besoin_double(double base, double grand) { return 5 * base * std::pow(grand / 80, 0.25); }

double duree_double(const Essai& e, Sortes par_seconde) {
  return besoin_double(static_cast<double>(e.base.taille), e.reglages.grand) /
         (par_seconde.simples + par_seconde.doubles / 5);
}

double duree(const Essai& e) {
  Sortes k = compter(e.campagne.recolte);
  for (double* x : {&k.pleines, &k.simples, &k.doubles}) *x /= e.temps;
  if (e.reglages.exposant > 1) return duree_double(e, k);
  return duree_simple(static_cast<double>(e.base.taille), k, e.base.premier[e.base.taille - 1],
                      static_cast<double>(e.campagne.bornes.premier));
}

void ecrire(const Essai& e) {
  const Reglages& r = e.reglages;
  const Sortes k = compter(e.campagne.recolte);
  std::printf("base=%zu demi=%u grand=%u petit=%u tolerance=%.1f exposant=%.2f facteur=%.1f",
              r.base, r.demi, r.grand, r.petit, r.tolerance, r.exposant, r.facteur);
  std::printf(" | %.1f us a polynomial, full %.1f, one %.1f, two %.1f a second: %.2f s\n",
              1e6 * e.temps / e.polynomes, k.pleines / e.temps, k.simples / e.temps,
              k.doubles / e.temps, duree(e));
  std::fflush(stdout);
}

using Essais = std::vector<std::unique_ptr<Essai>>;

void tourner(const Essais& essais, double duree) {
  for (double t = 0; t < duree; t += 0.1) {
    for (const auto& e : essais) e->tourner(0.1);
  }
}

int essayer(const NTL::ZZ& n, double duree, std::span<char*> mots) {
  Essais essais;
  Reglages r = reglages(NTL::NumBits(n));
  for (const std::string mot : mots) {
    if (mot == ",") {
      essais.push_back(std::make_unique<Essai>(n, r));
      r = reglages(NTL::NumBits(n));
    } else {
      changer(r, mot);
    }
  }
  essais.push_back(std::make_unique<Essai>(n, r));
  tourner(essais, duree);
  for (const auto& e : essais) ecrire(*e);
  return 0;
}

int entier(const NTL::ZZ& n, std::span<char*> mots) {
  Reglages r = reglages(NTL::NumBits(n));
  for (const std::string mot : mots) changer(r, mot);
  const double debut = secondes();
  const Base base = construire_base(n, r.base);
  Campagne campagne(base, r, scinder);
  while (campagne.recolte.cycles() < base.taille + 2 && campagne.avancer()) {
  }
  const double crible = secondes() - debut;
  const Sortes k = compter(campagne.recolte);
  const double borne = static_cast<double>(campagne.bornes.premier);
  std::printf(
      "base %zu: sieved %.2f s, full %.0f, one %.0f, two %.0f: %.4f of the primes to %.3g\n",
      base.taille, crible, k.pleines, k.simples, k.doubles,
      (k.pleines + k.simples + k.doubles) / (borne / (2 * std::log(borne))), borne);
  return 0;
}

int chercher(const NTL::ZZ& n, double duree_essai, std::span<char*> mots) {
  Reglages r = reglages(NTL::NumBits(n));
  for (const std::string mot : mots) changer(r, mot);
  const auto etirer = [](auto& x, double facteur) {
    using T = std::remove_reference_t<decltype(x)>;
    x = static_cast<T>(std::lround(static_cast<double>(x) * facteur));
  };
  const std::array<std::function<void(Reglages&, double)>, 6> pas{
      [&](Reglages& s, double f) { etirer(s.base, f); },
      [&](Reglages& s, double f) {
        s.demi = std::min(32704U, static_cast<std::uint32_t>(s.demi * f) / 64 * 64);
      },
      [&](Reglages& s, double f) { etirer(s.grand, f); },
      [&](Reglages& s, double f) { etirer(s.petit, f); },
      [](Reglages& s, double f) { s.tolerance += 8 * std::log(f); },
      [](Reglages& s, double f) { s.facteur += 4 * std::log(f); }};
  for (const double taille : {1.3, 1.15}) {
    for (const auto& changer_un : pas) {
      Essais essais;
      for (const double facteur : {1 / taille, 1.0, taille}) {
        Reglages autre = r;
        changer_un(autre, facteur);
        essais.push_back(std::make_unique<Essai>(n, autre));
      }
      tourner(essais, duree_essai);
      const auto meilleur =
          std::min_element(essais.begin(), essais.end(),
                           [](const auto& a, const auto& b) { return duree(*a) < duree(*b); });
      r = (*meilleur)->reglages;
      ecrire(**meilleur);
    }
  }
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) return 2;
  const std::string_view travail = argv[1];
  const NTL::ZZ n = lire_nombre(argv[2]);
  const std::span<char*> mots(argv + 3, argv + argc);
  if (travail == "entier") return entier(n, mots);
  if (mots.empty()) return 2;
  const double duree = std::atof(mots[0]);
  if (travail == "essayer") return essayer(n, duree, mots.subspan(1));
  if (travail == "chercher") return chercher(n, duree, mots.subspan(1));
  return 2;
}
