// SPDX-License-Identifier: MIT
// The plain loops, and their table of versions (vecteurs.h).
#include "primes/quadratique/vecteurs.h"

#include <algorithm>
#include <bit>
#include <cassert>
#include <cstring>

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

// Each of the three roundings is wrong by 2^-24 at most, so that a quotient below 2^23 is wrong by
// less than 1.51 before it is cut off: the remainder, computed modulo 2^32, is above -2p and below
// 3p.
[[gnu::always_inline]] inline void multiplier(std::uint32_t* r, const std::uint32_t* a,
                                              const std::uint32_t* b, const std::uint32_t* p,
                                              const float* reciproque, std::size_t n) {
  for (std::size_t i = 0; i < n; ++i) {
    const float produit = static_cast<float>(static_cast<std::int32_t>(a[i])) *
                          static_cast<float>(static_cast<std::int32_t>(b[i]));
    const auto quotient =
        static_cast<std::uint32_t>(static_cast<std::int32_t>(produit * reciproque[i]));
    std::uint32_t reste = a[i] * b[i] - quotient * p[i];
    reste = std::min(reste, reste + 2 * p[i]);
    reste = std::min(reste, reste - 2 * p[i]);
    r[i] = std::min(reste, reste - p[i]);
  }
}

// x mod p by a float product: (x + 1/2) / p is at least 1 / 2p away from the next integer, the
// error of the product less than 2^-22 (x + 1) / p, which is less for x < 2^20.
[[gnu::always_inline]] inline void reperer(std::uint32_t x, const std::uint32_t* p,
                                           const float* reciproque, const std::uint32_t* r1,
                                           const std::uint32_t* r2, std::size_t debut,
                                           std::size_t fin, std::vector<std::uint32_t>& liste) {
  assert(debut % largeur_vecteurs == 0 && fin % largeur_vecteurs == 0 &&
         x < (std::uint32_t{1} << 20));
  const float milieu = static_cast<float>(x) + 0.5F;
  for (std::size_t i = debut; i < fin; i += largeur_vecteurs) {
    std::uint8_t touche[largeur_vecteurs];
    std::uint8_t touches = 0;
    for (std::size_t j = 0; j < largeur_vecteurs; ++j) {
      const auto quotient = static_cast<std::int32_t>(milieu * reciproque[i + j]);
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
