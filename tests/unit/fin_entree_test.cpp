// SPDX-License-Identifier: MIT
// The prompt that repeats at the end of input, without its pauses: it takes no memory.
#include <gtest/gtest.h>
#if defined(__GLIBC__)
#include <malloc.h>
#endif

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "app/menu.h"
#include "console/session.h"

namespace premiers {
namespace {

struct Assez {};

/// The bytes of the heap that are in use; 0 where nobody counts them.
std::size_t tas() {
#if defined(__GLIBC__)
  return mallinfo2().uordblks;
#else
  return 0;
#endif
}

/// Repeats the prompt that follows `tape`; gives what the heap holds more after the last of
/// `combien` repetitions than after the first.
std::size_t croissance(std::string_view tape, int combien) {
  std::size_t debut = 0;
  std::size_t fin = 0;
  Monde monde;
  monde.fin_entree = [&](int repetition) {
    if (repetition == 1) debut = tas();
    if (repetition < combien) return;
    fin = tas();
    throw Assez{};
  };
  monde.avertir = [](std::string_view) {};
  Session s{Entree(source_texte(tape)), Sortie([](std::string_view) { return true; }), monde};
  EXPECT_THROW(menu(s), Assez);
  return fin - debut;
}

TEST(FinEntree, ThePromptRepeatsWithoutMemory) {
  const auto* volatile bloc = new std::string(100'000, 'x');
  if (const std::size_t avec = tas(); delete bloc, tas() >= avec) GTEST_SKIP() << "uncounted heap";
  for (const std::string_view tape : {"", "1 ", "1 6 ", "2 ", "2 20 * 5 2 50 ", "3 2 9 ", "4 1 "}) {
    EXPECT_EQ(croissance(tape, 100'000), 0U) << tape;
  }
}

}  // namespace
}  // namespace premiers
