// SPDX-License-Identifier: MIT
// The one buffered writer that every text, number and ranked entry goes through. It hands whole
// blocks to its sink, and before any wait for the operator whatever it holds: so a pipe runs at
// full speed and a person always sees the prompt.
#pragma once

#include <NTL/ZZ.h>

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string_view>

namespace premiers {

/// Takes all the bytes it is given. Returns false when they can no longer be written.
using Puits = std::function<bool(std::string_view)>;

/// The output is lost (full disk, closed device ...): the program ends.
struct SortiePerdue : std::runtime_error {
  SortiePerdue() : std::runtime_error("la sortie ne peut plus etre ecrite") {}
};

struct Sortie {
  explicit Sortie(Puits puits);

  /// Hands everything held to the sink. Throws SortiePerdue if that fails.
  void vider();

  /// The same, if the last time is longer ago than a finished result may wait (`patience`). Called
  /// now and then by whatever computes.
  void vider_si_tard();

  /// Room for at least `octets` bytes, at most `place_max`: who writes listings formats them there
  /// and says with `avancer` where it stopped. The room ends at `fin_place`.
  char* reserver(std::size_t octets) {
    if (taille_tampon - plein_ < octets) vider();
    return tampon_.get() + plein_;
  }
  char* fin_place() { return tampon_.get() + taille_tampon; }
  void avancer(const char* ou) { plein_ = static_cast<std::size_t>(ou - tampon_.get()); }

  static constexpr std::size_t place_max = 1024;
  /// 64 KiB: a pipe's own buffer; from 16 KiB to 256 KiB the speed is the same.
  static constexpr std::size_t taille_tampon = std::size_t{1} << 16U;

  /// How many bytes have been written so far, handed over or not.
  std::uint64_t total() const { return vides_ + plein_; }

  static constexpr std::chrono::milliseconds patience{20};

 private:
  Puits puits_;
  std::unique_ptr<char[]> tampon_;  // of taille_tampon bytes, touched only as far as used
  std::size_t plein_ = 0;
  std::uint64_t vides_ = 0;  // bytes handed over
  std::chrono::steady_clock::time_point vide_a_;

  friend Sortie& operator<<(Sortie& sortie, std::string_view texte);
};

Sortie& operator<<(Sortie& sortie, std::string_view texte);
/// Plain decimal, with no width, fill or grouping.
Sortie& operator<<(Sortie& sortie, std::int64_t nombre);
Sortie& operator<<(Sortie& sortie, const NTL::ZZ& nombre);

}  // namespace premiers
