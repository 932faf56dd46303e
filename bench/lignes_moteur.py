# SPDX-License-Identifier: MIT
"""The rows of the engine: the table, single answers, sieves, lists and counts."""
from lignes import (ECRANS, Cote, Exigence, Ligne, bornes, decompositions, entiers,
                    produits_de_32_bits, ratio, selections)
from reponses import (bornes_listees, effectif, entier_seul, est_premier_dit, facteurs,
                      nombres_listes, rangs_listes, texte_entier)

DEUX_63 = 2**63 - 1
P_10_7 = 179_424_673  # the prime of rank 10^7
GROUPES = ("The engine", "Lists and counts", "How the cost grows")


def session(o, entree, lire, **reste):
    return Cote("premiers", [o.programme], entree, lire, statut=1, **reste)


def gp_facteurs(o, nombres):
    """gp reads the list from a file, so that its input is no matter of the dialogue."""
    liste = o.travail / f"liste-{abs(hash(tuple(nombres)))}"
    liste.write_text("\n".join(map(str, nombres)) + "\n")
    texte = ("default(nbthreads, 1);\ndefault(parisizemax, 10^9);\n"
             f'foreach(readvec("{liste}"), n, print(n, ":", factor(n)));\n')
    return Cote("gp", ["gp", "-q", "-f"], texte, facteurs(nombres))


def factor(nombres):
    """GNU factor, which is given up after a minute."""
    return Cote("factor", ["factor"], "\n".join(map(str, nombres)) + "\n", facteurs(nombres),
                patience=60)


def primesieve(*mots, lire=entier_seul, unites=1, commande="primesieve", nom="primesieve"):
    return Cote(nom, [commande, *map(str, mots), "-q", "-t1"], "", lire, unites=unites)


def primecount(o, *mots, lire=entier_seul):
    """The installed primecount, and the newest one, where it was named."""
    mots = [*map(str, mots), "-t1"]
    return [Cote("primecount", ["primecount", *mots], "", lire),
            Cote("primecount (newest)", [o.primecount_recent, *mots], "", lire)]


def recent(o, *mots, **reste):
    """The newest primesieve, if one was named."""
    return [primesieve(*mots, commande=o.primesieve_recent, nom="primesieve (newest)",
                       **reste)] if o.primesieve_recent else []


def lignes_de_reponses(o):
    hasard, produits = entiers(20_000, 1, 2**64, 64), produits_de_32_bits(5_000)
    geant = 2**64 + 13
    return [
        Ligne(GROUPES[0], "20,000 random 64-bit numbers decomposed in one session",
              session(o, decompositions(hasard), facteurs(hasard)),
              [factor(hasard), gp_facteurs(o, hasard)], ratio(1.0, 0.5, "factor"), avx512=True,
              resume="20,000 random 64-bit integers, decomposed"),
        Ligne(GROUPES[0], "5,000 products of two random 32-bit primes in one session",
              session(o, decompositions(produits), facteurs(produits)),
              [gp_facteurs(o, produits), factor(produits)], ratio(0.6, 0.15), avx512=True,
              resume="5,000 products of two 32-bit primes, decomposed"),
        Ligne(GROUPES[0], f"{geant} (2^64 + 13) first thing after the start",
              session(o, decompositions([geant]), est_premier_dit), [],
              [Exigence("temps", 0.010, 0.003, limite=True, unite="s")], attendu=geant),
    ]


def lignes_de_crible(o):
    def crible(titre, a, largeur, avx512=False):
        return Ligne(GROUPES[0], titre,
                     Cote("premiers", [str(o.aides / "moteur"), "crible", str(a),
                                       str(a + largeur)], "", entier_seul),
                     [primesieve(a, a + largeur)], ratio(1.8, 1.1), avx512=avx512)
    return [
        crible("sieve of 10^9 integers at 10^12, count", 10**12, 10**9),
        crible("sieve of 10^8 integers at 10^18, count", 10**18, 10**8, avx512=True),
        Ligne(GROUPES[0], "the plain program's own screens: start, menus, small work",
              session(o, ECRANS, texte_entier),
              [Cote("plain program", [o.reference], ECRANS, texte_entier, statut=1)],
              ratio(1.1, 1.0), lancements=101,
              note="The plain program finds the shared C++ library when it starts, as programs do "
              "by default; ours holds it."),
    ]


def lignes_de_listes(o):
    lignes = []
    for sortie, ou in (("rien", "/dev/null"), ("tube", "a pipe"), ("fichier", "a file")):
        rien = sortie == "rien"
        lignes += [
            Ligne(GROUPES[1], "9,999,998 primes with ranks on a fresh start, a prime's time, to "
                  + ou, session(o, "2\n9999998\n0\n0\n", rangs_listes, unites=9_999_998),
                  [primesieve(P_10_7, "-p", lire=nombres_listes, unites=10**7)],
                  ratio(*((0.5, 0.2) if rien else ())), sortie),
            Ligne(GROUPES[1], "list from 1 to 10^9, to " + ou,
                  session(o, bornes(1, 10**9, False), bornes_listees),
                  [primesieve(10**9, "-p", lire=nombres_listes),
                   *recent(o, 10**9, "-p", lire=nombres_listes)],
                  ratio(*((0.4, 0.2) if rien else ())), sortie,
                  resume="the 50,847,534 primes up to 10^9, listed" if rien else "",
                  guide="lister les nombres premiers jusqu'à 10^9, dans un fichier"
                  if sortie == "fichier" else "")]
    return lignes


def lignes_de_fenetres(o):
    """Wide windows far out, against the newest primesieve where one was named."""
    def rivaux(*mots, **reste):
        return recent(o, *mots, **reste) or [primesieve(*mots, **reste)]

    def compte(titre, debut, largeur, **reste):
        fin = debut + largeur - 1
        return Ligne(GROUPES[1], titre, session(o, bornes(debut, fin, True), effectif),
                     rivaux(debut, fin), ratio(1.0, 0.8), lente=True, lancements=3, **reste)
    debut, fin = 10**18, 10**18 + 10**8 - 1
    return [
        *(compte(f"count of the 10^{k} integers after 10^{n}", 10**n, 10**k)
          for k in (9, 10) for n in (15, 18)),
        compte("count of the 10^9 integers that end at 2^63 - 1", DEUX_63 - 10**9 + 1, 10**9),
        Ligne(GROUPES[1], "list of the 10^8 integers after 10^18, to /dev/null",
              session(o, bornes(debut, fin, False), bornes_listees),
              rivaux(debut, fin, "-p", lire=nombres_listes), ratio(0.8, 0.5), lente=True,
              lancements=3),
    ]


def lignes_de_comptes(o):
    bas = 9_223_372_036_844_775_807
    fin_de_liste = DEUX_63 - 999
    rang = 10**7
    reponses = selections(rang, P_10_7)
    aide = str(o.aides / "seance")

    def consulter(qui, nom):
        return Cote(nom, [aide, qui, str(rang)], reponses, texte_entier, interne="seance_s")
    return [
        Ligne(GROUPES[1], "count from 1 to 10^12",
              session(o, bornes(1, 10**12, True), effectif),
              [primesieve(10**12), *primecount(o, 10**12)],
              [Exigence("temps", 0.02, None, "primesieve"), Exigence("temps", 20, 3)], lente=True,
              avx512=True,
              serie=(10**12, "count"),
              guide="l'effectif des nombres premiers jusqu'à 10^12"),
        Ligne(GROUPES[1], "count from 1 to 10^14",
              session(o, bornes(1, 10**14, True), effectif), primecount(o, 10**14),
              ratio(30, 3), serie=(10**14, "count"), avx512=True, resume="the primes up to 10^14, counted",
              guide="l'effectif des nombres premiers jusqu'à 10^14"),
        Ligne(GROUPES[1], f"count from {bas} to {DEUX_63}",
              session(o, bornes(bas, DEUX_63, True), effectif),
              [primesieve(bas, DEUX_63), *recent(o, bas, DEUX_63)],
              ratio(1.5, 0.8), lente=True, avx512=True),
        Ligne(GROUPES[1], "list of the 1,000 numbers that end at 2^63 - 1",
              session(o, bornes(fin_de_liste, DEUX_63, False), bornes_listees),
              [primesieve(fin_de_liste, DEUX_63, "-p", lire=nombres_listes)],
              ratio(0.1, 0.02), lente=True),
        Ligne(GROUPES[1], "consultation of a table of 10^7 primes: 1,000 selections",
              consulter("affiche", "premiers"), [consulter("reference", "plain program")],
              ratio(0.02), lente=True,
              note="Only the selections are timed, inside a process that made the table before; "
              "the plain program's table was filled from ours, as it would need minutes."),
        # The published value: T. Oliveira e Silva, Tables of values of pi(x) (2001 - 2013).
        Ligne(GROUPES[1], f"count from 1 to {DEUX_63}",
              session(o, bornes(1, DEUX_63, True), effectif), [],
              [Exigence("memoire", 1000, None, limite=True, unite="MB"),
               Exigence("temps", None, 3600, limite=True, unite="s")],
              tres_longue=True, lancements=1, attendu=216289611853439384,
              guide="l'effectif des nombres premiers jusqu'à 2^63 - 1"),
    ]


def lignes_de_croissance(o):
    lignes = [
        Ligne(GROUPES[2], f"count from 1 to 10^{k}",
              session(o, bornes(1, 10**k, True), effectif),
              primecount(o, 10**k) + ([primesieve(10**k)] if k <= 11 else []), ratio(),
              serie=(10**k, "count"), lente=k == 11, avx512=True) for k in (9, 10, 11, 13)]
    return lignes + [
        Ligne(GROUPES[2], f"list from 1 to 10^{k}",
              session(o, bornes(1, 10**k, False), bornes_listees),
              [primesieve(10**k, "-p", lire=nombres_listes)], ratio(),
              serie=(10**k, "list")) for k in (5, 6, 7, 8)]


def lignes_du_moteur(o):
    return (lignes_de_reponses(o) + lignes_de_crible(o)
            + lignes_de_listes(o) + lignes_de_fenetres(o) + lignes_de_comptes(o)
            + lignes_de_croissance(o))
