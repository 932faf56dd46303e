// SPDX-License-Identifier: MIT
#include "primes/compte/tables.h"

#include <algorithm>
#include <stdexcept>

#include "primes/arithmetique/bits.h"
#include "primes/arithmetique/entier128.h"

namespace premiers {

TablePi::TablePi(std::uint64_t borne) {
  const std::uint64_t nombre = borne / 240 + 1;
  Crible crible(0, 8 * nombre);
  avancer(crible, nombre);
}

void TablePi::avancer(Crible& crible, std::size_t nombre) {
  debut_ = fin();
  cases_.resize(nombre);
  const std::size_t pas = std::min(crible.taille() / 8, nombre);
  std::vector<std::uint8_t> octets(8 * pas);
  for (std::size_t i = 0; i < nombre;) {
    const std::size_t lot = std::min(pas, nombre - i);
    crible.remplir({octets.data(), 8 * lot});
    for (std::size_t j = 0; j < lot; ++j, ++i) {
      cases_[i] = {lire_mot(octets.data() + 8 * j), total_};
      total_ += static_cast<std::uint64_t>(std::popcount(cases_[i].drapeaux));
    }
  }
}

std::vector<std::uint32_t> premiers_par_rang(std::uint64_t borne) {
  std::vector<std::uint32_t> premiers{0, 2, 3, 5};
  Crible crible(0, borne / 30 + 1);
  std::vector<std::uint8_t> octets(std::min<std::uint64_t>(crible.taille(), borne / 30 + 1));
  for (std::uint64_t octet = 0; octet <= borne / 30;) {
    const std::uint64_t lot = std::min<std::uint64_t>(octets.size(), borne / 30 + 1 - octet);
    crible.remplir({octets.data(), lot});
    pour_chaque_premier({octets.data(), lot}, octet, [&](std::uint64_t p) {
      premiers.push_back(static_cast<std::uint32_t>(p));
    });
    octet += lot;
  }
  while (premiers.back() > borne) premiers.pop_back();
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

}  // namespace premiers
