// SPDX-License-Identifier: MIT
// The numbers of the range are the leaves of a tree: a node is a string of leading digits, its ten
// children have one digit more. All that numbers share with their neighbours is worked out once,
// at the node where they part.
//
// A cut after j digits of a node is described by the number of ways to reach it and by the value of
// the digits after it. The ways to reach the end of a child are the sum of the ways to reach those
// cuts from which the digits to its end form a prime; for all ten children this is one look-up per
// cut (primes/crible/decades.h). Cuts that no way reaches are dropped at once. So ten
// numbers of nine digits cost about five look-ups.
//
// Pieces longer than the looked-up ones are tested (primes/primalite/primalite.h), only for numbers
// of the range.
#pragma once

#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "primes/arithmetique/zz.h"
#include "primes/concatenations/chiffres.h"
#include "primes/concatenations/concatenations.h"
#include "primes/concatenations/dette_morceaux.h"
#include "primes/concatenations/report.h"
#include "primes/primalite/primalite.h"

namespace premiers {

/// The two sizes of numbers that the search is written for.
struct Petits {
  using Valeur = std::uint64_t;
  using Compte = std::uint64_t;
  static constexpr std::size_t chiffres_max = 19;
};
struct Grands {
  using Valeur = NTL::ZZ;
  using Compte = NTL::ZZ;
  static constexpr std::size_t chiffres_max = Recherche::chiffres_max;
};

/// Adds the ways of a cut to those of the numbers of the decade that are prime from there on.
inline void ajouter(std::array<std::uint64_t, 4>& sommes, std::uint64_t chemins, unsigned touches) {
  for (std::size_t i = 0; i < 4; ++i) sommes[i] += chemins & masques[touches][i];
}
inline void ajouter(std::array<NTL::ZZ, 4>& sommes, const NTL::ZZ& chemins, unsigned touches) {
  for (std::size_t i = 0; i < 4; ++i) {
    if ((touches >> i & 1) != 0) sommes[i] += chemins;
  }
}

/// Whether sieving costs less than testing the numbers up to decade d, for so many numbers. A test
/// takes about as long as the sieve takes for a hundred numbers, or for ten sieving primes.
inline bool vaut_une_fenetre(std::uint64_t largeur, std::uint64_t d) {
  constexpr std::uint64_t au_moins = 100'000;
  constexpr double par_nombre = 100;
  const double racine = std::sqrt(10 * static_cast<double>(d));
  return d <= DecadesGlissantes::derniere_max && largeur >= au_moins &&
         static_cast<double>(largeur) * par_nombre > racine;
}

/// What is common to the numbers of all sizes of one search.
struct Commun {
  const Recherche& recherche;
  const Gardes& gardes;
  const Decades& decades;
  DetteMorceaux* dette_morceaux;  // none if the pieces oblige to nothing
  const Suivi& suivi;

  std::uint64_t retenus = 0;
  bool report = false;  // the last number examined has left a start entry

  double dizaines_en_tout = 1;
  double dizaines_faites = 0;
  unsigned travail = 0;

  /// Counts work, in some twentieths of a microsecond.
  void travailler(unsigned cout) {
    constexpr unsigned une_milliseconde = 20'000;
    travail += cout;
    if (travail < une_milliseconde) return;
    travail = 0;
    dire_la_part();
  }

  void dire_la_part() const {
    if (suivi) suivi(dizaines_faites / dizaines_en_tout);
  }

  /// Sieving some more does not advance the search by itself.
  const Suivi pendant_un_crible = [this](double) { dire_la_part(); };
};

/// The numbers of n digits of the range.
template <typename Taille>
struct Parcours {
  using Valeur = typename Taille::Valeur;
  using Compte = typename Taille::Compte;
  using LeReport = Report<Compte, Taille::chiffres_max>;
  using Coupures = typename LeReport::Coupures;

  struct Coupure {
    Compte chemins;     // how many ways lead to it
    Valeur valeur;      // the digits after it
    std::size_t place;  // the number of digits before it
  };

  struct Noeud {
    /// One of the beginnings of these digits is prime.
    bool entame = false;
    /// The cuts reached by a way, the first one always; all while a report may need them.
    std::vector<Coupure> coupures;

    // The ten children.
    Chiffres premiers = 0;  // which are prime
    std::array<Compte, 10> chemins{};
    std::array<Coupures, 10> morceaux{};  // that end with their last digit; while a report may ask
  };

  Parcours(Commun& commun, std::string debut, std::string fin)
      : commun_(commun), debut_(std::move(debut)), fin_(std::move(fin)) {
    chiffres_.resize(n());
    noeuds_.resize(n() + 1);
    noeuds_[0].coupures.push_back({Compte(1), Valeur(0), 0});
    if constexpr (std::is_same_v<Taille, Petits>) preparer_les_fenetres();
  }

  void parcourir() { descendre(0, true, true); }

 private:
  Commun& commun_;
  std::string debut_;
  std::string fin_;
  std::string chiffres_;
  std::vector<Noeud> noeuds_;  // noeuds_[m]: the first m digits
  /// For the cuts behind which so long pieces are met in so wide a range that sieving pays.
  std::array<std::unique_ptr<DecadesGlissantes>, Taille::chiffres_max> glissantes_;
  LeReport report_;

  std::size_t n() const { return debut_.size(); }

  /// A number is examined although none of its beginnings is prime.
  bool reports() const { return !commun_.recherche.premiers_seuls; }

  void preparer_les_fenetres() {
    const std::uint64_t largeur = std::stoull(fin_) - std::stoull(debut_) + 1;
    for (std::size_t place = 0; place + 1 < n(); ++place) {
      const bool meme_tete = debut_.compare(0, place, fin_, 0, place) == 0;
      const std::string derniere =
          meme_tete ? fin_.substr(place, n() - 1 - place) : std::string(n() - 1 - place, '9');
      const std::uint64_t d = std::stoull(derniere);
      if (d >= commun_.decades.nombre() && vaut_une_fenetre(largeur, d)) {
        glissantes_[place] = std::make_unique<DecadesGlissantes>(d);
      }
    }
  }

  /// Goes through the numbers that begin with the m digits set. sur_debut, sur_fin: these are the
  /// leading digits of the first, of the last number.
  void descendre(std::size_t m, bool sur_debut, bool sur_fin) {
    const std::size_t de = sur_debut ? chiffre(debut_[m]) : 0;
    const std::size_t a = sur_fin ? chiffre(fin_[m]) : 9;
    Noeud& noeud = noeuds_[m];
    calculer_enfants(noeud, m, (2U << a) - (1U << de));
    commun_.travailler(1);
    if (m + 1 == n()) {
      examiner_dizaine(noeud, de, a);
      return;
    }
    for (std::size_t d = de; d <= a; ++d) {
      changer_chiffre(m, d);
      passer_a_l_enfant(noeud, d, m + 1);
      descendre(m + 1, sur_debut && d == de, sur_fin && d == a);
    }
  }

  static std::size_t chiffre(char c) { return static_cast<std::size_t>(c - '0'); }

  void changer_chiffre(std::size_t m, std::size_t d) {
    chiffres_[m] = static_cast<char>('0' + static_cast<int>(d));
    if (commun_.dette_morceaux != nullptr) commun_.dette_morceaux->changer(m);
  }

  void passer_a_l_enfant(const Noeud& noeud, std::size_t d, std::size_t m) {
    Noeud& enfant = noeuds_[m];
    enfant.entame = noeud.entame || (noeud.premiers >> d & 1) != 0;
    const bool toutes = reports() && !enfant.entame;
    enfant.coupures.clear();
    for (const Coupure& c : noeud.coupures) {
      if (toutes || c.chemins != 0) {
        enfant.coupures.push_back({c.chemins, 10 * c.valeur + static_cast<unsigned>(d), c.place});
      }
    }
    if (toutes || noeud.chemins[d] != 0) {
      enfant.coupures.push_back({noeud.chemins[d], Valeur(0), m});
    }
    if (toutes) report_.fixer(m, noeud.morceaux[d]);
  }

  /// Which of 10 v + 1, 3, 7, 9 are prime, among those whose last digit is wanted; v > 0.
  unsigned touches(std::uint64_t v, std::size_t place, std::size_t m, Chiffres voulus) {
    if (v < commun_.decades.nombre()) return commun_.decades[v];
    // Before the last digit the pieces are shorter, and ten times fewer.
    if (const auto& decades = glissantes_[place]; decades && m + 1 == n()) {
      return decades->demander(v, commun_.pendant_un_crible);
    }
    constexpr unsigned quatre_tests = 20;
    commun_.travailler(quatre_tests);
    return tester(v, voulus);
  }
  unsigned touches(const NTL::ZZ& v, std::size_t, std::size_t, Chiffres voulus) {
    if (NTL::NumBits(v) < 64 && en_entier64(v) < commun_.decades.nombre()) {
      return commun_.decades[en_entier64(v)];
    }
    commun_.travailler(static_cast<unsigned>(NTL::NumBits(v)) * 40);
    return tester(v, voulus);
  }
  static unsigned tester(const Valeur& v, Chiffres voulus) {
    unsigned t = 0;
    for (std::size_t i = 0; i < finales.size(); ++i) {
      const unsigned finale = finales[i];
      if ((voulus >> finale & 1) != 0 && est_premier(Valeur(10 * v + finale))) t |= 1U << i;
    }
    return t;
  }

  /// The ways of the children, and which of them are prime; right for the digits wanted.
  void calculer_enfants(Noeud& noeud, std::size_t m, Chiffres voulus) {
    if (!noeud.entame) {
      calculer_enfants_non_entames(noeud, m, voulus);
      return;
    }
    // Nothing but zeros after a cut, or nothing at all: the next digit alone is the piece.
    Compte seul(0);
    std::size_t nombre = noeud.coupures.size();
    for (; noeud.coupures[nombre - 1].valeur == 0; --nombre) {
      seul += noeud.coupures[nombre - 1].chemins;
    }
    std::array<Compte, 4> sommes{};
    for (std::size_t i = 0; i < nombre; ++i) {
      const unsigned t = touches(noeud.coupures[i].valeur, noeud.coupures[i].place, m, voulus);
      if (i == 0) {
        noeud.premiers = en_chiffres[t] & voulus;
        if (noeud.premiers == 0 && m + 1 == n() && !reports()) return;  // none will be kept
      }
      ajouter(sommes, noeud.coupures[i].chemins, t);
    }
    noeud.chemins[1] = sommes[0];
    noeud.chemins[2] = seul;
    noeud.chemins[3] = sommes[1] + seul;
    noeud.chemins[5] = seul;
    noeud.chemins[7] = sommes[2] + seul;
    noeud.chemins[9] = sommes[3];
  }

  /// While no beginning is prime, a child has a way only if it is prime itself.
  void calculer_enfants_non_entames(Noeud& noeud, std::size_t m, Chiffres voulus) {
    noeud.morceaux = {};
    for (const Coupure& c : noeud.coupures) {
      const Chiffres premiers =
          voulus & (c.valeur == 0 ? premiers_a_un_chiffre
                                  : Chiffres{en_chiffres[touches(c.valeur, c.place, m, voulus)]});
      if (c.place == 0) noeud.premiers = premiers;
      for (Chiffres reste = premiers; reste != 0; reste &= reste - 1) {
        noeud.morceaux[static_cast<std::size_t>(std::countr_zero(reste))].ajouter(c.place);
      }
    }
    for (std::size_t d = 0; d < 10; ++d) noeud.chemins[d] = noeud.premiers >> d & 1;
  }

  /// The numbers that end in the digits de .. a: leaves the ways of those that are kept in the
  /// node.
  void examiner_dizaine(Noeud& noeud, std::size_t de, std::size_t a) {
    for (std::size_t d = 0; d < de; ++d) noeud.chemins[d] = 0;
    for (std::size_t d = a + 1; d < 10; ++d) noeud.chemins[d] = 0;
    if (commun_.recherche.premiers_seuls) {
      garder_premiers(noeud, de, a);
    } else if (noeud.entame) {
      garder_entames(de, a);
    } else {
      garder_non_entames(noeud, de, a);
    }
    commun_.dizaines_faites += 1;
    unsigned retenus = 0;
    for (const Compte& chemins : noeud.chemins) retenus += chemins != 0 ? 1 : 0;
    commun_.retenus += retenus;
    if (retenus > 0) annoncer(std::string_view(chiffres_).substr(0, n() - 1), noeud.chemins);
  }

  /// Only primes are examined, and kept if there is another way than the number itself.
  void garder_premiers(Noeud& noeud, std::size_t de, std::size_t a) {
    if (noeud.premiers == 0 && !commun_.dette_morceaux) {
      noeud.chemins = {};
      return;
    }
    for (std::size_t d = de; d <= a; ++d) {
      const bool premier = (noeud.premiers >> d & 1) != 0;
      if (!premier || noeud.chemins[d] < 2) noeud.chemins[d] = 0;
      noter(d, premier ? Morceaux::tous : Morceaux::nombre_entier);
    }
  }

  /// Every number is examined, and kept if there is a way.
  void garder_entames(std::size_t de, std::size_t a) {
    commun_.report = true;
    if (commun_.dette_morceaux == nullptr) return;
    for (std::size_t d = de; d <= a; ++d) noter(d, Morceaux::tous);
  }

  /// The only beginning that can be prime is the number itself.
  void garder_non_entames(Noeud& noeud, std::size_t de, std::size_t a) {
    report_.commencer_dizaine(n());
    for (std::size_t d = de; d <= a; ++d) {
      const bool premier = (noeud.premiers >> d & 1) != 0;
      noter(d, premier || commun_.report ? Morceaux::tous : Morceaux::du_debut);
      if (premier) {
        commun_.report = true;
      } else if (commun_.report) {
        noeud.chemins[d] = report_.chemins(noeud.morceaux[d], commun_.report);
      }
    }
  }

  void noter(std::size_t d, Morceaux morceaux) {
    if (commun_.dette_morceaux == nullptr) return;
    changer_chiffre(n() - 1, d);
    commun_.dette_morceaux->noter(chiffres_, morceaux);
  }

  void annoncer(std::string_view tete, const std::array<std::uint64_t, 10>& effectifs) {
    if (commun_.gardes.petits) commun_.gardes.petits(tete, effectifs);
  }
  void annoncer(std::string_view tete, const std::array<NTL::ZZ, 10>& effectifs) {
    if (commun_.gardes.grands) commun_.gardes.grands(tete, effectifs);
  }
};

}  // namespace premiers
