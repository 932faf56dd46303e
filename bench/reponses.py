# SPDX-License-Identifier: MIT
"""What the programs answer, read from their output so that two sides can be compared.

Each function takes the path of an output. Long texts are compared by their digest.
"""
import hashlib
import mmap
import re
from math import prod


def _octets(chemin):
    return chemin.read_bytes()


def _condense(chemin, avant=b"", apres=b""):
    """The digest of what stands between two marks; of all where there are none."""
    with open(chemin, "rb") as f, mmap.mmap(f.fileno(), 0, access=mmap.ACCESS_READ) as m:
        a = m.find(avant) + len(avant) if avant else 0
        b = m.find(apres, a) if apres else len(m)
        if a < len(avant) or b < a:
            raise ValueError(f"{chemin}: the list is missing")
        empreinte = hashlib.sha256()
        for i in range(a, b, 1 << 22):
            empreinte.update(m[i:min(i + (1 << 22), b)])
        return empreinte.hexdigest()


def _un(motif, chemin):
    trouve = re.search(motif, _octets(chemin))
    if not trouve:
        raise ValueError(f"{chemin}: no answer")
    return int(trouve[1])


def rien(_):
    return None


def texte_entier(chemin):
    return _condense(chemin)


def entier_seul(chemin):
    """A number alone, or after "Primes:"."""
    return int(_octets(chemin).split()[-1])


def effectif(chemin):
    return _un(rb"Il y a  (\d+)  nombres", chemin)


def est_premier_dit(chemin):
    return _un(rb"(\d+)  est un nombre premier", chemin)


def dernier_entre_crochets(chemin):
    """The prime of the last "[ rank : prime ]" that answers a command."""
    return _un(rb"eme nombre premier : .*?\[ \d+ : (\d+) \]", chemin)


def rang_isole(chemin):
    """The rank of the prime that answers a command."""
    return _un(rb"(\d+) eme nombre premier : ", chemin)


def rang_connu(chemin):
    """The rank of the last known prime, on the screen of the ranked listing."""
    return _un(rb"Le dernier nombre premier calcule est  :    \[ (\d+) : ", chemin)


def entrees_listees(chemin):
    """The primes of all entries "[ rank : prime ]", as `nombres_listes` digests them; the last of the
    table, which menus and status lines show with a full stop behind it, left out."""
    empreinte = hashlib.sha256()
    for trouve in re.finditer(rb"\[ \d+ : (\d+) \] (?!\.)", _octets(chemin)):
        empreinte.update(trouve[1] + b"\n")
    return empreinte.hexdigest()


def valeurs_nommees(texte):
    """The figures of lines "name value"."""
    return {nom: float(v) for nom, v in re.findall(r"^(\w+) ([\d.]+)$", texte, re.M)}


def nombres_listes(chemin):
    """A list of one number a line, by its digest."""
    empreinte = hashlib.sha256()
    with open(chemin, "rb") as f:
        for ligne in f:
            empreinte.update(ligne)
    return empreinte.hexdigest()


def bornes_listees(chemin):
    """The primes of a bounded listing, as `nombres_listes` digests them."""
    empreinte, lignes = hashlib.sha256(), bytes.maketrans(b",", b"\n")
    with open(chemin, "rb") as f, mmap.mmap(f.fileno(), 0, access=mmap.ACCESS_READ) as m:
        marque = b"les nombres premiers sont : "
        debut, fin = m.find(marque) + len(marque), m.rfind(b" \n \n \t  Il y a")
        if debut < len(marque) or fin < debut:
            raise ValueError(f"{chemin}: the list is missing")
        for i in range(debut, fin, 1 << 22):
            empreinte.update(m[i:min(i + (1 << 22), fin)].translate(lignes, b" "))
    return empreinte.hexdigest()


def rangs_listes(chemin):
    """The primes of a ranked listing from the first on, likewise."""
    empreinte = hashlib.sha256()
    with open(chemin, "rb") as f, mmap.mmap(f.fileno(), 0, access=mmap.ACCESS_READ) as m:
        debut, fin = m.find(b"Liste des nombres premiers"), m.rfind(b"Dernier nombre calcule")
        for rang, trouve in enumerate(re.finditer(rb"\[ (\d+) : (\d+) \]", m[debut:fin]), 1):
            if int(trouve[1]) != rang:
                raise ValueError(f"{chemin}: rank {rang} is not in its place")
            empreinte.update(trouve[2] + b"\n")
    return empreinte.hexdigest()


def recherche(chemin):
    """The numbers and ways of a range search; the yardstick prints nothing before them."""
    with open(chemin, "rb") as f:
        dialogue = b"qui convienent sont : " in f.read(8192)
    return _condense(chemin, b"qui convienent sont : " if dialogue else b"", b"nombres de ce type")


def voies(chemin):
    """The ways of one number: how many, and their digest."""
    nombre = _un(rb"differentes possibles = (\d+)", chemin)
    texte = _octets(chemin)
    a = texte.index(b" : ", texte.index(b"Pour  ")) + 3
    return nombre, hashlib.sha256(texte[a:texte.index(b" \n \n \t  Effectif")]).hexdigest()


def voies_gp(chemin_des_voies):
    """The same from the count that gp prints and the file that it writes."""
    def lire(chemin):
        return entier_seul(chemin), hashlib.sha256(chemin_des_voies.read_bytes()).hexdigest()
    return lire


def facteurs(nombres):
    """A reader of factorisations in the manner of the program, of `factor` or of gp. Each is
    multiplied out, and must be of one of the numbers."""
    def lire(chemin):
        texte = _octets(chemin).decode()
        if "est un nombre premier" in texte or " =  " in texte:
            lus = {int(n): _puissances(f) for n, f in
                   re.findall(r"\n \n \t (\d+)(?: =  |  est un nombre)([^\n]*)", texte)}
        elif "[" in texte:  # gp: [p, e; q, f], or Mat([p, e])
            lus = {int(n): _puissances("X".join(f"({p})^{e}" for p, e in
                                                re.findall(r"(\d+), (\d+)", f)))
                   for n, f in re.findall(r"^(\d+):(?:Mat\()?\[(.*)\]\)?$", texte, re.M)}
        else:
            lus = {int(n): _puissances("X".join(f"({p})" for p in f.split()))
                   for n, f in re.findall(r"^(\d+):(.*)$", texte, re.M)}
        for n, puissances in lus.items():
            produit = 1
            for p, e in puissances or [(n, 1)]:
                produit *= p**e
            if produit != n:
                raise ValueError(f"{chemin}: the factors of {n} do not multiply back")
        if set(lus) != set(nombres):
            raise ValueError(f"{chemin}: not every number was answered")
        return {n: puissances or [(n, 1)] for n, puissances in lus.items()}
    return lire


def facteurs_de_yafu(nombres):
    """A reader of what yafu prints, each number on a line of its own before: lines "P25 = ...", one
    for each factor as often as it divides. A factor it says to be composite is no answer."""
    def lire(chemin):
        texte = _octets(chemin).decode(errors="replace").replace("\r", "\n")
        parties = re.split(r"^(\d+):$", texte, flags=re.M)[1:]
        lus = {}
        for n, dit in zip(map(int, parties[::2]), parties[1::2]):
            if re.search(r"^C\d+ = ", dit, re.M):
                raise ValueError(f"{chemin}: yafu left a composite factor of {n}")
            premiers = [int(p) for p in re.findall(r"^(?:P|PRP)\d+ = (\d+)$", dit, re.M)]
            if prod(premiers) != n:
                raise ValueError(f"{chemin}: the factors of {n} do not multiply back")
            lus[n] = sorted((p, premiers.count(p)) for p in set(premiers))
        if set(lus) != set(nombres):
            raise ValueError(f"{chemin}: not every number was answered")
        return lus
    return lire


def _puissances(texte):
    """(p)^e X (q) ... as sorted pairs; none for a prime."""
    exposants = {}
    for p, e in re.findall(r"\((\d+)\)(?:\^(\d+))?", texte):
        exposants[int(p)] = exposants.get(int(p), 0) + int(e or 1)
    return sorted(exposants.items())
