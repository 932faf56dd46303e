// SPDX-License-Identifier: MIT
#include "console/controle.h"

#include <string>

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

bool accepte_chiffre(Etat& etat, std::string_view mot, char de, char a) {
  if (mot.size() != 1 || mot.front() < de || mot.front() > a) return false;
  etat.valeur2 = *valtest(mot.front());
  return true;
}

bool accepte_nombre(Etat& etat, std::string_view mot) {
  if (!est_nombre(mot, "+")) return false;
  etat.valeur = valeur_enroulee(mot);
  return !(etat.xn && etat.valeur == 0);
}

bool accepte_grand_nombre(Etat& etat, std::string_view mot) {
  if (!est_nombre(mot, "+")) return false;
  if (mot.front() == '+') mot.remove_prefix(1);
  NTL::conv(etat.valeur0, std::string(mot).c_str());
  return !(etat.xn && NTL::IsZero(etat.valeur0));
}

bool accepte_nombre_signe(Etat& etat, std::string_view mot) {
  if (!est_nombre(mot, "+-")) return false;
  etat.valeur = valeur_enroulee(mot);
  return true;
}

/// "*" alone is a command once more than 2 and 3 are known. One leading "=" is noted and taken
/// off, whatever follows it.
bool accepte_commande(Etat& etat, std::string_view mot) {
  if (mot == "*" && etat.Nprem.np() > 2) {
    etat.voir = true;
    return true;
  }
  if (mot.front() == '=') {
    etat.un = true;
    mot.remove_prefix(1);
  }
  return accepte_nombre_signe(etat, mot);
}

bool accepte(Etat& etat, Cas cas, std::string_view mot) {
  switch (cas) {
    case Cas::oui_non:
      return accepte_chiffre(etat, mot, '0', '1');
    case Cas::un_deux:
      return accepte_chiffre(etat, mot, '1', '2');
    case Cas::zero_a_deux:
      return accepte_chiffre(etat, mot, '0', '2');
    case Cas::menu_principal:
    case Cas::menu_consultation:
      return accepte_chiffre(etat, mot, '0', '5');
    case Cas::menu_concatenation:
      return accepte_chiffre(etat, mot, '0', '3');
    case Cas::nombre:
    case Cas::borne:
      return accepte_nombre(etat, mot);
    case Cas::nombre_signe:
      return accepte_nombre_signe(etat, mot);
    case Cas::commande:
      return accepte_commande(etat, mot);
    case Cas::grand_nombre:
      return accepte_grand_nombre(etat, mot);
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

void controle(Session& s, Cas cas, std::string_view chaine) {
  s.entree.oublier_fin();
  s.sortie.vider_si_tard();
  s.etat.voir = false;
  int fins = 0;
  for (;;) {
    s.sortie << chaine;
    const Entree::Lecture lecture = s.entree.lire_mot(s.sortie);
    if (lecture == Entree::Lecture::fin) s.monde.fin_entree(fins++);
    if (lecture == Entree::Lecture::mot && accepte(s.etat, cas, s.entree.mot())) return;
  }
}

int demander_choix(Session& s, Cas cas, std::string_view chaine) {
  controle(s, cas, chaine);
  return s.etat.valeur2;
}

std::int64_t demander_nombre(Session& s, Cas cas, std::string_view chaine) {
  s.etat.xn = true;
  controle(s, cas, chaine);
  s.etat.xn = false;
  return s.etat.valeur;
}

NTL::ZZ demander_grand_nombre(Session& s, std::string_view chaine) {
  s.etat.xn = true;
  controle(s, Cas::grand_nombre, chaine);
  s.etat.xn = false;
  return s.etat.valeur0;
}

}  // namespace premiers
