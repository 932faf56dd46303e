// SPDX-License-Identifier: MIT
// The PARI library (The PARI Group, "User's guide to the PARI library", 2022) as a guest in this
// process.
//
// Numbers cross the bridge as machine words, never as text.
//
// The library computes on a stack of its own. It is given address space for half of the memory that
// is left; pages are taken as they are needed and given back after each call. So one call can use
// much memory, and a session of many calls uses little.
//
// The library reports errors by long jumps. They start and end inside `essayer`, over frames that
// hold nothing to destroy, and come out as exceptions.
//
// It is started without signal handlers, threads, or a hold on GMP's allocation, and what it has to
// say ("increasing stack size", "not enough memory") goes nowhere.
#include "primes/facteurs/pont_pari.h"

#include <NTL/ZZ_limbs.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <new>
#include <stdexcept>
#include <string>

#include "systeme/memoire.h"

// Last: it defines macros with common names.
#include <pari/pari.h>

namespace premiers::facteurs::pari {
namespace {

// The library's own kernel keeps the words of an integer in the other order.
#ifndef PARI_KERNEL_GMP
#error "libpari is built without the GMP kernel: the words of its integers would run the other way"
#endif
static_assert(sizeof(NTL::ZZ_limb_t) == sizeof(pari_ulong), "both libraries are built on GMP");

// ---- Starting the library ----------------------------------------------------------------------

/// The stack that the library has from the start and keeps between calls. It grows by doubling; a
/// number of 50 digits needs less.
constexpr std::size_t pile_initiale = std::size_t{8} << 20U;

/// The library's own default: primes that its trial divisions can reach without sieving anew.
constexpr unsigned long borne_table = 500000;

/// How far the stack may grow: half of what is left, and in proportion to what is there.
std::size_t pile_maximale() {
  constexpr std::uint64_t plafond = std::uint64_t{1} << 40U;
  return static_cast<std::size_t>(
      std::clamp<std::uint64_t>(systeme::memoire_libre() / 2, pile_initiale, plafond));
}

/// Throws unless there is room for the library's start, which would end the process otherwise.
void reserver_le_demarrage() {
  constexpr std::size_t besoin = 4 * pile_initiale;
  if (systeme::memoire_libre() < besoin) throw std::bad_alloc{};
}

bool demarrer() {
  reserver_le_demarrage();
  static PariOUT muet{[](char) {}, [](const char*) {}, [] {}};
  pari_init_opts(pile_initiale, borne_table, INIT_DFTm | INIT_noINTGMPm);
  pari_mt_nbthreads = 1;
  pariOut = &muet;
  pariErr = &muet;
  paristack_setsize(pile_initiale, pile_maximale());
  return true;
}

// ---- Crossing the bridge -----------------------------------------------------------------------

/// On leaving, the library's stack is what it was on entering.
struct Passage {
  Passage() { [[maybe_unused]] static const bool demarree = demarrer(); }
  Passage(const Passage&) = delete;
  Passage& operator=(const Passage&) = delete;
  ~Passage() {
    set_avma(pari_mainstack->top);
    if (pari_mainstack->size > pari_mainstack->rsize) parivstack_reset();
  }
};

/// n > 0 on the library's stack.
GEN vers_pari(const NTL::ZZ& n) {
  const long mots = n.size();
  const GEN x = cgetipos(mots + 2);
  std::copy_n(NTL::ZZ_limbs_get(n), mots, reinterpret_cast<pari_ulong*>(int_LSW(x)));
  return x;
}

/// calcul(n) on the library's stack; null, and the library's number of the error, if it fails.
/// Nothing in here or called from here may need a destructor: it would not be run.
template <class Calcul>
GEN essayer(const NTL::ZZ& n, const Calcul& calcul, volatile long& erreur) {
  GEN volatile resultat = nullptr;
  pari_CATCH(CATCH_ALL) { erreur = err_get_num(pari_err_last()); }
  pari_TRY { resultat = calcul(vers_pari(n)); }
  pari_ENDCATCH;
  return resultat;
}

/// calcul(n), or the exception that corresponds to the library's error.
template <class Calcul>
GEN appeler(const NTL::ZZ& n, const Calcul& calcul) {
  volatile long erreur = -1;
  const GEN resultat = essayer(n, calcul, erreur);
  if (erreur == e_STACK || erreur == e_MEM) throw std::bad_alloc{};
  if (erreur != -1) throw std::runtime_error{"PARI: error " + std::to_string(erreur)};
  return resultat;
}

}  // namespace

bool est_premier_prouve(const NTL::ZZ& n) {
  if (n <= 1) return false;
  // APRCL (L. Adleman, C. Pomerance, R. Rumely; H. Cohen, H. W. Lenstra) up to 120 digits, elliptic
  // curves (A. O. L. Atkin, F. Morain) beyond: from there to 199 digits they take two thirds of the
  // time.
  constexpr long bits_aprcl = 400;
  const bool court = NTL::NumBits(n) <= bits_aprcl;
  const Passage passage;
  return appeler(n, [court](GEN x) {
           return BPSW_psp(x) != 0 && (court ? isprimeAPRCL(x) : isprimeECPP(x)) != 0 ? gen_1
                                                                                      : gen_0;
         }) == gen_1;
}

}  // namespace premiers::facteurs::pari
