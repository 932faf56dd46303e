// SPDX-License-Identifier: MIT
// What makes it fast: bits are counted 64 at a time by the processor's instruction, or 512 at a
// time where it has AVX-512 (hard leaves of 10^14: 0.36 s without any, 0.098 s, 0.068 s); nothing
// branches on what the flags are.
#include "primes/compte/segment.h"

#include <algorithm>
#include <array>
#include <bit>
#include <utility>

#if defined(__x86_64__)
#include <immintrin.h>
#endif

#include "primes/arithmetique/roue.h"
#include "primes/compte/tables.h"

namespace premiers {

namespace {

static_assert(std::endian::native == std::endian::little, "bytes and words share the sieve");

constexpr std::size_t mots_par_bloc = SegmentCompte::mots_par_bloc;

// debuts_de_bloc[n]: masks of the first n words of a block.
constexpr auto debuts_de_bloc = [] {
  std::array<std::array<std::uint64_t, mots_par_bloc>, mots_par_bloc> t{};
  for (std::size_t n = 0; n < mots_par_bloc; ++n) {
    for (std::size_t j = 0; j < n; ++j) t[n][j] = ~std::uint64_t{0};
  }
  return t;
}();

// The phase of a pattern, block after block.
struct Phase {
  Phase(const SegmentCompte& s, const Motif& motif)
      : mots(motif.mots.data()), periode(motif.periode), phase(s.octet / 8 % periode) {}

  const std::uint64_t* mots;
  std::uint64_t periode;
  std::uint64_t phase;

  const std::uint64_t* bloc() const { return mots + phase; }
  void avancer() {
    phase += mots_par_bloc;
    if (phase >= periode) phase -= periode;
  }
};

[[gnu::always_inline]] inline void poser(SegmentCompte& s, const Motif& motif) {
  Phase phase(s, motif);
  std::uint64_t* mots = s.mots.data();
  s.total = 0;
  for (std::uint16_t& bloc : s.blocs) {
    const std::uint64_t* masques = phase.bloc();
    std::uint64_t reste = 0;
    for (std::size_t j = 0; j < mots_par_bloc; ++j) {
      mots[j] &= masques[j];
      reste += static_cast<std::uint64_t>(std::popcount(mots[j]));
    }
    bloc = static_cast<std::uint16_t>(reste);
    s.total += reste;
    mots += mots_par_bloc;
    phase.avancer();
  }
}

[[gnu::always_inline]] inline std::uint64_t compter(const SegmentCompte& s,
                                                    std::span<const Question> questions) {
  std::uint64_t somme = 0;
  for (const Question q : questions) {
    const std::size_t mot = q / 2 / 240;
    const std::uint64_t* bloc = s.mots.data() + mot / mots_par_bloc * mots_par_bloc;
    const auto& debut = debuts_de_bloc[mot % mots_par_bloc];
    auto compte =
        static_cast<std::uint64_t>(std::popcount(s.mots[mot] & masques_jusqu_a[q / 2 % 240]));
    for (std::size_t j = 0; j < mots_par_bloc; ++j) {
      compte += static_cast<std::uint64_t>(std::popcount(bloc[j] & debut[j]));
    }
    const std::uint64_t moins = 0 - std::uint64_t{q & 1};
    somme += (compte ^ moins) - moins;
  }
  return somme;
}

#if defined(__x86_64__)

[[gnu::target("avx512f,avx512vpopcntdq")]] inline std::uint64_t reduire(__m512i v) {
  const __m256i demi = _mm256_add_epi64(_mm512_maskz_extracti64x4_epi64(0xF, v, 0),
                                        _mm512_maskz_extracti64x4_epi64(0xF, v, 1));
  const __m128i quart =
      _mm_add_epi64(_mm256_castsi256_si128(demi), _mm256_extracti128_si256(demi, 1));
  return static_cast<std::uint64_t>(
      _mm_cvtsi128_si64(_mm_add_epi64(quart, _mm_unpackhi_epi64(quart, quart))));
}

[[gnu::target("avx512f,avx512vpopcntdq")]] void poser_avx512(SegmentCompte& s, const Motif& motif) {
  Phase phase(s, motif);
  std::uint64_t* mots = s.mots.data();
  std::uint64_t total = 0;
  for (std::uint16_t& bloc : s.blocs) {
    const __m512i v = _mm512_and_si512(_mm512_loadu_si512(mots), _mm512_loadu_si512(phase.bloc()));
    _mm512_storeu_si512(mots, v);
    const std::uint64_t reste = reduire(_mm512_popcnt_epi64(v));
    bloc = static_cast<std::uint16_t>(reste);
    total += reste;
    mots += mots_par_bloc;
    phase.avancer();
  }
  s.total = total;
}

[[gnu::target("avx512f,avx512vpopcntdq")]] std::uint64_t compter_avx512(
    const SegmentCompte& s, std::span<const Question> questions) {
  __m512i somme = _mm512_setzero_si512();
  for (const Question q : questions) {
    const std::size_t mot = q / 2 / 240;
    const auto masque = static_cast<long long>(masques_jusqu_a[q / 2 % 240]);
    const std::uint64_t* bloc = s.mots.data() + mot / mots_par_bloc * mots_par_bloc;
    const std::uint32_t ici = 1u << (mot % mots_par_bloc);
    __m512i v = _mm512_maskz_loadu_epi64(static_cast<__mmask8>(2 * ici - 1), bloc);
    v = _mm512_mask_and_epi64(v, static_cast<__mmask8>(ici), v, _mm512_set1_epi64(masque));
    v = _mm512_popcnt_epi64(v);
    const auto moins = static_cast<__mmask8>(0u - (q & 1));
    somme = _mm512_mask_sub_epi64(_mm512_add_epi64(somme, v), moins, somme, v);
  }
  return reduire(somme);
}

#endif

constexpr Version<SegmentCompte::Noyaux> versions[] = {
#if defined(__x86_64__)
    {instructions::avx512f | instructions::avx512vpopcntdq, {poser_avx512, compter_avx512}},
    {instructions::popcnt, {Pour<poser>::popcnt, Pour<compter>::popcnt}},
#endif
    {instructions::aucune, {Pour<poser>::tous, Pour<compter>::tous}},
};

// The multiples of primes 30 k + residus[R], by the residue of the cofactor
// (primes/arithmetique/roue.h).
struct TableCroix {
  std::array<std::uint8_t, 8> bits{};
  std::array<std::uint8_t, 8> decalages{};
  std::array<std::uint8_t, 8> retenues{};
};
template <std::size_t R>
constexpr TableCroix croix = [] {
  TableCroix t{};
  [&t]<std::size_t... C>(std::index_sequence<C...>) {
    ((t.bits[C] = indice_suivant[Croix<R, C>::produit % 30]), ...);
    ((t.decalages[C] = Croix<R, C>::decalage), ...);
    ((t.retenues[C] = Croix<R, C>::retenue), ...);
  }
  (std::make_index_sequence<8>{});
  return t;
}();

// Clears flags and keeps the counts.
struct Gomme {
  std::uint8_t* octets;
  std::uint16_t* blocs;
  std::uint32_t effaces = 0;

  [[gnu::always_inline]] void effacer(std::uint32_t octet, unsigned bit) {
    const std::uint32_t present = (octets[octet] >> bit) & 1u;
    std::uint16_t& bloc = blocs[octet / SegmentCompte::octets_par_bloc];
    octets[octet] &= static_cast<std::uint8_t>(~(1u << bit));
    bloc = static_cast<std::uint16_t>(bloc - present);
    effaces += present;
  }

  // A full turn of the wheel for q = 30 k + residus[R], from the multiple by cofactor residue 1 on.
  template <std::size_t R, std::size_t... C>
  [[gnu::always_inline]] void effacer_tour(std::uint32_t octet, std::uint32_t k,
                                           std::index_sequence<C...>) {
    (effacer(octet + k * (residus[C] - residus[0]) + croix<R>.decalages[C], croix<R>.bits[C]), ...);
  }
};

// Multiple by multiple up to a cofactor residue 1, eight at a time, and the rest one by one.
template <std::size_t R>
void rayer_residu(SegmentCompte& s, Multiple& multiple) {
  Gomme gomme{reinterpret_cast<std::uint8_t*>(s.mots.data()), s.blocs.data()};
  const auto taille = static_cast<std::uint32_t>(8 * s.mots.size());
  const std::uint32_t k = multiple.q / 30;
  std::uint32_t o = multiple.octet;
  std::uint32_t c = multiple.cofacteur;
  for (; c != 0 && o < taille; c = (c + 1) % 8) {
    gomme.effacer(o, croix<R>.bits[c]);
    o += k * ecarts[c] + croix<R>.retenues[c];
  }
  const std::uint32_t tour = k * (residus[7] - residus[0]) + croix<R>.decalages[7];
  for (; o + tour < taille; o += multiple.q) {
    gomme.effacer_tour<R>(o, k, std::make_index_sequence<8>{});
  }
  for (; o < taille; c = (c + 1) % 8) {
    gomme.effacer(o, croix<R>.bits[c]);
    o += k * ecarts[c] + croix<R>.retenues[c];
  }
  multiple.octet = o - taille;
  multiple.cofacteur = static_cast<std::uint8_t>(c);
  s.total -= gomme.effaces;
}

}  // namespace

Motif::Motif(std::span<const std::uint32_t> facteurs) {
  for (const std::uint32_t p : facteurs) periode *= p;
  mots.assign(periode + mots_par_bloc, ~std::uint64_t{0});
  for (const std::uint32_t p : facteurs) effacer_multiples(mots, p);
}

Multiple Multiple::premier(std::uint32_t q, std::uint64_t octet_bas) {
  const std::uint64_t cofacteur = (30 * octet_bas + q - 1) / q;
  const std::uint8_t c = indice_suivant[static_cast<std::size_t>(cofacteur % 30)];
  const std::uint64_t multiple = (cofacteur / 30 * 30 + residus[c]) * q;
  return {q, static_cast<std::uint32_t>(multiple / 30 - octet_bas), c};
}

SegmentCompte::SegmentCompte(std::size_t taille)
    : mots(taille / 8),
      blocs(taille / octets_par_bloc),
      avant(taille / octets_par_bloc),
      noyaux(choisir(versions_des_noyaux()).boucle) {}

Versions<SegmentCompte::Noyaux> SegmentCompte::versions_des_noyaux() { return versions; }

void SegmentCompte::commencer(const Motif& a, const Motif& b) {
  Phase phase(*this, a);
  for (std::size_t i = 0; i < mots.size(); i += mots_par_bloc) {
    std::copy_n(phase.bloc(), mots_par_bloc, mots.data() + i);
    phase.avancer();
  }
  poser(b);
}

void SegmentCompte::rayer(Multiple& multiple) {
  switch (indice_suivant[multiple.q % 30]) {
    case 0:
      return rayer_residu<0>(*this, multiple);
    case 1:
      return rayer_residu<1>(*this, multiple);
    case 2:
      return rayer_residu<2>(*this, multiple);
    case 3:
      return rayer_residu<3>(*this, multiple);
    case 4:
      return rayer_residu<4>(*this, multiple);
    case 5:
      return rayer_residu<5>(*this, multiple);
    case 6:
      return rayer_residu<6>(*this, multiple);
    default:
      return rayer_residu<7>(*this, multiple);
  }
}

void SegmentCompte::cumuler() {
  std::uint32_t somme = 0;
  for (std::size_t i = 0; i < blocs.size(); ++i) {
    avant[i] = somme;
    somme += blocs[i];
  }
}

Compteur::Compteur(SegmentCompte& s, std::size_t nombre)
    : segment_(s), cumule_(nombre >= questions_pour_cumul) {
  if (cumule_) s.cumuler();
}

std::uint64_t Compteur::operator()(std::span<const Question> questions) {
  std::uint64_t somme = segment_.noyaux.compter(segment_, questions);
  const auto ajouter = [&somme](std::uint64_t avant, Question q) {
    const std::uint64_t moins = 0 - std::uint64_t{q & 1};
    somme += (avant ^ moins) - moins;
  };
  constexpr std::uint32_t pas = 2 * 240 * mots_par_bloc;
  if (cumule_) {
    for (const Question q : questions) ajouter(segment_.avant[q / pas], q);
    return somme;
  }
  for (const Question q : questions) {
    std::uint32_t entre = 0;
    for (; bloc_ < q / pas; ++bloc_) entre += segment_.blocs[bloc_];
    avant_ += entre;
    ajouter(avant_, q);
  }
  return somme;
}

}  // namespace premiers
