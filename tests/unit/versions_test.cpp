// SPDX-License-Identifier: MIT
// Every version of every loop that this machine can run, not only the one it takes, against a plain
// loop written here, at the sizes and alignments around the vectors' own. The last test says which
// paths ran, and fails if one was left out that could have.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstdio>
#include <initializer_list>
#include <iterator>
#include <memory>
#include <random>
#include <span>
#include <string_view>
#include <vector>

#include "primes/arithmetique/bits.h"
#include "primes/arithmetique/racines.h"
#include "primes/arithmetique/roue.h"
#include "primes/arithmetique/zz.h"
#include "primes/compte/faciles.h"
#include "primes/compte/lot.h"
#include "primes/compte/p2.h"
#include "primes/compte/roue2310.h"
#include "primes/compte/segment.h"
#include "primes/compte/tables.h"
#include "primes/crible/marche.h"
#include "primes/crible/precrible.h"
#include "primes/crible/touches.h"
#include "primes/facteurs/ecm_grand.h"
#include "primes/facteurs/facteurs128.h"
#include "primes/facteurs/facteurs_longs.h"
#include "primes/facteurs/restes.h"
#include "primes/quadratique/seaux.h"
#include "primes/quadratique/vecteurs.h"
#include "tests/chemins.h"

namespace premiers {
namespace {

using Octets = std::vector<std::uint8_t>;
using Nombres = std::vector<std::uint32_t>;

chemins::Comparees& comparees() {
  static chemins::Comparees c;
  return c;
}

/// Calls comparer(loop) for every version that this machine can run, allowed by the build or not.
template <class F, class Comparer>
void pour_chaque_version(std::string_view nom, Versions<F> versions, Comparer comparer) {
  for (const Version<F>& v : versions) {
    if (!chemins::essayable(v.besoin)) continue;
    SCOPED_TRACE(std::string(nom) + ", " + nommer(v.besoin));
    comparer(v.boucle);
    comparees()[std::string(nom)].insert(v.besoin);
  }
}

Octets octets_au_hasard(std::size_t n, unsigned graine, bool rares = false) {
  std::mt19937 hasard(graine);
  Octets r(n);
  for (std::uint8_t& o : r) o = static_cast<std::uint8_t>(rares ? hasard() & hasard() : hasard());
  return r;
}

// ---- Flags -----------------------------------------------------------------------------------

bool bit(const std::uint8_t* octets, std::size_t i) { return (octets[i / 8] >> (i % 8) & 1U) != 0; }

std::uint32_t compter_un_a_un(const std::uint8_t* octets, std::size_t n) {
  std::uint32_t nombre = 0;
  for (std::size_t i = 0; i < 8 * n; ++i) nombre += bit(octets, i) ? 1 : 0;
  return nombre;
}

TEST(Versions, CountBits) {
  const Octets octets = octets_au_hasard(300, 1);
  pour_chaque_version("compter_bits", versions_de_compter_bits(), [&](auto compter) {
    for (std::size_t debut = 0; debut <= 9; ++debut) {
      for (std::size_t n = 0; n <= 260; ++n) {
        ASSERT_EQ(compter({octets.data() + debut, n}), compter_un_a_un(octets.data() + debut, n))
            << n << " at " << debut;
      }
    }
  });
}

TEST(Versions, CountLineByLine) {
  const Octets octets = octets_au_hasard(64 * 20 + 9, 2);
  pour_chaque_version("compter_par_ligne", versions_de_compter_par_ligne(), [&](auto compter) {
    for (std::size_t debut = 0; debut <= 9; ++debut) {
      for (std::size_t lignes = 0; lignes <= 20; ++lignes) {
        std::vector<std::uint32_t> avant(lignes);
        const std::uint8_t* o = octets.data() + debut;
        ASSERT_EQ(compter(o, avant), compter_un_a_un(o, 64 * lignes));
        for (std::size_t l = 0; l < lignes; ++l) {
          ASSERT_EQ(avant[l], compter_un_a_un(o, 64 * l)) << l << " at " << debut;
        }
      }
    }
  });
}

TEST(Versions, FindTheNthBit) {
  pour_chaque_version("place_du_bit", versions_de_place_du_bit(), [](auto placer) {
    for (const bool rares : {false, true}) {
      const Octets octets = octets_au_hasard(8 * 20 + 9, 3, rares);
      for (std::size_t debut = 0; debut <= 9; ++debut) {
        std::uint32_t n = 0;
        for (std::size_t i = 0; i < std::size_t{64} * 20; ++i) {
          if (!bit(octets.data() + debut, i)) continue;
          const PlaceDuBit place = placer(octets.data() + debut, ++n);
          ASSERT_EQ(place.mot, i / 64) << n;
          ASSERT_EQ(static_cast<std::size_t>(std::countr_zero(place.reste)), i % 64) << n;
          ASSERT_EQ(place.reste,
                    lire_mot(octets.data() + debut + 8 * place.mot) >> (i % 64) << (i % 64));
        }
      }
    }
  });
}

// ---- The sieve -------------------------------------------------------------------------------

TEST(Versions, FilterLargePrimes) {
  constexpr std::size_t n_octets = 100;
  constexpr std::uint32_t garde = 0xFFFFFFFF;
  const Octets octets = octets_au_hasard(n_octets, 4);
  pour_chaque_version("touches", crible::versions_de_touches(), [&](auto filtrer) {
    std::size_t superflus = 0;
    std::size_t candidats = 0;
    for (const std::uint64_t octet_initial : {20'000ULL, 33'333'333ULL, 143'165'000ULL}) {
      for (const std::uint64_t fenetre : {1'000'000'000'000ULL, 9'223'372'036'854'000'000ULL}) {
        for (std::size_t n = 0; n <= n_octets; ++n) {
          const std::size_t debut = (n_octets - n) % 9;
          const std::span<const std::uint8_t> vus(octets.data() + debut, n - std::min(n, debut));
          const crible::Fenetre w{fenetre + n, fenetre + n + 20'000'000};
          Nombres gardes(8 * vus.size() + 17, garde);
          const std::size_t combien = filtrer(vus, octet_initial, w, gardes.data());
          ASSERT_EQ(gardes.back(), garde) << "wrote behind the room that it asks for";
          std::size_t i = 0;
          pour_chaque_premier(vus, octet_initial, [&](std::uint64_t p) {
            const bool touche = ((w.fin - 1) / p + 1) / 2 != ((w.debut - 1) / p + 1) / 2;
            const bool gardee = i < combien && gardes[i] == p;
            ASSERT_TRUE(gardee || !touche) << p << " has an odd multiple after " << w.debut;
            i += gardee ? 1 : 0;
            ++candidats;
            superflus += gardee && !touche ? 1 : 0;
          });
          ASSERT_EQ(i, combien) << "something that was no candidate, or out of order";
        }
      }
    }
    EXPECT_LE(superflus, candidats / 1000);
  });
}

// The order is not part of the answer.
TEST(Versions, MultiplesOfLargeSievingPrimes) {
  std::mt19937_64 hasard(5);
  pour_chaque_version("multiples", crible::versions_de_multiples(), [&](auto lister) {
    for (const std::uint64_t debut : {1'099'511'627'790ULL, 9'223'372'036'000'000'020ULL}) {
      Nombres candidats;
      for (std::size_t n = 0; n <= 40; ++n) {
        const crible::Fenetre w{debut / 30 * 30, debut / 30 * 30 + 600'000'000};
        Nombres trouves(candidats.size() * 700 + 8);
        trouves.resize(lister(candidats, w, trouves.data()));
        Nombres attendus;
        for (const std::uint64_t p : candidats) {
          for (std::uint64_t q = w.debut / p + 1; q * p < w.fin; ++q) {
            if (q % 2 == 0 || q % 3 == 0 || q % 5 == 0 || q % 7 == 0) continue;
            const std::uint64_t m = q * p - w.debut;
            attendus.push_back(static_cast<std::uint32_t>(m / 30 * 8 + indice_suivant[m % 30]));
          }
        }
        std::sort(trouves.begin(), trouves.end());
        std::sort(attendus.begin(), attendus.end());
        ASSERT_EQ(trouves, attendus) << n << " candidates at " << w.debut;
        const std::uint64_t k = (1U << 20) + hasard() % 100'000'000;
        candidats.push_back(static_cast<std::uint32_t>(30 * k + residus[k % 8]));
      }
    }
  });
}

/// A sieving prime (any number prime to 30) with a multiple: p times q, in byte `place` of the segment.
struct Marcheur {
  std::uint64_t p, q, place;
};

/// Notes what p passes up to byte `taille`, as `marcher` should, and goes on.
void marcher_lentement(Marcheur& x, std::uint64_t taille, Nombres& passes) {
  while (x.place < taille) {
    const unsigned reste = 0xFF & ~(1U << indice_suivant[x.p * x.q % 30]);
    passes.push_back(static_cast<std::uint32_t>(x.place << crible::Marcheurs::ou_octet | reste));
    const std::uint64_t avant = x.p * x.q / 30;
    do ++x.q;
    while (x.q % 2 == 0 || x.q % 3 == 0 || x.q % 5 == 0 || x.q % 7 == 0);
    x.place += x.p * x.q / 30 - avant;
  }
  x.place -= taille;
}

/// `n` of them with residue r, from 2^17 up to 2^24, at every cofactor in turn.
std::vector<Marcheur> marcheurs_au_hasard(std::size_t n, std::size_t r, std::mt19937_64& hasard) {
  std::vector<Marcheur> liste(n);
  for (std::size_t i = 0; i < n; ++i) {
    const std::uint64_t k = i == 0 ? (1U << 24) / 30 - 1 : 4370 + hasard() % (5000U << i % 7);
    liste[i] = {30 * k + residus[r], crible::roue_210::valeurs[i % 48], hasard() % (10 * k)};
  }
  return liste;
}

void comparer_la_marche(decltype(&crible::marcher) marcher_ici, std::size_t n, std::size_t r,
                        std::uint32_t taille, std::mt19937_64& hasard) {
  auto liste = marcheurs_au_hasard(n, r, hasard);
  const auto bloc = std::make_unique<crible::Marcheurs>();
  for (std::size_t i = 0; i < n; ++i) {
    bloc->etat[i] = static_cast<std::uint32_t>(liste[i].p / 30 << crible::Marcheurs::ou_k | i % 48);
    bloc->place[i] = static_cast<std::uint32_t>(liste[i].place << crible::Marcheurs::ou_octet);
  }
  for (int segment = 0; segment < 3; ++segment) {
    Nombres attendus;
    for (Marcheur& x : liste) marcher_lentement(x, taille, attendus);
    Nombres passes(attendus.size() + 17, 0xFFFFFFFF);
    const std::size_t combien = marcher_ici(*bloc, n, r, taille, passes.data());
    ASSERT_EQ(passes.back(), 0xFFFFFFFF) << "wrote behind the room that it asks for";
    passes.resize(combien);
    std::sort(passes.begin(), passes.end());
    std::sort(attendus.begin(), attendus.end());
    ASSERT_EQ(passes, attendus) << n << " of residue " << r << ", " << taille << " bytes";
    for (std::size_t i = 0; i < n; ++i) {
      ASSERT_EQ(bloc->place[i], liste[i].place << crible::Marcheurs::ou_octet) << i;
      ASSERT_EQ(bloc->etat[i] >> crible::Marcheurs::ou_k, liste[i].p / 30) << i;
    }
  }
}

// The order is not part of the answer.
TEST(Versions, WalkFromMultipleToMultiple) {
  std::mt19937_64 hasard(6);
  pour_chaque_version("marcher", crible::versions_de_marcher(), [&](auto marcher_ici) {
    constexpr std::array<std::uint32_t, 4> tailles{1U << 19, (1U << 19) - 1, 1000, 1};
    for (std::size_t r = 0; r < 8; ++r) {
      // Each number of primes meets each size, with two of the residues; full rows meet the long sizes.
      for (std::size_t n = 0; n <= 33; ++n) {
        comparer_la_marche(marcher_ici, n, r, tailles[(n + r) % 4], hasard);
      }
      for (const std::size_t n : {crible::Marcheurs::places - 1, crible::Marcheurs::places}) {
        comparer_la_marche(marcher_ici, n, r, tailles[(n + r) % 2], hasard);
      }
    }
  });
}

bool a_un_petit_facteur(std::uint64_t n) {
  for (std::uint64_t p = 7; p <= crible::dernier_precrible; p += 2) {
    if (n % p == 0 && n != p) return true;
  }
  return n == 1;
}

// A prime below 163 keeps its flag, a product of such does not: divisors that are not prime do not
// matter.
TEST(Versions, Presieve) {
  constexpr std::size_t garde = 64;
  pour_chaque_version("precribler", crible::versions_de_precribler(), [](auto precribler_ici) {
    // The start, and where a pattern ends: the periods of 41 * 163 and 7 * 23 * 37 bytes.
    for (const std::uint64_t octet_initial : {0ULL, 1ULL, 41ULL * 163 - 70, 7ULL * 23 * 37 - 33,
                                              1'000'000'007ULL, 307'445'734'561'825'000ULL}) {
      for (const std::size_t n : std::initializer_list<std::size_t>{
               0, 1, 2, 7, 8, 15, 16, 31, 32, 33, 63, 64, 65, 127, 128, 129, 200}) {
        for (const std::size_t debut :
             std::initializer_list<std::size_t>{0, 1, 15, 16, 31, 32, 33}) {
          Octets octets(debut + n + garde, 0xA5);
          precribler_ici({octets.data() + debut, n}, octet_initial);
          for (std::size_t i = 0; i < octets.size(); ++i) {
            if (i < debut || i >= debut + n) {
              ASSERT_EQ(octets[i], 0xA5) << "wrote outside";
              continue;
            }
            if (debut % 16 != 0 && n < 127) continue;  // the flags do not move with the place
            for (std::size_t b = 0; b < 8; ++b) {
              const std::uint64_t entier = 30 * (octet_initial + i - debut) + residus[b];
              ASSERT_EQ(bit(&octets[i], b), !a_un_petit_facteur(entier)) << entier;
            }
          }
        }
      }
    }
  });
}

// ---- The count -------------------------------------------------------------------------------

/// The numbers of a segment that are left, as the test keeps them: one by one.
struct SegmentNaif {
  std::vector<std::uint64_t> restent;  // counted from the beginning of the segment
  std::uint64_t compter(std::uint64_t jusqu_a) const {
    return static_cast<std::uint64_t>(std::ranges::upper_bound(restent, jusqu_a) - restent.begin());
  }
};

void comparer_le_segment(const compte::SegmentCompte::Noyaux& noyaux, std::size_t taille,
                         std::uint64_t octet) {
  constexpr std::array<std::uint32_t, 2> facteurs_a{7, 11};
  constexpr std::array<std::uint32_t, 2> facteurs_b{13, 17};
  constexpr std::array<std::uint32_t, 1> facteurs_c{23};
  compte::SegmentCompte s(taille);
  s.noyaux = noyaux;
  s.octet = octet;
  s.commencer(compte::Motif(facteurs_a), compte::Motif(facteurs_b));
  s.poser(compte::Motif(facteurs_c));
  SegmentNaif naif;
  for (std::size_t i = 0; i < 8 * taille; ++i) {
    const std::uint64_t ici = 30 * (i / 8) + residus[i % 8];
    const bool reste = std::ranges::none_of(std::array{7, 11, 13, 17, 23}, [&](int p) {
      return (30 * octet + ici) % static_cast<std::uint64_t>(p) == 0;
    });
    if (reste) naif.restent.push_back(ici);
  }
  const std::uint64_t tous = naif.compter(30 * taille);
  ASSERT_EQ(s.total, tous);
  for (std::size_t b = 0; b < s.blocs.size(); ++b) {
    const std::uint64_t avant = b == 0 ? 0 : naif.compter(1920 * b - 1);
    ASSERT_EQ(s.blocs[b], naif.compter(1920 * (b + 1) - 1) - avant) << b;
    // Of each block its words, from end to end, one question alone and four with their signs.
    for (std::uint32_t n = 0; n < 1920; n += n % 240 < 238 ? 119 : 1) {
      const auto q = static_cast<compte::Question>(2 * (1920 * b + n));
      const std::uint64_t jusque = naif.compter(1920 * b + n) - avant;
      ASSERT_EQ(s.noyaux.compter(s, std::array{q}), jusque) << b << ' ' << n;
      ASSERT_EQ(s.noyaux.compter(s, std::array{q, q + 1, q + 1, q + 1}), 0 - 2 * jusque);
    }
  }
  ASSERT_EQ(s.noyaux.compter(s, {}), 0U);
  ASSERT_EQ(s.noyaux.compter_avant(s, {}), 0U);
}

// The blocks before that of a question, at both ends of each block, and so many questions at once.
void comparer_les_blocs_avant(const compte::SegmentCompte::Noyaux& noyaux) {
  constexpr std::size_t blocs = 65'536;
  constexpr compte::Question par_bloc = 2 * 1920;
  compte::SegmentCompte s(blocs * compte::SegmentCompte::octets_par_bloc);
  std::mt19937 hasard(8);
  for (std::uint32_t& a : s.avant) a = static_cast<std::uint32_t>(hasard());
  std::vector<compte::Question> questions;
  std::uint64_t somme = 0;
  for (std::uint32_t b = 0; b < blocs; ++b) {
    for (const compte::Question q :
         {b * par_bloc, b * par_bloc + 1, (b + 1) * par_bloc - 2, (b + 1) * par_bloc - 1}) {
      questions.push_back(q);
      somme += q % 2 == 0 ? s.avant[b] : 0 - std::uint64_t{s.avant[b]};
      if (questions.size() != hasard() % 40) continue;
      ASSERT_EQ(noyaux.compter_avant(s, questions), somme) << q;
      questions.clear();
      somme = 0;
    }
  }
  ASSERT_EQ(noyaux.compter_avant(s, questions), somme);
}

TEST(Versions, CountingSieve) {
  pour_chaque_version("segment", compte::SegmentCompte::versions_des_noyaux(),
                      [](const auto& noyaux) {
                        for (const std::size_t taille :
                             std::initializer_list<std::size_t>{64, 128, 192, 512, 576}) {
                          for (const std::uint64_t octet : {0ULL, 64ULL, 1'000'064ULL}) {
                            comparer_le_segment(noyaux, taille, octet);
                          }
                        }
                        comparer_les_blocs_avant(noyaux);
                      });
}

/// The integers coprime to 2310 one by one, as often as the test needs them.
const std::vector<std::uint32_t>& roue() {
  static const std::vector<std::uint32_t> liste = [] {
    std::vector<std::uint32_t> l;
    for (std::uint32_t n = 1; l.size() < 2000; ++n) {
      if (n % 2 != 0 && n % 3 != 0 && n % 5 != 0 && n % 7 != 0 && n % 11 != 0) l.push_back(n);
    }
    return l;
  }();
  return liste;
}

void comparer_ce_qui_est_retenu(const compte::BouclesDuLot& boucles,
                                const std::vector<std::uint16_t>& table, std::uint32_t bas,
                                std::uint32_t haut, std::uint32_t q) {
  Nombres attendus;
  for (std::uint32_t i = haut; i-- > bas;) {
    if (table[i] > q) attendus.push_back(roue()[i] - 1 + table[i] % 2);
  }
  Nombres m(compte::Lot::taille + compte::Lot::marge + 1, 77);
  const std::size_t nombre = boucles.retenir(table.data(), haut, bas, q, m.data());
  ASSERT_EQ(m.back(), 77U) << "wrote behind the room that it has";
  m.resize(nombre);
  ASSERT_EQ(m, attendus) << bas << " to " << haut << ", q " << q;
}

void comparer_les_quotients(const compte::BouclesDuLot& boucles, std::uint64_t w,
                            const Nombres& m) {
  const std::uint64_t debut = w / *std::max_element(m.begin(), m.end()) / 30 * 30;
  Nombres questions(m.size() + compte::Lot::marge + 1, 77);
  Nombres lot = m;
  lot.resize(m.size() + compte::Lot::marge);
  boucles.diviser(w, debut, lot.data(), m.size(), questions.data());
  ASSERT_EQ(questions.back(), 77U) << "wrote behind the room that it has";
  for (std::size_t k = 0; k < m.size(); ++k) {
    const std::uint64_t question = 2 * (w / (m[k] | 1U) - debut) + m[k] % 2;
    ASSERT_EQ(questions[k], static_cast<std::uint32_t>(question)) << w << " / " << (m[k] | 1U);
  }
}

TEST(Versions, HardLeavesByTheLot) {
  std::mt19937_64 hasard(6);
  std::vector<std::uint16_t> table(2000);
  for (std::uint16_t& e : table) e = static_cast<std::uint16_t>(hasard() >> hasard() % 16);
  pour_chaque_version("lot", compte::versions_du_lot(), [&](const compte::BouclesDuLot& boucles) {
    for (std::uint32_t bas = 450; bas < 500; ++bas) {
      for (const std::uint32_t nombre :
           {0U, 1U, 15U, 16U, 17U, 31U, 33U, 480U, compte::Lot::taille}) {
        for (const std::uint32_t q : {0U, 13U, 1000U, 65'533U}) {
          comparer_ce_qui_est_retenu(boucles, table, bas, bas + nombre, q);
        }
      }
    }
    comparer_ce_qui_est_retenu(boucles, table, 0, 20, 13);
    comparer_ce_qui_est_retenu(boucles, table, 1999, 2000, 13);
    for (int bits = 30; bits <= 63; ++bits) {
      for (std::size_t n = 1; n <= 20; ++n) {
        Nombres m(n);
        for (std::uint32_t& x : m) {  // quotients up to 2^49
          x = static_cast<std::uint32_t>((std::uint64_t{1} << std::max(5, bits - 49)) +
                                         hasard() % 9000);
        }
        const std::uint64_t w = hasard() >> (64 - bits);
        comparer_les_quotients(boucles, w, m);
        for (const std::uint64_t a : {0U, 1U}) {  // at and below a multiple
          const std::uint64_t d = m[0] | 1U;
          if (w >= d) comparer_les_quotients(boucles, w / d * d - a, m);
        }
      }
    }
  });
}

// compte_test.cpp holds all versions of these two to their definition, for small x; here they are
// held to the plain version, where their windows are many.
TEST(Versions, EasyLeavesAndProductsOfTwo) {
  for (const std::uint64_t x : {20'000ULL, 10'000'000'019ULL, 200'000'000'000ULL}) {
    const std::uint64_t racine = racine_carree(x);
    const compte::Plan plan(x, racine / 4 < 100 ? racine : racine / 4, racine);
    const std::uint64_t faciles = compte::versions_de_feuilles_faciles().back().boucle(plan, {});
    const std::uint64_t p2 = compte::versions_de_compte_p2().back().boucle(plan, {});
    pour_chaque_version("feuilles_faciles", compte::versions_de_feuilles_faciles(),
                        [&](auto sommer) { EXPECT_EQ(sommer(plan, {}), faciles) << x; });
    pour_chaque_version("compte_p2", compte::versions_de_compte_p2(),
                        [&](auto compter) { EXPECT_EQ(compter(plan, {}), p2) << x; });
  }
}

// ---- The quadratic sieve ---------------------------------------------------------------------

using quadratique::BouclesSeaux;
using quadratique::Vecteurs;

/// Odd numbers, as primes below borne_premiers, with residues of them; each array begins `decalage` late.
struct Tableaux {
  Tableaux(std::size_t nombre, std::size_t decalage, unsigned graine)
      : n(nombre), debut(decalage), p(n + debut + 1), a(p.size()), b(p.size()), inverse(p.size()) {
    std::mt19937 hasard(graine);
    for (std::size_t i = 0; i < p.size(); ++i) {
      const std::uint32_t borne = i % 3 == 0 ? quadratique::borne_premiers : 1U << (2 + i % 19);
      p[i] = static_cast<std::uint32_t>(3 + hasard() % (borne - 3) / 2 * 2);
      a[i] = i % 5 == 0 ? p[i] - 1 : static_cast<std::uint32_t>(hasard() % p[i]);
      b[i] = i % 7 == 0 ? p[i] - 1 : static_cast<std::uint32_t>(hasard() % p[i]);
      if (i % 11 == 0) b[i] = 0;
      inverse[i] = 1.0F / static_cast<float>(p[i]);
    }
  }
  std::size_t n;
  std::size_t debut;
  Nombres p, a, b;
  std::vector<float> inverse;
};

/// What a loop left: f(i) at each place, and what was there before and behind untouched.
template <class F>
void verifier_tableau(const Nombres& r, const Nombres& avant, const Tableaux& t, F f) {
  for (std::size_t i = 0; i < r.size(); ++i) {
    const bool dedans = i >= t.debut && i < t.debut + t.n;
    ASSERT_EQ(r[i], dedans ? f(i) : avant[i]) << i << " of " << t.n << " at " << t.debut;
  }
}

void comparer_les_racines(const Vecteurs& v, const Tableaux& t) {
  Nombres r = t.a;
  v.monter(r.data() + t.debut, t.b.data() + t.debut, t.p.data() + t.debut, t.n);
  verifier_tableau(r, t.a, t, [&](std::size_t i) { return (t.a[i] + t.b[i]) % t.p[i]; });
  r = t.a;
  v.descendre(r.data() + t.debut, t.b.data() + t.debut, t.p.data() + t.debut, t.n);
  verifier_tableau(r, t.a, t, [&](std::size_t i) { return (t.a[i] + t.p[i] - t.b[i]) % t.p[i]; });
  r = t.a;
  v.multiplier(r.data() + t.debut, t.a.data() + t.debut, t.b.data() + t.debut, t.p.data() + t.debut,
               t.inverse.data() + t.debut, t.n);
  verifier_tableau(r, t.a, t, [&](std::size_t i) {
    return static_cast<std::uint32_t>(std::uint64_t{t.a[i]} * t.b[i] % t.p[i]);
  });
}

void comparer_le_reperage(const Vecteurs& v, const Tableaux& t, std::uint32_t x) {
  Nombres r1 = t.a;
  Nombres r2 = t.b;
  for (std::size_t i = 0; i < r1.size(); i += 3) (i % 2 == 0 ? r1 : r2)[i] = x % t.p[i];
  Nombres liste{99};
  Nombres attendue{99};
  for (std::size_t i = 0; i < t.n; ++i) {
    const std::uint32_t reste = x % t.p[t.debut + i];
    if (reste == r1[t.debut + i] || reste == r2[t.debut + i]) {
      attendue.push_back(static_cast<std::uint32_t>(i));
    }
  }
  v.reperer(x, t.p.data() + t.debut, t.inverse.data() + t.debut, r1.data() + t.debut,
            r2.data() + t.debut, 0, t.n, liste);
  ASSERT_EQ(liste, attendue) << t.n << " at " << t.debut << ", x " << x;
  // The same from the second vector on.
  const std::size_t avant = std::min(t.n, quadratique::largeur_vecteurs);
  attendue.erase(attendue.begin());
  std::erase_if(attendue, [&](std::uint32_t i) { return i < avant; });
  liste.clear();
  v.reperer(x, t.p.data() + t.debut, t.inverse.data() + t.debut, r1.data() + t.debut,
            r2.data() + t.debut, avant, t.n, liste);
  ASSERT_EQ(liste, attendue) << t.n << " at " << t.debut << ", x " << x;
}

void comparer_les_listes(const Vecteurs& v, std::size_t n, std::size_t debut, unsigned rarete) {
  std::mt19937 hasard(rarete);
  Octets octets(64 * n + debut);
  for (std::uint8_t& o : octets) {
    o = static_cast<std::uint8_t>(hasard() % 128 + (hasard() % rarete == 0 ? 128 : 0));
  }
  Nombres liste{99};
  Nombres attendue{99};
  for (std::size_t i = 0; i < 64 * n; ++i) {
    if (octets[debut + i] >= 128) attendue.push_back(static_cast<std::uint32_t>(i));
  }
  v.relever(octets.data() + debut, 64 * n, liste);
  ASSERT_EQ(liste, attendue);
}

std::vector<std::uint64_t> mots_au_hasard(std::size_t n, std::size_t graine) {
  std::mt19937_64 hasard(graine);
  std::vector<std::uint64_t> mots(n);
  for (std::uint64_t& m : mots) m = hasard();
  return mots;
}

/// `sommes`: 2 * 256 rows.
void comparer_l_elimination(const Vecteurs& v, std::size_t lignes, std::size_t mots, std::size_t g,
                            const std::vector<std::uint64_t>& sommes) {
  const std::size_t largeur = mots - g / 4;
  std::vector<std::uint64_t> bits = mots_au_hasard(lignes * mots + 1, g + mots);
  std::vector<std::uint64_t> attendus = bits;
  for (std::size_t r = 0; r < lignes; ++r) {
    for (std::size_t j = g / 4; j < mots; ++j) {
      const std::uint64_t seize = bits[r * mots + g / 4] >> (16 * (g % 4)) & 0xFFFF;
      attendus[r * mots + j] ^= sommes[seize % 256 * largeur + j - g / 4] ^
                                sommes[(256 + seize / 256) * largeur + j - g / 4];
    }
  }
  v.eliminer(bits.data(), lignes, mots, g, sommes.data());
  ASSERT_EQ(bits, attendus) << lignes << " rows of " << mots << ", group " << g;
}

TEST(Versions, VectorsOfTheQuadraticSieve) {
  pour_chaque_version("vecteurs", quadratique::versions_des_vecteurs(), [](const Vecteurs& v) {
    for (std::size_t debut = 0; debut <= 17; ++debut) {
      for (std::size_t n = 0; n <= 70; ++n) {
        comparer_les_racines(v, Tableaux(n, debut, static_cast<unsigned>(n)));
      }
      for (const std::size_t n : std::initializer_list<std::size_t>{0, 1, 2, 3, 4, 5, 8, 9, 70}) {
        for (const unsigned rarete : {1U, 2U, 100U}) comparer_les_listes(v, n, debut, rarete);
      }
      for (const std::size_t blocs : std::initializer_list<std::size_t>{0, 1, 2, 3, 5}) {
        const Tableaux t(quadratique::largeur_vecteurs * blocs, debut, 5);
        for (const std::uint32_t x : {0U, 1U, 4097U, (1U << 20) - 1}) comparer_le_reperage(v, t, x);
      }
    }
    for (std::size_t mots = 1; mots <= 19; ++mots) {
      for (std::size_t g = 0; g < 4 * mots; ++g) {
        const auto sommes = mots_au_hasard(2 * 256 * (mots - g / 4), mots);
        for (const std::size_t lignes : std::initializer_list<std::size_t>{0, 1, 2, 7})
          comparer_l_elimination(v, lignes, mots, g, sommes);
      }
    }
  });
}

void comparer_le_versement(const BouclesSeaux& v, const Tableaux& t, bool monter,
                           std::uint32_t longueur) {
  Nombres r1 = t.a;
  Nombres r2 = t.b;
  const auto bouge = [&](std::uint32_t r, std::size_t i) {
    return static_cast<std::uint32_t>((r + (monter ? t.b[i] : t.p[i] - t.b[i])) % t.p[i]);
  };
  const std::uint32_t numero = 77;
  std::vector<std::uint32_t> attendues;
  for (std::size_t i = t.debut; i < t.debut + t.n; ++i) {
    for (const std::uint32_t x : {bouge(t.a[i], i), bouge(t.b[i], i)}) {
      const auto rang = static_cast<std::uint32_t>(i - t.debut);
      if (x < longueur) attendues.push_back((x << quadratique::bits_numero) + numero + rang);
    }
  }
  constexpr std::uint32_t garde = 0xFFFFFFFF;
  Nombres liste(2 * t.n + 17, garde);
  const std::size_t nombre =
      v.verser({r1.data() + t.debut, r2.data() + t.debut, t.b.data() + t.debut,
                t.p.data() + t.debut, t.n, numero, monter},
               longueur, liste.data());
  ASSERT_EQ(liste.back(), garde) << "wrote behind the room that it asks for";
  verifier_tableau(r1, t.a, t, [&](std::size_t i) { return bouge(t.a[i], i); });
  verifier_tableau(r2, t.b, t, [&](std::size_t i) { return bouge(t.b[i], i); });
  liste.resize(nombre);
  // In which order hits come is free: vectors take all first roots before the second ones.
  std::sort(liste.begin(), liste.end());
  std::sort(attendues.begin(), attendues.end());
  ASSERT_EQ(liste, attendues) << t.n << " at " << t.debut;
}

void comparer_la_recherche(const BouclesSeaux& v, std::size_t n, std::size_t debut) {
  std::mt19937 hasard(static_cast<unsigned>(n));
  Nombres touches(n + debut);
  for (std::uint32_t& x : touches) x = static_cast<std::uint32_t>(hasard()) & 0xC001FFFF;
  for (const std::uint32_t position : {0U, 1U, 0x8000U, 0xC001U}) {
    Nombres liste{99};
    Nombres attendue{99};
    for (std::size_t i = debut; i < debut + n; ++i) {
      if (touches[i] >> 16 == position) attendue.push_back(1000 + (touches[i] & 0xFFFF));
    }
    v.chercher(touches.data() + debut, n, position, 1000, liste);
    ASSERT_EQ(liste, attendue) << n << " at " << debut;
  }
}

TEST(Versions, BucketsOfTheQuadraticSieve) {
  pour_chaque_version("seaux", quadratique::versions_des_seaux(), [](const BouclesSeaux& v) {
    for (std::size_t debut = 0; debut <= 17; ++debut) {
      for (const std::size_t blocs : std::initializer_list<std::size_t>{0, 1, 2, 3, 9}) {
        const Tableaux t(quadratique::largeur_vecteurs * blocs, debut, 6);
        for (const bool monter : {false, true}) {
          for (const std::uint32_t longueur : {64U, 5000U, quadratique::longueur_max - 64}) {
            comparer_le_versement(v, t, monter, longueur);
          }
        }
      }
      for (std::size_t n = 0; n <= 70; ++n) comparer_la_recherche(v, n, debut);
    }
  });
}

// ---- Elliptic curves -------------------------------------------------------------------------

// A prime of 24 bits and one of the rest, at the lengths around those where the arithmetic changes.
TEST(Versions, EllipticCurvesOnTwoWords) {
  NTL::SetSeed(NTL::ZZ{11});
  for (const long bits :
       {47, 48, 49, 59, 60, 61, 63, 64, 65, 99, 100, 101, 123, 124, 125, 126, 127}) {
    const NTL::ZZ p = NTL::GenPrime_ZZ(23);
    const NTL::ZZ q = NTL::GenPrime_ZZ(bits - 23);
    pour_chaque_version("facteur_ecm", facteurs::versions_de_facteur_ecm(), [&](auto chercher) {
      const auto f = chercher(en_entier128(p * q), 400);
      ASSERT_TRUE(f.has_value()) << p << " * " << q;
      EXPECT_TRUE(en_zz(*f) == p || en_zz(*f) == q) << p << " * " << q;
    });
  }
}

TEST(Versions, EllipticCurvesOnManyWords) {
  NTL::SetSeed(NTL::ZZ{12});
  for (const long bits : {129, 151, 152, 153, 191, 192, 193, 203, 204, 205, 255, 256,
                          257, 307, 308, 309, 379, 380, 411, 412, 413, 444, 445, 700}) {
    const NTL::ZZ p = NTL::GenPrime_ZZ(23);
    const NTL::ZZ q = NTL::GenPrime_ZZ(bits - 23);
    pour_chaque_version("facteur_ecm_long", facteurs::versions_de_facteur_ecm_long(),
                        [&](auto chercher) {
                          const auto f = chercher(p * q, {256, 300, 15000}, 0, {});
                          ASSERT_TRUE(f.has_value()) << p << " * " << q;
                          EXPECT_TRUE(*f == p || *f == q) << p << " * " << q;
                        });
  }
}

/// The same eight curves find the same, in vectors or one by one.
TEST(Versions, EightCurvesAtATime) {
  const NTL::ZZ p{33554520197234177};  // the last curve: 2^6 3 11 29 59 73 263 283 1709
  constexpr std::uint64_t sigma = 1691973485 - 7;
  const facteurs::ecm::BornesLongues bornes{2000, 4000};
  for (const long bits : {107, 203, 204, 205, 411, 607}) {
    const NTL::ZZ n = p * NTL::NextPrime(NTL::power2_ZZ(bits - 55));
    pour_chaque_version(
        "huit_courbes", facteurs::ecm::Huit::versions_des_noyaux(), [&](auto noyaux) {
          std::vector<NTL::ZZ> trouves;
          if (noyaux != nullptr) {
            trouves = facteurs::ecm::essayer_huit_courbes(n, sigma, bornes, noyaux);
          } else if (const NTL::ZZ f = facteurs::ecm::essayer_courbe(n, sigma + 7, bornes);
                     f != 1) {
            trouves.push_back(f);
          }
          EXPECT_EQ(trouves, std::vector{p}) << bits;
        });
  }
}

// ---- Small factors ---------------------------------------------------------------------------

TEST(Versions, RemaindersByManyPrimes) {
  // The first primes, those around a power of two, and the last below the bound.
  Nombres premiers;
  for (const std::uint32_t de : {2U, 65'000U, 8'388'000U, facteurs::borne_restes - 600}) {
    for (std::uint32_t p = de, n = 0; p < facteurs::borne_restes && n < 40; ++p) {
      if (NTL::ProbPrime(static_cast<long>(p)) == 0) continue;
      premiers.push_back(p);
      ++n;
    }
  }
  premiers.resize(premiers.size() / facteurs::largeur_restes * facteurs::largeur_restes);
  ASSERT_GE(premiers.size(), 128U);
  NTL::SetSeed(NTL::ZZ{28});
  std::vector<NTL::ZZ> nombres{NTL::ZZ{0}, NTL::ZZ{1}, NTL::ZZ{premiers.back()}};
  for (long bits = 1; bits <= 700; ++bits) {
    nombres.push_back(NTL::RandomLen_ZZ(bits));
    nombres.push_back(NTL::power2_ZZ(bits) - 1);
    nombres.push_back(nombres[nombres.size() - 2] * premiers[nombres.size() % premiers.size()]);
  }
  pour_chaque_version("restes", facteurs::versions_de_restes(), [&](facteurs::Restes restes) {
    for (const NTL::ZZ& N : nombres) {
      const auto chiffres = facteurs::chiffres_de_28_bits(N);
      for (const std::size_t n : {facteurs::largeur_restes, premiers.size()}) {
        Nombres manques(n + 1, 77);
        restes(chiffres, premiers.data(), manques.data(), n);
        ASSERT_EQ(manques.back(), 77U) << "wrote behind the end";
        for (std::size_t i = 0; i < n; ++i) {
          const long p = premiers[i];
          ASSERT_EQ(manques[i], (p - N % p) % p) << N << " by " << p;
        }
      }
    }
  });
}

// ---- What ran --------------------------------------------------------------------------------

TEST(Chemins, EveryVersionThatCanRunHereWasCompared) {
  if (testing::GTEST_FLAG(filter) != "*") GTEST_SKIP() << "not all tests ran";
  for (const Boucle& b : boucles()) {
    ASSERT_FALSE(b.versions.empty()) << b.nom;
    EXPECT_EQ(b.versions.back(), instructions::aucune) << b.nom << " has no plain version";
    EXPECT_TRUE(jouable(b.prise)) << b.nom;
    for (const Instructions v : b.versions) {
      if (!chemins::essayable(v)) continue;
      EXPECT_TRUE(comparees()[std::string(b.nom)].contains(v))
          << b.nom << ", " << nommer(v) << ": compared with nothing";
    }
  }
  std::fputs((chemins::processeur() + chemins::boucles(&comparees())).c_str(), stdout);
}

}  // namespace
}  // namespace premiers
