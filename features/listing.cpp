// SPDX-License-Identifier: MIT
// A header that is held back until there is a first entry; then blocks of a hundred.
#include "features/listing.h"

#include "console/entrees.h"
#include "console/suivre.h"

namespace premiers {

EnTete::EnTete(Session& s, std::string_view texte)
    : s_(s), texte_(texte), suivi_(suivre(s, calcul_des_premiers)) {}

void EnTete::imprimer() {
  if (imprime_) return;
  imprime_ = true;
  suivi_ = {};  // wipes its line
  s_.sortie << texte_;
  suivi_ = suivre(s_, calcul_des_premiers);
}

Place lister(Session& s, std::string_view en_tete, std::int64_t rang,
             rangs::SuiteDePremiers suite) {
  EnTete avant(s, en_tete);
  Place derniere{rang - 1, 0};
  for (;;) {
    const auto lot = suite.suivant(avant.suivi());
    avant.imprimer();
    if (lot.empty()) return derniere;
    EntreesRangees entrees(s.sortie);
    for (const std::uint64_t premier : lot) {
      entrees.ecrire_en_blocs(++derniere.rang, static_cast<std::int64_t>(premier));
    }
    derniere.premier = static_cast<std::int64_t>(lot.back());
  }
}

}  // namespace premiers
