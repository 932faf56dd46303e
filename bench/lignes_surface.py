# SPDX-License-Identifier: MIT
"""The grid of bench/surface.py: every service of the program over its sizes, as lines of points.

A line goes through one service in one direction: the digits of N, the width of a window, its
position, a rank. What a point reads comes from seeded generators, so that every run plays the same.

What the cost may grow like, by the formulas of the methods: listing, sieving and searching with the
width; a count with x^(2/3); the sieve of a window with the root of its position. With the digits d of
N a test for primality grows like d^3, a proof like d^4 and somewhat more, and so do the pieces of a
number, of which there are d^2/2; what grows faster, the splitting, is seen by the trend of its line.
"""
import random
from dataclasses import dataclass

from lignes import bornes, decompositions, est_premier, premier_au_hasard

DEUX_63 = 2**63 - 1
DES_CHIFFRES, DES_COMPTES, DES_POSITIONS = 4.5, 2 / 3, 1 / 2
CHIFFRES = [*range(1, 41), *range(42, 61, 2), *range(65, 101, 5), *range(110, 200, 10), 199]
DE_DIX_EN_DIX = [d for d in CHIFFRES if d < 10 or d % 10 == 0 or d in (19, 25, 31, 32, 199)]


@dataclass
class Courbe:
    """A line of the grid; seance(x) is what is typed."""
    service: str
    sorte: str  # of numbers, or the place of the line in the grid
    axe: str  # what x is
    xs: list
    seance: object
    par_chiffre: bool = False  # x is a length: the cost may grow with 10^x, not with x
    exposant: float = 1.0  # by the formula of the method the cost grows like this power of x at most
    repere: str = ""  # the kind of the same service that this one is not to be dearer than
    dessinee: bool = False

    @property
    def nom(self):
        return f"{self.service}, {self.sorte}"


# ---- Kinds of numbers --------------------------------------------------------------------------


def au_hasard(hasard, d):
    return hasard.randrange(10 ** (d - 1), 10**d)


def premier(hasard, d):
    return premier_au_hasard(hasard, 10 ** (d - 1), 10**d) if d > 1 else 7


def produit_egal(hasard, d):
    """Of two primes of half as many digits; a digit more or less for odd d."""
    if d < 2:
        return 6
    return premier(hasard, d // 2) * premier(hasard, d - d // 2)


def rond(hasard, d):
    return hasard.randrange(1, 10) * 10 ** (d - 1)


def presque_rond(hasard, d):
    return 10 ** (d - 1) + hasard.choice((1, 3, 7, 9))


def lisse(hasard, d):
    """Of primes below 1000, with at most d digits."""
    n = 1
    while n < 10 ** max(d - 3, 0):
        p = hasard.randrange(2, 1000)
        n *= p if est_premier(p) else 1
    return n


def puissance(hasard, d):
    """The square of a prime, with at most d digits."""
    return premier(hasard, max(d // 2, 1)) ** 2


SORTES = {"random": au_hasard, "prime": premier, "two equal primes": produit_egal, "round": rond,
          "near a round one": presque_rond, "smooth": lisse, "square of a prime": puissance}


def nombres(sorte, d, combien=3):
    hasard = random.Random(f"{sorte} {d}")
    return [SORTES[sorte](hasard, d) for _ in range(combien)]


# ---- Services ----------------------------------------------------------------------------------


def decoupes(liste):
    return "4\n1\n" + "\n1\n".join(map(str, liste)) + "\n0\n0\n0\n"


def recherche(choix, debut, largeur):
    return f"4\n{choix}\n{debut}\n{debut + largeur - 1}\n1\n0\n0\n"


def lignes_des_decompositions():
    return [Courbe("decomposition of three numbers", sorte, "digits", CHIFFRES,
                   lambda d, s=sorte: decompositions(nombres(s, d)), True, DES_CHIFFRES,
                   repere="random" if sorte in ("round", "smooth") else "",
                   dessinee=sorte in ("random", "prime", "two equal primes"))
            for sorte in SORTES]


def lignes_des_decoupes():
    return [Courbe("ways of one number", sorte, "digits", DE_DIX_EN_DIX,
                   lambda d, s=sorte: decoupes(nombres(s, d, 1)), True, DES_CHIFFRES,
                   repere="random" if sorte == "round" else "", dessinee=sorte == "random")
            for sorte in ("random", "round", "prime")]


def lignes_des_recherches():
    lignes = []
    for choix, quoi in ((2, "concatenations"), (3, "prime concatenations")):
        for sorte in ("random", "round", "near a round one"):
            repere = "random" if sorte != "random" else ""
            lignes.append(Courbe(f"{quoi} of a range of 1,000", sorte, "digits", DE_DIX_EN_DIX,
                                 lambda d, c=choix, s=sorte: recherche(c, nombres(s, d)[0], 1000),
                                 True, DES_CHIFFRES, repere, sorte != "near a round one"))
            for d in (5, 15, 20, 25, 32, 41, 100, 199):
                lignes.append(Courbe(
                    f"{quoi} of a range from {d} digits on", sorte, "width",
                    [10**k for k in range(0, 10)],
                    lambda w, c=choix, s=sorte, d=d: recherche(c, nombres(s, d)[0], w),
                    repere=repere, dessinee=d == 25 and sorte == "random"))
    return lignes


def fenetre(position, largeur, seulement):
    debut = min(position, DEUX_63 - largeur + 1)
    return bornes(debut, debut + largeur - 1, seulement)


def lignes_des_fenetres():
    """The grid of widths and positions, once along each of its directions."""
    positions = [10**k for k in range(0, 19)] + [DEUX_63]
    largeurs = [10**k for k in range(0, 11)]
    lignes = []
    for seulement, quoi in ((True, "counted"), (False, "listed")):
        for p in positions:
            lignes.append(Courbe(f"window {quoi}", f"at {nommer(p)}", "width", largeurs,
                                 lambda w, p=p, s=seulement: fenetre(p, w, s),
                                 dessinee=p in (1, 10**12, DEUX_63)))
        for w in largeurs:
            lignes.append(Courbe(f"window {quoi}", f"{nommer(w)} wide", "position", positions,
                                 lambda p, w=w, s=seulement: fenetre(p, w, s),
                                 exposant=DES_POSITIONS))
    return lignes


def nommer(n):
    return "2^63" if n == DEUX_63 else f"10^{len(str(n)) - 1}"


def lignes_des_rangs():
    rangs = [10**k for k in range(0, 18)]
    return [Courbe("primes by rank", "a far one", "rank", rangs, lambda r: f"2\n={r}\n0\n0\n",
                   exposant=DES_COMPTES, dessinee=True),
            Courbe("primes by rank", "the largest below a value", "value", [10 * r for r in rangs],
                   lambda v: f"2\n=-{v}\n0\n0\n", exposant=DES_COMPTES),
            Courbe("primes by rank", "the first ones listed", "rank", [10**k for k in range(0, 10)],
                   lambda r: f"2\n{r}\n0\n0\n", dessinee=True),
            Courbe("primes by rank", "1,000 looked up below a far one", "rank", rangs[3:],
                   lambda r: f"2\n={r}\n*\n3\n{r - 999}\n{r}\n0\n0\n0\n",
                   exposant=DES_COMPTES)]


def toutes_les_lignes():
    return (lignes_des_rangs() + lignes_des_fenetres() + lignes_des_decompositions()
            + lignes_des_decoupes() + lignes_des_recherches())
