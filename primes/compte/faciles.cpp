// SPDX-License-Identifier: MIT
// A leaf n = x / (m q) with n < q^2 has phi(n, pi(q) - 1) = pi(n) - pi(q) + 2, since what survives
// below q^2 is 1 and the primes from q on; and 1 if n < q. With w = x / q (all quotients rounded
// down) the leaves fall into
//   q > cbrt(x):  n < q. Each pair q < r <= y counts 1.
//   m = r prime:  q < r <= y, r > z / q, r > w / q^2. Counts pi(w / r) - pi(q) + 2 up to
//                 Y = min(y, w / q), and 1 beyond.
//   m = r1 r2:    the same with w / r1 for w, minus sign; exists for q <= sqrt(z) only. Three
//                 primes would need q^3 < z and q^3 > x / z at once.
//
// The long sums of pi(w / r) are halved as in X. Gourdon's "Computation of pi(x): improvements to
// the Meissel, Lehmer, Lagarias, Miller, Odlyzko, Deleglise and Rivat method" (2001): for r beyond
// c >= sqrt(w), the sum counts the pairs of primes (r, t) with r t <= w, c < r <= Y, so it is also
// summed by t, which takes fewer and smaller values:
//     sum pi(w / r) = pi(w / Y) (pi(Y) - pi(c)) + sum of pi(w / t) - pi(c)
//                     over w / Y < t <= w / (c + 1).
//
// What is left is a list of stretches of primes (`Rangee`) whose pi(w / r) are to be summed. They
// are swept by windows of n <= sqrt(x) with a table of pi that stays in the second-level cache. A
// leaf costs one multiplication by a stored 1 / r, and one look-up.
#include "primes/compte/faciles.h"

#include <algorithm>
#include <cassert>
#include <vector>

#include "primes/arithmetique/quotient.h"
#include "primes/arithmetique/racines.h"
#include "primes/compte/phi.h"

namespace premiers::compte {

namespace {

// Asks for poids * sum of pi(w / r) over the primes r of ranks ]bas, haut].
struct Rangee {
  std::uint64_t w;
  std::uint64_t poids;  // modulo 2^64
  std::uint32_t bas;
  std::uint32_t haut;  // goes down to `bas` as the windows go up
};

// The sum known in closed form, and what is still to be swept.
struct Devis {
  std::uint64_t somme = 0;
  std::vector<Rangee> rangees{};

  void ajouter(std::uint64_t w, std::uint64_t poids, std::uint64_t bas, std::uint64_t haut) {
    if (bas >= haut) return;
    assert(w >> bits_par_inverse<double> == 0);
    rangees.push_back(
        {w, poids, static_cast<std::uint32_t>(bas), static_cast<std::uint32_t>(haut)});
  }
};

// signe * sum of pi(w / r) over the primes r of ]bas, haut], 5 <= bas <= haut <= y, w / haut >= 5.
void sommer_pi(const Plan& plan, Devis& devis, std::uint64_t signe, std::uint64_t w,
               std::uint64_t bas, std::uint64_t haut) {
  if (bas >= haut) return;
  const TablePi& pi = plan.pi;
  const std::uint64_t racine = racine_carree(w);
  const std::uint64_t pied = w / haut;
  // beyond c the sum goes by t in ]pied, cime]
  const std::uint64_t c = std::max(bas, racine);
  const std::uint64_t cime = c == racine ? racine : w / (c + 1);
  if (haut <= racine || (bas > racine && pi(haut) - pi(c) <= pi(cime) - pi(pied))) {
    devis.ajouter(w, signe, pi(bas), pi(haut));
    return;
  }
  devis.somme += signe * (pi(pied) * (pi(haut) - pi(c)) - (pi(cime) - pi(pied)) * pi(c));
  if (bas >= racine) {
    devis.ajouter(w, signe, pi(pied), pi(cime));
    return;
  }
  // both ]bas, racine] and ]pied, racine]: what they share counts twice
  const auto [debut, milieu] = std::minmax({pi(bas), pi(pied)});
  devis.ajouter(w, signe, debut, milieu);
  devis.ajouter(w, 2 * signe, milieu, pi(racine));
}

// signe * sum of phi(w / r, b - 1) over the primes r of ]bas, haut]; q has rank b, bas >= q.
void sommer_phi(const Plan& plan, Devis& devis, std::uint64_t signe, std::uint64_t w,
                std::uint64_t b, std::uint64_t bas, std::uint64_t haut) {
  if (bas >= haut) return;
  // pi(w / r) - b + 2 up to w / q, 1 beyond
  const std::uint64_t milieu = std::clamp(w / plan.premiers[b], bas, haut);
  sommer_pi(plan, devis, signe, w, bas, milieu);
  const std::uint64_t pi_milieu = plan.pi(milieu);
  devis.somme += signe * ((pi_milieu - plan.pi(bas)) * (2 - b) + (plan.pi(haut) - pi_milieu));
}

Devis dresser(const Plan& plan) {
  const std::uint64_t x = plan.x;
  const std::uint64_t z = plan.z;
  Devis devis;
  std::uint64_t b = rang_phi + 1;
  for (; b <= plan.nombre(); ++b) {
    const std::uint64_t q = plan.premiers[b];
    const std::uint64_t w = x / q;
    if (w / q < q) break;
    const std::uint64_t seuil = std::max(z / q, w / q / q);  // m lies beyond
    if (seuil >= z) continue;
    const std::uint64_t bas = std::max(q, seuil);
    sommer_phi(plan, devis, 1, w, b, std::min(bas, plan.y), plan.y);
    for (std::uint64_t c = b + 1; c <= plan.nombre(); ++c) {
      const std::uint64_t r = plan.premiers[c];
      if (r * r > z) break;
      const std::uint64_t haut = std::min(plan.y, z / r);
      sommer_phi(plan, devis, std::uint64_t{0} - 1, w / r, b,
                 std::min(std::max(r, seuil / r), haut), haut);
    }
  }
  const std::uint64_t grands = plan.nombre() + 1 - b;  // the primes in ]cbrt(x), y]
  if (grands > 0) devis.somme += grands * (grands - 1) / 2;
  return devis;
}

// The reciprocals of the primes by rank (primes/arithmetique/quotient.h), which divide all w < 2^51.
// No w is larger: where m = r, w = x / q with q^3 > x / y (there is no r <= y otherwise), so
// w^3 < x^2 y <= 64 x^(7/3) < 2^153; where m = r1 r2, w is x / q / r1 with r1 > 23 and q^3 > x / z,
// z < 13 y, which is less.
std::vector<double> inverser(const std::vector<std::uint32_t>& premiers) {
  std::vector<double> inverses(premiers.size());
  for (std::size_t i = 1; i < premiers.size(); ++i) inverses[i] = 1.0 / premiers[i];
  return inverses;
}

// poids * sum of pi(w / r) for those w / r that lie in the window, from i = haut down.
[[gnu::always_inline]] inline std::uint64_t balayer(Rangee& rangee, const TablePi& fenetre,
                                                    const Plan& plan,
                                                    const std::vector<double>& inverses) {
  const std::uint64_t w = rangee.w;
  // w / r < fin for r > w / fin
  const std::uint64_t borne = std::clamp<std::uint64_t>(w / fenetre.fin(), 5, plan.y);
  const auto arret = static_cast<std::uint32_t>(
      std::clamp<std::uint64_t>(plan.pi(borne), rangee.bas, rangee.haut));
  std::uint64_t somme = 0;
  const auto w_et_demi = avec_demi<double>(w);
  for (std::uint32_t i = rangee.haut; i > arret; --i) {
    somme += fenetre(static_cast<std::uint64_t>(quotient_par_inverse(w_et_demi, inverses[i])));
  }
  rangee.haut = arret;
  return rangee.poids * somme;
}

// Effect: 16 bytes a case; the table should fill half of the second-level cache.
// Sensible: 2^13 (first-level cache, more windows to go through) to 2^16.
constexpr std::uint64_t cases_par_fenetre = std::uint64_t{1} << 15;

// Leaves between two calls of the progress report; a leaf takes about 2 ns.
constexpr std::uint64_t feuilles_par_appel = 500'000;

template <auto balai>
std::uint64_t feuilles_par(const Plan& plan, const Suivi& suivi) {
  Devis devis = dresser(plan);
  const std::vector<double> inverses = inverser(plan.premiers);
  std::uint64_t total = 0;
  for (const Rangee& r : devis.rangees) total += r.haut - r.bas;

  std::uint64_t cases = racine_carree(plan.x) / 240 + 1;
  crible::Fenetres fenetres(0, 240 * cases - 1);
  TablePi fenetre;
  std::uint64_t faites = 0;
  std::uint64_t appel = feuilles_par_appel;
  for (; cases > 0 && !devis.rangees.empty(); cases -= std::min(cases, cases_par_fenetre)) {
    fenetre.avancer(fenetres, std::min(cases, cases_par_fenetre));
    for (Rangee& rangee : devis.rangees) {
      const std::uint32_t haut = rangee.haut;
      devis.somme += balai(rangee, fenetre, plan, inverses);
      faites += haut - rangee.haut;
      if (faites >= appel) {
        appel = faites + feuilles_par_appel;
        if (suivi) suivi(static_cast<double>(faites) / static_cast<double>(total));
      }
    }
    std::erase_if(devis.rangees, [](const Rangee& r) { return r.haut == r.bas; });
  }
  return devis.somme;
}

constexpr Version<decltype(&feuilles_faciles)> versions[] = {
#if defined(__x86_64__)
    {instructions::popcnt, feuilles_par<Pour<balayer>::popcnt>},
#endif
    {instructions::aucune, feuilles_par<Pour<balayer>::tous>},
};

}  // namespace

Versions<decltype(&feuilles_faciles)> versions_de_feuilles_faciles() { return versions; }

std::uint64_t feuilles_faciles(const Plan& plan, const Suivi& suivi) {
  return choisir(versions_de_feuilles_faciles()).boucle(plan, suivi);
}

}  // namespace premiers::compte
