// SPDX-License-Identifier: MIT
// The processor is asked once; what the build allows at most is cut off here (processeur.h).
#include "primes/arithmetique/processeur.h"

#include <array>
#include <utility>

namespace premiers {
inline namespace arithmetique {

namespace {

using namespace instructions;

// What PREMIERS_PROCESSEUR_MAX (CMakeLists.txt) can be.
namespace plafonds {
[[maybe_unused]] constexpr Instructions tout = ~aucune;
[[maybe_unused]] constexpr Instructions avx2 = popcnt | bmi | instructions::avx2 | fma;
[[maybe_unused]] constexpr Instructions portable = aucune;
}  // namespace plafonds

#if defined(PREMIERS_PROCESSEUR_MAX)
constexpr Instructions plafond = plafonds::PREMIERS_PROCESSEUR_MAX;
#else
constexpr Instructions plafond = plafonds::tout;
#endif

constexpr std::array<std::pair<Instructions, const char*>, 11> noms{
    {{popcnt, "popcnt"},
     {bmi, "bmi"},
     {avx2, "avx2"},
     {fma, "fma"},
     {avx512f, "avx512f"},
     {avx512bw, "avx512bw"},
     {avx512dq, "avx512dq"},
     {avx512vl, "avx512vl"},
     {avx512ifma, "avx512ifma"},
     {avx512vbmi2, "avx512vbmi2"},
     {avx512vpopcntdq, "avx512vpopcntdq"}}};

// The names are literals, because the compiler's question takes nothing else.
Instructions demander() {
  Instructions r = aucune;
#if defined(__x86_64__)
  if (__builtin_cpu_supports("popcnt")) r |= popcnt;
  if (__builtin_cpu_supports("bmi")) r |= bmi;
  if (__builtin_cpu_supports("avx2")) r |= avx2;
  if (__builtin_cpu_supports("fma")) r |= fma;
  if (__builtin_cpu_supports("avx512f")) r |= avx512f;
  if (__builtin_cpu_supports("avx512bw")) r |= avx512bw;
  if (__builtin_cpu_supports("avx512dq")) r |= avx512dq;
  if (__builtin_cpu_supports("avx512vl")) r |= avx512vl;
  if (__builtin_cpu_supports("avx512ifma")) r |= avx512ifma;
  if (__builtin_cpu_supports("avx512vbmi2")) r |= avx512vbmi2;
  if (__builtin_cpu_supports("avx512vpopcntdq")) r |= avx512vpopcntdq;
#endif
  return r;
}

}  // namespace

Instructions instructions_presentes() {
  static const Instructions r = demander();
  return r;
}

Instructions instructions_utilisables() { return instructions_presentes() & plafond; }

std::string nommer(Instructions ensemble) {
  std::string r;
  for (const auto& [bit, nom] : noms) {
    if ((ensemble & bit) == 0) continue;
    if (!r.empty()) r += '+';
    r += nom;
  }
  return r.empty() ? "portable" : r;
}

}  // namespace arithmetique
}  // namespace premiers
