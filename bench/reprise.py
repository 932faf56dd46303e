# SPDX-License-Identifier: MIT
"""What earlier runs have measured, so that a complete measure can be stopped and continued.

One file for each row. It is taken up again only where nothing has changed that the row depends on:
the program and the row itself, command by command. Runs side by side, each with rows of its own, do
not disturb each other.
"""
import hashlib
import json
from dataclasses import asdict

from lanceur import Mesure, Resultat


def empreinte(ligne, programmes):
    """Of the row, and of the bytes of the programs that are measured."""
    tout = hashlib.sha256()
    for programme in programmes:
        tout.update(programme.read_bytes() if programme.is_file() else b"-")
    for cote in (ligne.nous, *ligne.pairs):
        tout.update(repr((cote.nom, len(cote.commande), cote.entree, cote.unites)).encode())
    return tout.hexdigest()


def fichier(dossier, ligne):
    titre = f"{ligne.groupe}: {ligne.travail}"
    return dossier / (hashlib.sha256(titre.encode()).hexdigest()[:16] + ".json")


def garder(dossier, ligne, programmes, resultats):
    dossier.mkdir(parents=True, exist_ok=True)
    fichier(dossier, ligne).write_text(json.dumps(
        {"work": ligne.travail, "empreinte": empreinte(ligne, programmes),
         "sides": [asdict(r) for r in resultats]}, indent=1))


def reprendre(dossier, ligne, programmes):
    """The results of the row, ours first; None if there are none that still hold."""
    ou = fichier(dossier, ligne)
    if not ou.exists():
        return None
    garde = json.loads(ou.read_text())
    cotes = garde["sides"]
    if garde["empreinte"] != empreinte(ligne, programmes) or any(c["absent"] for c in cotes):
        return None
    return [Resultat(**c | {"mesures": [Mesure(**m) for m in c["mesures"]]}) for c in cotes]
