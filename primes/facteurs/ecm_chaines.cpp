// SPDX-License-Identifier: MIT
#include "primes/facteurs/ecm_chaines.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace premiers::ecm {
namespace {

/// A Lucas chain under construction. Invariant: wanted = d A + e B, C = +-(A - B); A, B, C are
/// slots.
template <class Sortie>
struct Chaine {
  int d, e;
  int A, B, C;
  Sortie sortie;  ///< receives every instruction

  /// A slot other than x and y, which live on; writes the sum of a and b there.
  constexpr int ajouter(int a, int b, int ecart, int x, int y) {
    int vers = 0;
    while (vers == x || vers == y) ++vers;
    sortie(Instruction{static_cast<std::uint8_t>(vers), static_cast<std::uint8_t>(a),
                       static_cast<std::uint8_t>(b), static_cast<std::uint8_t>(ecart)});
    return vers;
  }
  constexpr void soustraire() {  // dA + eB = (d - e)A + e(A + B)
    const int somme = ajouter(A, B, C, A, B);
    C = B;
    B = somme;
    d -= e;
  }
  constexpr void halver_ecart() {  // dA + eB = (d - e)/2 2A + e(A + B)
    B = ajouter(A, B, C, A, C);
    A = ajouter(A, A, A, B, C);
    d = (d - e) / 2;
  }
  constexpr void halver_d() {  // dA + eB = d/2 2A + eB, and 2A - B = A + C
    C = ajouter(A, C, B, A, B);
    A = ajouter(A, A, A, B, C);
    d /= 2;
  }
  constexpr void halver_e() {  // dA + eB = dA + e/2 2B, and A - 2B = C - B
    C = ajouter(C, B, A, A, B);
    B = ajouter(B, B, B, A, C);
    e /= 2;
  }
};

/// Writes a chain for p times the point in slot `depart`, p odd, to `sortie`; r in (p/2, p) decides
/// which chain. Gives the slot of the result, or -1 if r and p have a common factor.
template <class Sortie>
constexpr int ecrire_chaine(int p, int r, int depart, Sortie sortie) {
  Chaine<Sortie> c{p - r, 2 * r - p, depart, depart, depart, sortie};
  c.A = c.ajouter(depart, depart, depart, depart, depart);  // pP = (p - r) 2P + (2r - p) P
  while (c.d != c.e) {
    if (c.d < c.e) {
      std::swap(c.d, c.e);
      std::swap(c.A, c.B);
    }
    if (c.d <= 4 * c.e) {
      c.soustraire();
    } else if (c.d % 2 == c.e % 2) {
      c.halver_ecart();
    } else if (c.d % 2 == 0) {
      c.halver_d();
    } else {
      c.halver_e();
    }
  }
  return c.d == 1 ? c.ajouter(c.A, c.B, c.C, c.A, c.B) : -1;
}

/// How many instructions that chain has, or more than any has if there is none. Counting alone
/// keeps the search below within seconds.
constexpr int longueur_de_chaine(int p, int r) {
  int d = p - r;
  int e = 2 * r - p;
  int longueur = 2;
  while (d != e) {
    if (d < e) {
      const int t = d;
      d = e;
      e = t;
    }
    if (d <= 4 * e) {
      d -= e;
      longueur += 1;
      continue;
    }
    if (d % 2 == e % 2) {
      d = (d - e) / 2;
    } else if (d % 2 == 0) {
      d /= 2;
    } else {
      e /= 2;
    }
    longueur += 2;
  }
  return d == 1 ? longueur : 1 << 20;
}

/// The r that gives the shortest chain for p. The best ones are near p divided by the golden ratio
/// (a chain of Fibonacci numbers is the shortest of all), so only those are tried.
constexpr int meilleur_depart(int p) {
  int meilleur = 0;
  int longueur_minimale = 1 << 20;
  const int centre = static_cast<int>(static_cast<double>(p) / 1.6180339887498949);
  const int rayon = p / 16 + 2;
  for (int r = centre - rayon; r <= centre + rayon; ++r) {
    if (2 * r <= p || r >= p) continue;
    const int longueur = longueur_de_chaine(p, r);
    if (longueur < longueur_minimale) {
      longueur_minimale = longueur;
      meilleur = r;
    }
  }
  return meilleur;
}

/// p if q is a power of the prime p, else 1: the factor by which lcm(1..q) exceeds lcm(1..q-1).
constexpr int facteur_nouveau(int q) {
  int p = 2;
  while (p * p <= q && q % p != 0) ++p;
  if (q % p != 0) p = q;
  while (q % p == 0) q /= p;
  return q == 1 ? p : 1;
}

template <int q>
inline constexpr int depart_de = facteur_nouveau(q) > 2 ? meilleur_depart(facteur_nouveau(q)) : 0;

template <std::size_t... i>
constexpr auto tous_les_departs(std::index_sequence<i...>) {
  return std::array<int, sizeof...(i)>{depart_de<static_cast<int>(i) + 2>...};
}

constexpr Programme ecrire_programme() {
  constexpr auto departs = tous_les_departs(std::make_index_sequence<b1_maximal - 1>{});
  Programme programme;
  std::size_t taille = 0;
  auto sortie = [&](Instruction x) { programme.instructions[taille++] = x; };
  auto fois = [&](int p, int r, int slot) {
    if (p > 2) {
      const std::size_t debut = taille;
      slot = ecrire_chaine(p, r, slot, sortie);
      // An exception here stops the compiler: the search and the writer disagree.
      if (taille - debut != static_cast<std::size_t>(longueur_de_chaine(p, r))) throw p;
      return slot;
    }
    const auto s = static_cast<std::uint8_t>(slot);
    sortie(Instruction{s, s, s, s});
    return slot;
  };
  int slot = 0;
  // Every curve used has a group order divisible by 12: two factors 2 and one 3 are not luck.
  slot = fois(2, 0, fois(2, 0, fois(3, 2, slot)));
  for (int q = 2; q <= b1_maximal; ++q) {
    const int p = facteur_nouveau(q);
    if (p > 1) slot = fois(p, departs[static_cast<std::size_t>(q) - 2], slot);
    programme.fin[static_cast<std::size_t>(q)] = static_cast<std::uint16_t>(taille);
  }
  return programme;
}

}  // namespace

constinit const Programme programme = ecrire_programme();

}  // namespace premiers::ecm
