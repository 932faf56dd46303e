# SPDX-License-Identifier: MIT
"""The rows of factoring against yafu, where one was named (--yafu); there are none without it."""
import random
import shutil
from dataclasses import replace
from math import isqrt

from lignes import Cote, Ligne, decompositions, premier_au_hasard, ratio
from lignes_avx2 import GROUPE as SANS_AVX512
from lignes_avx2 import notre
from lignes_moteur import session
from reponses import facteurs, facteurs_de_yafu

GROUPE = "Factoring against yafu"
NOTE = ("yafu is started once for each number, which costs it some 30 ms of its time, and draws "
        "its curves anew each time. From 80 digits on, and for the sums: one run of each.")

# yafu wants a terminal, and takes up again what it finds in its folder: each number is asked in an
# empty one. The line before its answer says which number it is of.
BOUCLE = """yafu=$1; travail=$2; ou=$3; shift 3
for n; do
  dossier=$(mktemp -d -p "$ou") && cd "$dossier" && echo "$n:" || exit 99
  script -qec "'$yafu' '$travail($n)' -threads 1" /dev/null || exit
  cd / && rm -r "$dossier" || exit 99
done"""

# Repunits of 40 to 100 digits that yafu splits within a minute. By the published factorisations
# (Brillhart, Lehmer, Selfridge, Tuckerman, Wagstaff, Factorizations of b^n +- 1, 2002), all their
# prime factors but the largest are below 10^24, or the product of those above has at most 65
# digits. That leaves out 71 (30 and 41 digits), 83 (28 and 42), 97 (36 and 54) and 98 (34 and 40).
REPUNITS = [k for k in range(40, 101) if k not in (71, 83, 97, 98)]


def yafu(o, travail, nombres):
    sh = "sh" if shutil.which(o.yafu) else o.yafu  # one that is not there is told as missing
    mots = [o.yafu, travail, o.travail, *nombres]
    return Cote("yafu", [sh, "-c", BOUCLE, "sh", *map(str, mots)], "", facteurs_de_yafu(nombres))


def produits_egaux(chiffres, combien):
    """Products of exactly so many digits, even or odd, of two random primes of the same length."""
    hasard = random.Random(chiffres)
    bas, haut = isqrt(10 ** (chiffres - 1)) + 1, isqrt(10**chiffres)
    return [premier_au_hasard(hasard, bas, haut) * premier_au_hasard(hasard, bas, haut)
            for _ in range(combien)]


def a_facteur(chiffres, du_facteur, combien):
    """Numbers of so many digits: a random prime of `du_facteur` digits times another prime."""
    hasard, nombres = random.Random(1000 * chiffres + du_facteur), []
    for _ in range(combien):
        p = premier_au_hasard(hasard, 10 ** (du_facteur - 1), 10**du_facteur)
        nombres.append(p * premier_au_hasard(hasard, 10 ** (chiffres - 1) // p + 1,
                                             10**chiffres // p))
    return nombres


def ligne_contre(o, titre, travail, nombres, doit, vise, **reste):
    return Ligne(GROUPE, titre, session(o, decompositions(nombres), facteurs(nombres)),
                 [yafu(o, travail, nombres)], ratio(doit, vise), note=NOTE, **reste)


def ligne_de_produits(o, chiffres, combien, doit, vise):
    titre = (f"{combien} products of two primes of the same length, {chiffres} digits"
             if combien > 1 else f"a product of two primes of the same length, {chiffres} digits")
    return ligne_contre(o, titre, "siqs", produits_egaux(chiffres, combien), doit, vise,
                        lente=chiffres > 60, tres_longue=chiffres >= 90,
                        lancements=int(chiffres >= 80))


def lignes_courtes(o):
    """The products that are split without AVX-512 too."""
    return [ligne_de_produits(o, c, combien, 0.85, 0.6)
            for c, combien in ((60, 5), (64, 5), (70, 3), (75, 2))]


def lignes_contre_yafu(o):
    if not o.yafu:
        return []
    lignes = lignes_courtes(o)
    lignes += [ligne_de_produits(o, c, 2, 0.9, 0.65) for c in (80, 85)]
    lignes += [ligne_de_produits(o, c, 1, 0.95, 0.7) for c in (90, 95)]
    lignes += [ligne_contre(o, f"{combien} numbers of {c} digits with a prime factor of {f}, the "
                            "rest a prime", "factor", a_facteur(c, f, combien), 0.6, 0.3,
                            lente=True, lancements=1)
               for c, f, combien in ((95, 25, 10), (120, 25, 10), (199, 22, 10), (150, 30, 5))]
    return lignes + [
        ligne_contre(o, "2^211 - 1 to 2^260 - 1, their sum", "factor",
                     [2**k - 1 for k in range(211, 261)], 0.8, 0.5, lente=True, lancements=1),
        ligne_contre(o, f"{len(REPUNITS)} repunits of 40 to 100 digits, their sum", "factor",
                     [10**k // 9 for k in REPUNITS], 0.8, 0.5, lente=True, lancements=1),
    ]


def lignes_contre_yafu_avx2(o):
    """The short ones with the build `avx2`, against a yafu that has no AVX-512 either: one that has
    would be no measure."""
    if not o.yafu_avx2:
        return []
    return [replace(ligne, groupe=SANS_AVX512, travail=f"{ligne.travail}, without AVX-512",
                    nous=notre(o, ligne.nous), exigences=ratio(1.0, 0.8))
            for ligne in lignes_courtes(replace(o, yafu=o.yafu_avx2))]
