// SPDX-License-Identifier: MIT
// What is smaller than a quarter of a large page comes from the ordinary heap.
#include "systeme/grandes_pages.h"

#include <new>
#include <utility>

#include "systeme/memoire.h"

namespace premiers::systeme {

namespace {

constexpr std::size_t minimum = GrandesPages::taille_page / 4;
constexpr std::align_val_t alignement{GrandesPages::taille_page};

}  // namespace

GrandesPages::GrandesPages(std::size_t taille) : taille_(taille) {
  if (taille < minimum) {
    debut_ = static_cast<std::uint8_t*>(::operator new(taille));
    return;
  }
  // Whole pages, so that none is shared with other memory and stays small for that.
  const std::size_t pages = (taille + taille_page - 1) / taille_page * taille_page;
  debut_ = static_cast<std::uint8_t*>(::operator new(pages, alignement));
  conseiller_grandes_pages(debut_, pages);
}

GrandesPages::GrandesPages(GrandesPages&& autre) noexcept
    : taille_(autre.taille_), debut_(std::exchange(autre.debut_, nullptr)) {}

GrandesPages::~GrandesPages() {
  if (taille_ < minimum) {
    ::operator delete(debut_);
  } else {
    ::operator delete(debut_, alignement);
  }
}

}  // namespace premiers::systeme
