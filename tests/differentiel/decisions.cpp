// SPDX-License-Identifier: MIT
#include "tests/differentiel/decisions.h"

#include <algorithm>
#include <cmath>
#include <iostream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "app/menu.h"
#include "tests/differentiel/hasard.h"
#include "tests/differentiel/jouer.h"
#include "tests/differentiel/nombres.h"
#include "tests/reference/etat.h"
#include "tests/session_en_memoire.h"

namespace differentiel {

namespace {

/// From the main menu: the ranked listing, whose heading shows np, and the end.
const std::string fin = "2\n0\n0\n";

std::string decomposition(const std::string& N) { return "1\n" + N + "\n0\n" + fin; }
std::string listing(const std::string& debut, const std::string& jusqu) {
  return "3\n" + debut + "\n" + jusqu + "\n1\n" + fin;
}
std::string concatenation(const std::string& N) { return "4\n1\n" + N + "\n0\n0\n" + fin; }

/// The primes up to `limite` and the first beyond it, by a plain sieve, behind a slot 0.
std::vector<std::int64_t> cribler(std::int64_t limite) {
  const auto taille = static_cast<std::size_t>(limite + 1000);
  std::vector<bool> compose(taille);
  std::vector<std::int64_t> premiers{0, 2};
  for (std::size_t n = 3; n < taille; n += 2) {
    if (compose[n]) continue;
    premiers.push_back(static_cast<std::int64_t>(n));
    if (premiers.back() > limite) break;
    for (std::size_t m = n * n; m < taille; m += 2 * n) compose[m] = true;
  }
  return premiers;
}

/// The reference model with a table that is there from the start. It tries the primes in rank order
/// and would have added each one that was missing, so the last rank tried is how far a table that
/// holds 2 and 3 would have grown.
struct Modele {
  explicit Modele(std::int64_t limite) : e(clavier, ecran, [](int) { throw FinDeModele(); }) {
    e.Nprem = cribler(limite);
    e.np = static_cast<std::int64_t>(e.Nprem.size()) - 1;
  }

  std::int64_t np_decomposition(const NTL::ZZ& N) {
    clavier.clear();
    clavier.str(texte(N) + " 0 ");
    reference::decomp(e);
    return rang_atteint();
  }

  std::int64_t np_listing(std::int64_t debut, std::int64_t jusqu) {
    std::int64_t np = 2;
    for (std::int64_t n = std::max<std::int64_t>(debut, 5) | 1; n <= jusqu; n += 2) {
      e.S3 = n;
      reference::prem1(e);
      np = std::max(np, rang_atteint());
    }
    return np;
  }

  /// The rank of a prime of the table.
  std::int64_t rang(std::int64_t p) const {
    return std::lower_bound(e.Nprem.begin(), e.Nprem.end(), p) - e.Nprem.begin();
  }

  std::int64_t np_prem(const NTL::ZZ& S) {
    e.S = S;
    reference::prem(e);
    return rang_atteint();
  }

 private:
  struct FinDeModele {};

  std::int64_t rang_atteint() {
    ecran.str("");
    return std::max<std::int64_t>(2, e.k);
  }

  std::istringstream clavier;
  std::ostringstream ecran;
  reference::Etat e;
};

/// What the shipped program's table holds at the end of a session.
std::int64_t np_de(const std::string& session) {
  std::string ecran;
  premiers::Session s = premiers::session_en_memoire(
      session, ecran, [](int) { throw std::runtime_error("the session has ended"); });
  premiers::menu(s);
  return s.etat.Nprem.np();
}

/// 1 and a line if the two differ.
int verifier(const std::string& quoi, std::int64_t attendu, std::int64_t obtenu) {
  if (attendu == obtenu) return 0;
  std::cerr << "np after " << quoi << ": " << attendu << " expected, " << obtenu << " obtained\n";
  return 1;
}

int comparer(const std::string& quoi, const std::string& session) {
  if (meme_rendu(session)) return 0;
  std::cerr << "a fresh start, then " << quoi << ": the screens differ\n";
  return 1;
}

int comparer_decomposition(Modele& modele, Hasard& hasard, std::int64_t limite) {
  const NTL::ZZ N = decomposable(hasard, limite);
  const std::string quoi = texte(N);
  return verifier("the decomposition of " + quoi, modele.np_decomposition(N),
                  np_de(decomposition(quoi)));
}

/// An interval around a remarkable number; often one without any prime.
int comparer_listing(Modele& modele, Hasard& hasard, std::int64_t limite) {
  std::int64_t debut = remarquable(hasard, limite);
  std::int64_t jusqu = debut + hasard.etage(0, 200);
  if (hasard.une_fois_sur(3)) {
    debut = premier_apres(debut) + 1;
    jusqu = std::max(debut, premier_apres(debut) - hasard.entre(1, 4));
  }
  const std::string de = std::to_string(debut);
  const std::string a = std::to_string(jusqu);
  return verifier("the primes from " + de + " to " + a, modele.np_listing(debut, jusqu),
                  np_de(listing(de, a)));
}

/// The range search on one number: N is decided, then its pieces, those of the first digit only
/// where none of them is prime.
int comparer_prem(Modele& modele, Hasard& hasard, std::int64_t limite) {
  const std::int64_t N = remarquable(hasard, limite);
  const std::string quoi = std::to_string(N);
  std::int64_t np = modele.np_prem(NTL::ZZ(N));
  for (std::size_t debut = 0; debut < quoi.size(); ++debut) {
    bool commence = false;
    for (std::size_t n = 1; debut + n <= quoi.size(); ++n) {
      const std::int64_t morceau = std::stoll(quoi.substr(debut, n));
      np = std::max(np, modele.np_prem(NTL::ZZ(morceau)));
      commence = commence || est_premier(morceau);
    }
    if (debut == 0 && !commence) break;
  }
  return verifier("the search from " + quoi + " to " + quoi, np,
                  np_de("4\n2\n" + quoi + "\n" + quoi + "\n1\n0\n" + fin));
}

}  // namespace

int comparer_tous(std::int64_t jusqu) {
  int differences = 0;
  for (std::int64_t n = 1; n <= jusqu; ++n) {
    const std::string N = std::to_string(n);
    differences += comparer("the decomposition of " + N, decomposition(N));
    differences += comparer("the primes from " + N + " to " + N, listing(N, N));
    differences += comparer("the concatenation " + N, concatenation(N));
  }
  return differences;
}

int comparer_grands(std::uint64_t graine, int nombre) {
  Modele modele(3'300'000);
  Hasard hasard(graine);
  int differences = 0;
  for (int i = 0; i < nombre; ++i) {
    const std::int64_t limite = hasard.entre(1000, 3'000'000);
    differences += comparer_listing(modele, hasard, limite);
    differences += comparer_prem(modele, hasard, limite);
    // The model takes a root for each prime it tries here.
    differences += comparer_decomposition(modele, hasard, limite / 8);
  }
  return differences;
}

int comparer_arrondi() {
  const auto racine = [](std::int64_t n) {
    return static_cast<std::int64_t>(std::sqrt(static_cast<double>(n)));
  };
  std::int64_t q = premier_apres(std::int64_t{1} << 27U);
  while (racine(q * q - 2) != q || !est_premier(q * q - 2)) q = premier_apres(q);
  const std::int64_t S3 = q * q - 2;
  const std::string N = std::to_string(S3);
  Modele modele(q + 1);
  const std::int64_t rang_de_q = modele.rang(q);
  return verifier("the primes from " + N + " to " + N + " (model)", rang_de_q + 1,
                  modele.np_listing(S3, S3)) +
         verifier("the primes from " + N + " to " + N, rang_de_q + 1, np_de(listing(N, N))) +
         verifier("the decomposition of " + N + " (model)", rang_de_q,
                  modele.np_decomposition(NTL::ZZ(S3))) +
         verifier("the decomposition of " + N, rang_de_q, np_de(decomposition(N))) +
         verifier("the search from " + N + " to " + N + " (model)", rang_de_q,
                  modele.np_prem(NTL::ZZ(S3))) +
         verifier("the concatenation " + N, rang_de_q, np_de(concatenation(N)));
}

}  // namespace differentiel
