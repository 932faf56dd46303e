// SPDX-License-Identifier: MIT
// Memory that is written and read here and there all over: in large pages, where the system has
// them. An access far away then costs less (a sieve gains some percent), and so does the first one.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace premiers::systeme {

/// Bytes in large pages. Less than a quarter of one is taken in ordinary ones.
struct GrandesPages {
  static constexpr std::size_t taille_page = std::size_t{1} << 21;

  /// Takes memory, at a multiple of `taille_page` where it is large; std::bad_alloc if there is none.
  explicit GrandesPages(std::size_t taille);
  GrandesPages(GrandesPages&& autre) noexcept;
  GrandesPages& operator=(GrandesPages&&) = delete;
  ~GrandesPages();

  std::uint8_t* data() const { return debut_; }
  std::size_t size() const { return taille_; }
  std::span<std::uint8_t> octets() const { return {debut_, taille_}; }

 private:
  std::size_t taille_;
  std::uint8_t* debut_;
};

}  // namespace premiers::systeme
