// SPDX-License-Identifier: MIT
// The loops over whole blocks of flags, for several processors: laying patterns down, and counting.
//
// What makes them fast: bits are counted 64 at a time by the processor's instruction, or 512 at a
// time where it has AVX-512 (hard leaves of 10^14: 0.36 s without any, 0.098 s, 0.068 s); nothing
// branches on what the flags are.
//
// Not every processor with AVX-512 counts bits with it. Those that do not look up the number of bits
// of half bytes in a register: W. Mula, N. Kurz, D. Lemire, "Faster population counts using AVX2
// instructions", The Computer Journal 61 (2018).
#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

#include "primes/compte/segment.h"

#if defined(__x86_64__)
#include <immintrin.h>
#endif

#include "primes/arithmetique/bits.h"
#include "primes/arithmetique/quotient.h"

namespace premiers::compte {

namespace {

constexpr std::size_t mots_par_bloc = SegmentCompte::mots_par_bloc;
constexpr Question pas = SegmentCompte::questions_par_bloc;

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
    std::uint64_t compte = compter_jusqu_a(s.mots[mot], q / 2 % 240);
    for (std::size_t j = 0; j < mots_par_bloc; ++j) {
      compte += static_cast<std::uint64_t>(std::popcount(bloc[j] & debut[j]));
    }
    const std::uint64_t moins = 0 - std::uint64_t{q & 1};
    somme += (compte ^ moins) - moins;
  }
  return somme;
}

[[gnu::always_inline]] inline std::uint64_t compter_avant(const SegmentCompte& s,
                                                          std::span<const Question> questions) {
  std::uint64_t somme = 0;
  for (const Question q : questions) {
    const std::uint64_t moins = 0 - std::uint64_t{q & 1};
    somme += (s.avant[q / pas] ^ moins) - moins;
  }
  return somme;
}

#if defined(__x86_64__)

[[gnu::target("avx512f")]] inline std::uint64_t reduire(__m512i v) {
  const __m256i demi = _mm256_add_epi64(_mm512_maskz_extracti64x4_epi64(0xF, v, 0),
                                        _mm512_maskz_extracti64x4_epi64(0xF, v, 1));
  const __m128i quart =
      _mm_add_epi64(_mm256_castsi256_si128(demi), _mm256_extracti128_si256(demi, 1));
  return static_cast<std::uint64_t>(
      _mm_cvtsi128_si64(_mm_add_epi64(quart, _mm_unpackhi_epi64(quart, quart))));
}

// The flags of its block that a question counts.
[[gnu::target("avx512f")]] inline __m512i drapeaux_demandes(const SegmentCompte& s, Question q) {
  const std::size_t mot = q / 2 / 240;
  const auto masque = static_cast<long long>(masques_jusqu_a[q / 2 % 240]);
  const std::uint64_t* bloc = s.mots.data() + mot / mots_par_bloc * mots_par_bloc;
  const std::uint32_t ici = 1u << (mot % mots_par_bloc);
  const __m512i v = _mm512_maskz_loadu_epi64(static_cast<__mmask8>(2 * ici - 1), bloc);
  return _mm512_mask_and_epi64(v, static_cast<__mmask8>(ici), v, _mm512_set1_epi64(masque));
}

// Adds what was counted for a question, or takes it away, as its lowest bit says.
[[gnu::target("avx512f")]] inline __m512i ajouter_ou_retirer(__m512i somme, __m512i comptes,
                                                             Question q) {
  const auto moins = static_cast<__mmask8>(0u - (q & 1));
  return _mm512_mask_sub_epi64(_mm512_add_epi64(somme, comptes), moins, somme, comptes);
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
    somme = ajouter_ou_retirer(somme, _mm512_popcnt_epi64(drapeaux_demandes(s, q)), q);
  }
  return reduire(somme);
}

// The number of bits of each word, without the instruction for it.
[[gnu::target("avx512f,avx512bw")]] inline __m512i bits_par_mot(__m512i v) {
  // Of 0 .. 15, the lowest byte first, four times over.
  const __m512i bits_de_4 = _mm512_set4_epi32(0x04030302, 0x03020201, 0x03020201, 0x02010100);
  const __m512i bas = _mm512_set1_epi8(0xF);
  const __m512i par_octet = _mm512_add_epi8(
      _mm512_shuffle_epi8(bits_de_4, _mm512_and_si512(v, bas)),
      _mm512_shuffle_epi8(bits_de_4, _mm512_and_si512(_mm512_srli_epi16(v, 4), bas)));
  return _mm512_sad_epu8(par_octet, _mm512_setzero_si512());
}

// One block; gives the bits left of its words.
[[gnu::target("avx512f,avx512bw")]] inline __m512i poser_un_bloc(std::uint64_t* mots,
                                                                 const std::uint64_t* masques) {
  const __m512i v = _mm512_and_si512(_mm512_loadu_si512(mots), _mm512_loadu_si512(masques));
  _mm512_storeu_si512(mots, v);
  return bits_par_mot(v);
}

[[gnu::target("avx512f,avx512bw")]] void poser_par_tables(SegmentCompte& s, const Motif& motif) {
  constexpr std::size_t de_front = 4;  // counts of 16 bits fill a word
  Phase phase(s, motif);
  std::uint64_t* mots = s.mots.data();
  __m512i total = _mm512_setzero_si512();
  std::size_t b = 0;
  for (; b + de_front <= s.blocs.size(); b += de_front) {
    __m512i comptes = _mm512_setzero_si512();
    for (unsigned j = 0; j < de_front; ++j, mots += mots_par_bloc, phase.avancer()) {
      const __m512i un = poser_un_bloc(mots, phase.bloc());
      total = _mm512_add_epi64(total, un);
      comptes = _mm512_add_epi64(comptes, _mm512_maskz_slli_epi64(0xFF, un, 16 * j));
    }
    const std::uint64_t quatre = reduire(comptes);
    std::memcpy(&s.blocs[b], &quatre, sizeof quatre);
  }
  for (; b < s.blocs.size(); ++b, mots += mots_par_bloc, phase.avancer()) {
    const __m512i un = poser_un_bloc(mots, phase.bloc());
    total = _mm512_add_epi64(total, un);
    s.blocs[b] = static_cast<std::uint16_t>(reduire(un));
  }
  s.total = reduire(total);
}

[[gnu::target("avx512f,avx512bw")]] std::uint64_t compter_par_tables(
    const SegmentCompte& s, std::span<const Question> questions) {
  __m512i somme = _mm512_setzero_si512();
  for (const Question q : questions) {
    somme = ajouter_ou_retirer(somme, bits_par_mot(drapeaux_demandes(s, q)), q);
  }
  return reduire(somme);
}

// The sums of the first and second of each pair of 32-bit numbers.
[[gnu::target("avx512f")]] inline __m512i paires(__m512i v) {
  return _mm512_add_epi64(_mm512_maskz_srli_epi64(0xFF, v, 32),
                          _mm512_and_si512(v, _mm512_set1_epi64(0xFFFFFFFF)));
}

// Sixteen questions at a time; their block, q / 256 / 15, by a float product: doubles would be eight.
[[gnu::target("avx512f")]] std::uint64_t compter_avant_avx512(const SegmentCompte& s,
                                                              std::span<const Question> questions) {
  constexpr int bits_de_256 = 8;
  static_assert(pas == 15 << bits_de_256 &&
                SegmentCompte::taille_max / 256 * 60 < 1U << bits_par_inverse<float>);
  const __m512 quinzieme = _mm512_set1_ps(1.0F / 15);
  __m512i plus = _mm512_setzero_si512();
  __m512i moins = _mm512_setzero_si512();
  for (std::size_t k = 0; k < questions.size(); k += 16) {
    const std::size_t reste = questions.size() - k;
    const auto la = static_cast<__mmask16>(reste < 16 ? (1U << reste) - 1 : 0xFFFF);
    const __m512i q = _mm512_maskz_loadu_epi32(la, questions.data() + k);
    const __m512i haut = _mm512_maskz_srli_epi32(0xFFFF, q, bits_de_256);
    const __m512i bloc = seize_quotients_par_inverse(haut, quinzieme);
    const __m512i avant = _mm512_mask_i32gather_epi32(_mm512_setzero_si512(), la, bloc,
                                                      s.avant.data(), sizeof(std::uint32_t));
    const __mmask16 negatives = _mm512_test_epi32_mask(q, _mm512_set1_epi32(1));
    plus = _mm512_add_epi64(
        plus, paires(_mm512_maskz_mov_epi32(static_cast<__mmask16>(~negatives), avant)));
    moins = _mm512_add_epi64(moins, paires(_mm512_maskz_mov_epi32(negatives, avant)));
  }
  return reduire(plus) - reduire(moins);
}

#endif

constexpr Version<SegmentCompte::Noyaux> versions[] = {
#if defined(__x86_64__)
    {instructions::avx512f | instructions::avx512vpopcntdq,
     {poser_avx512, compter_avx512, compter_avant_avx512}},
    {instructions::avx512f | instructions::avx512bw,
     {poser_par_tables, compter_par_tables, compter_avant_avx512}},
    {instructions::popcnt,
     {Pour<poser>::popcnt, Pour<compter>::popcnt, Pour<compter_avant>::popcnt}},
#endif
    {instructions::aucune, {Pour<poser>::tous, Pour<compter>::tous, Pour<compter_avant>::tous}},
};

}  // namespace

Versions<SegmentCompte::Noyaux> SegmentCompte::versions_des_noyaux() { return versions; }

void SegmentCompte::commencer(const Motif& a, const Motif& b) {
  Phase phase(*this, a);
  for (std::size_t i = 0; i < mots.size(); i += mots_par_bloc) {
    std::copy_n(phase.bloc(), mots_par_bloc, mots.data() + i);
    phase.avancer();
  }
  poser(b);
}

}  // namespace premiers::compte
