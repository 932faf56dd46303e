# SPDX-License-Identifier: MIT
"""What earlier runs have measured, so that a complete measure can be stopped and continued.

One file for each row. It is taken up again only where nothing has changed that the row depends on: the
programs of both sides to the byte, their commands, what they read, and how often they are run. Runs
side by side, each with rows of its own, do not disturb each other.
"""
import functools
import hashlib
import json
import shutil
from dataclasses import asdict
from pathlib import Path

from lanceur import Mesure, Resultat


@functools.cache
def octets_de(commande):
    """A digest of a program that is found by that name."""
    ou = shutil.which(commande)
    return hashlib.sha256(Path(ou).read_bytes()).hexdigest() if ou else "-"


def empreinte(ligne, lancements, travail):
    """Of all that the row depends on; `travail` is the folder of this run alone."""
    tout = hashlib.sha256(repr((lancements, ligne.sortie)).encode())
    for cote in (ligne.nous, *ligne.pairs):
        mots = [mot.replace(str(travail), "") for mot in map(str, cote.commande)]
        programmes = [octets_de(mot) for mot in mots if mot.startswith("/") or mot == mots[0]]
        entree = cote.entree.replace(str(travail), "")
        tout.update(repr((cote.nom, mots, programmes, entree, cote.unites)).encode())
    return tout.hexdigest()


def fichier(dossier, ligne):
    titre = f"{ligne.groupe}: {ligne.travail}"
    return dossier / (hashlib.sha256(titre.encode()).hexdigest()[:16] + ".json")


def garder(dossier, ligne, marque, resultats):
    dossier.mkdir(parents=True, exist_ok=True)
    neuf = fichier(dossier, ligne).with_suffix(".neuf")
    neuf.write_text(json.dumps({"work": ligne.travail, "empreinte": marque,
                                "sides": [asdict(r) for r in resultats]}, indent=1))
    neuf.replace(fichier(dossier, ligne))


def reprendre(dossier, ligne, marque):
    """The results of the row, ours first; None if there are none that still hold. A side that was given
    up for its length holds as well."""
    ou = fichier(dossier, ligne)
    if not ou.exists():
        return None
    garde = json.loads(ou.read_text())
    cotes = garde["sides"]
    if garde["empreinte"] != marque or any(not c["mesures"] and not c["absent"].startswith("takes")
                                           for c in cotes):
        return None
    return [Resultat(**c | {"mesures": [Mesure(**m) for m in c["mesures"]]}) for c in cotes]
