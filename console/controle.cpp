// SPDX-License-Identifier: MIT
// The grammar of each mode: what a word says, if it is one (controle.h has the table). Then the
// question itself, which is a loop around them.
#include "console/controle.h"

#include <string>
#include <utility>

#include "state/enroule.h"

namespace premiers {

namespace {

/// A non-empty run of digits that does not begin with 0.
bool chiffres_sans_zero_en_tete(std::string_view mot) {
  if (mot.empty() || mot.front() == '0') return false;
  return mot.find_first_not_of("0123456789") == std::string_view::npos;
}

/// "0", or digits without a leading zero, perhaps after one of the `signes`.
bool est_nombre(std::string_view mot, std::string_view signes) {
  if (mot == "0") return true;
  if (!mot.empty() && signes.find(mot.front()) != std::string_view::npos) mot.remove_prefix(1);
  return chiffres_sans_zero_en_tete(mot);
}

/// The value of an accepted number, modulo 2^64.
std::int64_t valeur_enroulee(std::string_view mot) {
  std::uint64_t valeur = 0;
  for (const char c : mot) {
    if (c == '+' || c == '-') continue;
    valeur = valeur * 10 + static_cast<std::uint64_t>(*valtest(c));
  }
  return enroule(mot.front() == '-' ? 0 - valeur : valeur);
}

/// What a word says as an answer; nothing if it is none.
using Lue = std::optional<Reponse>;

Lue lire_chiffre(std::string_view mot, char de, char a) {
  if (mot.size() != 1 || mot.front() < de || mot.front() > a) return std::nullopt;
  return Reponse{.valeur2 = *valtest(mot.front())};
}

Lue lire_nombre(std::string_view mot, bool xn) {
  if (!est_nombre(mot, "+")) return std::nullopt;
  const std::int64_t valeur = valeur_enroulee(mot);
  if (xn && valeur == 0) return std::nullopt;
  return Reponse{.valeur = valeur};
}

Lue lire_grand_nombre(std::string_view mot, bool xn) {
  if (!est_nombre(mot, "+")) return std::nullopt;
  if (mot.front() == '+') mot.remove_prefix(1);
  Reponse lue{.valeur0 = NTL::conv<NTL::ZZ>(std::string(mot).c_str())};
  if (xn && NTL::IsZero(lue.valeur0)) return std::nullopt;
  return lue;
}

Lue lire_nombre_signe(std::string_view mot) {
  if (!est_nombre(mot, "+-")) return std::nullopt;
  return Reponse{.valeur = valeur_enroulee(mot)};
}

/// "*" alone is a command once more than 2 and 3 are known. One leading "=" is noted and taken
/// off, whatever follows it.
Lue lire_commande(Etat& etat, std::string_view mot) {
  if (mot == "*" && etat.Nprem.np() > 2) return Reponse{.voir = true};
  if (mot.front() == '=') {
    etat.un = true;
    mot.remove_prefix(1);
  }
  return lire_nombre_signe(mot);
}

Lue lire_reponse(Etat& etat, Cas cas, std::string_view mot, bool xn) {
  switch (cas) {
    case Cas::oui_non:
      return lire_chiffre(mot, '0', '1');
    case Cas::un_deux:
      return lire_chiffre(mot, '1', '2');
    case Cas::zero_a_deux:
      return lire_chiffre(mot, '0', '2');
    case Cas::menu_principal:
    case Cas::menu_consultation:
      return lire_chiffre(mot, '0', '5');
    case Cas::menu_concatenation:
      return lire_chiffre(mot, '0', '3');
    case Cas::nombre:
    case Cas::borne:
      return lire_nombre(mot, xn);
    case Cas::nombre_signe:
      return lire_nombre_signe(mot);
    case Cas::commande:
      return lire_commande(etat, mot);
    case Cas::grand_nombre:
      return lire_grand_nombre(mot, xn);
  }
  __builtin_unreachable();
}

}  // namespace

std::optional<int> valtest(char caract1) {
  if (caract1 >= '0' && caract1 <= '9') return caract1 - '0';
  if (caract1 == '+') return 1;
  if (caract1 == '-') return -1;
  return std::nullopt;
}

Reponse controle(Session& s, Cas cas, std::string_view chaine, bool xn) {
  s.entree.oublier_fin();
  s.sortie.vider_si_tard();
  int fins = 0;
  for (;;) {
    s.sortie << chaine;
    const Entree::Lecture lecture = s.entree.lire_mot(s.sortie);
    if (lecture == Entree::Lecture::fin) s.monde.fin_entree(fins++);
    if (lecture != Entree::Lecture::mot) continue;
    if (Lue lue = lire_reponse(s.etat, cas, s.entree.mot(), xn)) return *std::move(lue);
  }
}

int demander_choix(Session& s, Cas cas, std::string_view chaine) {
  return controle(s, cas, chaine).valeur2;
}

std::int64_t demander_nombre(Session& s, Cas cas, std::string_view chaine) {
  return controle(s, cas, chaine, true).valeur;
}

NTL::ZZ demander_grand_nombre(Session& s, std::string_view chaine) {
  return controle(s, Cas::grand_nombre, chaine, true).valeur0;
}

}  // namespace premiers
