# SPDX-License-Identifier: MIT
"""What the tests share that run the real executable: starting it, watching it, and named checks.

A check is a function with the decorator `essai`; its docstring is its name in plain words. `tous`
runs them in the order in which they are written and gives the exit status of the whole. CMake reads
the same lines and makes a test of each check (tests/CMakeLists.txt).
"""

import os
import resource
import select
import signal
import subprocess
import sys
import time
import traceback

SECONDES = 60  # that one session may take; a sanitized program on a busy machine is slow

QUESTION_MENU = "\n \n \n \t Quel est votre choix ? : "
QUESTION_N = " \n \n \n \t N ? : "
AUTRE_N = "\n \n \t Nouvelle valeur de N ? Oui [1] , Non [0] : "
COMMANDE_AU_DEBUT = "\n \n \n \t [K]  ou  [-K]  ou  [=K]  ou   [=-K]  ou   [0]   ? : "
COMMANDE = "\n \n \n \t [K]  ou  [-K]  ou  [=K]  ou  [=-K]   ou   [*]  ou   [0]  ? : "
RANG = " \n \n \t Rang du nombre ? : "
MAJORANT_DU_NOMBRE = "\n \n \t Majorant du nombre ? : "
PLUS_PETIT_RANG = "\n \n \t Plus petit rang ? : "
PLUS_GRAND_RANG = "\n \t Plus grand rang ? : "
MINORANT = "\n \n \t Minorant ? : "
MAJORANT = "\n \n \t Majorant ? : "
DIFFERENCE = "\n \n \t Difference entre les nombres premiers consecutifs cherches ? : "
MINIMUM = (" \n \n \t Minimum de nombres premiers consecutifs pour que l'affichage ait lieu ? : ")
INFERIEURE = "\n \t Limite inferieure ? : "
SUPERIEURE = "\n \t Limite superieure ? : "
EFFECTIF_BORNES = "\n \n \t Afficher,  [1] L'effectif seulement / [0] Toute la liste : ? "
EFFECTIF_CONCAT = "\n \n \t  Afficher,  [1] L'effectif seulement / [0] Toute la liste : ? "

# Every question of every screen: what is typed to be asked it.
QUESTIONS = [
    ("menu", "", QUESTION_MENU),
    ("decomposition, N", "1", QUESTION_N),
    ("decomposition, autre N", "1 6", AUTRE_N),
    ("rangs, table neuve", "2", COMMANDE_AU_DEBUT),
    ("rangs", "2 5", COMMANDE),
    ("consultation, menu", "2 20 *", QUESTION_MENU),
    ("consultation, rang", "2 20 * 1", RANG),
    ("consultation, majorant", "2 20 * 2", MAJORANT_DU_NOMBRE),
    ("consultation, plus petit rang", "2 20 * 3", PLUS_PETIT_RANG),
    ("consultation, plus grand rang", "2 20 * 3 2", PLUS_GRAND_RANG),
    ("consultation, minorant", "2 20 * 4", MINORANT),
    ("consultation, majorant d'un intervalle", "2 20 * 4 2", MAJORANT),
    ("suites, minorant", "2 20 * 5", MINORANT),
    ("suites, majorant", "2 20 * 5 2", MAJORANT),
    ("suites, difference", "2 20 * 5 2 50", DIFFERENCE),
    ("suites, minimum", "2 20 * 5 2 50 2", MINIMUM),
    ("bornes, inferieure", "3", INFERIEURE),
    ("bornes, superieure", "3 2", SUPERIEURE),
    ("bornes, effectif", "3 2 9", EFFECTIF_BORNES),
    ("concatenations, menu", "4", QUESTION_MENU),
    ("concatenations, N", "4 1", QUESTION_N),
    ("concatenations, autre N", "4 1 23", AUTRE_N),
    ("recherche, inferieure", "4 2", INFERIEURE),
    ("recherche, superieure", "4 2 2", SUPERIEURE),
    ("recherche, effectif", "4 2 2 9", EFFECTIF_CONCAT),
    ("recherche de premiers, inferieure", "4 3", INFERIEURE),
    ("recherche de premiers, superieure", "4 3 2", SUPERIEURE),
    ("recherche de premiers, effectif", "4 3 2 9", EFFECTIF_CONCAT),
]

ICI = os.path.dirname(os.path.abspath(__file__))


class Echec(Exception):
    """A check does not hold."""


class Impossible(Exception):
    """A check cannot be made here (no such locale, a sanitized program under a memory limit)."""


def verifier(condition, *texte):
    if not condition:
        raise Echec(" ".join(str(t) for t in texte))


def court(octets):
    """The end of an output, fit for a message."""
    return repr(octets[-200:])


class Programme:
    """The executable under test."""

    def __init__(self, chemin):
        self.chemin = os.path.abspath(chemin)
        with open(self.chemin, "rb") as fichier:
            self.assaini = b"__asan_" in fichier.read()

    def demarrer(self, *, limite=None, ignorer=(), avant=None, arguments=(), **options):
        """subprocess.Popen on the program, unbuffered. `limite`: its address space in bytes;
        `ignorer`: signals that it starts with ignored; `avant`: called in the child."""

        def dans_l_enfant():
            for numero in range(1, 32):
                if numero not in (signal.SIGKILL, signal.SIGSTOP):
                    signal.signal(numero, signal.SIG_DFL)
            for numero in ignorer:
                signal.signal(numero, signal.SIG_IGN)
            resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
            if limite is not None:
                resource.setrlimit(resource.RLIMIT_AS, (limite, limite))
            if avant is not None:
                avant()

        environnement = dict(options.pop("env", os.environ))
        # A sanitizer ends the program with status 1 by itself: here it must be another one.
        for nom in ("ASAN_OPTIONS", "UBSAN_OPTIONS"):
            avant_lui = environnement.get(nom)
            environnement[nom] = (avant_lui + ":" if avant_lui else "") + "exitcode=99"
        for nom in ("stdin", "stdout", "stderr"):
            options.setdefault(nom, subprocess.PIPE)
        return subprocess.Popen(
            [self.chemin, *arguments],
            bufsize=0,
            preexec_fn=dans_l_enfant,
            restore_signals=False,
            env=environnement,
            **options,
        )

    def jouer(self, tape, *, secondes=SECONDES, **options):
        """A whole session. Gives (status, standard output, standard error)."""
        if isinstance(tape, str):
            tape = tape.encode()
        enfant = self.demarrer(**options)
        try:
            sortie, erreurs = enfant.communicate(tape, timeout=secondes)
        except subprocess.TimeoutExpired:
            enfant.kill()
            enfant.communicate()
            raise Echec("still running after", secondes, "seconds") from None
        return enfant.returncode, sortie, erreurs

    def attendu(self, tape):
        """What the program answers when nothing goes wrong; it must end with status 1."""
        statut, sortie, erreurs = self.jouer(tape)
        verifier(statut == 1, "an undisturbed session ended with status", statut)
        verifier(erreurs == b"", "an undisturbed session wrote on standard error:", court(erreurs))
        return sortie


def une_ligne(erreurs):
    """Whether standard error holds exactly one line, the program's own."""
    return erreurs.startswith(b"premiers: ") and erreurs.count(b"\n") == 1 and erreurs[-1:] == b"\n"


def etat(pid, champ):
    """A figure of /proc/PID/status, in KiB (VmRSS, VmHWM, VmSize ...)."""
    with open(f"/proc/{pid}/status", encoding="ascii") as fichier:
        for ligne in fichier:
            if ligne.startswith(champ + ":"):
                return int(ligne.split()[1])
    raise Echec("no", champ, "of process", pid)


def memoire_propre(pid):
    """The memory that a process has written to and shares with no file, in KiB. Counted page by page;
    VmRSS may be off by some hundred KiB."""
    with open(f"/proc/{pid}/smaps_rollup", encoding="ascii") as fichier:
        for ligne in fichier:
            if ligne.startswith("Anonymous:"):
                return int(ligne.split()[1])
    raise Echec("no memory of process", pid)


def lire_jusqu_a(enfant, fin, secondes=SECONDES):
    """Reads standard output until it ends with `fin` and the program waits; gives all of it."""
    fin = fin.encode() if isinstance(fin, str) else fin
    recu = b""
    limite = time.monotonic() + secondes
    while not recu.endswith(fin):
        reste = limite - time.monotonic()
        verifier(reste > 0, "waited in vain for", fin, "; got", court(recu))
        if select.select([enfant.stdout], [], [], reste)[0]:
            morceau = os.read(enfant.stdout.fileno(), 1 << 16)
            verifier(morceau, "the output ended before", fin, ":", court(recu))
            recu += morceau
    return recu


def finir(enfant):
    """Ends a program that is still there, and gives its status."""
    if enfant.poll() is None:
        enfant.kill()
    for flux in (enfant.stdin, enfant.stdout, enfant.stderr):
        if flux is not None:
            flux.close()
    return enfant.wait()


def session_modele(nom):
    """A golden session: what is typed, what must come."""
    chemin = os.path.join(ICI, "golden", nom)
    with open(chemin + ".in", "rb") as tape, open(chemin + ".out", "rb") as attendu:
        return tape.read(), attendu.read()


ESSAIS = []

# The exit status where nothing failed and something could not be tried: ctest calls it "Skipped".
NON_ESSAYE = 77


def essai(fonction=None, *, cout=None, long=False):
    """A check. For ctest, on the line of the decorator: `cout`, the seconds that it takes (the
    longest begin first), and `long`, where it gets that label: ./test without an argument leaves it
    out, CI does not."""
    del cout, long
    if fonction is None:
        return essai
    ESSAIS.append(fonction)
    return fonction


def tous(sujet):
    """Runs the checks: SCRIPT PROGRAM [--long] [NAME...]. `sujet` is given to each of them."""
    noms = [a for a in sys.argv[2:] if not a.startswith("-")]
    echecs = laisses = 0
    for fonction in ESSAIS:
        if noms and fonction.__name__ not in noms:
            continue
        debut = time.monotonic()
        try:
            detail = fonction(sujet)
            resultat = "ok"
        except Impossible as raison:
            resultat, detail = "cannot be tried here", raison
            laisses += 1
        except Exception as panne:  # the other checks are still worth running
            resultat, detail = "FAILED", panne
            echecs += 1
            if not isinstance(panne, Echec):
                traceback.print_exc(limit=-3)
        duree = time.monotonic() - debut
        suite = f": {detail}" if detail else ""
        print(f"{resultat}  {fonction.__name__} ({duree:.1f} s){suite}", flush=True)
    if noms and not set(noms) <= {f.__name__ for f in ESSAIS}:
        print("no such check:", *noms)
        echecs += 1
    return 1 if echecs else NON_ESSAYE if laisses else 0


def longuement():
    """Whether the long version is asked for."""
    return "--long" in sys.argv[2:]
