// SPDX-License-Identifier: MIT
// The plain loops, and their table of versions (vecteurs.h).
#include "primes/quadratique/vecteurs.h"

#include <algorithm>
#include <bit>
#include <cassert>
#include <cstring>

#include "primes/arithmetique/quotient.h"

namespace premiers::quadratique {

namespace {

// A minimum of unsigned numbers does the reduction modulo p: the wrong one of the two has wrapped
// around and is huge.
[[gnu::always_inline]] inline void monter(std::uint32_t* r, const std::uint32_t* d,
                                          const std::uint32_t* p, std::size_t n) {
  for (std::size_t i = 0; i < n; ++i) r[i] = std::min(r[i] + d[i], r[i] + d[i] - p[i]);
}

[[gnu::always_inline]] inline void descendre(std::uint32_t* r, const std::uint32_t* d,
                                             const std::uint32_t* p, std::size_t n) {
  for (std::size_t i = 0; i < n; ++i) r[i] = std::min(r[i] - d[i], r[i] - d[i] + p[i]);
}

[[gnu::always_inline]] inline void multiplier(std::uint32_t* r, const std::uint32_t* a,
                                              const std::uint32_t* b, const std::uint32_t* p,
                                              const float* reciproque, std::size_t n) {
  for (std::size_t i = 0; i < n; ++i) r[i] = produit_par_inverse(a[i], b[i], p[i], reciproque[i]);
}

[[gnu::always_inline]] inline void reperer(std::uint32_t x, const std::uint32_t* p,
                                           const float* reciproque, const std::uint32_t* r1,
                                           const std::uint32_t* r2, std::size_t debut,
                                           std::size_t fin, std::vector<std::uint32_t>& liste) {
  assert(debut % largeur_vecteurs == 0 && fin % largeur_vecteurs == 0);
  const auto x_et_demi = avec_demi<float>(x);
  for (std::size_t i = debut; i < fin; i += largeur_vecteurs) {
    std::uint8_t touche[largeur_vecteurs];
    std::uint8_t touches = 0;
    for (std::size_t j = 0; j < largeur_vecteurs; ++j) {
      const std::int32_t quotient = quotient_par_inverse(x_et_demi, reciproque[i + j]);
      const std::uint32_t reste = x - static_cast<std::uint32_t>(quotient) * p[i + j];
      touche[j] = static_cast<std::uint8_t>((reste == r1[i + j]) | (reste == r2[i + j]));
      touches |= touche[j];
    }
    if (touches == 0) continue;
    for (std::size_t j = 0; j < largeur_vecteurs; j += 8) {
      std::uint64_t huit;
      std::memcpy(&huit, touche + j, 8);
      for (; huit != 0; huit &= huit - 1) {
        const auto rang = static_cast<std::size_t>(std::countr_zero(huit)) / 8;
        liste.push_back(static_cast<std::uint32_t>(i + j + rang));
      }
    }
  }
}

[[gnu::always_inline]] inline void relever(const std::uint8_t* octets, std::size_t n,
                                           std::vector<std::uint32_t>& liste) {
  assert(n % 64 == 0);
  for (std::size_t x = 0; x < n; x += 64) {
    std::uint8_t tout = 0;
    for (std::size_t i = 0; i < 64; ++i) tout |= octets[x + i];
    if (tout < 128) continue;
    for (std::size_t i = 0; i < 64; ++i) {
      if (octets[x + i] >= 128) liste.push_back(static_cast<std::uint32_t>(x + i));
    }
  }
}

[[gnu::always_inline]] inline void eliminer(std::uint64_t* bits, std::size_t lignes,
                                            std::size_t mots, std::size_t g,
                                            const std::uint64_t* sommes) {
  assert(g / 4 < mots);
  const std::size_t largeur = mots - g / 4;
  for (std::size_t r = 0; r < lignes; ++r) {
    std::uint64_t* const ligne = bits + r * mots + g / 4;
    const std::uint64_t motif = *ligne >> (16 * (g % 4));
    const std::uint64_t* const bas = sommes + (motif & 255) * largeur;
    const std::uint64_t* const haut = sommes + (256 + ((motif >> 8) & 255)) * largeur;
    for (std::size_t j = 0; j < largeur; ++j) ligne[j] ^= bas[j] ^ haut[j];
  }
}

constexpr Vecteurs pour_tous{Pour<monter>::tous,  Pour<descendre>::tous, Pour<multiplier>::tous,
                             Pour<reperer>::tous, Pour<relever>::tous,   Pour<eliminer>::tous};

#if defined(__x86_64__)

constexpr Vecteurs pour_avx2{Pour<monter>::avx2,  Pour<descendre>::avx2, Pour<multiplier>::avx2,
                             Pour<reperer>::avx2, Pour<relever>::avx2,   Pour<eliminer>::avx2};

#endif

constexpr Version<Vecteurs> versions[] = {
#if defined(__x86_64__)
    {instructions::avx2, pour_avx2},
#endif
    {instructions::aucune, pour_tous},
};

}  // namespace

Versions<Vecteurs> versions_des_vecteurs() { return versions; }

const Vecteurs& vecteurs() {
  static const Vecteurs& choix = choisir(versions_des_vecteurs()).boucle;
  return choix;
}

}  // namespace premiers::quadratique
