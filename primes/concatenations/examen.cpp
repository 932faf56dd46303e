// SPDX-License-Identifier: MIT
// The three ways to keep a number, which examen.h tells apart, and what each tells of the pieces that the
// plain search divides.
#include "primes/concatenations/examen.h"

#include <span>
#include <string_view>
#include <utility>

namespace premiers::concatenations {

namespace {

void annoncer(const Gardes& gardes, std::string_view tete,
              std::span<const std::uint64_t, 10> effectifs) {
  if (gardes.petits) gardes.petits(tete, effectifs);
}
void annoncer(const Gardes& gardes, std::string_view tete, std::span<const NTL::ZZ, 10> effectifs) {
  if (gardes.grands) gardes.grands(tete, effectifs);
}

}  // namespace

template <typename Taille>
void Examen<Taille>::examiner(Noeud<Taille>& noeud, std::string& chiffres, std::size_t de,
                              std::size_t a) {
  for (std::size_t d = 0; d < de; ++d) noeud.chemins[d] = 0;
  for (std::size_t d = a + 1; d < 10; ++d) noeud.chemins[d] = 0;
  if (commun_.recherche.premiers_seuls) {
    garder_premiers(noeud, chiffres, de, a);
  } else if (noeud.entame) {
    garder_entames(chiffres, de, a);
  } else {
    garder_non_entames(noeud, chiffres, de, a);
  }
  commun_.dizaines_faites += 1;
  unsigned retenus = 0;
  for (const auto& chemins : noeud.chemins) retenus += chemins != 0 ? 1 : 0;
  commun_.retenus += retenus;
  if (retenus == 0) return;
  const std::string_view tete(chiffres.data(), chiffres.size() - 1);
  annoncer(commun_.gardes, tete, std::span(std::as_const(noeud.chemins)));
}

template <typename Taille>
void Examen<Taille>::garder_premiers(Noeud<Taille>& noeud, std::string& chiffres, std::size_t de,
                                     std::size_t a) {
  if (noeud.premiers == 0 && !commun_.examens) {
    noeud.chemins = {};
    return;
  }
  for (std::size_t d = de; d <= a; ++d) {
    const bool premier = noeud.premier(d);
    if (!premier || noeud.chemins[d] < 2) noeud.chemins[d] = 0;
    dire(chiffres, d, premier ? Morceaux::tous : Morceaux::nombre_entier);
  }
}

template <typename Taille>
void Examen<Taille>::garder_entames(std::string& chiffres, std::size_t de, std::size_t a) {
  commun_.report = true;
  if (!commun_.examens) return;
  for (std::size_t d = de; d <= a; ++d) dire(chiffres, d, Morceaux::tous);
}

template <typename Taille>
void Examen<Taille>::garder_non_entames(Noeud<Taille>& noeud, std::string& chiffres, std::size_t de,
                                        std::size_t a) {
  report_.commencer_dizaine(chiffres.size());
  for (std::size_t d = de; d <= a; ++d) {
    const bool premier = noeud.premier(d);
    dire(chiffres, d, premier || commun_.report ? Morceaux::tous : Morceaux::du_debut);
    if (premier) {
      commun_.report = true;
    } else if (commun_.report) {
      noeud.chemins[d] = report_.chemins(noeud.morceaux[d], commun_.report);
    }
  }
}

template <typename Taille>
void Examen<Taille>::dire(std::string& chiffres, std::size_t d, Morceaux morceaux) {
  if (!commun_.examens) return;
  chiffres.back() = static_cast<char>('0' + static_cast<int>(d));
  changer(chiffres.size() - 1);
  commun_.examens(chiffres, communs_, morceaux);
  communs_ = chiffres.size();
}

template struct Examen<Petits>;
template struct Examen<Grands>;

}  // namespace premiers::concatenations
