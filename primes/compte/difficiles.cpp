// SPDX-License-Identifier: MIT
// The integers up to x / z are sieved in segments (primes/compte/segment.h), one prime q after the
// other; right before the multiples of q go, phi(n, pi(q) - 1) is the number of integers left up to
// n. It is the number in all segments before, kept for each q, plus a count within the segment.
//
// With w = x / q, the m of a leaf is at most w / q^2; for q > sqrt(z) it is a prime. Each q keeps a
// cursor that goes down through its m while n = w / m goes up.
//   - 2 .. 19 are never sieved but copied in as a pattern. The primes up to `motif_max`, more than
//     half of all crossings, are ANDed in as patterns.
//   - A prime q joins at the first segment that reaches q^2, where phi(n, pi(q) - 1) is known from
//     pi(n) alone, and leaves for good after the last segment that leaves of its own or larger q
//     reach.
//   - The m that suit, and their quotients, are found by the batch (primes/compte/lot.h).
#include "primes/compte/difficiles.h"

#include <algorithm>
#include <array>
#include <span>
#include <vector>

#include "primes/compte/lot.h"
#include "primes/compte/phi.h"
#include "primes/compte/roue2310.h"
#include "primes/compte/segment.h"
#include "primes/compte/table_facteurs.h"

namespace premiers::compte {

namespace {

// Effect: primes up to here are taken out as patterns of q words. Sensible: 100 to 500; flat
// between.
constexpr std::uint32_t motif_max = 300;

// The leaves of one q.
struct Ligne {
  std::uint64_t w;        // x / q
  std::uint64_t phi;      // phi(bas - 1, pi(q) - 1), bas being the start of the segment
  Multiple multiple;      // of q
  std::uint32_t curseur;  // ranks of m in ]fin, curseur] are still to come: in the table of factors
  std::uint32_t fin;      // for q <= sqrt(z), among the primes else
};

struct Atelier {
  const Plan& plan;
  TableFacteurs facteurs;
  SegmentCompte segment;
  std::array<Motif, 2> fonds;   // 7, 11, 13 and 17, 19
  std::vector<Motif> motifs{};  // of the first lines
  std::vector<Ligne> lignes{};  // the primes after the eighth
  std::size_t composees = 0;    // lines of q <= sqrt(z)
  std::size_t actives = 0;      // lines that have joined
  std::uint64_t pi_bas = 0;     // primes below the segment
  std::uint64_t somme = 0;
  Lot lot{};
  BouclesDuLot boucles = choisir(versions_du_lot()).boucle;
};

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
        {w, 0, {q}, static_cast<std::uint32_t>(curseur), static_cast<std::uint32_t>(fin)});
    if (q <= motif_max) a.motifs.emplace_back(std::span(&q, 1));
  }
}

// Lets the lines with q^2 < haut in. phi(n, pi(q) - 1) is pi(n) - pi(q) + 2 for q <= n < q^2.
void activer(Atelier& a) {
  const SegmentCompte& s = a.segment;
  for (; a.actives < a.lignes.size(); ++a.actives) {
    Ligne& ligne = a.lignes[a.actives];
    const std::uint32_t q = ligne.multiple.q;
    if (std::uint64_t{q} * q >= s.haut()) break;
    const std::uint64_t b = rang_phi + 1 + a.actives;
    ligne.phi = s.octet == 0 ? 0 : a.pi_bas - b + 2;
    ligne.multiple = Multiple::initial(q, s.octet);
  }
}

// The signed sum of phi at the leaves of the first `nombre` m of the batch.
std::uint64_t sommer_le_lot(Atelier& a, const Ligne& ligne, Compteur& compteur,
                            std::size_t nombre) {
  const std::span m(a.lot.m.data(), nombre);
  std::uint64_t negatives = 0;
  for (const std::uint32_t marque : m) negatives += marque & 1U;
  a.boucles.diviser(ligne.w, a.segment.bas(), m.data(), nombre, a.lot.questions.data());
  return (nombre - 2 * negatives) * ligne.phi + compteur({a.lot.questions.data(), nombre});
}

// The leaves of a line in the segment whose m come from the table of factors.
std::uint64_t feuilles_composees(Atelier& a, Ligne& ligne) {
  const std::uint64_t seuil = Roue2310::nombre(ligne.w / a.segment.haut());
  const auto fin =
      static_cast<std::uint32_t>(std::clamp<std::uint64_t>(seuil, ligne.fin, ligne.curseur));
  Compteur compteur(a.segment, ligne.curseur - fin);
  std::uint64_t somme = 0;
  for (std::uint32_t i = ligne.curseur; i > fin;) {
    const std::uint32_t arret = i - std::min(i - fin, Lot::taille);
    const std::size_t nombre =
        a.boucles.retenir(a.facteurs.entrees.data(), i, arret, ligne.multiple.q, a.lot.m.data());
    somme += sommer_le_lot(a, ligne, compteur, nombre);
    i = arret;
  }
  ligne.curseur = fin;
  return somme;
}

// The same where m is a prime.
std::uint64_t feuilles_premieres(Atelier& a, Ligne& ligne) {
  const std::uint64_t borne =
      std::clamp<std::uint64_t>(ligne.w / a.segment.haut(), ligne.multiple.q, a.plan.y);
  const auto fin = static_cast<std::uint32_t>(
      std::clamp<std::uint64_t>(a.plan.pi(borne), ligne.fin, ligne.curseur));
  Compteur compteur(a.segment, ligne.curseur - fin);
  std::uint64_t somme = 0;
  for (std::uint32_t i = ligne.curseur; i > fin;) {
    const std::uint32_t nombre = std::min(i - fin, Lot::taille);
    for (std::uint32_t k = 0; k < nombre; ++k) a.lot.m[k] = a.plan.premiers[i - k] ^ 1U;
    somme += sommer_le_lot(a, ligne, compteur, nombre);
    i -= nombre;
  }
  ligne.curseur = fin;
  return somme;
}

// One segment: for each line its leaves, then its multiples.
void traiter(Atelier& a) {
  SegmentCompte& s = a.segment;
  s.commencer(a.fonds[0], a.fonds[1]);
  for (std::size_t i = 0; i < a.actives; ++i) {
    Ligne& ligne = a.lignes[i];
    if (ligne.curseur > ligne.fin) {
      a.somme += i < a.composees ? feuilles_composees(a, ligne) : feuilles_premieres(a, ligne);
    }
    ligne.phi += s.total;
    if (i < a.motifs.size()) {
      s.poser(a.motifs[i]);
    } else {
      s.rayer(ligne.multiple);
    }
  }
  // what is left: the primes of the segment; in the first one also 1, but not the sieving primes
  a.pi_bas += s.total;
  if (s.octet == 0) a.pi_bas += rang_phi + a.actives - 1;
}

// Effect: bytes of a segment. More means fewer starts of all lines, less means leaves nearer to
// each other and nearer caches. 2 sqrt(x / z) within these bounds measured best, flat within a
// factor 4. Sensible: 2^14 (first-level cache) to 2^18 (second-level cache).
std::size_t taille_segment(std::uint64_t limite) {
  constexpr std::size_t moins = std::size_t{1} << 14;
  constexpr std::size_t plus = std::size_t{1} << 17;
  std::size_t taille = moins;
  while (taille < plus && taille * taille < 4 * limite) taille *= 2;
  return taille;
}

}  // namespace

std::uint64_t feuilles_difficiles(const Plan& plan, const Suivi& suivi) {
  constexpr std::array<std::uint32_t, 3> fond_bas{7, 11, 13};
  constexpr std::array<std::uint32_t, 2> fond_haut{17, 19};
  const std::uint64_t limite = plan.x / plan.z;
  const std::size_t taille = taille_segment(limite);
  Atelier a{plan,
            TableFacteurs(plan.premiers, plan.z),
            SegmentCompte(taille),
            {Motif(fond_bas), Motif(fond_haut)}};
  tracer_lignes(a);
  for (SegmentCompte& s = a.segment; s.bas() <= limite; s.octet += taille) {
    while (!a.lignes.empty() && a.lignes.back().curseur == a.lignes.back().fin) a.lignes.pop_back();
    if (a.lignes.empty()) break;
    a.actives = std::min(a.actives, a.lignes.size());
    activer(a);
    traiter(a);
    if (suivi) suivi(static_cast<double>(s.bas()) / static_cast<double>(limite));
  }
  return a.somme;
}

}  // namespace premiers::compte
