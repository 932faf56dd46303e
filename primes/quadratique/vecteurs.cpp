// SPDX-License-Identifier: MIT
#include "primes/quadratique/vecteurs.h"

#include <algorithm>
#include <bit>
#include <cstring>

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace premiers::quadratique {

namespace {

// Each loop is a struct with one function that is inlined wherever it is compiled for.

// A minimum of unsigned numbers does the reduction modulo p: the wrong one of the two has wrapped
// around and is huge.
struct Monter {
  [[gnu::always_inline]] static inline void corps(std::uint32_t* r, const std::uint32_t* d,
                                                  const std::uint32_t* p, std::size_t n) {
    for (std::size_t i = 0; i < n; ++i) r[i] = std::min(r[i] + d[i], r[i] + d[i] - p[i]);
  }
};

struct Descendre {
  [[gnu::always_inline]] static inline void corps(std::uint32_t* r, const std::uint32_t* d,
                                                  const std::uint32_t* p, std::size_t n) {
    for (std::size_t i = 0; i < n; ++i) r[i] = std::min(r[i] - d[i], r[i] - d[i] + p[i]);
  }
};

// The float quotient is wrong by less than one for products below 2^21 p: the remainder, computed
// modulo 2^32, is between -p and 2p.
struct Multiplier {
  [[gnu::always_inline]] static inline void corps(std::uint32_t* r, const std::uint32_t* a,
                                                  const std::uint32_t* b, const std::uint32_t* p,
                                                  const float* reciproque, std::size_t n) {
    for (std::size_t i = 0; i < n; ++i) {
      const float produit = static_cast<float>(static_cast<std::int32_t>(a[i])) *
                            static_cast<float>(static_cast<std::int32_t>(b[i]));
      const auto quotient =
          static_cast<std::uint32_t>(static_cast<std::int32_t>(produit * reciproque[i]));
      std::uint32_t reste = a[i] * b[i] - quotient * p[i];
      reste = std::min(reste, reste + p[i]);
      r[i] = std::min(reste, reste - p[i]);
    }
  }
};

// x mod p by a float product: (x + 1/2) / p is at least 1 / 2p away from the next integer, the
// error of the product less than 2^-22 (x + 1) / p, which is less for x < 2^20.
struct Reperer {
  [[gnu::always_inline]] static inline void corps(std::uint32_t x, const std::uint32_t* p,
                                                  const float* reciproque, const std::uint32_t* r1,
                                                  const std::uint32_t* r2, std::size_t n,
                                                  std::vector<std::uint32_t>& liste) {
    const float milieu = static_cast<float>(x) + 0.5F;
    for (std::size_t i = 0; i < n; i += largeur_vecteurs) {
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
};

struct Relever {
  [[gnu::always_inline]] static inline void corps(const std::uint8_t* octets, std::size_t n,
                                                  std::vector<std::uint32_t>& liste) {
    for (std::size_t x = 0; x < n; x += 64) {
      std::uint8_t tout = 0;
      for (std::size_t i = 0; i < 64; ++i) tout |= octets[x + i];
      if (tout < 128) continue;
      for (std::size_t i = 0; i < 64; ++i) {
        if (octets[x + i] >= 128) liste.push_back(static_cast<std::uint32_t>(x + i));
      }
    }
  }
};

struct Retenir {
  [[gnu::always_inline]] static inline std::size_t corps(const std::uint32_t* nombres,
                                                         std::size_t n, std::uint32_t borne,
                                                         std::uint32_t* liste) {
    std::size_t j = 0;
    for (std::size_t i = 0; i < n; ++i) {
      liste[j] = nombres[i];
      j += nombres[i] < borne ? 1U : 0U;
    }
    return j;
  }
};

struct Eliminer {
  [[gnu::always_inline]] static inline void corps(std::uint64_t* bits, std::size_t lignes,
                                                  std::size_t mots, std::size_t g,
                                                  const std::uint64_t* sommes) {
    const std::size_t largeur = mots - g / 4;
    for (std::size_t r = 0; r < lignes; ++r) {
      std::uint64_t* const ligne = bits + r * mots + g / 4;
      const std::uint64_t motif = *ligne >> (16 * (g % 4));
      const std::uint64_t* const bas = sommes + (motif & 255) * largeur;
      const std::uint64_t* const haut = sommes + (256 + ((motif >> 8) & 255)) * largeur;
      for (std::size_t j = 0; j < largeur; ++j) ligne[j] ^= bas[j] ^ haut[j];
    }
  }
};

template <class Boucle, class... A>
auto partout(A... a) {
  return Boucle::corps(a...);
}

#if defined(__x86_64__)

template <class Boucle, class... A>
[[gnu::target("avx2")]] auto avx2(A... a) {
  return Boucle::corps(a...);
}

template <class Boucle, class... A>
[[gnu::target("avx512f,avx512bw,avx512vl,avx512dq")]] auto avx512(A... a) {
  return Boucle::corps(a...);
}

// The one loop that has an instruction of its own, which the compiler does not find.
[[gnu::target("avx512f")]] std::size_t retenir_avx512(const std::uint32_t* nombres, std::size_t n,
                                                      std::uint32_t borne, std::uint32_t* liste) {
  const __m512i bornes = _mm512_set1_epi32(static_cast<int>(borne));
  std::size_t i = 0;
  std::size_t j = 0;
  for (; i + 16 <= n; i += 16) {
    const __m512i v = _mm512_loadu_si512(nombres + i);
    const __mmask16 oui = _mm512_cmplt_epu32_mask(v, bornes);
    _mm512_storeu_si512(liste + j, _mm512_maskz_compress_epi32(oui, v));
    j += static_cast<std::size_t>(std::popcount(static_cast<unsigned>(oui)));
  }
  return j + Retenir::corps(nombres + i, n - i, borne, liste + j);
}

#endif

}  // namespace

const Vecteurs& vecteurs() {
  static const Vecteurs pour_tous{partout<Monter>,  partout<Descendre>, partout<Multiplier>,
                                  partout<Reperer>, partout<Relever>,   partout<Retenir>,
                                  partout<Eliminer>};
#if defined(__x86_64__)
  static const Vecteurs pour_avx2{avx2<Monter>,  avx2<Descendre>, avx2<Multiplier>, avx2<Reperer>,
                                  avx2<Relever>, avx2<Retenir>,   avx2<Eliminer>};
  static const Vecteurs pour_avx512{avx512<Monter>,  avx512<Descendre>, avx512<Multiplier>,
                                    avx512<Reperer>, avx512<Relever>,   retenir_avx512,
                                    avx512<Eliminer>};
  static const int choix = [] {
    if (__builtin_cpu_supports("avx512bw") && __builtin_cpu_supports("avx512dq") &&
        __builtin_cpu_supports("avx512vl")) {
      return 2;
    }
    return __builtin_cpu_supports("avx2") ? 1 : 0;
  }();
  if (choix == 2) return pour_avx512;
  if (choix == 1) return pour_avx2;
#endif
  return pour_tous;
}

}  // namespace premiers::quadratique
