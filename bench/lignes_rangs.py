# SPDX-License-Identifier: MIT
"""The rows of the primes by rank: far jumps, lists, readings, what past decisions oblige to."""
import random

from lignes import Cote, Exigence, Ligne, selections
from lignes_moteur import primecount
from reponses import (dernier_entre_crochets, entrees_listees, nombres_listes, rang_connu,
                      rang_isole, rangs_listes, texte_entier)

GROUPE = "Primes by rank"
P_10_7 = 179_424_673                 # the prime of rank 10^7
P_10_15 = 37_124_508_045_065_437     # of rank 10^15 (OEIS A006988)
P_10_15_PLUS = 37_124_508_083_184_031  # and of rank 10^15 + 10^6, by the rivals' list
MEMOIRE = Exigence("memoire", 160, 40, limite=True, unite="MB")


def exiger(doit, vise):
    return [Exigence("temps", doit, vise), MEMOIRE]


def session(o, entree, lire=texte_entier, **reste):
    return Cote("premiers", [o.programme], entree, lire, statut=1, **reste)


def seance(o, dialogue, place, entree, lire=texte_entier):
    return Cote("premiers", [str(o.aides / "seance"), dialogue, str(place)], entree, lire,
                interne="seance_s")


def avant(o, entree, lire=texte_entier):
    """The program as it was, if one was named."""
    return Cote("the program before", [o.programme_avant], entree, lire, statut=1)


def primecount_pour_chacun(o, rangs):
    """The primes of some ranks, one process each."""
    boucle = 'p=$1; shift; for k; do "$p" -n "$k" -t1; done'
    return [Cote(nom, ["sh" if commande else "", "-c", boucle, "sh", commande, *map(str, rangs)], "",
                 nombres_listes)
            for nom, commande in (("primecount", "primecount"),
                                  ("primecount (newest)", o.primecount_recent))]


def lignes_de_sauts(o):
    def rang(k, doit, vise=0.7, **reste):
        return Ligne(GROUPE, f"the prime of rank 10^{k} on a fresh start",
                     session(o, f"2\n={10**k}\n0\n0\n", dernier_entre_crochets),
                     primecount(o, "-n", 10**k), exiger(doit, vise), **reste)
    return [
        rang(8, 1.0, lancements=25, resume="the 100,000,000th prime",
             guide="le nombre premier de rang 100 000 000, table neuve"),
        rang(9, 1.0, lancements=25), rang(10, 1.0, lancements=15),
        rang(12, 0.9, resume="the 1,000,000,000,000th prime",
             guide="le nombre premier de rang 10^12, table neuve"),
        rang(14, 0.9, lente=True),
        Ligne(GROUPE, "the largest prime below 10^15 with its rank, on a fresh start",
              session(o, "2\n=-1000000000000000\n0\n0\n", rang_isole),
              primecount(o, 10**15), exiger(1.0, 0.8), lente=True),
    ]


def lignes_de_dettes(o):
    def apres(n):
        return f"1\n{n}\n0\n2\n0\n0\n"
    return [
        Ligne(GROUPE, "the screen of the ranks after deciding 18446744073709551629",
              session(o, apres(2**64 + 13)), [avant(o, apres(2**64 + 13))], exiger(0.03, 0.01)),
        Ligne(GROUPE, "the screen of the ranks after deciding the first prime above 10^30",
              session(o, apres(10**30 + 57), lambda chemin: rang_connu(chemin) - 1),
              primecount(o, 10**15), exiger(1.1, 0.8), lente=True),
    ]


def lignes_de_lectures(o):
    hasard = random.Random(7)
    rangs = [hasard.randrange(1, 10**12) for _ in range(20)]
    choix_1 = "".join(f"1\n{k}\n" for k in rangs) + "0\n"
    suites = f"5\n{10**15}\n{10**15 + 10**8}\n6\n4\n0\n"
    mille = f"2\n={10**7}\n*\n{selections(10**7, P_10_7)}0\n0\n"
    dix_millions = "2\n9999998\n0\n0\n"
    return [
        *(Ligne(GROUPE, f"9,999,998 primes with ranks on a fresh start, to {ou}, against the program "
                "before", session(o, dix_millions, rangs_listes),
                [avant(o, dix_millions, rangs_listes)], exiger(1.05, 0.9), sortie)
          for sortie, ou in (("rien", "/dev/null"), ("tube", "a pipe"), ("fichier", "a file"))),
        Ligne(GROUPE, "10^6 primes with ranks from rank 10^15 on, the listing alone",
              seance(o, "premier", 10**15, f"{10**6}\n0\n", entrees_listees),
              [Cote("primesieve", ["primesieve", str(P_10_15 + 1), str(P_10_15_PLUS), "-p", "-q",
                                   "-t1"], "", nombres_listes),
               Cote("primesieve (newest)", [o.primesieve_recent, str(P_10_15 + 1),
                                            str(P_10_15_PLUS), "-p", "-q", "-t1"], "",
                    nombres_listes)],
              exiger(0.6, 0.45), lente=True, lancements=3),
        Ligne(GROUPE, "rank 10^7 and 1,000 selections on that table, whole process",
              session(o, mille), [avant(o, mille)], exiger(1.2, 0.9), lancements=25),
        Ligne(GROUPE, "20 random ranks below 10^12 in a table of that rank, the selections alone",
              seance(o, "affiche", 10**12, choix_1, entrees_listees),
              primecount_pour_chacun(o, rangs), exiger(0.9, 0.5), lente=True),
        Ligne(GROUPE, "runs of difference 6, at least 4 primes, in the 10^8 integers after 10^15, in "
              "a table up to 2 * 10^15, the selection alone",
              seance(o, "affiche", -2 * 10**15, suites), primecount(o, 10**15, lire=lambda _: None),
              exiger(1.2, 0.9), lente=True, lancements=3),
        Ligne(GROUPE, "reading the low part once it is kept, 25 million ranks",
              Cote("premiers", [str(o.aides / "moteur"), "lire", "25000000"]), [],
              [Exigence("acces_ns", 200, None, limite=True, unite="ns an access"),
               Exigence("marche_ns", 2, None, limite=True, unite="ns a prime walked"), MEMOIRE]),
    ]


def lignes_de_rangs(o):
    return lignes_de_sauts(o) + lignes_de_dettes(o) + lignes_de_lectures(o)
