#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""How the time of every service changes from one size to the next: points on a grid, through the
program's own dialogue, and a list of cliffs, the places where neighbours differ by more than the
work explains.

    bench/surface.py                 goes on where the last run stopped, half an hour at most
    bench/surface.py --seulement 'window' --pas 3     some lines, every third point

A point is the processor time, user and system, of one session (the least of three where it is
short), its output to /dev/null. One that takes more than five seconds is cut, shown as such, and ends
its line. Points are kept in build/bench/surface.json, for the program that they were measured with.

A cliff, by a rule that knows nothing of the methods. Times below 20 ms count as 20 ms: whatever
happens there nobody notices. Between two neighbours x < x' of a line with the times t and t'
- a rise is one if t' > 2 t f, where f is the growth that the formula of the method allows (the line
  says its exponent), or the line's own trend if that is more: the median growth of the three steps
  before it, or of the three behind it, per factor of x, or per digit where x is a length; a point
  that was cut counts as five seconds;
- a fall is one if t' < t / 2: less work took longer;
- and at the same x a kind of numbers that ought to be no dearer than another (round ones than
  random ones) is one if it takes more than twice as long.
"""
import argparse
import hashlib
import json
import re
import sys
import tempfile
import time
from dataclasses import dataclass
from math import exp, log
from pathlib import Path
from statistics import median

sys.dont_write_bytecode = True  # nothing is left beside the sources

from graphique import PALETTE, dessiner  # noqa: E402
from lanceur import lancer  # noqa: E402
from lignes import Cote  # noqa: E402
from lignes_surface import nommer, toutes_les_lignes  # noqa: E402
from rapport import SURFACE_DEBUT, duree, inserer, machine  # noqa: E402

RACINE = Path(__file__).resolve().parent.parent
PATIENCE = 5.0
SEUIL = 0.020
FACTEUR = 2.0
VOISINS = 3

# Why a cliff stays, by what its line in the list says: found by a regular expression.
EXPLICATIONS = [
    (r"^ways of one number", "What is printed grows: a number has by chance some ways or thousands."),
    (r"^decomposition.*(random|near a round one)",
     "Chance: what is left of a number behind its small factors is a prime, or is not."),
    (r"^decomposition.*(prime|square of a prime),",
     "Chance: a proof needs factors of N - 1, and is long where few are found."),
    (r"^(prime )?concatenations of a range of 1,000, random",
     "Chance: which pieces of the leading digits are primes decides how many cuts lead on."),
]


def dire(texte):
    print(f"surface: {texte}", file=sys.stderr, flush=True)


# ---- Points --------------------------------------------------------------------------------------


def empreinte(programme):
    return hashlib.sha256(Path(programme).read_bytes()).hexdigest()


class Points:
    """What is measured, kept in a file: by line and x the seconds, None for a point that was cut."""

    def __init__(self, fichier, programme):
        self.fichier = fichier
        self.empreinte = empreinte(programme)
        self.lignes, self.machine = {}, []
        if fichier.exists():
            garde = json.loads(fichier.read_text())
            if garde["programme"] == self.empreinte:
                self.lignes, self.machine = garde["points"], garde["machine"]
            else:
                dire("another program than last time: all points are measured anew")

    def trouver(self, courbe):
        """The points of a line, by increasing x."""
        faits = self.lignes.get(courbe.nom, {})
        return [(x, faits[str(x)]) for x in courbe.xs if str(x) in faits]

    def ajouter(self, courbe, x, temps):
        self.lignes.setdefault(courbe.nom, {})[str(x)] = temps
        garde = {"programme": self.empreinte, "machine": self.machine, "points": self.lignes}
        neuf = self.fichier.with_suffix(".neuf")
        neuf.write_text(json.dumps(garde, indent=1))
        neuf.replace(self.fichier)


def mesurer_un_point(programme, seance, dossier):
    """Seconds, or None if it was cut."""
    cote = Cote("premiers", [str(programme)], seance, statut=1, patience=PATIENCE)
    temps = []
    while len(temps) < 3 and (not temps or temps[0] < PATIENCE / 20):
        mesure = lancer(cote, "rien", dossier)
        if mesure is None:
            return None
        temps.append(mesure.temps)
    return min(temps)


def mesurer(courbes, points, options):
    """All that is missing, while there is time; gives how many points are left. A line along one
    direction of a grid takes over what a line along the other has measured: the same session."""
    fin = time.monotonic() + 60 * options.minutes
    seances = {}
    reste = 0
    with tempfile.TemporaryDirectory(prefix="surface-") as dossier:
        for courbe in courbes:
            faits = dict(points.trouver(courbe))
            for x in courbe.xs[::options.pas]:
                if x not in faits:
                    if time.monotonic() > fin:
                        reste += 1
                        continue
                    seance = courbe.seance(x)
                    if seance not in seances:
                        seances[seance] = mesurer_un_point(options.programme, seance, Path(dossier))
                    faits[x] = seances[seance]
                    points.ajouter(courbe, x, faits[x])
                if faits[x] is None:
                    break
    return reste


# ---- Cliffs --------------------------------------------------------------------------------------


@dataclass
class Falaise:
    courbe: object
    ou: str
    temps: tuple  # before and behind
    permis: float  # the ratio that the rule allows

    @property
    def rapport(self):
        return self.temps[1] / self.temps[0]

    @property
    def texte(self):
        return f"{self.courbe.nom}, {self.courbe.axe} {self.ou}"

    @property
    def explication(self):
        return next((pourquoi for motif, pourquoi in EXPLICATIONS if re.search(motif, self.texte)),
                    "**not explained yet**")


def ecrire_temps(s):
    return "cut" if s >= PATIENCE else duree(s)


def ecrire_x(courbe, x):
    return str(x) if courbe.par_chiffre else nommer(x)


def falaises_d_une_ligne(courbe, points):
    def abscisse(x):
        return float(x) if courbe.par_chiffre else log(x)

    vus = [(x, max(PATIENCE if t is None else t, SEUIL)) for x, t in points]
    pas = [(abscisse(b) - abscisse(a), log(s / t)) for (a, t), (b, s) in zip(vus, vus[1:])]
    trouvees = []
    for i, (largeur, hausse) in enumerate(pas):
        pentes = [median(h / l for l, h in cote)
                  for cote in (pas[max(0, i - VOISINS):i], pas[i + 1:i + 1 + VOISINS]) if cote]
        formule = courbe.exposant * log(vus[i + 1][0] / vus[i][0])
        permis = FACTEUR * exp(max([formule, *(p * largeur for p in pentes)]))
        if hausse > log(permis) or hausse < -log(FACTEUR):
            (a, t), (b, s) = vus[i:i + 2]
            trouvees.append(Falaise(courbe, f"{ecrire_x(courbe, a)} to {ecrire_x(courbe, b)}", (t, s),
                                    permis if hausse > 0 else 1 / FACTEUR))
    return trouvees


def falaises_contre_le_repere(courbe, points, repere, points_du_repere):
    """Where the line is dearer than the one that it is not to be dearer than."""
    la = dict(points_du_repere)
    trouvees = []
    for x, temps in points:
        if la.get(x) is None:
            continue
        t, s = max(la[x], SEUIL), max(PATIENCE if temps is None else temps, SEUIL)
        if s > FACTEUR * t:
            trouvees.append(Falaise(courbe, f"{ecrire_x(courbe, x)}, against {repere.sorte}", (t, s),
                                    FACTEUR))
    return trouvees


def chercher_les_falaises(courbes, points):
    par_nom = {c.nom: c for c in courbes}
    trouvees = []
    for courbe in courbes:
        ici = points.trouver(courbe)
        trouvees += falaises_d_une_ligne(courbe, ici)
        repere = par_nom.get(f"{courbe.service}, {courbe.repere}")
        if repere:
            trouvees += falaises_contre_le_repere(courbe, ici, repere, points.trouver(repere))
    return sorted(trouvees, key=lambda f: -abs(log(f.rapport)))


# ---- What is written -----------------------------------------------------------------------------


ENTETE = """## The surface

Written by `bench/surface.py`, whose head tells what a point is and what counts as a cliff: {points}
points on {lignes} lines, {coupes} of which end with a point cut after {patience:.0f} s.
"""

DESSINS = {"surface_chiffres.svg": ("digits", ("digits",)),
           "surface_largeurs.svg": ("width of the window, number of primes, rank",
                                    ("width", "rank"))}


def dessiner_tout(dossier, courbes, points):
    """A chart for each kind of size; gives the names of those that have points."""
    ecrits = []
    for nom, (axe, axes) in DESSINS.items():
        traits = {(c.service, c.sorte): [(x, PATIENCE if t is None else max(t, 1e-3))
                                         for x, t in points.trouver(c)]
                  for c in courbes if c.dessinee and c.axe in axes}
        traits = {qui: la for qui, la in traits.items() if la}
        if traits:
            (dossier / nom).write_text(dessiner(traits, "Processor time of a session (hollow: cut)",
                                              axe, PALETTE, PATIENCE))
            ecrits.append(nom)
    return ecrits


def section(courbes, points, falaises, dessins):
    vues = [c for c in courbes if points.trouver(c)]
    coupes = sum(1 for c in vues if points.trouver(c)[-1][1] is None)
    combien = sum(len(points.trouver(c)) for c in vues)
    parties = [ENTETE.format(points=combien, lignes=len(vues), coupes=coupes, patience=PATIENCE),
               *(f"- {l}" for l in points.machine[:3]), ""]
    parties += [f"![Processor time of a session, on logarithmic axes]({nom})\n" for nom in dessins]
    if not falaises:
        return "\n".join([*parties, "There is no cliff.", ""])
    parties += ["| cliff | times | ratio | allowed | why |", "|---|---|---|---|---|"]
    parties += [f"| {f.texte} | {ecrire_temps(f.temps[0])}, {ecrire_temps(f.temps[1])} | {f.rapport:.2g} "
                f"| {f.permis:.2g} | {f.explication} |" for f in falaises]
    return "\n".join([*parties, ""])


def lire_options():
    lecteur = argparse.ArgumentParser(description=__doc__.split("\n\n")[0])
    ajouter = lecteur.add_argument
    ajouter("--programme", type=Path, default=RACINE / "build/release/premiers")
    ajouter("--seulement", default="", metavar="REGEX", help="only the lines that it matches")
    ajouter("--pas", type=int, default=1, metavar="N", help="only every N-th point of a line")
    ajouter("--minutes", type=float, default=30, help="no new point is begun after so long (30)")
    ajouter("--points", type=Path, default=RACINE / "build/bench/surface.json")
    ajouter("--sortie", type=Path, metavar="DIR", help="where charts and section go: docs, if all "
            "lines are measured; else build/bench")
    return lecteur.parse_args()


def main():
    options = lire_options()
    options.programme = options.programme.resolve()
    if not options.programme.is_file():
        sys.exit(f"surface: {options.programme} is missing: build it first")
    options.points.parent.mkdir(parents=True, exist_ok=True)
    toutes = toutes_les_lignes()
    courbes = [c for c in toutes if re.search(options.seulement, c.nom)]
    points = Points(options.points, options.programme)
    points.machine = points.machine or machine()
    reste = mesurer(courbes, points, options)
    falaises = chercher_les_falaises(courbes, points)
    for f in falaises:
        dire(f"{f.texte}: {ecrire_temps(f.temps[0])}, then {ecrire_temps(f.temps[1])}; {f.explication}")
    complet = reste == 0 and len(courbes) == len(toutes) and options.pas == 1
    dossier = options.sortie or RACINE / ("docs" if complet else "build/bench")
    texte = section(courbes, points, falaises, dessiner_tout(dossier, courbes, points))
    if (dossier / "performance.md").exists() and SURFACE_DEBUT in (
            dossier / "performance.md").read_text():
        inserer(dossier / "performance.md", texte, SURFACE_DEBUT)
    else:
        (dossier / "surface.md").write_text(texte)
    dire(f"{len(falaises)} cliffs; written: {dossier}"
         + (f"; {reste} points are left for another run" if reste else ""))


if __name__ == "__main__":
    main()
