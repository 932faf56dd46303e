#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Where the expected bytes come from: plays every golden session to the reference model and compares
what it prints with NAME.out. The program itself has no part in it.

Some sessions are beyond a model that divides by every prime in turn; they are listed in DERIVEES,
each with the reason. For these the model plays a session of the same shape with small numbers, its
sister, and gives the dialogue. The lines that hold results are written here, in plain Python, for
both: those of the sister must stand in what the model printed, which proves the form of the lines;
those of the session take their place.

usage: verifier.py REFERENCE [NAME...]            all sessions, or those
       verifier.py REFERENCE --ecrire NAME...     writes NAME.out instead of comparing it
"""
import concurrent.futures
import functools
import itertools
import math
import os
import re
import shutil
import subprocess
import sys

ICI = os.path.dirname(os.path.abspath(__file__))


# ---- Numbers, the plain way ------------------------------------------------------------------------

BASES = (2, 3, 5, 7, 11, 13, 17, 19, 23, 29, 31, 37, 41)


@functools.cache
def est_premier(n):
    """Miller-Rabin to the first thirteen primes: a proof below 3317044064679887385961981
    (J. Sorenson, J. Webster, 2017); beyond, a number that was not made to deceive."""
    if n < 2:
        return False
    for p in BASES:
        if n % p == 0:
            return n == p
    s = (n - 1 & 1 - n).bit_length() - 1
    for base in BASES:
        x = pow(base, n - 1 >> s, n)
        if x == 1:
            continue
        for _ in range(s - 1):
            if x == n - 1:
                break
            x = x * x % n
        if x != n - 1:
            return False
    return True


def facteurs(n):
    """The prime factors with their exponents; n must have one at most beyond 10^4."""
    trouves = []
    for p in itertools.takewhile(lambda p: p * p <= n, range(2, 10**4)):
        if n % p == 0:
            e = 0
            while n % p == 0:
                n //= p
                e += 1
            trouves.append((p, e))
    if n > 1:
        assert est_premier(n), n
        trouves.append((n, 1))
    return trouves


def nombre_premiers(x):
    """pi(x) by the sieve of counts (Lucy_Hedgehog, 2010): 10^9 takes a second or two."""
    r = math.isqrt(x)
    valeurs = [x // i for i in range(1, r + 1)]
    valeurs += range(valeurs[-1] - 1, 0, -1)
    restent = {v: v - 1 for v in valeurs}
    for p in range(2, r + 1):
        if restent[p] > restent[p - 1]:
            for v in valeurs:
                if v < p * p:
                    break
                restent[v] -= restent[v // p] - restent[p - 1]
    return restent[x]


def chemins(chiffres):
    """Every way to cut a string into primes, the shortest first piece first, and so on."""
    if not chiffres:
        yield []
    for lg in range(1, len(chiffres) + 1):
        if est_premier(int(chiffres[:lg])):
            for suite in chemins(chiffres[lg:]):
                yield [chiffres[:lg], *suite]


# ---- The lines that hold results -------------------------------------------------------------------


def decomposition(n):
    liste = facteurs(n)
    if liste == [(n, 1)]:
        return [f" \n \n \t {n}  est un nombre premier. "]
    produit = " X ".join(f"({p})" + (f"^{e}" if e > 1 else "") for p, e in liste)
    return [f" \n \n \t {n} =  {produit}"]


def accueil_des_rangs(n):
    """The screen of the ranked listing after the decomposition of a prime n: division has made
    known the first prime above its root."""
    p = math.isqrt(n) + 1
    while not est_premier(p):
        p += 1
    rang = nombre_premiers(p)
    return [f" Le dernier nombre premier calcule est  :    [ {rang} : {p} ] .",
            f"Ce rang, doit etre superieur a :  {rang} \n",
            f"tous les nombres premiers superieurs a  {p}  jusqu'a la valeur K",
            f"le plus grand nombre premier superieur a  {p} et inferieur a K",
            f"\t  Dernier nombre calcule  :    [ {rang} : {p} ] ."]


def bornes(a, b, en_liste):
    trouves = [n for n in range(a, b + 1) if est_premier(n)]
    debut = " \n \n \t  Entre ces limites, les nombres premiers sont : "
    liste = debut + "".join(f" {p} , " for p in trouves) if en_liste else ""
    return [f"{liste} \n \n \t  Il y a  {len(trouves)}  nombres premiers entre ces limites. \n"]


def concatenation(n):
    liste = [" ( " + "".join(morceau + " " for morceau in c) + ") " for c in chemins(str(n))]
    return [f"\n  Pour  {n} : {''.join(liste)} \n \n \t  Effectif des concanetations differentes "
            f"possibles = {len(liste)} \n"]


def premiers_concatenes(a, b):
    """The primes of a range with two ways at least, listed."""
    liste = [(n, sum(1 for _ in chemins(str(n)))) for n in range(a, b + 1) if est_premier(n)]
    liste = [(n, k) for n, k in liste if k > 1]
    return [f" \n \n \t Entre {a} et {b}   les  nombres qui convienent sont : "
            + "".join(f"{n}[{k}]  " for n, k in liste)
            + f" \n \n \t Il y a  {len(liste)}  nombres  premiers de ce type"]


# ---- The sessions that the model cannot finish -----------------------------------------------------

# Name, reason, the words of the session as a function of its numbers (which must give NAME.in), its
# lines of results as a function of the same, its numbers, those of the sister.
DERIVEES = [
    ("bornes-dernier-premier-63-bits",
     "2^63 - 25 is prime: the model would need all primes below 3 * 10^9",
     lambda a, b, c: ["3", a, b, "0", "3", c, b, "1", "0"],
     lambda a, b, c: bornes(a, b, True) + bornes(c, b, False),
     (2**63 - 28, 2**63 - 1, 2**63 - 25), (10000, 10010, 10008)),
    ("concatenation-au-dela-de-64-bits",
     "prime pieces of 20 to 25 digits: all primes below 10^12",
     lambda a, b, c, d: ["4", "1", a, "1", b, "1", c, "1", d, "0", "0", "0"],
     lambda a, b, c, d: concatenation(a) + concatenation(b) + concatenation(c) + concatenation(d),
     (2**64 + 13, 10**24 + 7, 2 * 10**23 + 3, 10**20 - 1), (2357, 1009, 2003, 9999)),
    ("concatenation-40-chiffres",
     "prime pieces of 39 and 40 digits",
     lambda a, b: ["4", "1", a, "1", b, "0", "0", "0"],
     lambda a, b: concatenation(a) + concatenation(b),
     (7828005601672546621574813993270753275787, 3270814841905806678968562993004174754567),
     (23571113, 2357)),
    ("decomposition-dernier-facteur-au-dela-de-64-bits",
     "primes near 2^63 and 2^64: all primes below 4 * 10^9",
     lambda a, b, c: ["1", a, "1", b, "1", c, "0", "0"],
     lambda a, b, c: decomposition(a) + decomposition(b) + decomposition(c),
     (2 * (2**64 + 13), 2**64 + 13, 2**63 - 25), (2 * 10007, 10007, 10009)),
    ("intervalle-grands-premiers",
     "2^64 + 13 is prime: all primes below 4 * 10^9",
     lambda a, b: ["4", "3", a, b, "0", "0", "0"],
     premiers_concatenes,
     (2**64 + 4, 2**64 + 14), (2340, 2360)),
    ("rangs-apres-un-premier-de-19-chiffres",
     "the table of 50,847,535 primes, each found by division, takes hours",
     lambda n: ["1", n, "0", "2", "0", "0"],
     lambda n: decomposition(n) + accueil_des_rangs(n),
     (10**18 + 9,), (10**8 + 7,)),
]


# Those whose ranks no division reaches: tests/modele_des_rangs.py, which counts with Debian's
# primecount, writes them whole.
PAR_DES_COMPTES = {
    "consultation-derniers-rangs": "ranks at the end of the numbers, near 2 * 10^17",
    "dette-au-dela-de-la-limite": "a prime of 41 digits",
    "dette-racine-de-10-puissance-18": "50,847,535 primes are owed",
    "dette-racine-de-10-puissance-30": "the primes up to 10^15 are owed",
    "dette-racine-du-plus-grand-facteur": "the primes up to 10^15 are owed",
    "rangs-10-puissance-9-et-12": "ranks up to 10^12",
    "rangs-au-dela-de-32-bits": "200 million ranks",
    "rangs-au-dela-des-bits-gardes": "27 million ranks",
    "rangs-fin-des-nombres": "ranks at the end of the numbers, which the model would go on to look for",
    "rangs-somme-qui-deborde": "a refused value, which the model would go on to look for",
}


# ---- Playing and comparing -------------------------------------------------------------------------

RIEN_A_ESSAYER = 77  # for ctest, what could not be tried here

# Seconds for one session; the longest takes three, and some twenty under the sanitizers.
LIMITE = 240


def lire(nom):
    with open(os.path.join(ICI, nom), "rb") as fichier:
        return fichier.read()


def jouer(reference, tape):
    try:
        fin = subprocess.run([reference], input=tape, capture_output=True, check=False,
                             timeout=LIMITE)
    except subprocess.TimeoutExpired:
        raise ValueError(f"more than {LIMITE} s for the model: it belongs into DERIVEES") from None
    if fin.returncode != 1 or fin.stderr:
        raise ValueError(f"the model ended with status {fin.returncode}, {fin.stderr[:200]}")
    return fin.stdout


def deriver(reference, nom, mots, lignes, nombres, soeur):
    """What session `nom` must print, from the dialogue of its sister."""
    if lire(nom + ".in").decode().split() != [str(mot) for mot in mots(*nombres)]:
        raise ValueError("the words of the session are not those that are derived")
    reste = jouer(reference, " ".join(map(str, mots(*soeur))).encode()).decode()
    deduit = ""
    for ancienne, nouvelle in zip(lignes(*soeur), lignes(*nombres), strict=True):
        avant, trouvee, reste = reste.partition(ancienne)
        if not trouvee:
            raise ValueError(f"the model does not print, for the sister, {ancienne!r}")
        if mot := re.search(rf"(?<!\d)({'|'.join(map(str, soeur))})(?!\d)", avant):
            raise ValueError(f"a result of the sister is left: {mot[0]}")
        deduit += avant + nouvelle
    return (deduit + reste).encode()


def par_des_comptes(nom):
    """What session `nom` must print; its standard error is compared here."""
    fin = subprocess.run([sys.executable, os.path.join(ICI, "..", "modele_des_rangs.py")],
                         input=lire(nom + ".in"), capture_output=True, check=False, timeout=LIMITE)
    if fin.returncode != 0:
        raise ValueError(f"the model that counts ended with {fin.returncode}: {fin.stderr[-200:]}")
    erreurs = os.path.join(ICI, nom + ".err")
    if fin.stderr != (lire(nom + ".err") if os.path.exists(erreurs) else b""):
        raise ValueError(f"on standard error the model has {fin.stderr[-200:]}")
    return fin.stdout


def attendu(reference, nom):
    if nom in PAR_DES_COMPTES:
        return par_des_comptes(nom)
    for derivee, _raison, *regle in DERIVEES:
        if derivee == nom:
            return deriver(reference, nom, *regle)
    return jouer(reference, lire(nom + ".in"))


def verifier(reference, nom):
    """None, or what is wrong with the session."""
    try:
        juste, ecrit = attendu(reference, nom), lire(nom + ".out")
    except (OSError, ValueError) as erreur:
        return str(erreur)
    if juste == ecrit:
        return None
    octet = len(os.path.commonprefix([juste, ecrit]))
    morceau = slice(max(0, octet - 40), octet + 60)
    return f"differs at byte {octet}:\n  derived  {juste[morceau]!r}\n  {nom}.out {ecrit[morceau]!r}"


def main():
    reference, *noms = sys.argv[1:]
    if noms and noms[0] == "--ecrire":
        for nom in noms[1:]:
            octets = attendu(reference, nom)
            with open(os.path.join(ICI, nom + ".out"), "wb") as fichier:
                fichier.write(octets)
        return 0
    # By the name, not by the file: half a pair is a session too, and fails. So does a derived one
    # that is not there.
    noms = noms or sorted({os.path.splitext(f)[0] for f in os.listdir(ICI)
                           if f.endswith((".in", ".out"))} | {d[0] for d in DERIVEES}
                          | set(PAR_DES_COMPTES))
    laissees = []
    if shutil.which("primecount") is None:
        laissees = [nom for nom in noms if nom in PAR_DES_COMPTES]
        noms = [nom for nom in noms if nom not in PAR_DES_COMPTES]
        print("without primecount (on Debian: primecount-bin) left out:", *laissees)
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as equipe:
        fautes = dict(zip(noms, equipe.map(lambda nom: verifier(reference, nom), noms)))
    for nom, faute in fautes.items():
        if faute:
            print(f"{nom}: {faute}")
    justes = sum(not faute for faute in fautes.values())
    print(f"{justes} of {len(noms)} sessions, {len(DERIVEES)} of all derived, "
          f"{len(PAR_DES_COMPTES)} by counts")
    if not noms or justes < len(noms):
        return 1
    return RIEN_A_ESSAYER if laissees else 0


if __name__ == "__main__":
    sys.exit(main())
