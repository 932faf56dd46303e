// SPDX-License-Identifier: MIT
// The tables filled from the sieve, and the bounds of a plan checked.
#include "primes/compte/tables.h"

#include <bit>
#include <stdexcept>

#include "primes/arithmetique/entier128.h"
#include "primes/crible/premiers_jusqu_a.h"

namespace premiers::compte {

TablePi::TablePi(std::uint64_t borne) {
  const std::uint64_t nombre = borne / 240 + 1;
  crible::Fenetres fenetres(0, 240 * nombre - 1);
  avancer(fenetres, nombre);
}

void TablePi::avancer(crible::Fenetres& fenetres, std::size_t nombre) {
  debut_ = fin();
  cases_.resize(nombre);
  auto ici = cases_.begin();
  while (fenetres.suivante_avant(fin() / 30)) {
    const auto octets = fenetres.octets();
    for (std::size_t o = 0; o < octets.size(); o += 8, ++ici) {
      *ici = {lire_mot(octets.data() + o), total_};
      total_ += static_cast<std::uint64_t>(std::popcount(ici->drapeaux));
    }
  }
}

std::vector<std::uint32_t> premiers_par_rang(std::uint64_t borne) {
  std::vector<std::uint32_t> premiers = crible::premiers_jusqu_a(borne);
  premiers.insert(premiers.begin(), 0);
  return premiers;
}

namespace {

/// y, or std::invalid_argument: what the header asks of the bounds.
std::uint64_t verifier(std::uint64_t x, std::uint64_t y, std::uint64_t z) {
  const Entier128 cube = Entier128{y} * y * y;
  const bool bon = x >= 10'000 && x >> 63U == 0 && z >> 32U == 0 && cube > x &&
                   cube <= Entier128{x} << 18U && y >= 23 && y <= z && z * z <= x && z < 13 * y;
  if (!bon) throw std::invalid_argument("Plan: bounds out of range");
  return y;
}

}  // namespace

Plan::Plan(std::uint64_t x_, std::uint64_t y_, std::uint64_t z_)
    : x(x_), y(verifier(x_, y_, z_)), z(z_), premiers(premiers_par_rang(y_)), pi(y_) {}

}  // namespace premiers::compte
