// SPDX-License-Identifier: MIT
// What the program asks of the operating system and can be seen from inside: memory.
#include "systeme/memoire.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>

namespace premiers::systeme {
namespace {

/// A folder with files of its own in the place of /proc and /sys.
struct MemoireDesGroupes : testing::Test {
  std::filesystem::path racine = std::filesystem::path(testing::TempDir()) /
                                 testing::UnitTest::GetInstance()->current_test_info()->name();
  MemoireDesGroupes() { std::filesystem::remove_all(racine); }
  ~MemoireDesGroupes() override { std::filesystem::remove_all(racine); }

  void fichier(const std::string& nom, const std::string& texte) const {
    const auto chemin = racine / nom;
    std::filesystem::create_directories(chemin.parent_path());
    std::ofstream(chemin) << texte;
  }
  std::uint64_t libre() const { return memoire_des_groupes(racine.string()); }
};

constexpr std::uint64_t sans_limite = ~std::uint64_t{0};

TEST_F(MemoireDesGroupes, NoneWithoutAGroupOrALimit) {
  EXPECT_EQ(libre(), sans_limite);
  fichier("proc/self/cgroup", "0::/\n");
  EXPECT_EQ(libre(), sans_limite);
  fichier("sys/fs/cgroup/memory.max", "max\n");
  fichier("sys/fs/cgroup/memory.current", "1000\n");
  EXPECT_EQ(libre(), sans_limite);
}

TEST_F(MemoireDesGroupes, TheTightestOfAGroupAndThoseAboveIt) {
  fichier("proc/self/cgroup", "0::/a/b\n");
  fichier("sys/fs/cgroup/a/b/memory.max", "max\n");
  fichier("sys/fs/cgroup/a/b/memory.current", "100\n");
  fichier("sys/fs/cgroup/a/memory.max", "5000\n");
  fichier("sys/fs/cgroup/a/memory.current", "2000\n");
  EXPECT_EQ(libre(), 3000U);
  fichier("sys/fs/cgroup/memory.max", "9000\n");
  fichier("sys/fs/cgroup/memory.current", "8500\n");
  EXPECT_EQ(libre(), 500U);
  fichier("sys/fs/cgroup/a/b/memory.max", "50\n");
  EXPECT_EQ(libre(), 0U) << "more is taken than allowed";
}

TEST_F(MemoireDesGroupes, CachedFilesCountAsFree) {
  fichier("proc/self/cgroup", "0::/a\n");
  fichier("sys/fs/cgroup/a/memory.max", "5000\n");
  fichier("sys/fs/cgroup/a/memory.current", "4000\n");
  fichier("sys/fs/cgroup/a/memory.stat", "anon 500\nfile 3500\ninactive_file 1500\n");
  EXPECT_EQ(libre(), 2500U);
}

TEST_F(MemoireDesGroupes, TheFirstVersionHasOtherNames) {
  fichier("proc/self/cgroup", "12:cpu,cpuacct:/x\n9:memory:/a\n0::/\n");
  fichier("sys/fs/cgroup/memory/a/memory.limit_in_bytes", "7000\n");
  fichier("sys/fs/cgroup/memory/a/memory.usage_in_bytes", "4000\n");
  fichier("sys/fs/cgroup/memory/a/memory.stat", "inactive_file 1\ntotal_inactive_file 1000\n");
  EXPECT_EQ(libre(), 4000U);
}

TEST(MemoireLibre, IsNoMoreThanTheMachineHas) {
  const std::uint64_t libre = memoire_libre();
  EXPECT_GT(libre, std::uint64_t{1} << 20);
  std::ifstream flux("/proc/meminfo");
  std::string nom;
  std::uint64_t kio = 0;
  if (!(flux >> nom >> kio) || nom != "MemTotal:") GTEST_SKIP() << "no /proc/meminfo here";
  EXPECT_LE(libre, kio * 1024);
}

}  // namespace
}  // namespace premiers::systeme
