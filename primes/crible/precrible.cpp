// SPDX-License-Identifier: MIT
// The sixteen patterns, and how they are joined: eight at a time, in stretches within which none of
// the eight starts again.
#include "primes/crible/precrible.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "primes/arithmetique/roue.h"

namespace premiers::crible {

namespace {

// Each pattern is longer than its period by this much, so that stretches can be whole multiples of
// it and the joining loop needs no remainder.
constexpr std::size_t marge = 64;

/// Crosses the multiples of p off a pattern of `periode` bytes, which p divides.
template <class Octets>
constexpr void rayer(Octets& octets, std::size_t periode, std::size_t p) {
  for (const std::size_t c : residus) {
    const std::size_t multiple = p * c;
    const std::uint8_t masque = sans_drapeau(multiple);
    for (std::size_t o = multiple / 30; o < periode; o += p) {
      octets[o] = static_cast<std::uint8_t>(octets[o] & masque);
    }
  }
}

/// The pattern of the primes P...: its period is their product.
template <std::size_t... P>
constexpr auto motif() {
  constexpr std::size_t periode = (P * ...);
  std::array<std::uint8_t, periode + marge> octets{};
  for (std::size_t i = 0; i < periode; ++i) octets[i] = 0xFF;
  (rayer(octets, periode, P), ...);
  for (std::size_t i = 0; i < marge; ++i) octets[periode + i] = octets[i];
  return octets;
}

// Small with large, so that the periods are even and their sum is small.
constexpr auto motif_7 = motif<7, 23, 37>();
constexpr auto motif_11 = motif<11, 19, 31>();
constexpr auto motif_13 = motif<13, 17, 29>();
constexpr auto motif_41 = motif<41, 163>();
constexpr auto motif_43 = motif<43, 157>();
constexpr auto motif_47 = motif<47, 151>();
constexpr auto motif_53 = motif<53, 149>();
constexpr auto motif_59 = motif<59, 139>();
constexpr auto motif_61 = motif<61, 137>();
constexpr auto motif_67 = motif<67, 131>();
constexpr auto motif_71 = motif<71, 127>();
constexpr auto motif_73 = motif<73, 113>();
constexpr auto motif_79 = motif<79, 109>();
constexpr auto motif_83 = motif<83, 107>();
constexpr auto motif_89 = motif<89, 103>();
constexpr auto motif_97 = motif<97, 101>();

struct Motif {
  const std::uint8_t* octets;
  std::size_t periode;
};

template <std::size_t N>
constexpr Motif vue(const std::array<std::uint8_t, N>& octets) {
  return {octets.data(), N - marge};
}

constexpr std::size_t par_passe = 8;
using Passe = std::array<Motif, par_passe>;
constexpr std::array<Passe, 2> passes{
    Passe{vue(motif_7), vue(motif_11), vue(motif_13), vue(motif_41), vue(motif_43), vue(motif_47),
          vue(motif_53), vue(motif_59)},
    Passe{vue(motif_61), vue(motif_67), vue(motif_71), vue(motif_73), vue(motif_79), vue(motif_83),
          vue(motif_89), vue(motif_97)}};

using Sources = std::array<const std::uint8_t*, par_passe>;

/// sortie = (Initiale ? all ones : sortie) AND the eight sources, n bytes.
template <bool Initiale>
[[gnu::always_inline]] inline void joindre(std::uint8_t* __restrict sortie, const Sources& s,
                                           std::size_t n) {
  const std::uint8_t *a = s[0], *b = s[1], *c = s[2], *d = s[3];
  const std::uint8_t *e = s[4], *f = s[5], *g = s[6], *h = s[7];
  for (std::size_t i = 0; i < n; ++i) {
    const int tous = a[i] & b[i] & c[i] & d[i] & e[i] & f[i] & g[i] & h[i];
    sortie[i] = static_cast<std::uint8_t>(Initiale ? tous : sortie[i] & tous);
  }
}

using Joindre = void (*)(std::uint8_t*, const Sources&, std::size_t);

void passer(const Passe& passe, Joindre fonction, std::span<std::uint8_t> octets,
            std::uint64_t octet_initial) {
  Sources sources{};
  std::array<std::size_t, par_passe> place{};
  for (std::size_t i = 0; i < par_passe; ++i) place[i] = octet_initial % passe[i].periode;
  while (!octets.empty()) {
    std::size_t n = octets.size();
    for (std::size_t i = 0; i < par_passe; ++i) {
      sources[i] = passe[i].octets + place[i];
      const std::size_t jusqu_au_bout = passe[i].periode - place[i];
      n = std::min(n, (jusqu_au_bout + marge - 1) / marge * marge);
    }
    fonction(octets.data(), sources, n);
    octets = octets.subspan(n);
    for (std::size_t i = 0; i < par_passe; ++i) {
      place[i] += n;
      if (place[i] >= passe[i].periode) place[i] -= passe[i].periode;
    }
  }
}

// Bytes 0 to 5 hold the pre-sieved primes themselves, which the patterns cross off.
constexpr std::size_t taille_debut = dernier_precrible / 30 + 1;
constexpr std::array<std::uint8_t, taille_debut> debut = [] {
  std::array<std::uint8_t, taille_debut> t{};
  for (std::size_t i = 0; i < 8 * taille_debut; ++i) {
    const unsigned n = valeurs_bits[i];
    bool premier = n > 1;
    for (unsigned d = 7; d * d <= n; ++d) premier = premier && n % d != 0;
    if (premier) t[i / 8] = static_cast<std::uint8_t>(t[i / 8] | 1u << (i % 8));
  }
  return t;
}();

template <Joindre initiale, Joindre seconde>
void precribler_par(std::span<std::uint8_t> octets, std::uint64_t octet_initial) {
  passer(passes[0], initiale, octets, octet_initial);
  passer(passes[1], seconde, octets, octet_initial);
  for (std::size_t i = 0; i < octets.size() && octet_initial + i < taille_debut; ++i) {
    octets[i] = debut[octet_initial + i];
  }
}

constexpr Version<decltype(&precribler)> versions[] = {
#if defined(__x86_64__)
    {instructions::avx2, precribler_par<Pour<joindre<true>>::avx2, Pour<joindre<false>>::avx2>},
#endif
    {instructions::aucune, precribler_par<Pour<joindre<true>>::tous, Pour<joindre<false>>::tous>},
};

}  // namespace

Versions<decltype(&precribler)> versions_de_precribler() { return versions; }

void precribler(std::span<std::uint8_t> octets, std::uint64_t octet_initial) {
  static const auto boucle = choisir(versions_de_precribler()).boucle;
  boucle(octets, octet_initial);
}

}  // namespace premiers::crible
