// SPDX-License-Identifier: MIT
// The numbers of the range are the leaves of a tree: a node is a string of leading digits, its ten
// children have one digit more. All that numbers share with their neighbours is worked out once,
// at the node where they part.
//
// A cut after j digits of a node is described by the number of ways to reach it and by the value of
// the digits after it. The ways to reach the end of a child are the sum of the ways to reach those
// cuts from which the digits to its end form a prime; for all ten children this is one look-up per
// cut (primes/concatenations/decades.h). Cuts that no way reaches are dropped at once. So ten numbers of nine
// digits cost about five look-ups.
//
// Pieces longer than the looked-up ones are tested (primes/primalite/primalite.h), only for numbers of the
// range.
//
// The start entry that is carried over
// ------------------------------------
// The plain search keeps the positions at which prime pieces start in r0[1], r0[2] ..., increasing,
// and leaves r0[1] alone until it finds one; it gives a number up after the pieces at its first
// digit only if r0[1] is then 0. So a number none of whose beginnings is prime
// - has no way if the number examined before it left r0[1] = 0;
// - else has all its pieces scanned, and its first start s > 1, if any, goes to r0[1]; 0 if none.
// The enumeration then takes the pieces at s for first pieces, as if they began at the first digit:
// one of length l is believed to cover the digits 1 .. l. It goes on with a start at l + 1 among
// r0[2] ..., which are all greater than s: the entry s is used up. Hence l + 1 > s, that is l >= s,
// or l + 1 is no start; l itself is less than the number of digits, so no way ends there. With
// W[m] = the ways believed to cover m digits, for m >= s,
//   W[m] = [m >= s and the piece of length m at s is prime] + sum of W[j], s <= j < m, over the
//          prime pieces of the digits j + 1 .. m,
// and the number of ways is W[n].
#include "primes/concatenations/concatenations.h"

#include <algorithm>
#include <array>
#include <stdexcept>
#include <string>
#include <vector>

#include "primes/concatenations/decades.h"
#include "primes/concatenations/decoupe.h"
#include "primes/concatenations/dette_morceaux.h"
#include "primes/concatenations/ensemble.h"
#include "primes/prem.h"
#include "primes/primalite/primalite.h"
#include "primes/arithmetique/zz.h"

namespace premiers {

namespace {

/// Sets of digits, as ten bits.
using Chiffres = unsigned;
constexpr Chiffres premiers_a_un_chiffre = 1U << 2 | 1U << 3 | 1U << 5 | 1U << 7;

/// The set of digits behind four bits of a decade.
constexpr auto en_chiffres = [] {
  std::array<std::uint16_t, 16> t{};
  for (std::size_t touches = 0; touches < 16; ++touches) {
    for (std::size_t i = 0; i < 4; ++i) {
      if ((touches >> i & 1) != 0) t[touches] |= static_cast<std::uint16_t>(1U << finales[i]);
    }
  }
  return t;
}();

/// masques[touches][i]: all bits, if number i of the decade is prime.
constexpr auto masques = [] {
  std::array<std::array<std::uint64_t, 4>, 16> t{};
  for (std::size_t touches = 0; touches < 16; ++touches) {
    for (std::size_t i = 0; i < 4; ++i) t[touches][i] = 0 - (std::uint64_t{touches} >> i & 1);
  }
  return t;
}();

/// Adds the ways of a cut to those of the numbers of the decade that are prime from there on.
void ajouter(std::array<std::uint64_t, 4>& sommes, std::uint64_t chemins, unsigned touches) {
  for (std::size_t i = 0; i < 4; ++i) sommes[i] += chemins & masques[touches][i];
}
void ajouter(std::array<NTL::ZZ, 4>& sommes, const NTL::ZZ& chemins, unsigned touches) {
  for (std::size_t i = 0; i < 4; ++i) {
    if ((touches >> i & 1) != 0) sommes[i] += chemins;
  }
}

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
    if (suivi) suivi(dizaines_faites / dizaines_en_tout);
  }
};

/// The numbers of n digits of the range.
template <typename Taille>
struct Parcours {
  using Valeur = typename Taille::Valeur;
  using Compte = typename Taille::Compte;
  using Coupures = Ensemble<Taille::chiffres_max + 1>;  // the cuts where certain pieces begin

  static constexpr std::size_t aucun = Taille::chiffres_max + 1;

  struct Coupure {
    Compte chemins;  // how many ways lead to it
    Valeur valeur;   // the digits after it
  };

  struct Noeud {
    /// One of the beginnings of these digits is prime.
    bool entame = false;
    /// The cuts reached by a way, the first one always; all while a report may need them.
    std::vector<Coupure> coupures;

    // While a report may need them:
    Coupures morceaux;                   // the prime pieces that end with the last digit
    std::size_t premier_depart = aucun;  // the first cut with a prime piece

    // The ten children.
    Chiffres premiers = 0;  // which are prime
    std::array<Compte, 10> chemins;
    std::array<Coupures, 10> morceaux_enfants;
  };

  Parcours(Commun& commun, std::string debut, std::string fin)
      : commun_(commun), debut_(std::move(debut)), fin_(std::move(fin)) {
    chiffres_.resize(n());
    noeuds_.resize(n() + 1);
    noeuds_[0].coupures.push_back({Compte(1), Valeur(0)});
  }

  void parcourir() { descendre(0, true, true); }

 private:
  Commun& commun_;
  std::string debut_;
  std::string fin_;
  std::string chiffres_;
  std::vector<Noeud> noeuds_;  // noeuds_[m]: the first m digits

  std::size_t n() const { return debut_.size(); }

  /// A number is examined although none of its beginnings is prime.
  bool reports() const { return !commun_.recherche.premiers_seuls; }

  /// Goes through the numbers that begin with the m digits set. sur_debut, sur_fin: these are the
  /// leading digits of the first, of the last number.
  void descendre(std::size_t m, bool sur_debut, bool sur_fin) {
    const int de = sur_debut ? debut_[m] - '0' : 0;
    const int a = sur_fin ? fin_[m] - '0' : 9;
    Noeud& noeud = noeuds_[m];
    calculer_enfants(noeud, m, (2U << a) - (1U << de));
    commun_.travailler(1);
    if (m + 1 == n()) {
      examiner_dizaine(noeud, de, a);
      return;
    }
    for (int d = de; d <= a; ++d) {
      changer_chiffre(m, d);
      passer_a_l_enfant(noeud, d, m + 1);
      descendre(m + 1, sur_debut && d == de, sur_fin && d == a);
    }
  }

  void changer_chiffre(std::size_t m, int d) {
    chiffres_[m] = static_cast<char>('0' + d);
    if (commun_.dette_morceaux != nullptr) commun_.dette_morceaux->changer(m);
  }

  void passer_a_l_enfant(const Noeud& noeud, int d, std::size_t m) {
    const auto chiffre = static_cast<std::size_t>(d);
    Noeud& enfant = noeuds_[m];
    enfant.entame = noeud.entame || (noeud.premiers >> d & 1) != 0;
    const bool toutes = reports() && !enfant.entame;
    enfant.coupures.clear();
    for (const Coupure& c : noeud.coupures) {
      if (toutes || c.chemins != 0) {
        enfant.coupures.push_back({c.chemins, 10 * c.valeur + static_cast<unsigned>(d)});
      }
    }
    if (toutes || noeud.chemins[chiffre] != 0) {
      enfant.coupures.push_back({noeud.chemins[chiffre], Valeur(0)});
    }
    if (!toutes) return;
    enfant.morceaux = noeud.morceaux_enfants[chiffre];
    enfant.premier_depart = std::min(noeud.premier_depart, enfant.morceaux.premier());
  }

  /// Which of 10 v + 1, 3, 7, 9 are prime, among those whose last digit is wanted; v > 0.
  unsigned touches(std::uint64_t v, Chiffres voulus) {
    if (v < commun_.decades.nombre()) return commun_.decades[v];
    constexpr unsigned quatre_tests = 20;
    commun_.travailler(quatre_tests);
    return tester(v, voulus);
  }
  unsigned touches(const NTL::ZZ& v, Chiffres voulus) {
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
      const unsigned t = touches(noeud.coupures[i].valeur, voulus);
      if (i == 0) noeud.premiers = en_chiffres[t] & voulus;
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
    noeud.morceaux_enfants = {};
    for (std::size_t j = 0; j < noeud.coupures.size(); ++j) {
      const Valeur& v = noeud.coupures[j].valeur;
      const Chiffres premiers =
          (v == 0 ? premiers_a_un_chiffre : Chiffres{en_chiffres[touches(v, voulus)]}) & voulus;
      if (j == 0) noeud.premiers = premiers;
      for (Chiffres reste = premiers; reste != 0; reste &= reste - 1) {
        noeud.morceaux_enfants[static_cast<std::size_t>(std::countr_zero(reste))].ajouter(j);
      }
    }
    for (std::size_t d = 0; d < 10; ++d) noeud.chemins[d] = Compte(noeud.premiers >> d & 1);
    static_cast<void>(m);
  }

  /// The numbers that end in the digits de .. a.
  void examiner_dizaine(Noeud& noeud, int de, int a) {
    std::array<Compte, 10> effectifs{};
    unsigned retenus = 0;
    for (int d = de; d <= a; ++d) {
      const auto chiffre = static_cast<std::size_t>(d);
      const bool premier = (noeud.premiers >> d & 1) != 0;
      if (commun_.recherche.premiers_seuls) {
        if (premier && noeud.chemins[chiffre] > 1) effectifs[chiffre] = noeud.chemins[chiffre];
        noter(d, premier ? Morceaux::tous : Morceaux::nombre_entier);
      } else if (noeud.entame || premier) {
        effectifs[chiffre] = noeud.chemins[chiffre];
        commun_.report = true;
        noter(d, Morceaux::tous);
      } else {
        noter(d, commun_.report ? Morceaux::tous : Morceaux::du_debut);
        if (commun_.report) effectifs[chiffre] = reporter(noeud, chiffre);
      }
      if (effectifs[chiffre] != 0) ++retenus;
    }
    commun_.dizaines_faites += 1;
    commun_.retenus += retenus;
    if (retenus > 0) annoncer(std::string_view(chiffres_).substr(0, n() - 1), effectifs);
  }

  void noter(int d, Morceaux morceaux) {
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

  /// The ways of a number none of whose beginnings is prime, when a start entry is carried over;
  /// renews the entry.
  Compte reporter(const Noeud& noeud, std::size_t d) {
    Noeud& nombre = noeuds_[n()];
    nombre.morceaux = noeud.morceaux_enfants[d];
    const std::size_t depart = std::min(noeud.premier_depart, nombre.morceaux.premier());
    commun_.report = depart != aucun;
    if (nombre.morceaux.premier() == aucun) return Compte(0);

    // In the words at the top of the file, s = depart + 1 and couverts[m] = W[m].
    const std::size_t s = depart + 1;
    std::array<Compte, Taille::chiffres_max + 1> couverts;
    for (std::size_t m = s; m <= n(); ++m) {
      couverts[m] = depart + m <= n() && noeuds_[depart + m].morceaux.contient(depart) ? 1 : 0;
      noeuds_[m].morceaux.pour_chaque(s, [&](std::size_t j) { couverts[m] += couverts[j]; });
    }
    return couverts[n()];
  }
};

/// The smallest number of n digits.
std::string le_plus_petit(std::size_t n) {
  std::string chiffres(n, '0');
  chiffres.front() = '1';
  return chiffres;
}

/// The numbers of the range, digit count by digit count.
void parcourir(Commun& commun) {
  const std::string debut = chiffres_de(commun.recherche.debut);
  const std::string fin = chiffres_de(commun.recherche.fin);
  for (std::size_t n = debut.size(); n <= fin.size(); ++n) {
    const std::string de = n == debut.size() ? debut : le_plus_petit(n);
    const std::string a = n == fin.size() ? fin : std::string(n, '9');
    if (n <= Petits::chiffres_max) {
      Parcours<Petits>(commun, de, a).parcourir();
    } else {
      Parcours<Grands>(commun, de, a).parcourir();
    }
  }
}

/// How far primality is looked up. Sieving a number costs a thousandth of testing one; and a number
/// of the range asks for one piece of each length. From a tenth of this to ten times as much the
/// searches of a million numbers take the same time.
std::uint64_t limite_des_decades(const Recherche& recherche) {
  constexpr std::uint64_t plus_grande = std::uint64_t{1} << 30;  // 36 MB
  constexpr long par_nombre = 100;
  const NTL::ZZ largeur = recherche.fin - recherche.debut + 1;
  const NTL::ZZ limite = std::min(par_nombre * largeur, recherche.fin);
  return NTL::NumBits(limite) > 30 ? plus_grande : en_entier64(limite);
}

/// Notes a range that holds a prime below 2^66 and no number above; false if it is none. The
/// largest prime P obliges to its root, which is enough for all that is not above P: a composite
/// has a factor below its root. A piece above P is a number of the range itself.
bool noter_par_le_plus_grand_premier(Dette& dette, const Recherche& recherche) {
  if (NTL::NumBits(recherche.fin) > bits_borne_exacte) return false;
  NTL::ZZ P = recherche.fin;
  while (P >= recherche.debut && !est_premier(P)) --P;
  if (P < recherche.debut) return false;
  for (NTL::ZZ N = P; N <= recherche.fin; ++N) noter_division(dette, N);
  return true;
}

}  // namespace

std::uint64_t chercher_concatenations(const Recherche& recherche, const Gardes& gardes,
                                      Dette& dette, const Suivi& suivi) {
  if (recherche.debut < 1 || recherche.debut > recherche.fin ||
      chiffres_de(recherche.fin).size() > Recherche::chiffres_max) {
    throw std::invalid_argument("chercher_concatenations");
  }
  Dette nouvelle = dette;
  DetteMorceaux dette_morceaux(nouvelle);
  const bool notee = noter_par_le_plus_grand_premier(nouvelle, recherche);
  const Decades decades(limite_des_decades(recherche), suivi);
  Commun commun{recherche, gardes, decades, notee ? nullptr : &dette_morceaux, suivi};
  commun.dizaines_en_tout = NTL::conv<double>(recherche.fin / 10 - recherche.debut / 10 + 1);
  parcourir(commun);
  dette = nouvelle;
  return commun.retenus;
}

}  // namespace premiers
