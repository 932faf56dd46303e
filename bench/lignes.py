# SPDX-License-Identifier: MIT
"""The work that is measured, as data: one `Ligne` a row, with ours, its peers, and what is wanted.

Lists of numbers come from seeded generators, so that every run works on the same.
"""
import random
from dataclasses import dataclass, field
from pathlib import Path

from reponses import rien


@dataclass
class Cote:
    """One side of a row: a command and what it reads."""
    nom: str
    commande: list
    entree: str = ""
    lire: object = rien  # takes the path of the output; gives the answer that must agree
    statut: int = 0
    unites: float = 1  # the time is divided by this before it is compared
    avant: tuple = ()  # files to remove before each run
    patience: float = 0  # seconds after which it is given up; 0: never
    interne: str = ""  # the time is what the process says under this name, not its own


@dataclass
class Exigence:
    """What a row must reach: a ratio to a peer, or a limit where `limite` is set."""
    quoi: str = "temps"  # temps, memoire (MB), or the name of a figure that the command prints
    doit: float | None = None
    vise: float | None = None
    contre: str = ""  # the peer; the best one if empty
    limite: bool = False
    unite: str = ""


@dataclass
class Ligne:
    groupe: str
    travail: str
    nous: Cote
    pairs: list = field(default_factory=list)
    exigences: list = field(default_factory=lambda: [Exigence()])
    sortie: str = "fichier"  # fichier, tube or rien: where the output goes while the clock runs
    lancements: int = 0  # 0: as many as usual
    lente: bool = False  # more than a few seconds for one side
    tres_longue: bool = False  # only when asked for
    attendu: object = None  # the published answer, where no peer gives one
    serie: tuple = ()  # (x, kind) for the chart
    note: str = ""
    resume: str = ""  # what README.md calls it, if it stands there
    guide: str = ""  # what docs/guide.fr.md calls it, in French, if it stands there
    combien: int = 1  # so many answers in the row: the guide tells the time of one
    avx512: bool = False  # a loop with a version for it does a good part of the work


def ratio(doit=None, vise=None, contre=""):
    return [Exigence("temps", doit, vise, contre)]


# ---- Numbers ---------------------------------------------------------------------------------


def est_premier(n):
    """Miller and Rabin to the first thirteen primes: proven below 3.3e24, plenty above."""
    petits = (2, 3, 5, 7, 11, 13, 17, 19, 23, 29, 31, 37, 41)
    if n < 2:
        return False
    for p in petits:
        if n % p == 0:
            return n == p
    d, s = n - 1, 0
    while d % 2 == 0:
        d, s = d // 2, s + 1
    for a in petits:
        x = pow(a, d, n)
        if x in (1, n - 1):
            continue
        for _ in range(s - 1):
            x = x * x % n
            if x == n - 1:
                break
        else:
            return False
    return True


def premier_au_hasard(hasard, bas, haut):
    while True:
        n = hasard.randrange(bas, haut) | 1
        if est_premier(n):
            return n


def produits_en_chiffres(chiffres, combien):
    """Products of exactly so many digits of two random primes of half as many."""
    hasard, produits = random.Random(chiffres), []
    bas, haut = 10 ** (chiffres // 2 - 1), 10 ** (chiffres // 2)
    while len(produits) < combien:
        n = premier_au_hasard(hasard, bas, haut) * premier_au_hasard(hasard, bas, haut)
        if n >= 10 ** (chiffres - 1):
            produits.append(n)
    return produits


def produits_de_32_bits(combien):
    hasard = random.Random(32)
    return [premier_au_hasard(hasard, 2**31, 2**32) * premier_au_hasard(hasard, 2**31, 2**32)
            for _ in range(combien)]


def entiers(combien, bas, haut, graine):
    hasard = random.Random(graine)
    return [hasard.randrange(bas, haut) for _ in range(combien)]


# ---- Sessions --------------------------------------------------------------------------------


def decompositions(nombres):
    return "1\n" + "\n1\n".join(map(str, nombres)) + "\n0\n0\n"


def bornes(debut, fin, seulement):
    return f"3\n{debut}\n{fin}\n{int(seulement)}\n0\n"


def selections(rang, dernier, combien=1000):
    """Answers of the consultation: choices 1 and 2 anywhere, 3 to 5 over at most 1,000 ranks."""
    hasard, mots = random.Random(5), []
    for i in range(combien):
        r = hasard.randrange(1, rang - 1000)
        v = hasard.randrange(2, dernier - 12000)  # 600 primes or so in 12,000 at this height
        mots += [[1, r], [2, v], [3, r, r + hasard.randrange(1000)],
                 [4, v, v + hasard.randrange(12000)], [5, v, v + 12000, 6, 2]][i % 5]
    return "\n".join(map(str, mots + [0])) + "\n"


ECRANS = ("5\n1\n360\n1\n1001\n0\n2\n10\n=50\n*\n1\n5\n2\n30\n0\n0\n3\n1\n100\n0\n4\n1\n2357\n0\n"
          "2\n1\n200\n0\n0\n5\n0\n")


@dataclass
class Outils:
    """The paths of the commands."""
    programme: str
    reference: str
    aides: Path  # the compiled helpers
    bench: Path  # the scripts
    travail: Path  # where lists and outputs go
    primesieve_recent: str = ""
    primecount_recent: str = ""
    programme_avant: str = ""  # the program as it was
    programme_avx2: str = ""  # the program that does without AVX-512
    aides_avx2: Path = Path()  # and the helpers of which it is a part
    rivaux_avx2: dict = field(default_factory=dict)  # a command's place, to one that does without
    yafu: str = ""
    yafu_avx2: str = ""  # one that does without AVX-512
