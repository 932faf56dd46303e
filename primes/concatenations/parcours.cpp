// SPDX-License-Identifier: MIT
// The descent of the tree that parcours.h tells of: the ways of ten children, and the way down to one.
#include "primes/concatenations/parcours.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include "primes/concatenations/chiffres.h"
#include "primes/concatenations/examen.h"
#include "primes/concatenations/noeud.h"
#include "primes/concatenations/oracle.h"
#include "primes/concatenations/tailles.h"
#include "primes/crible/decades.h"

namespace premiers::concatenations {

namespace {

/// Adds the ways of a cut to those of the numbers of the decade that are prime from there on.
void ajouter(std::array<std::uint64_t, 4>& sommes, std::uint64_t chemins, unsigned touches) {
  for (std::size_t i = 0; i < 4; ++i) sommes[i] += chemins & masques[touches][i];
}
void ajouter(std::array<NTL::ZZ, 4>& sommes, const NTL::ZZ& chemins, unsigned touches) {
  for (std::size_t i = 0; i < 4; ++i) {
    if ((touches >> i & 1) != 0) sommes[i] += chemins;
  }
}

std::size_t chiffre(char c) { return static_cast<std::size_t>(c - '0'); }

/// The numbers of n digits of the range.
template <typename Taille>
struct Parcours {
  using Valeur = typename Taille::Valeur;
  using Compte = typename Taille::Compte;

  Parcours(Commun& commun, const std::string& debut, const std::string& fin)
      : commun_(commun),
        debut_(debut),
        fin_(fin),
        chiffres_(debut.size(), '0'),
        noeuds_(debut.size() + 1),
        oracle_(commun, debut, fin),
        examen_(commun) {
    noeuds_[0].coupures.push_back({Compte(1), Valeur(0), 0});
  }

  /// Goes through the numbers that begin with the m digits set. sur_debut, sur_fin: these are the
  /// leading digits of the first, of the last number.
  void descendre(std::size_t m, bool sur_debut, bool sur_fin);

 private:
  std::size_t n() const { return debut_.size(); }

  /// A number is examined although none of its beginnings is prime.
  bool reports() const { return !commun_.recherche.premiers_seuls; }

  void passer_a_l_enfant(const Noeud<Taille>& noeud, std::size_t d, std::size_t m);
  void calculer_enfants(Noeud<Taille>& noeud, std::size_t m, Chiffres voulus);
  void calculer_enfants_non_entames(Noeud<Taille>& noeud, std::size_t m, Chiffres voulus);

  Commun& commun_;
  const std::string& debut_;
  const std::string& fin_;
  std::string chiffres_;
  std::vector<Noeud<Taille>> noeuds_;  // noeuds_[m]: the first m digits
  Oracle<Taille> oracle_;
  Examen<Taille> examen_;
};

template <typename Taille>
void Parcours<Taille>::descendre(std::size_t m, bool sur_debut, bool sur_fin) {
  const std::size_t de = sur_debut ? chiffre(debut_[m]) : 0;
  const std::size_t a = sur_fin ? chiffre(fin_[m]) : 9;
  Noeud<Taille>& noeud = noeuds_[m];
  calculer_enfants(noeud, m, (2U << a) - (1U << de));
  commun_.travailler(1);
  if (m + 1 == n()) {
    examen_.examiner(noeud, chiffres_, de, a);
    return;
  }
  for (std::size_t d = de; d <= a; ++d) {
    chiffres_[m] = static_cast<char>('0' + static_cast<int>(d));
    examen_.changer(m);
    passer_a_l_enfant(noeud, d, m + 1);
    descendre(m + 1, sur_debut && d == de, sur_fin && d == a);
  }
}

template <typename Taille>
void Parcours<Taille>::passer_a_l_enfant(const Noeud<Taille>& noeud, std::size_t d, std::size_t m) {
  Noeud<Taille>& enfant = noeuds_[m];
  enfant.entame = noeud.entame || noeud.premier(d);
  const bool toutes = reports() && !enfant.entame;
  enfant.coupures.clear();
  for (const auto& c : noeud.coupures) {
    if (toutes || c.chemins != 0) {
      enfant.coupures.push_back({c.chemins, 10 * c.valeur + static_cast<unsigned>(d), c.place});
    }
  }
  if (toutes || noeud.chemins[d] != 0) {
    enfant.coupures.push_back({noeud.chemins[d], Valeur(0), m});
  }
  if (toutes) examen_.fixer(m, noeud.morceaux[d]);
}

/// The ways of the children, and which of them are prime; right for the digits wanted.
template <typename Taille>
void Parcours<Taille>::calculer_enfants(Noeud<Taille>& noeud, std::size_t m, Chiffres voulus) {
  if (!noeud.entame) {
    calculer_enfants_non_entames(noeud, m, voulus);
    return;
  }
  const bool au_bout = m + 1 == n();
  // Nothing but zeros after a cut, or nothing at all: the next digit alone is the piece.
  Compte seul(0);
  std::size_t nombre = noeud.coupures.size();
  for (; noeud.coupures[nombre - 1].valeur == 0; --nombre) {
    seul += noeud.coupures[nombre - 1].chemins;
  }
  std::array<Compte, 4> sommes{};
  for (std::size_t i = 0; i < nombre; ++i) {
    const auto& coupure = noeud.coupures[i];
    const unsigned t = oracle_.demander(coupure.valeur, coupure.place, au_bout, voulus);
    if (i == 0) {
      noeud.premiers = en_chiffres[t] & voulus;
      if (noeud.premiers == 0 && au_bout && !reports()) return;  // none will be kept
    }
    ajouter(sommes, coupure.chemins, t);
  }
  noeud.chemins[1] = sommes[0];
  noeud.chemins[2] = seul;
  noeud.chemins[3] = sommes[1] + seul;
  noeud.chemins[5] = seul;
  noeud.chemins[7] = sommes[2] + seul;
  noeud.chemins[9] = sommes[3];
}

/// While no beginning is prime, a child has a way only if it is prime itself.
template <typename Taille>
void Parcours<Taille>::calculer_enfants_non_entames(Noeud<Taille>& noeud, std::size_t m,
                                                    Chiffres voulus) {
  noeud.morceaux = {};
  for (const auto& c : noeud.coupures) {
    const Chiffres premiers =
        voulus &
        (c.valeur == 0
             ? premiers_a_un_chiffre
             : Chiffres{en_chiffres[oracle_.demander(c.valeur, c.place, m + 1 == n(), voulus)]});
    if (c.place == 0) noeud.premiers = premiers;
    for (Chiffres reste = premiers; reste != 0; reste &= reste - 1) {
      noeud.morceaux[static_cast<std::size_t>(std::countr_zero(reste))].ajouter(c.place);
    }
  }
  for (std::size_t d = 0; d < 10; ++d) noeud.chemins[d] = noeud.premier(d) ? 1 : 0;
}

}  // namespace

template <typename Taille>
void parcourir(Commun& commun, const std::string& debut, const std::string& fin) {
  // Up to some hundred kilobytes: on the heap, where a lack of memory can be told.
  std::make_unique<Parcours<Taille>>(commun, debut, fin)->descendre(0, true, true);
}

template void parcourir<Petits>(Commun&, const std::string&, const std::string&);
template void parcourir<Grands>(Commun&, const std::string&, const std::string&);

}  // namespace premiers::concatenations
