# SPDX-License-Identifier: MIT
"""The report of a measure: docs/performance.md and docs/performance.svg, and the short tables in
README.md and docs/guide.fr.md."""
import os
import platform
import re
import shlex
import subprocess
import tempfile
from datetime import date
from pathlib import Path

from graphique import dessiner
from lignes import Exigence
from lignes_avx2 import GROUPE as SANS_AVX512

CROISSANCE = "How the cost grows"


def premiere_ligne(*commande):
    try:
        fait = subprocess.run(commande, capture_output=True, text=True, stdin=subprocess.DEVNULL)
    except FileNotFoundError:
        return "not installed"
    lignes = [l.strip() for l in (fait.stdout + fait.stderr).splitlines() if l.strip()]
    return re.sub(r"[,]? ?<http.*", "", lignes[0]) if lignes else "unknown"


def paquet(nom):
    version = premiere_ligne("dpkg-query", "-W", "-f=${Version}", nom)
    return f"{nom} {version}" if re.match(r"\d", version) else f"{nom}: not installed"


def version_de_yafu(commande):
    """yafu tells it where it is asked nothing, and leaves files where it is called."""
    with tempfile.TemporaryDirectory() as dossier:
        fait = subprocess.run(["script", "-qec", shlex.quote(str(Path(commande).resolve())),
                               "/dev/null"], input="quit\n", capture_output=True, text=True,
                              errors="replace", cwd=dossier)
    version = re.search(r"YAFU Version (\S+)", fait.stdout)
    return f"yafu {version[1] if version else 'unknown'}"


def machine(recents=(), sans_avx512=(), yafu="", yafu_avx2=""):
    """What the figures depend on, as lines of a list: the tools of the distribution, and those that
    were named."""
    description = Path("/proc/cpuinfo").read_text()
    modele = re.search(r"model name\s*: (.*)", description)
    avx512 = sorted(set(re.findall(r"\bavx512\w*", description)))
    memoire = os.sysconf("SC_PAGE_SIZE") * os.sysconf("SC_PHYS_PAGES") / 2**30
    lignes = [f"Date: {date.today()}",
              f"Machine: {modele[1] if modele else platform.machine()}, {os.cpu_count()} "
              f"processors, {memoire:.0f} GB; {platform.system()}; "
              f"load when the measure began: {os.getloadavg()[0]:.2f}",
              f"Of AVX-512 it has {', '.join(avx512) or 'nothing'}",
              f"Compiler: {premiere_ligne('g++', '--version')}"]
    outils = [premiere_ligne("primesieve", "--version"), premiere_ligne("primecount", "--version"),
              premiere_ligne("factor", "--version"),
              "PARI/GP " + premiere_ligne("gp", "--version-short")]
    outils += [f"{premiere_ligne(rival, '--version')} (newest)" for rival in recents if rival]
    outils += [version_de_yafu(yafu)] if yafu else []
    sans = [premiere_ligne(autre, "--version") for autre in sans_avx512 if autre]
    sans += [version_de_yafu(yafu_avx2)] if yafu_avx2 else []
    outils += [f"{version} (built without AVX-512)" for version in sans]
    paquets = map(paquet, ("primesieve-bin", "libprimesieve-dev", "primecount-bin", "pari-gp",
                           "coreutils"))
    return lignes + ["Tools: " + "; ".join(outils),
                     "Debian packages: " + "; ".join(paquets)]


def duree(s):
    for facteur, unite in ((1, "s"), (1e3, "ms"), (1e6, "µs")):
        if s * facteur >= 1:
            return f"{s * facteur:.3g} {unite}" if s * facteur < 1000 else f"{s * facteur:.0f} s"
    return f"{s * 1e9:.3g} ns"


def grandeur(resultat, quoi):
    if resultat.absent:
        return resultat.absent
    if quoi == "memoire":
        return f"{resultat.valeur(quoi):.0f} MB"
    if quoi == "temps":
        return f"{duree(resultat.valeur('temps'))} (wall {duree(resultat.valeur('mur'))})"
    return f"{resultat.valeur(quoi):.3g}"


def le_pair(pairs, exigence):
    """The peer that a row is held against: the one named, or the best that was measured."""
    mesures = [p for p in pairs if p.mesures and exigence.contre in ("", p.nom)
               and not p.absent]
    return min(mesures, key=lambda p: p.valeur(exigence.quoi), default=None)


def verdict(valeur, exigence):
    if valeur is None or (exigence.doit is None and exigence.vise is None):
        return "–"
    if exigence.vise is not None and valeur <= exigence.vise:
        return "yes, the aim"
    if exigence.doit is not None and valeur <= exigence.doit:
        return "yes"
    return "no" if exigence.doit is not None else "not the aim"


def nombre(x, unite=""):
    return "–" if x is None else f"{x:.3g} {unite}".strip()


def rangee(ligne, resultats, exigence):
    """One line of a table."""
    nous, pairs = resultats[0], resultats[1:]
    quoi, titre = exigence.quoi, ligne.travail + {"memoire": ", memory"}.get(exigence.quoi, "")
    if quoi not in ("temps", "memoire"):
        titre += f", {exigence.unite}"
    pair = None if exigence.limite else le_pair(pairs, exigence)
    valeur = rapport = None
    if not nous.absent:
        valeur = nous.valeur(quoi)
        if pair:
            rapport = valeur / pair.valeur(quoi)
    # The peer of the ratio comes first.
    pairs = sorted((p for p in pairs if exigence.contre in ("", p.nom) or not p.mesures
                    or quoi == "temps"), key=lambda p: p is not pair)
    face = "; ".join(f"{p.nom} {grandeur(p, quoi)}" for p in pairs) or "–"
    unite = exigence.unite if quoi in ("temps", "memoire") else ""
    juge = valeur if exigence.limite else rapport
    return (f"| {titre} | {grandeur(nous, quoi)} | {face} | {nombre(rapport)} "
            f"| {nombre(exigence.doit, unite)} | {nombre(exigence.vise, unite)} "
            f"| {verdict(juge, exigence)} |")


ENTETE = """# Performance

Written by `bench/mesurer.py`, which runs both sides of each row in turns and takes medians. Times
are processor time, user and system, of the whole process unless a note says otherwise, with the
wall time in brackets; every tool runs on one thread. A ratio is ours over the peer's, the best one
of the row where several stand there (the first is the one compared with): smaller is better.
Answers that go to a file are compared in the same run, and a difference ends it; those that go to
/dev/null or into a pipe are not read. "Must" and "aim" were set for each row before it was built, as
a ratio, or as a limit where a unit stands. Rows whose loops have a version for AVX-512 are measured
twice, the second time with the build `avx2`, which has none: there the must is the same where the peer is gp or factor, and else the peer's time.
"""

TABLE = "| work | ours | peer | ratio | must | aim | reached? |\n|---|---|---|---|---|---|---|"


def lignes_du_groupe(groupe, faites):
    """The rows of a section, each with what is wanted of it. How the cost grows shows all the rows
    of the chart, those of other sections too."""
    if groupe == CROISSANCE:
        en_courbe = [(ligne, r, [Exigence()]) for ligne, r in faites if ligne.serie]
        return sorted(en_courbe, key=lambda trio: (trio[0].serie[1], trio[0].serie[0]))
    return [(ligne, r, ligne.exigences) for ligne, r in faites if ligne.groupe == groupe]


def texte(faites, ecartees, lignes_machine, surface):
    """The report; `faites` are pairs of a row and its results, `surface` is the section of that name."""
    parties = [ENTETE, *(f"- {l}" for l in lignes_machine)]
    for groupe in dict.fromkeys(ligne.groupe for ligne, _ in faites):
        parties += ["", f"## {groupe}", "", TABLE]
        notes = {}
        for ligne, resultats, exigences in lignes_du_groupe(groupe, faites):
            parties += [rangee(ligne, resultats, e) for e in exigences]
            if ligne.note:
                notes.setdefault(ligne.note, []).append(ligne.travail)
        for note, travaux in notes.items():
            parties += ["", f"{'; '.join(travaux)}: {note}"]
        if groupe == CROISSANCE:
            parties += ["", "![Counts and lists on logarithmic axes](performance.svg)"]
    parties += ["", surface]
    sautes = [] if any(r.nom.endswith("(newest)") for _, resultats in faites for r in resultats) \
        else ["A newer primesieve than Debian's: none was named (`--primesieve-recent`)"]
    contre_yafu = {ligne.groupe == SANS_AVX512 for ligne in [*(l for l, _ in faites), *ecartees]
                   if any(p.nom == "yafu" for p in ligne.pairs)}
    sautes += [f"The rows against yafu{ou}: none was named (`{option}`)"
               for sans, ou, option in ((False, "", "--yafu"),
                                        (True, ", without AVX-512", "--yafu-avx2"))
               if sans not in contre_yafu]
    sautes += [f"{ligne.travail}: {r.nom} {r.absent}" for ligne, resultats in faites
              for r in resultats if r.absent]
    if ecartees:
        sautes.append("Not asked for: " + "; ".join(ligne.travail for ligne in ecartees))
    if sautes:
        parties += ["", "## Not measured", "", *(f"- {s}" for s in sautes)]
    return "\n".join(parties) + "\n"


def table_du_readme(faites):
    """Ours against the best peer, a row for each work that README.md names."""
    lignes = ["| work | premiers | the best of the others | ratio |", "|---|---|---|---|"]
    for ligne, resultats in faites:
        pair = le_pair(resultats[1:], Exigence("temps"))
        if ligne.resume and pair and not resultats[0].absent:
            nous, lui = resultats[0].valeur("temps"), pair.valeur("temps")
            lignes.append(f"| {ligne.resume} | {duree(nous)} | {pair.nom} {duree(lui)} "
                          f"| {nombre(nous / lui)} |")
    return "\n".join(lignes)


def table_du_guide(faites):
    """How long things take, in French: processor time, which is what an operator waits where the machine
    has nothing else to do."""
    lignes = ["| travail | durée |", "|---|---|"]
    for ligne, (nous, *_) in faites:
        if ligne.guide and not nous.absent:
            temps = duree(nous.valeur("temps") / ligne.combien).replace(".", ",")
            lignes.append(f"| {ligne.guide} | {temps} |")
    return "\n".join(lignes)


DEBUT, FIN = "<!-- written by bench/mesurer.py -->", "<!-- end -->"


SURFACE_DEBUT = "<!-- written by bench/surface.py -->"


def inserer(fichier, tableau, debut=DEBUT):
    """Puts a table between the two marks of a document."""
    avant, _, reste = fichier.read_text().partition(debut)
    apres = reste.partition(FIN)[2]
    fichier.write_text(f"{avant}{debut}\n{tableau}\n{FIN}{apres}")


def surface_gardee(fichier):
    """The section of bench/surface.py, marks included, which a new report takes over."""
    avant = fichier.read_text() if fichier.exists() else ""
    dedans = avant.partition(SURFACE_DEBUT)[2].partition(FIN)[0] or "\n"
    return f"{SURFACE_DEBUT}{dedans}{FIN}"


def ecrire_ailleurs(racine, faites):
    """The short tables of a complete run."""
    inserer(racine / "README.md", table_du_readme(faites))
    inserer(racine / "docs" / "guide.fr.md", table_du_guide(faites))


def courbes(faites):
    """Times by (who, what), of the rows that belong to the chart."""
    points = {}
    for ligne, resultats in faites:
        for r in resultats if ligne.serie else ():
            if r.mesures and not r.absent:
                x, quoi = ligne.serie
                points.setdefault((r.nom, quoi), []).append((x, max(r.valeur("temps"), 1e-5)))
    return points


def ecrire(dossier, faites, ecartees, lignes_machine):
    dossier.mkdir(parents=True, exist_ok=True)
    rapport = dossier / "performance.md"
    rapport.write_text(texte(faites, ecartees, lignes_machine, surface_gardee(rapport)))
    points = courbes(faites)
    if points:
        (dossier / "performance.svg").write_text(
            dessiner(points, "Counting and listing the primes up to x: processor time", "x"))
