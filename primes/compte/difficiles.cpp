// SPDX-License-Identifier: MIT
// The integers up to x / z are sieved in segments, one prime q after the other, by rank; right
// before the multiples of q go, phi(n, pi(q) - 1) is the number of those left up to n. It is the
// count of all segments before (kept for each q) plus a count within the segment, which is fast
// because
//   - a flag is a bit (primes/arithmetique/roue.h), counted 64 at a time by the processor's instruction;
//   - the segment keeps a count for each block of 64 words. Crossing off updates it, and a leaf
//   sums
//     block counts, then at most 63 words. Leaves come by increasing n, so both sums go on;
//   - 2 .. 19 are never sieved but copied in as a pattern. The primes up to `motif_max` are ANDed
//   in
//     as patterns of q words, a block at a time, which is then counted anew: 2 to 10 times faster
//     than crossing off and more than half of all multiples.
// An m is at most w / q^2, w = x / q: for q > sqrt(z), m is a prime.
//
// A prime q joins at the first segment that reaches q^2, where phi(low, pi(q) - 1) is known from
// pi(low) alone, and leaves for good with the last segment that its leaves reach.
#include "primes/compte/difficiles.h"

#include <algorithm>
#include <array>
#include <bit>
#include <span>
#include <utility>
#include <vector>

#include "primes/compte/facteurs.h"
#include "primes/compte/phi.h"
#include "primes/arithmetique/roue.h"

namespace premiers {

namespace {

static_assert(std::endian::native == std::endian::little, "bytes and words share the sieve");

// A block is a cache line. Effect of more: less to sum up, more to count for each leaf.
constexpr std::size_t mots_par_bloc = 8;
constexpr std::size_t octets_par_bloc = 8 * mots_par_bloc;

// Effect: from this many leaves of a line in a segment on, all block counts are summed up
// beforehand. Sensible: 8 to 64.
constexpr std::size_t feuilles_pour_cumul = 16;

// Effect: primes up to here are ANDed in word by word. Sensible: 60 to 500; flat between.
constexpr std::uint32_t motif_max = 200;

struct Segment {
  std::vector<std::uint64_t> mots;
  std::vector<std::uint16_t> blocs;  // bits left in each block
  std::vector<std::uint32_t> avant;  // bits left before each block, where summed up
  std::uint64_t total = 0;           // bits left
  std::uint64_t octet = 0;           // of the first byte, from that of 0 .. 29
  std::uint64_t bas() const { return 30 * octet; }
  std::uint64_t haut() const { return 30 * (octet + 8 * mots.size()); }
};

// A prime q with what its leaves and multiples have come to.
struct Ligne {
  std::uint64_t w;    // x / q
  std::uint64_t phi;  // phi(bas - 1, pi(q) - 1)
  std::uint32_t q;
  std::uint32_t curseur;   // the next m is number curseur - 1 of its table, down to
  std::uint32_t fin;       // this one
  std::uint32_t octet;     // of the next multiple, from the start of the segment
  std::uint8_t cofacteur;  // index of the residue of its cofactor
};

// Copies of a pattern of q words (q bytes of flags repeat after q words as well), continued by one
// block so that a block never wraps.
struct Motif {
  std::vector<std::uint64_t> mots;
  std::uint32_t q;
};

// Flags of the integers coprime to all of `facteurs`, whose product is the period.
Motif dessiner(std::span<const std::uint32_t> facteurs) {
  std::uint32_t periode = 1;
  for (const std::uint32_t p : facteurs) periode *= p;
  Motif motif{std::vector<std::uint64_t>(periode + mots_par_bloc, ~std::uint64_t{0}), periode};
  for (const std::uint32_t p : facteurs) effacer_multiples(motif.mots, p);
  return motif;
}

// Where a prime 30 k + residus[R] crosses off, by the residue of the cofactor (primes/arithmetique/roue.h).
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

struct Atelier {
  const Plan& plan;
  TableFacteurs facteurs;
  Segment segment{};
  std::array<Motif, 2> fonds;   // 7, 11, 13 and 17, 19
  std::vector<Motif> motifs{};  // of the first lines
  std::vector<Ligne> lignes{};  // the primes after the eighth
  std::size_t composees = 0;    // lines of q <= sqrt(z), whose m come from the table of factors
  std::size_t actives = 0;      // lines that the segment is sieved with
  std::uint64_t pi_bas = 0;     // primes below the segment
  std::uint64_t somme = 0;
};

// Starts the segment: copies the flags of the integers coprime to 2 .. 19.
[[gnu::always_inline]] inline void poser_fond(Segment& s, const std::array<Motif, 2>& fonds) {
  const std::uint64_t debut = s.octet / 8;
  std::uint64_t a = debut % fonds[0].q;
  std::uint64_t b = debut % fonds[1].q;
  std::uint64_t* mots = s.mots.data();
  for (std::size_t i = 0; i < s.mots.size(); i += mots_par_bloc) {
    const std::uint64_t* fond_a = fonds[0].mots.data() + a;
    const std::uint64_t* fond_b = fonds[1].mots.data() + b;
    for (std::size_t j = 0; j < mots_par_bloc; ++j) mots[i + j] = fond_a[j] & fond_b[j];
    a = (a + mots_par_bloc) % fonds[0].q;
    b = (b + mots_par_bloc) % fonds[1].q;
  }
}

// Takes the multiples of the pattern's prime out, and counts each block anew.
[[gnu::always_inline]] inline void poser_motif(Segment& s, const Motif& motif) {
  std::uint64_t phase = s.octet / 8 % motif.q;
  std::uint64_t* mots = s.mots.data();
  std::uint64_t total = 0;
  for (std::size_t bloc = 0; bloc < s.blocs.size(); ++bloc) {
    const std::uint64_t* m = motif.mots.data() + phase;
    std::uint64_t reste = 0;
    for (std::size_t j = 0; j < mots_par_bloc; ++j) {
      mots[j] &= m[j];
      reste += static_cast<std::uint64_t>(std::popcount(mots[j]));
    }
    s.blocs[bloc] = static_cast<std::uint16_t>(reste);
    total += reste;
    mots += mots_par_bloc;
    phase = (phase + mots_par_bloc) % motif.q;
  }
  s.total = total;
}

[[gnu::always_inline]] inline void compter_blocs(Segment& s) {
  s.total = 0;
  const std::uint64_t* mots = s.mots.data();
  for (std::uint16_t& bloc : s.blocs) {
    std::uint64_t reste = 0;
    for (std::size_t j = 0; j < mots_par_bloc; ++j) {
      reste += static_cast<std::uint64_t>(std::popcount(mots[j]));
    }
    bloc = static_cast<std::uint16_t>(reste);
    s.total += reste;
    mots += mots_par_bloc;
  }
}

// Crosses off the multiples of a prime 30 k + residus[R] by cofactors coprime to 30, eight at a
// time where a full turn of the wheel fits.
template <std::size_t R>
[[gnu::always_inline]] inline void rayer(Segment& s, Ligne& ligne) {
  auto* octets = reinterpret_cast<std::uint8_t*>(s.mots.data());
  std::uint16_t* blocs = s.blocs.data();
  const auto taille = static_cast<std::uint32_t>(8 * s.mots.size());
  const std::uint32_t k = ligne.q / 30;
  std::uint32_t o = ligne.octet;
  std::uint32_t rayes = 0;
  const auto toucher = [&](std::uint32_t octet, unsigned bit) {
    const std::uint32_t present = (octets[octet] >> bit) & 1u;
    octets[octet] &= static_cast<std::uint8_t>(~(1u << bit));
    blocs[octet / octets_par_bloc] =
        static_cast<std::uint16_t>(blocs[octet / octets_par_bloc] - present);
    rayes += present;
  };
  std::uint32_t c = ligne.cofacteur;
  const auto pas = [&] {
    toucher(o, croix<R>.bits[c]);
    o += k * ecarts[c] + croix<R>.retenues[c];
    c = (c + 1) & 7;
  };
  while (c != 0 && o < taille) pas();
  const std::uint32_t tour = k * (residus[7] - residus[0]) + croix<R>.decalages[7];
  for (; o + tour < taille; o += ligne.q) {
    [&]<std::size_t... C>(std::index_sequence<C...>) {
      (toucher(o + k * (residus[C] - residus[0]) + croix<R>.decalages[C], croix<R>.bits[C]), ...);
    }
    (std::make_index_sequence<8>{});
  }
  while (o < taille) pas();
  ligne.octet = o - taille;
  ligne.cofacteur = static_cast<std::uint8_t>(c);
  s.total -= rayes;
}

[[gnu::always_inline]] inline void rayer(Segment& s, Ligne& ligne) {
  switch (indice_suivant[ligne.q % 30]) {
    case 0:
      return rayer<0>(s, ligne);
    case 1:
      return rayer<1>(s, ligne);
    case 2:
      return rayer<2>(s, ligne);
    case 3:
      return rayer<3>(s, ligne);
    case 4:
      return rayer<4>(s, ligne);
    case 5:
      return rayer<5>(s, ligne);
    case 6:
      return rayer<6>(s, ligne);
    default:
      return rayer<7>(s, ligne);
  }
}

// floor(w / m), for a quotient below 2^50: double precision, then what is wrong put right.
[[gnu::always_inline]] inline std::uint64_t diviser(std::uint64_t w, double w_reel,
                                                    std::uint64_t m) {
  const double reel = w_reel / static_cast<double>(static_cast<std::int64_t>(m));
  auto n = static_cast<std::uint64_t>(static_cast<std::int64_t>(reel));
  n += (n + 1) * m <= w;
  n -= n * m > w;
  return n;
}

// The bits of block `mot / 8` up to integer r of word `mot`.
[[gnu::always_inline]] inline std::uint64_t compter_dans_bloc(const std::uint64_t* mots,
                                                              std::size_t mot, std::size_t r) {
  const std::uint64_t* bloc = mots + mot / mots_par_bloc * mots_par_bloc;
  const std::size_t entiers = mot % mots_par_bloc;
  auto compte = static_cast<std::uint64_t>(std::popcount(mots[mot] & masques_jusqu_a[r]));
  for (std::size_t j = 0; j < mots_par_bloc; ++j) {
    compte += j < entiers ? static_cast<std::uint64_t>(std::popcount(bloc[j])) : 0;
  }
  return compte;
}

// Sums up the bits before each block.
[[gnu::always_inline]] inline void cumuler(Segment& s) {
  std::uint32_t somme = 0;
  for (std::size_t i = 0; i < s.blocs.size(); ++i) {
    s.avant[i] = somme;
    somme += s.blocs[i];
  }
}

// The same for leaves few and far between: goes on from the block of the leaf before.
struct Marche {
  const std::uint16_t* blocs;
  std::size_t bloc = 0;
  std::uint64_t avant = 0;

  [[gnu::always_inline]] std::uint64_t operator()(std::size_t cible) {
    std::uint32_t somme = 0;
    for (; bloc < cible; ++bloc) somme += blocs[bloc];
    avant += somme;
    return avant;
  }
};

// The sum of the leaves of a line whose m are m(0), m(1) ... m(nombre - 1), in decreasing order,
// with n in the segment; plus(i) is 1 where the leaf counts positively, else 0.
template <typename M, typename Plus>
[[gnu::always_inline]] inline std::uint64_t sommer(const Ligne& ligne, Segment& s,
                                                   std::size_t nombre, bool cumule, M m,
                                                   Plus plus) {
  const std::uint64_t bas = s.bas();
  const auto w_reel = static_cast<double>(ligne.w);
  const std::uint64_t* mots = s.mots.data();
  std::uint64_t somme = 0;
  Marche marche{s.blocs.data()};
  for (std::size_t i = 0; i < nombre; ++i) {
    const auto n = static_cast<std::uint32_t>(diviser(ligne.w, w_reel, m(i)) - bas);
    const std::size_t mot = n / 240;
    const std::uint64_t avant = cumule ? s.avant[mot / mots_par_bloc] : marche(mot / mots_par_bloc);
    const std::uint64_t phi = ligne.phi + avant + compter_dans_bloc(mots, mot, n % 240);
    const std::uint64_t moins = plus(i) - 1;
    somme += (phi ^ moins) - moins;
  }
  return somme;
}

// The leaves of a line within the segment, m from the table of factors.
[[gnu::always_inline]] inline std::uint64_t feuilles_composees(Ligne& ligne, Segment& s,
                                                               const TableFacteurs& facteurs) {
  const std::uint64_t seuil = ligne.w / s.haut();
  const auto fin = std::max(ligne.fin, static_cast<std::uint32_t>(std::min<std::uint64_t>(
                                           Roue2310::nombre(seuil), ligne.curseur)));
  const bool cumule = ligne.curseur - fin >= feuilles_pour_cumul;
  if (cumule) cumuler(s);
  std::array<std::uint32_t, 256> rangs;
  std::uint64_t somme = 0;
  for (std::uint32_t i = ligne.curseur; i > fin;) {
    const std::uint32_t arret = i - std::min<std::uint32_t>(i - fin, rangs.size());
    std::size_t nombre = 0;
    for (; i > arret; --i) {
      rangs[nombre] = i - 1;
      nombre += facteurs.convient(i - 1, ligne.q);
    }
    somme += sommer(
        ligne, s, nombre, cumule, [&](std::size_t k) { return Roue2310::valeur(rangs[k]); },
        [&](std::size_t k) { return std::uint64_t{!facteurs.pair(rangs[k])}; });
  }
  ligne.curseur = fin;
  return somme;
}

// The same where m is a prime.
[[gnu::always_inline]] inline std::uint64_t feuilles_premieres(Ligne& ligne, Segment& s,
                                                               const Plan& plan) {
  const std::uint64_t seuil = ligne.w / s.haut();
  const std::uint32_t fin =
      seuil <= ligne.q ? ligne.fin
                       : std::max(ligne.fin, static_cast<std::uint32_t>(std::min<std::uint64_t>(
                                                 plan.pi(std::min(seuil, plan.y)), ligne.curseur)));
  const std::size_t nombre = ligne.curseur - fin;
  const bool cumule = nombre >= feuilles_pour_cumul;
  if (cumule) cumuler(s);
  const std::uint32_t* dernier = plan.premiers.data() + ligne.curseur;
  ligne.curseur = fin;
  return sommer(
      ligne, s, nombre, cumule, [dernier](std::size_t k) { return std::uint64_t{*(dernier - k)}; },
      [](std::size_t) { return std::uint64_t{1}; });
}

// One segment: for each line its leaves, then its multiples.
[[gnu::always_inline]] inline void traiter(Atelier& a) {
  Segment& s = a.segment;
  poser_fond(s, a.fonds);
  compter_blocs(s);
  for (std::size_t i = 0; i < a.actives; ++i) {
    Ligne& ligne = a.lignes[i];
    if (ligne.curseur > ligne.fin) {
      a.somme += i < a.composees ? feuilles_composees(ligne, s, a.facteurs)
                                 : feuilles_premieres(ligne, s, a.plan);
    }
    ligne.phi += s.total;
    if (i < a.motifs.size()) {
      poser_motif(s, a.motifs[i]);
    } else {
      rayer(s, ligne);
    }
  }
}

void traiter_portable(Atelier& a) { traiter(a); }
#if defined(__x86_64__)
[[gnu::target("popcnt,bmi,bmi2")]] void traiter_popcnt(Atelier& a) { traiter(a); }
[[gnu::target("popcnt,bmi,bmi2,avx2,avx512f,avx512bw,avx512vl,avx512vpopcntdq")]] void
traiter_avx512(Atelier& a) {
  traiter(a);
}
#endif

auto choisir() {
#if defined(__x86_64__)
  if (__builtin_cpu_supports("popcnt") && __builtin_cpu_supports("bmi2")) {
    if (__builtin_cpu_supports("avx512vpopcntdq") && __builtin_cpu_supports("avx512vl") &&
        __builtin_cpu_supports("avx512bw")) {
      return &traiter_avx512;
    }
    return &traiter_popcnt;
  }
#endif
  return &traiter_portable;
}

// The lines of all q with hard leaves, and where the m of each start and end.
void tracer_lignes(Atelier& a) {
  const Plan& plan = a.plan;
  for (std::uint64_t b = rang_phi + 1; b <= plan.nombre(); ++b) {
    const std::uint32_t q = plan.premiers[b];
    const std::uint64_t w = plan.x / q;
    const std::uint64_t plafond = w / q / q;
    if (plafond < q) break;
    std::uint64_t curseur = plan.pi(std::min(plafond, plan.y));
    std::uint64_t fin = b;
    if (std::uint64_t{q} * q <= plan.z) {
      curseur = Roue2310::nombre(std::min(plafond, plan.z));
      fin = Roue2310::nombre(plan.z / q);
      ++a.composees;
    }
    fin = std::min(fin, curseur);
    a.lignes.push_back(
        {w, 0, q, static_cast<std::uint32_t>(curseur), static_cast<std::uint32_t>(fin), 0, 0});
    if (q <= motif_max) a.motifs.push_back(dessiner({&q, 1}));
  }
}

// Lets the lines with q^2 < haut in. In an x where pi is known, phi(x, pi(q) - 1) is
// pi(x) - pi(q) + 2 for x in [q, q^2[.
void activer(Atelier& a) {
  const std::uint64_t bas = a.segment.bas();
  for (; a.actives < a.lignes.size(); ++a.actives) {
    Ligne& ligne = a.lignes[a.actives];
    if (std::uint64_t{ligne.q} * ligne.q >= a.segment.haut()) break;
    const std::uint64_t b = rang_phi + 1 + a.actives;
    ligne.phi = bas == 0 ? 0 : a.pi_bas - b + 2;
    const std::uint64_t cofacteur = (bas + ligne.q - 1) / ligne.q;
    ligne.cofacteur = indice_suivant[static_cast<std::size_t>(cofacteur % 30)];
    const std::uint64_t multiple = (cofacteur / 30 * 30 + residus[ligne.cofacteur]) * ligne.q;
    ligne.octet = static_cast<std::uint32_t>(multiple / 30 - a.segment.octet);
  }
}

// Effect: bytes of a segment. It should fit the first-level cache beside the patterns; the number
// of segments times that of lines must stay small beside x / z. Sensible: 2^14 to 2^18.
std::size_t taille_segment(std::uint64_t limite) {
  constexpr std::size_t moins = 4096;
  constexpr std::size_t plus = std::size_t{1} << 15;
  std::size_t taille = moins;
  while (taille < plus && taille * taille < limite / 30) taille *= 2;
  return taille;
}

}  // namespace

std::uint64_t feuilles_difficiles(const Plan& plan, const Suivi& suivi) {
  constexpr std::array<std::uint32_t, 3> bas{7, 11, 13};
  constexpr std::array<std::uint32_t, 2> haut{17, 19};
  Atelier a{plan, TableFacteurs(plan.premiers, plan.z), {}, {dessiner(bas), dessiner(haut)}};
  tracer_lignes(a);
  const std::uint64_t limite = plan.x / plan.z;
  const std::size_t taille = taille_segment(limite);
  Segment& s = a.segment;
  s.mots.resize(taille / 8);
  s.blocs.resize(taille / octets_par_bloc);
  s.avant.resize(taille / octets_par_bloc);
  const auto traiter_segment = choisir();
  for (; s.bas() <= limite; s.octet += taille) {
    while (!a.lignes.empty() && a.lignes.back().curseur == a.lignes.back().fin) a.lignes.pop_back();
    if (a.lignes.empty()) break;
    a.actives = std::min(a.actives, a.lignes.size());
    activer(a);
    traiter_segment(a);
    // what is left: the primes of the segment; in the first one also 1, but not the sieving primes
    a.pi_bas += s.total;
    if (s.octet == 0) a.pi_bas += rang_phi + a.actives - 1;
    if (suivi) suivi(static_cast<double>(s.bas()) / static_cast<double>(limite));
  }
  return a.somme;
}

}  // namespace premiers
