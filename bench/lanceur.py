# SPDX-License-Identifier: MIT
"""Runs both sides of a row in turns, times them, and holds their answers against each other."""
import os
import shutil
import subprocess
import threading
import time
from dataclasses import dataclass, field
from statistics import median

from reponses import valeurs_nommees


class MauvaiseReponse(Exception):
    """Two sides disagree, or one failed: no time counts then."""


@dataclass
class Mesure:
    """One run: processor time (user and system) and wall time in seconds, peak memory in MB."""
    temps: float
    mur: float
    memoire: float
    valeurs: dict


@dataclass
class Resultat:
    """A side's runs, or why there are none."""
    nom: str
    unites: float = 1
    mesures: list = field(default_factory=list)
    absent: str = ""

    def valeur(self, quoi):
        """The median of a figure; the time is for one unit of the work."""
        if quoi == "temps":
            return median(m.temps for m in self.mesures) / self.unites
        if quoi == "mur":
            return median(m.mur for m in self.mesures) / self.unites
        if quoi == "memoire":
            return median(m.memoire for m in self.mesures)
        return median(m.valeurs[quoi] for m in self.mesures)


def lancer(cote, ou, dossier):
    """One run; None if patience ran out. Its output stays in dossier/sortie if `ou` is fichier."""
    for chemin in cote.avant:
        chemin.unlink(missing_ok=True)
    (dossier / "entree").write_text(cote.entree)
    destination = {"rien": "/dev/null", "fichier": dossier / "sortie"}.get(ou)
    with open(dossier / "entree", "rb") as entree, open(dossier / "erreur", "wb") as erreur:
        sortie = open(destination, "wb") if destination else subprocess.PIPE
        debut = time.perf_counter()
        p = subprocess.Popen(cote.commande, stdin=entree, stdout=sortie, stderr=erreur)
        fin_de_patience = threading.Timer(cote.patience or 10**6, p.kill)
        fin_de_patience.daemon = True
        fin_de_patience.start()
        memoire = suivre_la_memoire(p.pid)
        if destination:
            sortie.close()
        else:
            while os.read(p.stdout.fileno(), 1 << 20):
                pass
            p.stdout.close()
        _, statut, usage = os.wait4(p.pid, 0)
        mur = time.perf_counter() - debut
        fin_de_patience.cancel()
    p.returncode = os.waitstatus_to_exitcode(statut)
    if cote.patience and mur >= cote.patience:
        return None
    if p.returncode != cote.statut:
        raise MauvaiseReponse(f"{' '.join(cote.commande)}: status {p.returncode}: "
                              + (dossier / "erreur").read_text(errors="replace")[:500])
    texte = (dossier / "erreur").read_text(errors="replace")
    if ou == "fichier" and (dossier / "sortie").stat().st_size < 4096:
        texte += (dossier / "sortie").read_text(errors="replace")
    valeurs = valeurs_nommees(texte)
    temps = valeurs[cote.interne] if cote.interne else usage.ru_utime + usage.ru_stime
    return Mesure(temps, valeurs.get(cote.interne, mur), max(memoire) / 1024, valeurs)


def suivre_la_memoire(pid):
    """The peaks of resident memory in KiB, as they grow; a thread asks until the process ends. (The
    figure that wait4 gives includes the size of this script at the fork.)"""
    pics = [0]

    def regarder():
        try:
            while True:
                with open(f"/proc/{pid}/status", encoding="ascii") as etat:
                    pics.extend(int(l.split()[1]) for l in etat if l.startswith("VmHWM"))
                time.sleep(0.01)
                del pics[:-1]
        except (OSError, ProcessLookupError):
            pass

    threading.Thread(target=regarder, daemon=True).start()
    return pics


def combien(voulus, premiere_duree):
    """Long work is run less often: its time hardly varies."""
    if premiere_duree < 4:
        return voulus
    return min(voulus, 3) if premiere_duree < 15 else 1


def mesurer(ligne, lancements, dossier):
    """A Resultat for each side, ours first."""
    cotes = [ligne.nous, *ligne.pairs]
    resultats = [Resultat(c.nom, c.unites) for c in cotes]
    for cote, resultat in zip(cotes, resultats):
        if not cote.commande[0]:
            resultat.absent = "was not named (see --help)"
        elif not shutil.which(cote.commande[0]):
            resultat.absent = "is not installed"
    reponses = {"published": ligne.attendu} if ligne.attendu is not None else {}
    for tour in range(lancements):
        for cote, resultat in zip(cotes, resultats):
            faits = resultat.mesures
            if resultat.absent or (faits and tour >= combien(lancements, faits[0].mur)):
                continue
            try:
                mesure = lancer(cote, ligne.sortie, dossier)
            except OSError as faute:  # it went away meanwhile, or cannot be run
                raise MauvaiseReponse(f"{ligne.travail}: {cote.nom}: {faute}") from faute
            if mesure is None:
                resultat.absent = f"takes more than {cote.patience:.0f} s"
                continue
            faits.append(mesure)
            if tour == 0 and ligne.sortie == "fichier":
                comparer(ligne, cote, dossier / "sortie", reponses)
    (dossier / "sortie").unlink(missing_ok=True)
    return resultats


def comparer(ligne, cote, sortie, reponses):
    """Reads an answer and holds it against those that there are."""
    try:
        reponse = cote.lire(sortie)
    except ValueError as faute:
        raise MauvaiseReponse(f"{ligne.travail}: {cote.nom}: {faute}") from faute
    if reponse is None:
        return
    for nom, autre in reponses.items():
        if autre != reponse:
            raise MauvaiseReponse(f"{ligne.travail}: {cote.nom} and {nom} disagree: "
                                  f"{str(reponse)[:200]} / {str(autre)[:200]}")
    reponses[cote.nom] = reponse
