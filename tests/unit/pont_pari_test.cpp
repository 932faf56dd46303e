// SPDX-License-Identifier: MIT
// The manners of the guest: silent, without signal handlers, without threads, with bounded memory,
// and with an exception where memory ends.
#include "primes/facteurs/pont_pari.h"

#include <NTL/ZZ.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <csignal>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <new>
#include <string>

namespace premiers::facteurs {
namespace {

using NTL::ZZ;

/// Is this built with the address sanitizer? It has threads, handlers and memory of its own.
constexpr bool assaini =
#if defined(PREMIERS_ASSAINI)
    true;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
    true;
#else
    false;
#endif
#else
    false;
#endif

ZZ premier_long() { return NTL::NextPrime(NTL::power(ZZ{10}, 180), 10); }

TEST(PontPari, ProvesPrimesAndNothingElse) {
  const ZZ p = NTL::power2_ZZ(127) - 1;
  EXPECT_TRUE(pari::est_premier_prouve(p));
  EXPECT_FALSE(pari::est_premier_prouve(p * p));
  EXPECT_FALSE(pari::est_premier_prouve(p * (NTL::power2_ZZ(89) - 1)));
  for (const long n : {1L, 0L, -6L, -7L}) EXPECT_FALSE(pari::est_premier_prouve(ZZ{n})) << n;
}

TEST(PontPari, SaysNothingEvenWhenItsStackGrows) {
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  EXPECT_TRUE(pari::est_premier_prouve(premier_long()));
  std::fflush(nullptr);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(PontPari, LeavesTheSignalsAlone) {
  EXPECT_TRUE(pari::est_premier_prouve(NTL::power2_ZZ(89) - 1));
  for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGFPE, SIGBUS, SIGPIPE, SIGALRM}) {
    if (assaini && (signal == SIGFPE || signal == SIGBUS)) continue;
    struct sigaction action {};
    ASSERT_EQ(sigaction(signal, nullptr, &action), 0);
    EXPECT_EQ(action.sa_handler, SIG_DFL) << signal;
  }
}

/// The threads of this process; 0 where that cannot be seen.
std::ptrdiff_t nombre_de_fils() {
  const std::filesystem::path fils{"/proc/self/task"};
  if (!std::filesystem::exists(fils)) return 0;
  return std::distance(std::filesystem::directory_iterator{fils}, {});
}

/// Before the library is started. What imitates a processor has a thread of its own.
const std::ptrdiff_t fils_au_depart = nombre_de_fils();

TEST(PontPari, StartsNoThread) {
  if (fils_au_depart == 0) GTEST_SKIP() << "no /proc here";
  if (assaini) GTEST_SKIP() << "the sanitizer has threads of its own";
  EXPECT_TRUE(pari::est_premier_prouve(premier_long()));
  EXPECT_EQ(nombre_de_fils(), fils_au_depart);
}

TEST(PontPariLent, ManyCallsTakeNoMoreMemoryThanFew) {
  if (assaini) GTEST_SKIP() << "the sanitizer keeps freed memory";
  const auto travailler = [](int fois) {
    for (int i = 0; i < fois; ++i) {
      EXPECT_TRUE(pari::est_premier_prouve(NTL::power(ZZ{10}, 24) + 7));
    }
  };
  const auto plus_haut = [] {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
  };
  travailler(50);
  const long avant = plus_haut();
  travailler(500);
  EXPECT_LT(plus_haut() - avant, 2000);  // kilobytes
}

// ---- Where memory ends ---------------------------------------------------------------------------

constexpr rlim_t mega = rlim_t{1} << 20U;

/// From now on the process may take so many more bytes of address space.
void limiter(rlim_t de_plus) {
  std::ifstream tailles{"/proc/self/statm"};
  rlim_t pages = 0;
  tailles >> pages;
  const rlim_t octets = pages * static_cast<rlim_t>(sysconf(_SC_PAGESIZE)) + de_plus;
  const rlimit limite{octets, RLIM_INFINITY};
  setrlimit(RLIMIT_AS, &limite);
}

void ne_plus_limiter() {
  const rlimit limite{RLIM_INFINITY, RLIM_INFINITY};
  setrlimit(RLIMIT_AS, &limite);
}

enum Issue { prouve, refuse, sans_memoire, autre };

Issue prouver(const ZZ& n) {
  try {
    return pari::est_premier_prouve(n) ? prouve : refuse;
  } catch (const std::bad_alloc&) {
    return sans_memoire;
  } catch (...) {
    return autre;
  }
}

/// The memory ends before the library has started, which could not bear it.
[[noreturn]] void demarrer_avec(rlim_t octets) {
  const ZZ p = premier_long();
  limiter(octets);
  std::_Exit(prouver(p));
}

/// The library starts, with a stack of 14 MB at most; there a number of 8 MB fits, and what its
/// first power needs does not. Then it goes on. 2^26 - 5 is prime, so 2^(2^26 - 5) - 1 has no small
/// factor that would answer before.
[[noreturn]] void deborder_de_la_pile() {
  const ZZ petit = NTL::power2_ZZ(89) - 1;
  const ZZ enorme = NTL::power2_ZZ((1L << 26) - 5) - 1;
  limiter(36 * mega);
  if (prouver(petit) != prouve) std::_Exit(autre);
  const Issue issue = prouver(enorme);
  std::_Exit(prouver(petit) == prouve ? issue : autre);
}

/// The library starts with as much stack as it likes, and what it takes beside its stack is refused.
/// Then it goes on.
[[noreturn]] void manquer_de_memoire() {
  const ZZ p = premier_long();
  if (prouver(NTL::power2_ZZ(89) - 1) != prouve) std::_Exit(autre);
  limiter(0);
  const Issue issue = prouver(p);
  ne_plus_limiter();
  std::_Exit(prouver(p) == prouve ? issue : autre);
}

/// Each in a process in which the library is not started.
struct PontPariDeathTest : testing::Test {
  void SetUp() override {
    if (assaini) GTEST_SKIP() << "the sanitizer needs the address space";
    GTEST_FLAG_SET(death_test_style, "threadsafe");
  }
};

TEST_F(PontPariDeathTest, WithoutMemoryItDoesNotStartAndSaysNothing) {
  EXPECT_EXIT(demarrer_avec(2000 * mega), testing::ExitedWithCode(prouve), "^$");
  EXPECT_EXIT(demarrer_avec(30 * mega), testing::ExitedWithCode(sans_memoire), "^$");
}

TEST_F(PontPariDeathTest, AStackThatEndsIsAnExceptionAndItGoesOn) {
  EXPECT_EXIT(deborder_de_la_pile(), testing::ExitedWithCode(sans_memoire), "^$");
}

TEST_F(PontPariDeathTest, MemoryThatEndsInTheLibraryIsAnExceptionAndItGoesOn) {
  EXPECT_EXIT(manquer_de_memoire(), testing::ExitedWithCode(sans_memoire), "^$");
}

}  // namespace
}  // namespace premiers::facteurs
