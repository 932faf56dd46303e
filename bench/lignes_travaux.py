# SPDX-License-Identifier: MIT
"""The rows of the concatenations and of the big numbers."""
from lignes import Cote, Exigence, Ligne, decompositions, entiers, produits_en_chiffres, ratio
from lignes_moteur import factor, gp_facteurs, session
from reponses import (effectif, entier_seul, est_premier_dit, facteurs, recherche, rien, voies,
                      voies_gp)

GROUPES = ("Concatenations", "Integers of any size")
BIBLIOTHEQUE = "The proof is the work of the library behind gp: it is measured against itself."


def chercher(choix, debut, fin, seulement):
    return f"4\n{choix}\n{debut}\n{fin}\n{int(seulement)}\n0\n0\n"


def gp_script(o, texte, nom, lire, **reste):
    corps = "default(nbthreads, 1);\n" + texte + (o.bench / nom).read_text()
    return Cote("gp", ["gp", "-q", "-f"], corps, lire, **reste)


def lignes_de_nombres_ronds(o):
    """Round numbers are as quick as others: a search against the mean of three that begin anywhere
    among the numbers of as many digits. Nothing but their time can be compared."""
    def ligne(k, choix):
        debuts = entiers(3, 10**k, 10**(k + 1), k)
        quoi = {2: "concatenations", 3: "prime concatenations"}[choix]
        ailleurs = "".join(chercher(choix, n, n + 10**5, True).removesuffix("0\n") for n in debuts)
        return Ligne(GROUPES[0], f"{quoi} from 10^{k} to 10^{k} + 10^5, count alone",
                     session(o, chercher(choix, 10**k, 10**k + 10**5, True), rien),
                     [Cote("from random digits", [o.programme], ailleurs + "0\n", statut=1,
                           unites=len(debuts))], ratio(1.5, 1.0), lente=True)
    return [ligne(k, choix) for k in (24, 30, 40, 60, 100) for choix in (2, 3)]


def lignes_de_concatenations(o):
    litteral = str(o.aides / "concat_litteral")

    def liste_contre_litteral(k):
        return Ligne(GROUPES[0], f"concatenations from 1 to 10^{k}, whole list",
                     session(o, chercher(2, 1, 10**k, False), recherche),
                     [Cote("literal steps", [litteral, "1", str(10**k)], "", recherche)],
                     ratio(0.4), lente=k == 8)
    entree = chercher(2, 1, 10**6, False)
    chemins = o.travail / "chemins-gp"
    n = "2357" * 10
    return [
        Ligne(GROUPES[0], "concatenations from 1 to 10^6, whole list",
              session(o, entree, recherche),
              [Cote("plain program", [o.reference], entree, recherche, statut=1)],
              ratio(0.005), lancements=1, lente=True),
        liste_contre_litteral(7),
        liste_contre_litteral(8),
        Ligne(GROUPES[0], "prime concatenations from 1 to 10^9, count alone",
              session(o, chercher(3, 1, 10**9, True), effectif), [],
              [Exigence("temps", 30, None, limite=True, unite="s"),
               Exigence("memoire", 400, None, limite=True, unite="MB")], lente=True,
              guide="l'effectif des concaténations premières jusqu'à 10^9"),
        Ligne(GROUPES[0], "concatenations from 10^18 to 10^18 + 10^5, count alone",
              session(o, chercher(2, 10**18, 10**18 + 10**5, True), effectif),
              [gp_script(o, "debut=10^18; fin=10^18+10^5;\n", "concat_intervalle.gp",
                         entier_seul)], ratio(0.1), lente=True),
        Ligne(GROUPES[0], "concatenations from 10^30 to 10^30 + 10^4, count alone",
              session(o, chercher(2, 10**30, 10**30 + 10**4, True), effectif),
              [gp_script(o, "debut=10^30; fin=10^30+10^4;\n", "concat_intervalle.gp",
                         entier_seul)], ratio(0.1, 0.03), lente=True),
        *lignes_de_nombres_ronds(o),
        Ligne(GROUPES[0], "the ways to cut 2357 written ten times, to a file",
              session(o, f"4\n1\n{n}\n0\n0\n0\n", voies),
              [gp_script(o, f'N={n}; sortie="{chemins}";\n', "concat_chemins.gp",
                         voies_gp(chemins), avant=(chemins,))], ratio(0.1), lente=True),
    ]


def lignes_de_grands_entiers(o):
    def liste(titre, nombres, doit, vise, avec_factor=True, **reste):
        pairs = [gp_facteurs(o, nombres)] + ([factor(nombres)] if avec_factor else [])
        return Ligne(GROUPES[1], titre, session(o, decompositions(nombres), facteurs(nombres)),
                     pairs, ratio(doit, vise), avx512=True, **reste)

    def noms(c, combien):
        """What the row is called in the other documents, if it stands there."""
        return {"resume": {30: f"{combien:,} products of two primes, {c} digits, decomposed",
                           60: f"a product of two primes, {c} digits, decomposed"}.get(c, ""),
                "guide": f"décomposer un produit de deux nombres premiers, {c} chiffres"
                if c in (20, 30, 40, 50, 60) else "", "combien": combien}

    lignes = [liste(f"{combien:,} products of two primes, {c} digits",
                    produits_en_chiffres(c, combien), 1.0, 0.5, lente=c > 20, **noms(c, combien))
              for c, combien in ((20, 1000), (24, 1000), (30, 1000), (36, 200))]
    lignes += [liste(f"{combien} products of two primes, {c} digits" if combien > 1
                     else f"a product of two primes, {c} digits",
                     produits_en_chiffres(c, combien), 1.1, 0.5, avec_factor=False,
                     **noms(c, combien)) for c, combien in ((40, 5), (50, 3), (60, 1))]
    lignes.append(liste("1,000 random integers of 30 digits",
                        entiers(1000, 10**29, 10**30, 30), 1.0, 0.5, lente=True))
    lignes.append(liste("2^200 - 1 to 2^210 - 1", [2**k - 1 for k in range(200, 211)], 1.1, None,
                        avec_factor=False))
    for titre, p in (("10^99 + 289", 10**99 + 289), ("2^521 - 1", 2**521 - 1),
                     ("2^607 - 1", 2**607 - 1)):
        texte = f"default(nbthreads, 1);\np = {titre};\nif(isprime(p), print(p));\n"
        lignes.append(Ligne(GROUPES[1], f"the prime {titre}, proven",
                            session(o, decompositions([p]), est_premier_dit),
                            [Cote("gp", ["gp", "-q", "-f"], texte, entier_seul)],
                            ratio(1.1), note=BIBLIOTHEQUE if titre == "10^99 + 289" else ""))
    return lignes


def lignes_des_travaux(o):
    return lignes_de_concatenations(o) + lignes_de_grands_entiers(o)
