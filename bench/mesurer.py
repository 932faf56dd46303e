#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Measures the whole program against the tools that a user would pick instead, in one run, and
writes docs/performance.md, docs/performance.svg and the short tables of README.md and the guide.

    bench/mesurer.py --installer      installs those tools first (Debian packages)
    bench/mesurer.py --rapide         the short rows only, three runs each
    bench/mesurer.py --seulement '10\\^14|window'
    bench/mesurer.py --continuer      without the rows that earlier runs measured of this program

lignes*.py hold the rows, lanceur.py runs them, reponses.py reads the answers, reprise.py keeps what
was measured for a run that continues, rapport.py and graphique.py write. Nothing but the standard
library is needed. The machine should be quiet.
"""
import argparse
import json
import os
import re
import subprocess
import sys
import tempfile
from pathlib import Path

sys.dont_write_bytecode = True  # nothing is left beside the sources

from lanceur import MauvaiseReponse, mesurer  # noqa: E402
from lignes import Outils  # noqa: E402
from lignes_avx2 import lignes_sans_avx512  # noqa: E402
from lignes_moteur import lignes_du_moteur  # noqa: E402
from lignes_rangs import lignes_de_rangs  # noqa: E402
from lignes_travaux import lignes_des_travaux  # noqa: E402
from lignes_yafu import lignes_contre_yafu, lignes_contre_yafu_avx2  # noqa: E402
from rapport import ecrire, ecrire_ailleurs, le_pair, machine, verdict  # noqa: E402
from reprise import empreinte, garder, reprendre  # noqa: E402

RACINE = Path(__file__).resolve().parent.parent
PAQUETS = ("primesieve-bin", "libprimesieve-dev", "primecount-bin", "pari-gp", "coreutils", "g++")
SALLES = ("app", "features", "console", "state", "primes", "systeme")


def dire(texte):
    print(f"mesurer: {texte}", file=sys.stderr, flush=True)


def installer():
    apt = [*(["sudo"] if os.geteuid() else []), "env", "DEBIAN_FRONTEND=noninteractive", "apt-get",
           "-qq"]
    subprocess.run([*apt, "update"], stdout=sys.stderr)
    subprocess.run([*apt, "install", "-y", "--no-install-recommends", *PAQUETS], check=True,
                   stdout=sys.stderr)


def salles(programme):
    """The libraries of the rooms, from the build that the program comes from."""
    for dossier in (programme.parent, RACINE / "build/release"):
        if trouvees := [s for nom in SALLES if (s := dossier / f"libpremiers_{nom}.a").exists()]:
            break
        dire(f"no libraries beside {programme}: its helpers are linked with those of build/release")
    return trouvees


def compiler(programme, reference, aides, voulues=()):
    """The helpers in C++, each where its source, or what it is linked with, changed since. One
    that does not compile is missing, and its rows say so."""
    aides.mkdir(parents=True, exist_ok=True)
    pari = subprocess.run(["g++", "-print-file-name=libpari.a"], capture_output=True, text=True)
    modele, base = reference.parent / "libreference.a", salles(programme)
    systeme = ["-lntl", "-lgmp", pari.stdout.strip(), "-ldl", "-lm"]
    liens = {"concat_litteral": ["-lprimesieve"],
             "moteur": [*base, *systeme], "seance": [modele, *base, *systeme]}
    for nom, bibliotheques in liens.items():
        if voulues and nom not in voulues:
            continue
        source, fait, trace = RACINE / "bench" / f"{nom}.cpp", aides / nom, aides / f"{nom}.trace"
        commande = ["g++", "-O3", "-DNDEBUG", "-std=c++20", f"-I{RACINE}", source, *bibliotheques,
                    "-o", fait]
        commande = list(map(str, commande))
        dates = [(str(p), p.stat().st_mtime) for p in (source, *bibliotheques)
                 if isinstance(p, Path) and p.exists()]
        etat = json.dumps([commande, dates])
        if fait.exists() and trace.exists() and trace.read_text() == etat:
            continue
        dire(f"compiling {source.name}")
        fait.unlink(missing_ok=True)
        if subprocess.run(commande, stdout=sys.stderr).returncode:
            dire(f"{nom} cannot be built: its rows will be skipped")
        else:
            trace.write_text(etat)


def choisir(lignes, options):
    """The rows to run, and those that are left out."""
    motif = re.compile(options.seulement)
    prises = [ligne for ligne in lignes
              if motif.search(f"{ligne.groupe}: {ligne.travail}")
              and not (options.rapide and ligne.lente)
              and (options.tres_longues or not ligne.tres_longue)]
    return prises, [ligne for ligne in lignes if ligne not in prises]


def annoncer(ligne, resultats):
    """A line for each thing that was wanted, on standard error."""
    nous, pairs = resultats[0], resultats[1:]
    for e in ligne.exigences:
        pair = None if e.limite else le_pair(pairs, e)
        valeur = None if nous.absent else nous.valeur(e.quoi)
        if valeur is None:
            dire(f"  skipped: {nous.nom} {nous.absent}")
            continue
        juge = valeur if e.limite else valeur / pair.valeur(e.quoi) if pair else None
        face = f", {pair.nom} {pair.valeur(e.quoi):.4g}, ratio {juge:.3g}" if pair else ""
        dire(f"  {e.quoi}: {valeur:.4g}{face}: {verdict(juge, e)}")
    for r in pairs:
        if r.absent:
            dire(f"  skipped: {r.nom} {r.absent}")


def lire_options():
    lecteur = argparse.ArgumentParser(description=__doc__.split("\n\n")[0])
    ajouter = lecteur.add_argument
    ajouter("--installer", action="store_true", help="install the tools first, by apt-get")
    ajouter("--rapide", action="store_true", help="only what takes a few seconds, three runs")
    ajouter("--seulement", default="", metavar="REGEX", help="only the rows that it matches")
    ajouter("--continuer", action="store_true",
            help="take the rows that earlier runs have measured, where nothing has changed")
    ajouter("--tres-longues", action="store_true", help="the count up to 2^63 - 1 too, and with "
            "--yafu the products of 90 and 95 digits (minutes each)")
    ajouter("--lancements", type=int, default=0, metavar="N", help="runs of each side (5)")
    ajouter("--sortie", type=Path, metavar="DIR", help="where the report goes (docs; build/bench "
            "if not all rows are run)")
    ajouter("--programme", type=Path, default=RACINE / "build/release/premiers")
    ajouter("--reference", type=Path, default=RACINE / "build/release/tests/premiers-reference")
    ajouter("--programme-avx2", type=Path, default=RACINE / "build/avx2/premiers",
            help="the program of the preset avx2: its rows are skipped if it is missing")
    ajouter("--primesieve-recent", default="", metavar="PATH", help="a newer primesieve, if any")
    ajouter("--primecount-recent", default="", metavar="PATH", help="a newer primecount, if any")
    ajouter("--programme-avant", default="", metavar="PATH",
            help="the program as it was, which some rows are held against")
    ajouter("--primesieve-avx2", default="", metavar="PATH",
            help="a primesieve without AVX-512, for the rows without")
    ajouter("--primecount-avx2", default="", metavar="PATH", help="the same of primecount")
    ajouter("--yafu", default="", metavar="PATH", help="a yafu, for the rows of factoring against it")
    ajouter("--yafu-avx2", default="", metavar="PATH",
            help="a yafu without AVX-512, for the rows without")
    return lecteur.parse_args()


def main():
    options = lire_options()
    aides = RACINE / "build" / "bench"
    if not options.programme.is_file():
        sys.exit(f"mesurer: {options.programme} is missing: build it first")
    if options.installer:
        installer()
    compiler(options.programme.resolve(), options.reference.resolve(), aides)
    programme_avx2, aides_avx2 = options.programme_avx2.resolve(), aides / "avx2"
    if programme_avx2.is_file():
        compiler(programme_avx2, options.reference.resolve(), aides_avx2, ("moteur",))
    else:
        dire(f"{programme_avx2} is missing (preset avx2): the rows without AVX-512 are skipped")
    rivaux_avx2 = {"primesieve": options.primesieve_avx2, "primecount": options.primecount_avx2}
    lignes_machine = machine((options.primesieve_recent, options.primecount_recent),
                             rivaux_avx2.values(), options.yafu, options.yafu_avx2)
    partiel = options.rapide or options.seulement
    voulus = options.lancements or (3 if options.rapide else 5)
    faites, repris = [], 0
    gardees = aides / "mesures"
    with tempfile.TemporaryDirectory(prefix="mesurer-") as travail:
        outils = Outils(str(options.programme.resolve()), str(options.reference.resolve()), aides,
                        RACINE / "bench", Path(travail), options.primesieve_recent,
                        options.primecount_recent, options.programme_avant,
                        str(programme_avx2), aides_avx2, rivaux_avx2,
                        *(str(Path(y).resolve()) if y else "" for y in (options.yafu,
                                                                         options.yafu_avx2)))
        lignes = (lignes_du_moteur(outils) + lignes_de_rangs(outils)
                  + lignes_des_travaux(outils))
        lignes += lignes_sans_avx512(outils, lignes)
        lignes += lignes_contre_yafu(outils) + lignes_contre_yafu_avx2(outils)
        prises, ecartees = choisir(lignes, options)
        for numero, ligne in enumerate(prises, 1):
            dire(f"{numero}/{len(prises)} {ligne.travail}")
            fois = ligne.lancements or voulus
            marque = empreinte(ligne, fois, travail)
            resultats = reprendre(gardees, ligne, marque) if options.continuer else None
            repris += resultats is not None
            if resultats is None:
                try:
                    resultats = mesurer(ligne, fois, Path(travail))
                except MauvaiseReponse as faute:
                    sys.exit(f"mesurer: {faute}")
                garder(gardees, ligne, marque, resultats)
            faites.append((ligne, resultats))
            annoncer(*faites[-1])
    if repris:
        lignes_machine.append(f"Measured by earlier runs of the same programs, to the byte: {repris} "
                              "of the rows")
    dossier = options.sortie or (aides if partiel else RACINE / "docs")
    ecrire(dossier, faites, ecartees, lignes_machine)
    if dossier == RACINE / "docs":
        ecrire_ailleurs(RACINE, faites)
    dire(f"written: {dossier / 'performance.md'}")


if __name__ == "__main__":
    main()
