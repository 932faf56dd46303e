// SPDX-License-Identifier: MIT
#include "tests/differentiel/constat.h"

#include <algorithm>
#include <iostream>
#include <sstream>
#include <string_view>

#include "tests/differentiel/jouer.h"
#include "tests/differentiel/reduire.h"

namespace differentiel {

namespace {

using std::chrono::milliseconds;
using Horloge = std::chrono::steady_clock;

/// So much more time than the whole session took, of the sides that came to an end, is enough for a
/// shortened one: that may be one that computes for days.
constexpr milliseconds supplement{500};

/// A character as one would write it in a program.
std::string caractere_visible(char c) {
  constexpr std::string_view hexa = "0123456789ABCDEF";
  if (c == '\n') return "\\n";
  if (c == '\t') return "\\t";
  if (c >= ' ' && c <= '~') return {c};
  const auto code = static_cast<unsigned char>(c);
  return {'\\', 'x', hexa[code / 16], hexa[code % 16]};
}

}  // namespace

std::string visible(std::string_view texte) {
  std::ostringstream v;
  for (std::size_t i = 0; i < texte.size();) {
    const std::size_t n = std::min(texte.find_first_not_of(texte[i], i), texte.size()) - i;
    const std::string c = caractere_visible(texte[i]);
    if (n > 40) {
      v << "<" << n << " times '" << c << "'>";
    } else {
      for (std::size_t fois = 0; fois < n; ++fois) v << c;
    }
    i += n;
  }
  return v.str();
}

namespace {

void raconter_rendus(const Rendu& obtenu, const Rendu& attendu) {
  const auto [a, b] = std::mismatch(obtenu.sortie.begin(), obtenu.sortie.end(),
                                    attendu.sortie.begin(), attendu.sortie.end());
  const auto ou = static_cast<std::size_t>(a - obtenu.sortie.begin());
  const std::size_t avant = ou < 120 ? ou : 120;
  std::cerr << "status: " << attendu.statut << " expected, " << obtenu.statut << " obtained\n"
            << "first difference at byte " << ou << " of " << attendu.sortie.size()
            << "; before: " << visible(attendu.sortie.substr(ou - avant, avant))
            << "\n  expected: " << visible(attendu.sortie.substr(ou, 160))
            << "\n  obtained: " << visible(obtenu.sortie.substr(ou, 160)) << "\n";
}

milliseconds depuis(Horloge::time_point debut) {
  return std::chrono::duration_cast<milliseconds>(Horloge::now() - debut);
}

/// First the reference model, then the program; each gives how it ended, within so much time.
Constat constater(const std::function<Fin()>& modele, const std::function<Fin()>& programme) {
  const auto debut = Horloge::now();
  Constat constat{modele()};
  constat.duree = depuis(debut);
  if (!constat.bon()) return constat;
  constat.premiers = programme();
  if (constat.premiers.comment != Fin::trop_long) constat.duree = depuis(debut);
  return constat;
}

// ---- In memory -----------------------------------------------------------------------------------

int jouer_le_modele(const std::string& session) {
  jouer_reference(session);
  return pareil;
}

int comparer(const std::string& session) { return meme_rendu(session) ? pareil : different; }

Constat constater_en_memoire(const std::string& session, milliseconds duree) {
  // The second child plays both sides: of the model it is known that it ends in time.
  return constater([&] { return isoler([&] { return jouer_le_modele(session); }, duree); },
                   [&] { return isoler([&] { return comparer(session); }, 2 * duree); });
}

void raconter_en_memoire(const std::string& session) {
  // In a child: what the program prints may have no end.
  const auto raconter = [&] {
    raconter_rendus(jouer_premiers(session), jouer_reference(session));
    return pareil;
  };
  isoler(raconter, duree_d_une_session);
}

// ---- As processes --------------------------------------------------------------------------------

Constat constater_en_processus(const Programmes& p, const std::string& session,
                               milliseconds duree) {
  Rendu attendu;
  const auto jouer = [&](const std::string& programme) {
    return jouer_programme(programme, session, p.alimentation, p.dossier, duree);
  };
  const auto modele = [&] {
    attendu = jouer(p.reference);
    return Fin{attendu.comment, pareil};
  };
  const auto programme = [&] {
    const Rendu obtenu = jouer(p.premiers);
    return Fin{obtenu.comment,
               obtenu.comment != Fin::statut || obtenu == attendu ? pareil : different};
  };
  return constater(modele, programme);
}

// ---- The report ----------------------------------------------------------------------------------

std::string en_mots(const Constat& constat) {
  const bool modele = constat.reference != Fin{Fin::statut, pareil};
  const Fin& fin = modele ? constat.reference : constat.premiers;
  const std::string qui = modele ? "the reference model " : "the program ";
  if (fin.comment == Fin::statut) return "the screens differ";
  return qui + (fin.comment == Fin::mort ? "died" : "does not come to an end");
}

}  // namespace

Jeu jeu_en_memoire() { return {constater_en_memoire, raconter_en_memoire, ""}; }

Jeu jeu_en_processus(const Programmes& p) {
  const auto constater = [p](const std::string& session, milliseconds duree) {
    return constater_en_processus(p, session, duree);
  };
  const auto raconter = [p](const std::string& session) {
    const auto jouer = [&](const std::string& programme) {
      return jouer_programme(programme, session, p.alimentation, p.dossier, duree_d_une_session);
    };
    raconter_rendus(jouer(p.premiers), jouer(p.reference));
  };
  return {constater, raconter, "0\n0\n0\n0\n0\n0\n0\n0\n"};
}

void rapporter(const std::string& quoi, const std::string& session, const Jeu& jeu) {
  const Constat constat = jeu.constater(session, duree_d_une_session);
  std::cerr << "\n" << quoi << ": " << en_mots(constat) << "\n";
  const auto echoue = [&](const std::string& essai) {
    return jeu.constater(essai + jeu.sortir, constat.duree + supplement) == constat;
  };
  // Where not even the whole one fails again, it is reported as it is.
  const std::string courte = echoue(session) ? reduire(session, echoue) + jeu.sortir : session;
  std::cerr << "shortest form: printf '" << visible(courte) << "'\n";
  if (constat.premiers.comment == Fin::statut) jeu.raconter(courte);
}

}  // namespace differentiel
