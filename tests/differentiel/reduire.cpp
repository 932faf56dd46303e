// SPDX-License-Identifier: MIT
#include "tests/differentiel/reduire.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace differentiel {

namespace {

using Mots = std::vector<std::string>;
using Echoue = std::function<bool(const std::string&)>;

bool blanc(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

/// The words, each with the blanks before it.
Mots couper(const std::string& session) {
  Mots mots(1);
  for (const char c : session) {
    if (blanc(c) && !mots.back().empty() && !blanc(mots.back().back())) mots.emplace_back();
    mots.back() += c;
  }
  return mots;
}

std::string coller(const Mots& mots) {
  std::string session;
  for (const std::string& mot : mots) session += mot;
  return session;
}

/// One word a line, without any other blank.
Mots une_par_ligne(Mots mots) {
  for (std::string& mot : mots) {
    mot.erase(std::remove_if(mot.begin(), mot.end(), blanc), mot.end());
    mot += '\n';
  }
  return mots;
}

/// Leaves out every run of `n` words that the failure can do without.
bool omettre(Mots& mots, std::size_t n, const Echoue& echoue) {
  bool omis = false;
  for (std::size_t debut = 0; debut + n <= mots.size();) {
    Mots essai = mots;
    const auto ici = essai.begin() + static_cast<std::ptrdiff_t>(debut);
    essai.erase(ici, ici + static_cast<std::ptrdiff_t>(n));
    if (echoue(coller(essai))) {
      mots = essai;
      omis = true;
    } else {
      ++debut;
    }
  }
  return omis;
}

/// Leaves out characters of one word, half of it, a quarter ... down to a hundredth or one; never
/// its last, the line break.
bool raccourcir(Mots& mots, std::size_t i, const Echoue& echoue) {
  bool raccourci = false;
  for (std::size_t n = mots[i].size() / 2; n > mots[i].size() / 100; n /= 2) {
    for (std::size_t debut = 0; debut + n < mots[i].size();) {
      Mots essai = mots;
      essai[i].erase(debut, n);
      if (echoue(coller(essai))) {
        mots = essai;
        raccourci = true;
      } else {
        debut += n;
      }
    }
  }
  return raccourci;
}

}  // namespace

std::string reduire(const std::string& session, const Echoue& echoue) {
  Mots mots = couper(session);
  const Mots lignes = une_par_ligne(mots);
  if (echoue(coller(lignes))) mots = lignes;
  bool encore = true;
  while (encore) {
    encore = false;
    for (std::size_t n = mots.size(); n > 0; n /= 2) {
      if (omettre(mots, n, echoue)) encore = true;
    }
    for (std::size_t i = 0; i < mots.size(); ++i) {
      if (raccourcir(mots, i, echoue)) encore = true;
    }
  }
  return coller(mots);
}

}  // namespace differentiel
