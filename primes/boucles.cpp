// SPDX-License-Identifier: MIT
// One line for each loop; a loop that is missing here is missing from the tests.
#include "primes/boucles.h"

#include "primes/arithmetique/bits.h"
#include "primes/compte/faciles.h"
#include "primes/compte/lot.h"
#include "primes/compte/p2.h"
#include "primes/compte/segment.h"
#include "primes/crible/marche.h"
#include "primes/crible/precrible.h"
#include "primes/crible/touches.h"
#include "primes/facteurs/facteurs128.h"
#include "primes/facteurs/facteurs_longs.h"
#include "primes/facteurs/huit.h"
#include "primes/facteurs/restes.h"
#include "primes/quadratique/seaux.h"
#include "primes/quadratique/vecteurs.h"

namespace premiers {

namespace {

template <class F>
Boucle decrire(std::string_view nom, Versions<F> versions) {
  Boucle b{nom, {}, choisir(versions).besoin};
  for (const Version<F>& v : versions) b.versions.push_back(v.besoin);
  return b;
}

}  // namespace

std::vector<Boucle> boucles() {
  return {decrire("place_du_bit", versions_de_place_du_bit()),
          decrire("compter_par_ligne", versions_de_compter_par_ligne()),
          decrire("compter_bits", versions_de_compter_bits()),
          decrire("touches", crible::versions_de_touches()),
          decrire("multiples", crible::versions_de_multiples()),
          decrire("marcher", crible::versions_de_marcher()),
          decrire("precribler", crible::versions_de_precribler()),
          decrire("segment", compte::SegmentCompte::versions_des_noyaux()),
          decrire("lot", compte::versions_du_lot()),
          decrire("feuilles_faciles", compte::versions_de_feuilles_faciles()),
          decrire("compte_p2", compte::versions_de_compte_p2()),
          decrire("vecteurs", quadratique::versions_des_vecteurs()),
          decrire("restes", facteurs::versions_de_restes()),
          decrire("seaux", quadratique::versions_des_seaux()),
          decrire("facteur_ecm", facteurs::versions_de_facteur_ecm()),
          decrire("facteur_ecm_long", facteurs::versions_de_facteur_ecm_long()),
          decrire("huit_courbes", facteurs::ecm::Huit::versions_des_noyaux())};
}

}  // namespace premiers
