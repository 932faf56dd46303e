// SPDX-License-Identifier: MIT
#include "primes/concatenations/decades.h"

#include <algorithm>

#include "primes/crible/crible.h"

namespace premiers {

Decades::Decades(std::uint64_t limite, const Suivi& suivi) {
  const std::size_t taille = limite / 30 + 1;
  octets_ = std::make_unique_for_overwrite<std::uint8_t[]>(taille);
  Crible crible(0, taille);
  for (std::size_t o = 0; o < taille;) {
    const std::size_t segment = std::min(crible.taille(), taille - o);
    crible.remplir({octets_.get() + o, segment}, suivi);
    o += segment;
  }
  nombre_ = 3 * taille;
}

void DecadesGlissantes::glisser(std::uint64_t d, const Suivi& suivi) {
  const std::uint64_t octet_fin = derniere_ / 3 + 1;
  std::uint64_t octet = fin_ / 3;
  if (!crible_ || d < debut_) {
    octet = d / 3;
    crible_.emplace(octet, octet_fin);
  }
  try {
    for (;; octet += octets_.size()) {
      octets_.resize(std::min<std::uint64_t>(crible_->taille(), octet_fin - octet));
      crible_->remplir(octets_, suivi);
      if (d / 3 - octet < octets_.size()) break;
    }
  } catch (...) {
    crible_.reset();  // what it holds is half done
    debut_ = fin_ = 0;
    throw;
  }
  debut_ = 3 * octet;
  fin_ = debut_ + 3 * octets_.size();
}

}  // namespace premiers
