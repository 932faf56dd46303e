// SPDX-License-Identifier: MIT
// Which paths of the engine does this processor take?
//   premiers-chemins               a line for the processor, one for each loop
//   premiers-chemins INSTRUCTIONS  runs one of popcnt, bmi, avx2, fma, avx512f, and is killed for it where
//                                  the processor lacks it: the proof without asking the processor
#include "tests/chemins.h"

#include <cstdint>
#include <cstdio>
#include <string_view>

namespace {

/// Runs an instruction of that set; false if it is not known here.
bool executer([[maybe_unused]] std::string_view jeu) {
#if defined(__x86_64__)
  std::uint64_t r = 1;
  if (jeu == "popcnt") {
    __asm__ volatile("popcntq %0, %0" : "+r"(r) : : "cc");
    return true;
  }
  if (jeu == "bmi") {
    __asm__ volatile("blsrq %0, %0" : "+r"(r) : : "cc");
    return true;
  }
  if (jeu == "avx2") {
    __asm__ volatile("vpxor %%ymm0, %%ymm0, %%ymm0" : : : "xmm0");
    return true;
  }
  if (jeu == "fma") {
    __asm__ volatile("vfmadd231sd %%xmm0, %%xmm0, %%xmm0" : : : "xmm0");
    return true;
  }
  if (jeu == "avx512f") {
    __asm__ volatile("vpxord %%zmm0, %%zmm0, %%zmm0" : : : "xmm0");
    return true;
  }
#endif
  return false;
}

}  // namespace

int main(int nombre, char** mots) {
  if (nombre == 2) return executer(mots[1]) ? 0 : 3;
  std::fputs((chemins::processeur() + chemins::boucles(nullptr)).c_str(), stdout);
  return 0;
}
