// SPDX-License-Identifier: MIT
// Patterns, segments and questions. The loops over whole blocks are in segment_boucles.cpp, crossing
// off in segment_rayer.cpp.
#include "primes/compte/segment.h"

#include <cassert>

#include "primes/compte/tables.h"

namespace premiers::compte {

Motif::Motif(std::span<const std::uint32_t> facteurs) {
  for (const std::uint32_t p : facteurs) periode *= p;
  mots.assign(periode + SegmentCompte::mots_par_bloc, ~std::uint64_t{0});
  for (const std::uint32_t p : facteurs) effacer_multiples(mots, p);
}

SegmentCompte::SegmentCompte(std::size_t taille)
    : mots(taille / 8),
      blocs(taille / octets_par_bloc),
      avant(taille / octets_par_bloc),
      noyaux(choisir(versions_des_noyaux()).boucle) {
  assert(taille % octets_par_bloc == 0 && taille <= taille_max);
}

void SegmentCompte::cumuler() {
  std::uint32_t somme = 0;
  for (std::size_t i = 0; i < blocs.size(); ++i) {
    avant[i] = somme;
    somme += blocs[i];
  }
}

Compteur::Compteur(SegmentCompte& s, std::size_t nombre)
    : segment_(s), cumule_(nombre >= questions_pour_cumul) {
  if (cumule_) s.cumuler();
}

std::uint64_t Compteur::operator()(std::span<const Question> questions) {
  std::uint64_t somme = segment_.noyaux.compter(segment_, questions);
  if (cumule_) return somme + segment_.noyaux.compter_avant(segment_, questions);
  for (const Question q : questions) {
    std::uint32_t entre = 0;
    for (; bloc_ < q / SegmentCompte::questions_par_bloc; ++bloc_) entre += segment_.blocs[bloc_];
    avant_ += entre;
    const std::uint64_t moins = 0 - std::uint64_t{q & 1};
    somme += (avant_ ^ moins) - moins;
  }
  return somme;
}

}  // namespace premiers::compte
