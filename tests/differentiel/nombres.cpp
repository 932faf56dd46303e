// SPDX-License-Identifier: MIT
#include "tests/differentiel/nombres.h"

#include <algorithm>
#include <array>
#include <sstream>

namespace differentiel {

namespace {

constexpr std::array<std::int64_t, 6> ecarts_d_un_carre{-2, -1, 0, 1, 2, 4};

/// `n` digits drawn from an alphabet.
std::string chiffres(Hasard& hasard, std::int64_t n, const std::string& alphabet) {
  std::string t;
  while (static_cast<std::int64_t>(t.size()) < n) t += hasard.parmi(alphabet);
  return t;
}

/// How many digits have a square root below `limite`, at most 18.
std::int64_t nombre_de_chiffres(std::int64_t limite) {
  std::int64_t n = 0;
  for (std::int64_t carre = 1; n < 18 && carre <= limite; carre *= 10) n += 2;
  return n - 2;
}

}  // namespace

std::string texte(const NTL::ZZ& n) {
  std::ostringstream flux;
  flux << n;
  return flux.str();
}

bool est_premier(std::int64_t n) {
  if (n < 2) return false;
  if (n > 1'000'000) return NTL::ProbPrime(n) != 0;
  for (std::int64_t d = 2; d <= n / d; ++d) {
    if (n % d == 0) return false;
  }
  return true;
}

std::int64_t premier_apres(std::int64_t n) {
  do {
    ++n;
  } while (!est_premier(n));
  return n;
}

std::int64_t premier_au_hasard(Hasard& hasard, std::int64_t limite) {
  const bool grand = hasard.une_fois_sur(2);
  return premier_apres(grand ? hasard.entre(limite / 2, limite - 1) : hasard.etage(1, limite - 1));
}

std::int64_t remarquable(Hasard& hasard, std::int64_t limite) {
  const std::int64_t p = premier_au_hasard(hasard, limite);
  switch (hasard.entre(0, 8)) {
    case 0:
      return hasard.entre(1, 120);
    case 8:
      return std::max<std::int64_t>(
          1, puissance_de_dix(hasard, limite * limite) + hasard.entre(-12, 12));
    case 1:
      return p;
    case 2:
      return p * p;
    case 3:
      return std::max<std::int64_t>(1, p * p + hasard.parmi(ecarts_d_un_carre));
    case 4:
      return p * premier_apres(p);
    case 5: {
      std::int64_t puissance = p;
      while (puissance <= limite * (limite / p)) puissance *= p;
      return puissance;
    }
    case 6:
      return p * hasard.etage(1, limite);
    default:
      return hasard.une_fois_sur(2) ? hasard.entre(1, limite * limite)
                                    : hasard.etage(1, limite * limite);
  }
}

NTL::ZZ decomposable(Hasard& hasard, std::int64_t limite) {
  NTL::ZZ n(remarquable(hasard, limite));
  if (hasard.une_fois_sur(3)) {
    for (std::int64_t i = hasard.entre(1, 12); i > 0; --i) n *= premier_au_hasard(hasard, 50);
  }
  if (hasard.une_fois_sur(6)) n *= NTL::power(NTL::ZZ(premier_au_hasard(hasard, limite)), 3);
  if (hasard.une_fois_sur(15)) n = hasard.entre(1, 9) * NTL::power_ZZ(10, hasard.entre(1, 190));
  if (hasard.une_fois_sur(12)) n = NTL::power_ZZ(hasard.entre(2, 12), hasard.entre(1, 90));
  return n;
}

std::string decoupable(Hasard& hasard, std::int64_t limite) {
  static const std::array<std::string, 4> alphabets{"0123456789", "2357", "0235", "1379"};
  const std::int64_t n = hasard.entre(1, nombre_de_chiffres(limite));
  std::string t = chiffres(hasard, 1, hasard.une_fois_sur(4) ? "14689" : "123456789");
  t += chiffres(hasard, n - 1, hasard.parmi(alphabets));
  if (hasard.une_fois_sur(5)) t += chiffres(hasard, hasard.etage(1, 30), "024568255");
  return t;
}

std::int64_t puissance_de_dix(Hasard& hasard, std::int64_t max) {
  std::int64_t exposant = 0;
  for (std::int64_t reste = max; reste > 9; reste /= 10) ++exposant;
  std::int64_t puissance = 1;
  for (std::int64_t n = hasard.entre(0, exposant); n > 0; --n) puissance *= 10;
  return puissance;
}

// Nines are divisible by 3, and behind them 3, 4, 5 and 6 do no harm.
NTL::ZZ rond_et_long(Hasard& hasard) {
  static constexpr std::array<std::int64_t, 7> ecarts{-7, -6, -2, 4, 24, 44, 204};
  const std::int64_t exposant =
      hasard.une_fois_sur(4) ? hasard.entre(13, 189) : hasard.entre(13, 50);
  return NTL::power_ZZ(10, exposant) + hasard.parmi(ecarts);
}

std::string enroule(Hasard& hasard, std::int64_t v, bool signe) {
  static const NTL::ZZ tour = NTL::power2_ZZ(64);
  const bool moins = v < 0 && signe && !hasard.une_fois_sur(10);
  NTL::ZZ n(v);
  if (moins) n = -n;
  if (n < 0 || hasard.une_fois_sur(15)) n += tour * hasard.entre(1, 3);
  std::string t = texte(n);
  if (moins) return "-" + t;
  return hasard.une_fois_sur(8) && v != 0 ? "+" + t : t;
}

}  // namespace differentiel
