// SPDX-License-Identifier: MIT
// The concatenations of primes, without their dialogue. The plain rivals stand beside this file:
// concat_litteral.cpp, concat_intervalle.gp, concat_chemins.gp.
#include <benchmark/benchmark.h>

#include <string>

#include "primes/concatenations/concatenations.h"
#include "primes/concatenations/decoupe.h"
#include "primes/dette/recherche.h"

namespace premiers::concatenations {
namespace {

/// Counts the numbers kept from `debut` on, so many numbers wide.
void chercher(benchmark::State& etat, const char* debut, long largeur, bool premiers_seuls) {
  const NTL::ZZ de = NTL::conv<NTL::ZZ>(debut);
  for (auto _ : etat) {
    dette::Dette dette;
    const Recherche recherche{de, de + largeur - 1, premiers_seuls};
    dette::NotesDeRecherche notes(dette, recherche);
    benchmark::DoNotOptimize(chercher_concatenations(recherche, {}, notes.examens()));
    dette::noter_recherche(dette, notes);
  }
  etat.SetItemsProcessed(etat.iterations() * largeur);
}

BENCHMARK_CAPTURE(chercher, nombres_jusqu_a_1e7, "1", 10'000'000, false);
BENCHMARK_CAPTURE(chercher, premiers_jusqu_a_1e8, "1", 100'000'000, true);
BENCHMARK_CAPTURE(chercher, nombres_a_1e18, "1000000000000000000", 100'000, false);
BENCHMARK_CAPTURE(chercher, nombres_quelconques_de_18_chiffres, "123456789012345678", 1'000'000,
                  false);
BENCHMARK_CAPTURE(chercher, nombres_a_1e30, "1000000000000000000000000000000", 1'000, false);

/// Counts the ways of one number, and goes through them if there are not too many.
void decouper_un_nombre(benchmark::State& etat, const std::string& chiffres, bool parcourir) {
  const NTL::ZZ N = NTL::conv<NTL::ZZ>(chiffres.c_str());
  for (auto _ : etat) {
    const Decoupe decoupe = decouper(N);
    std::size_t octets = 0;
    if (parcourir) {
      parcourir_chemins(decoupe, [&](std::string_view chemin) { octets += chemin.size(); });
    }
    benchmark::DoNotOptimize(octets);
  }
}

std::string repeter(const std::string& morceau, std::size_t chiffres) {
  std::string texte;
  while (texte.size() < chiffres) texte += morceau;
  texte.resize(chiffres);
  return texte;
}

BENCHMARK_CAPTURE(decouper_un_nombre, dix_fois_2357_tous_les_chemins, repeter("2357", 40), true);
BENCHMARK_CAPTURE(decouper_un_nombre, soixante_chiffres, repeter("1379237113", 60), false);
BENCHMARK_CAPTURE(decouper_un_nombre, cent_quatre_vingt_dix_neuf_chiffres, repeter("37", 199),
                  false);

}  // namespace
}  // namespace premiers::concatenations
