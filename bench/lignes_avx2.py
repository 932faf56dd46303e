# SPDX-License-Identifier: MIT
"""The rows whose loops have a version for AVX-512, once more without it: most processors have none.

Ours is then the build of the preset `avx2`. A rival may be one that was built without AVX-512 too,
if an option names it; else it is the one that is installed."""
from dataclasses import replace

GROUPE = "Without AVX-512"


def notre(o, cote):
    """Our side, from the other build."""
    commande, *mots = cote.commande
    if commande == o.programme:
        commande = o.programme_avx2
    else:
        commande = str(o.aides_avx2 / commande.removeprefix(f"{o.aides}/"))
    return replace(cote, commande=[commande, *mots])


def rival(o, cote):
    """A rival, from the build that was named for it."""
    commande, *mots = cote.commande
    autre = o.rivaux_avx2.get(commande)
    return replace(cote, commande=[autre, *mots]) if autre else cote


def exigence(ligne, e):
    """The same must where gp or factor is the peer, which have no AVX-512 to lose; else at most the
    rival's time."""
    if e.limite or any(p.nom in ("gp", "factor") for p in ligne.pairs):
        return e
    return replace(e, doit=min(e.doit or 1.0, 1.0), vise=None)


def lignes_sans_avx512(o, lignes):
    return [replace(ligne, groupe=GROUPE, travail=f"{ligne.travail}, without AVX-512",
                    nous=notre(o, ligne.nous),
                    pairs=[rival(o, p) for p in ligne.pairs if not p.nom.endswith("(newest)")],
                    exigences=[exigence(ligne, e) for e in ligne.exigences],
                    serie=(), resume="", guide="")
            for ligne in lignes if ligne.avx512]
