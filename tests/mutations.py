#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Do the tests notice? Plants small faults one by one, a `<` for a `<=`, a lost blank, a rank off by
one, and says which test fails for each.

usage: tests/mutations.py [--graine N] [--tirees N] [--dossier FOLDER] [--de N] [--minutes N]
                          [--essais KIND,...]

The faults are planted in a copy of the last commit (FOLDER, by default build/mutations), which is
built once and then one file at a time. The named ones come first: each row of the table of growth,
each mode of `controle`, each screen. Then one drawn for each file of the engine, and --tirees more
(by default 15) from all code. Tests run the cheapest first and stop at the first that fails. The
list with its outcome is written to tests/mutations.md after each fault, so that a run may be ended
at any time; --de N goes on with the N-th fault, --minutes N starts none after so long.

A fault that changes nothing but the time, or nothing at all, cannot be noticed by a test of
results: SANS_EFFET says of each that was looked at why. Another one that stands as "not noticed"
lacks its test. So the list is no score: what it did not notice at first is what it was for.
"""

import argparse
import os
import random
import re
import subprocess
import sys
import time

RACINE = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
RAPPORT = os.path.join(RACINE, "tests", "mutations.md")
CODE = ("app", "console", "features", "primes", "state", "systeme")

# What each kind of test has to have built; the cheapest kind first.
CIBLES = {
    "golden": ["premiers", "premiers-sans-posix"],
    "differentiel": ["premiers", "premiers-reference", "differentiel"],
    "unit": ["all"],
    "script": ["premiers", "premiers-sans-posix"],
}

# Seconds that one test may take; a session that has lost its way asks its last question for ever.
PATIENCE = {"GOLDEN": 8, "DIFFERENTIAL": 60, "UNIT": 60, "SCRIPT": 300}

# (what it is, file, text, text with the fault)
NOMMEES = [
    # The table of growth, row by row.
    ("growth: a prime", "primes/dette/decisions.cpp", "NTL::SqrRoot(S)", "NTL::SqrRoot(S) - 1"),
    ("growth: prem on a composite", "primes/dette/decisions.cpp", "facteur_certain(S) - 1",
     "facteur_certain(S)"),
    ("growth: prem on a large composite", "primes/dette/decisions.cpp", "dette.noter(p - 1)",
     "dette.noter(p)"),
    ("growth: prem1 on a composite", "primes/dette/decisions.cpp", "(S3)) - 1", "(S3))"),
    ("growth: prem1 on a prime", "primes/dette/decisions.cpp", "? rS1", "? rS1 - 1"),
    ("growth: prem1 refuses 2", "primes/prem.cpp", "S3 != 2 && primalite::est_premier",
     "S3 != 3 && primalite::est_premier"),
    ("growth: largest factor once", "primes/dette/decisions.cpp", "facteurs.size() == 1", "facteurs.size() <= 2"),
    ("growth: largest factor twice", "primes/dette/decisions.cpp", "plus_grand.premier - 1",
     "plus_grand.premier"),
    ("growth: which case", "primes/dette/decisions.cpp", "plus_grand.exposant > 1", "plus_grand.exposant > 2"),
    ("growth: 1 owes nothing", "primes/dette/decisions.cpp", "if (facteurs.empty()) return;",
     "if (facteurs.empty()) return dette.noter(3);"),
    ("growth: the payment", "primes/dette/dette.cpp", "dette.borne_due), suivi", "dette.borne_due) - 1, suivi"),
    ("growth: beyond a bound", "primes/table.cpp", "if (borne < dernier_.premier) return;",
     "if (borne <= dernier_.premier) return;"),
    ("growth: an interval's last prime", "primes/dette/decisions.cpp", "n >= debut; --n",
     "n > debut; --n"),
    ("growth: the limit of notes", "primes/dette/dette.h", "borne <= borne_max", "borne < 1000"),
    # The table of primes, by counting and from the nearest place.
    ("table: upward from an anchor", "primes/table.cpp", "{ancre.premier + 1, v}", "{ancre.premier, v}"),
    ("table: downward from an anchor", "primes/table.cpp", "{v + 1, ancre.premier}",
     "{v, ancre.premier}"),
    ("table: a count beyond the rank", "primes/table.cpp", "n - rang + 1", "n - rang"),
    ("table: the n-th prime below", "primes/rangs/tranche.cpp", "dedans - (n - fait) + 1",
     "dedans - (n - fait)"),
    ("table: the rank of a value kept", "primes/rangs/bits_gardes.cpp",
     "drapeaux_jusqu_a(static_cast<std::uint64_t>(v % 30))",
     "drapeaux_jusqu_a(static_cast<std::uint64_t>((v + 1) % 30))"),
    ("table: the last rank", "features/premier.cpp", "K <= Table::fin.rang", "K < Table::fin.rang"),
    ("table: the prime that is not shown", "features/premier.cpp", "borne < Table::fin.premier",
     "borne <= Table::fin.premier"),
    # The modes of controle.
    ("controle: oui_non", "console/controle.cpp", None, "Cas::oui_non"),
    ("controle: un_deux", "console/controle.cpp", None, "Cas::un_deux"),
    ("controle: zero_a_deux", "console/controle.cpp", None, "Cas::zero_a_deux"),
    ("controle: menu_principal", "console/controle.cpp", None, "Cas::menu_principal"),
    ("controle: menu_consultation", "console/controle.cpp", None, "Cas::menu_consultation"),
    ("controle: menu_concatenation", "console/controle.cpp", None, "Cas::menu_concatenation"),
    ("controle: nombre", "console/controle.cpp", None, "Cas::nombre"),
    ("controle: nombre_signe", "console/controle.cpp", None, "Cas::nombre_signe"),
    ("controle: commande", "console/controle.cpp", None, "Cas::commande"),
    ("controle: grand_nombre", "console/controle.cpp", None, "Cas::grand_nombre"),
    ("controle: borne", "console/controle.cpp", None, "Cas::borne"),
    ("controle: zero is refused", "console/controle.cpp", "chaine, true).valeur;", "chaine).valeur;"),
    ("words: 199 characters", "console/entree.cpp", "l1_ + n <= longueur_max",
     "l1_ + n < longueur_max"),
    ("words: NUL bytes", "console/entree.cpp", "'\\0') == fin_mot", "'\\1') == fin_mot"),
    ("words: form feeds are blanks", "console/entree.cpp", "c <= '\\r'", "c < '\\r'"),
    # The screens.
    ("screen: menu", "app/menu.cpp", "Que voulez-vous faire ? : \\n ",
     "Que voulez-vous faire ? :\\n "),
    ("screen: status", "app/menu.cpp", "statut_fermeture = 1", "statut_fermeture = 0"),
    ("screen: explanations", "app/explications.cpp", "NOMBRES PREMIERS : ", "NOMBRES PREMIERS :"),
    ("screen: ranked listing", "features/premier.cpp", "Dernier nombre calcule  :",
     "Dernier nombre calcule :"),
    ("screen: ranked listing, refusal", "features/premier.cpp", "K < etat.Nprem.np())",
     "K <= etat.Nprem.np())"),
    ("screen: ranked listing, = is forgotten", "features/premier.cpp", "    etat.un = false;",
     "    etat.un = true;"),
    ("screen: ranked listing, last rank", "features/premier.cpp", "Nprem.lire(Nprem.np() - 1)",
     "Nprem.lire(Nprem.np())"),
    ("screen: blocks", "console/entrees.h", "(rang - 1) % 100", "rang % 100"),
    ("screen: consultation, ranks", "features/affiche.cpp", "r <= s.etat.Nprem.np()",
     "r < s.etat.Nprem.np()"),
    ("screen: consultation, values", "features/affiche.cpp", "maj <= s.etat.Nprem.dernier()",
     "maj < s.etat.Nprem.dernier()"),
    ("screen: consultation, minimum", "features/affiche.cpp", "while (doub < 2)",
     "while (doub < 1)"),
    ("screen: bounds crossed", "features/liste.cpp", "debut <= fin", "debut < fin"),
    ("screen: bounds, a lost blank", "features/liste.cpp", "  nombres premiers entre",
     " nombres premiers entre"),
    ("screen: decomposition, 1", "features/decomp.cpp", "exposant == 1) {", "exposant >= 1) {"),
    ("screen: decomposition, exponent", "features/decomp.cpp", "exposant != 1", "exposant != 2"),
    ("screen: concatenations", "features/concat.cpp", "debut <= fin", "debut < fin"),
    ("screen: concatenations, choice 3", "features/concat.cpp", "Nconcat(s, true)",
     "Nconcat(s, false)"),
]

# What is drawn: text, and what it becomes.
ECHANGES = [
    (" <= ", " < "), (" >= ", " > "), (" < ", " <= "), (" > ", " >= "), (" == ", " != "),
    (" != ", " == "), (" + 1", ""), (" - 1", ""), (" && ", " || "), (" || ", " && "),
    (" + ", " - "), (" - ", " + "), (" * ", " + "), ("++", "--"), (" += ", " -= "),
]


# The faults that no test of results can notice: file, the line with the fault, why.
SANS_EFFET = [
    ("primes/arithmetique/zz.cpp",
     "std::string texte(mpz_sizeinbase(vue.z, 10), '\\0');  // room for the NUL",
     "a string has room for one NUL of its own"),
    ("primes/crible/crible.cpp",
     "if (plafond_ > debut_des_grands && (30 * suivant + 1) / debut_des_grands >= debut_des_grands) {",
     "the large primes are prepared a segment early at most"),
    ("primes/crible/premiers_cribleurs.cpp",
     "for (std::size_t j = i; j <= i + 8; ++j) {  // cofactors from p on, one for each residue",
     "crosses one cofactor off twice"),
    ("primes/dette/decisions.cpp",
     "if (NTL::NumBits(borne) <= 64) dette.noter(NTL::conv<std::uint64_t>(borne));",
     "such a bound is above the limit of notes either way"),
    ("primes/facteurs/facteurs.cpp", "if (NTL::NumBits(n) <= bits) break;",
     "another method, the same factors"),
    ("primes/facteurs/facteurs128.cpp",
     "return *std::find_if(table.begin(), table.end(),",
     "the last row of the table suits every number"),
    ("primes/facteurs/petits_facteurs.cpp", "return produit < ~std::uint64_t{0} / p;",
     "the two sides are never equal"),
    ("primes/facteurs/preuve.cpp",
     "if (s != 0 && d >= 0 && NTL::SqrRoot(d) * NTL::SqrRoot(d) != d) return false;",
     "a proof that does not succeed hands over to the next one"),
    ("primes/compte/difficiles.cpp", "Compteur compteur(a.segment, ligne.curseur + fin);",
     "how many questions are to come decides how the flags are summed, not what"),
    ("primes/crible/decades.h",
     "for (std::size_t octet = 0; octet <= 256; ++octet) {", "256 has none of the eight bits"),
    ("primes/dette/morceaux.cpp",
     "if (dette_.borne_due > borne_des_diviseurs) return;",
     "what the shortcut skips would note nothing"),
    ("primes/crible/crible.cpp",
     "if (plafond_ >= debut_des_grands && (30 * suivant - 1) / debut_des_grands >= debut_des_grands) {",
     "a window with that ceiling ends before the square of the first large prime"),
    ("primes/crible/crible_grand.cpp",
     "if (annoncer) annoncer(debut_tour_ + longueur * (30 * octet) / (racine - 30));",
     "how far the work is, off by a millionth"),
    ("primes/dette/dette.h",
     "if (borne >= borne_due && borne <= borne_max) borne_due = borne;",
     "writes the same value again"),
    ("primes/facteurs/ecm_paires.h",
     "for (std::size_t j = 1; j <= D / 2; ++j) n += std::gcd(j, D) == 1 ? 1 : 0;",
     "D / 2 divides D"),
    ("primes/facteurs/facteurs128.cpp",
     "const Bornes& initiales = choisir(table, bits(n) + 4 / 5);",
     "other bounds for the first curves, the same factors"),
    ("primes/facteurs/preuve.cpp", "const NTL::ZZ D{P + P - 4};",
     "a base that does not serve is followed by another; no composite number that comes so far is "
     "known"),
    ("primes/facteurs/rho.h", "if (g != m.n) {",
     "finds the same factor again, or takes another sequence"),
    ("primes/arithmetique/montgomery_souple.h",
     "static constexpr int bits_maximum = 8 + static_cast<int>(sizeof(Entier)) - 4;",
     "another arithmetic, the same factors"),
    ("primes/facteurs/facteurs.cpp", "if (NTL::NumBits(n) < 64) {",
     "another method, the same factors"),
    ("primes/dette/decisions.cpp", "} else if (n >= (suivante + 1) * (suivante - 1)) {",
     "the shortcut is taken less often"),
    ("primes/dette/decisions.cpp", "if (n < suivante + suivante) return;",
     "the shortcut is taken less often"),
]


def lire(chemin):
    with open(chemin, encoding="utf-8") as fichier:
        return fichier.read()


def ecrire(chemin, texte):
    with open(chemin, "w", encoding="utf-8") as fichier:
        fichier.write(texte)


def candidates(texte):
    """Every (line number, new text of the line) of a file."""
    trouvees = []
    for numero, ligne in enumerate(texte.split("\n")):
        code = ligne.split("//")[0]
        if re.match(r"\s*(#|template|static_assert|using|///|\"|inline constexpr std::string)", code):
            continue
        for ancien, nouveau in ECHANGES:
            for ou in re.finditer(re.escape(ancien), code):
                avant = code[: ou.start()]
                if avant.count('"') % 2:  # within a text
                    continue
                if ancien in (" < ", " > ") and ("template" in code or "<<" in code):
                    continue
                trouvees.append((numero, ligne[: ou.start()] + nouveau + ligne[ou.end() :]))
    return trouvees


def avec(texte, numero, ligne):
    """The file with another line of this number."""
    lignes = texte.split("\n")
    lignes[numero] = ligne
    return "\n".join(lignes)


class Faute:
    def __init__(self, nom, fichier, texte):
        self.nom, self.fichier, self.texte = nom, fichier, texte


def mode_fausse(texte, mode):
    """The case of this mode, and of no other, takes something else: the last digit of its range moves,
    or what it calls is refused."""
    lignes = texte.split("\n")
    ici = next((i for i, ligne in enumerate(lignes) if ligne.strip() == f"case {mode}:"), None)
    if ici is None:
        return None
    retour = next(ligne for ligne in lignes[ici:] if "return " in ligne)
    chiffre = re.search(r"'(\d)'\)", retour)
    if chiffre:
        n = chiffre.start(1)
        faux = retour[:n] + str(int(chiffre[1]) - 1) + retour[n + 1 :]
    else:
        faux = retour.replace("return ", "return !", 1)
    del lignes[ici]
    debut = max(i for i, ligne in enumerate(lignes[:ici]) if "switch (cas)" in ligne)
    lignes[debut + 1 : debut + 1] = [f"    case {mode}:", faux]
    return "\n".join(lignes)


def nommees(arbre):
    """The named faults: what, which file, the file's text with the fault; None where the text that it
    changes is no longer there."""
    for nom, fichier, ancien, nouveau in NOMMEES:
        chemin = os.path.join(arbre, fichier)
        texte = lire(chemin) if os.path.exists(chemin) else ""
        faux = mode_fausse(texte, nouveau) if ancien is None else texte.replace(ancien, nouveau, 1)
        yield nom, fichier, faux if faux != texte else None


def verifier_les_noms():
    """Whether every named fault can still be planted."""
    perdues = [f"{nom} ({fichier})" for nom, fichier, faux in nommees(RACINE) if faux is None]
    for perdue in perdues:
        print("no longer in the code:", perdue)
    print(f"{len(NOMMEES) - len(perdues)} of {len(NOMMEES)} named faults are there to plant")
    return 1 if perdues else 0


def toutes(arbre, graine, tirees):
    """The list of faults, the same for the same seed and the same code."""
    hasard = random.Random(graine)
    fautes = []
    for nom, fichier, faux in nommees(arbre):
        if faux is None:
            print(f"no longer in the code: {nom} ({fichier})", file=sys.stderr)
        else:
            fautes.append(Faute(nom, fichier, faux))
    assert len({(f.fichier, f.texte) for f in fautes}) == len(fautes), "two names for one fault"
    fichiers = subprocess.run(["git", "-C", arbre, "ls-files", *CODE], check=True, text=True,
                              capture_output=True).stdout.split()
    moteur = [f for f in fichiers if f.startswith("primes/")]

    def tirer(nom, fichier):
        texte = lire(os.path.join(arbre, fichier))
        deja = {f.texte for f in fautes}
        choix = [c for c in candidates(texte) if avec(texte, *c) not in deja]
        if not choix:
            return
        numero, ligne = hasard.choice(choix)
        juste = texte.split("\n")[numero]
        quoi = f"{nom}, line {numero + 1}: `{juste.strip()}` becomes `{ligne.strip()}`"
        fautes.append(Faute(quoi.replace("|", "\\|"), fichier, avec(texte, numero, ligne)))

    for fichier in moteur:
        tirer("engine", fichier)
    voulues = len(fautes) + tirees
    while len(fautes) < voulues:
        tirer("drawn", hasard.choice([f for f in fichiers if f.endswith((".cpp", ".h"))]))
    return fautes


class Banc:
    """The copy in which faults are planted."""

    def __init__(self, dossier, etiquettes):
        self.etiquettes = etiquettes
        self.arbre = os.path.join(dossier, "arbre")
        self.build = os.path.join(self.arbre, "build", "release")
        if not os.path.exists(self.arbre):
            os.makedirs(dossier, exist_ok=True)
            subprocess.run(["git", "clone", "-q", RACINE, self.arbre], check=True)
        for commande in (["fetch", "-q", "origin", "HEAD"], ["reset", "-q", "--hard", "FETCH_HEAD"]):
            subprocess.run(["git", "-C", self.arbre, *commande], check=True)
        # Little optimised: most of the time goes into compiling.
        limites = [f"-DPREMIERS_{quoi}_LIMIT={n}" for quoi, n in PATIENCE.items()]
        subprocess.run(["cmake", "--preset", "release", "-DCMAKE_CXX_FLAGS_RELEASE=-O1 -DNDEBUG",
                        *limites], cwd=self.arbre, check=True, stdout=subprocess.DEVNULL)

    def construire(self, *cibles):
        return subprocess.run(["nice", "ninja", "-C", self.build, *cibles], check=False,
                              capture_output=True, text=True).returncode == 0

    def essais(self, etiquette):
        """The first test of that label that fails, or None."""
        # That the named faults can be planted is no longer so once one is.
        r = subprocess.run(["nice", "ctest", "-L", etiquette, "-E", "^mutations/",
                            "--stop-on-failure", "-j", "2"],
                           cwd=self.build, check=False, capture_output=True, text=True)
        if r.returncode == 0:
            return None
        echec = re.search(r"Test +#\d+: (\S+) \.+.*?(Failed|Timeout|Exception|Subprocess)", r.stdout)
        return echec[1] if echec else "ctest"

    def qui_remarque(self, faute):
        """The name of the test that notices a fault, "compiler", or None."""
        chemin = os.path.join(self.arbre, faute.fichier)
        juste = lire(chemin)
        ecrire(chemin, faute.texte)
        try:
            for etiquette in self.etiquettes:
                if not self.construire(*CIBLES[etiquette]):
                    return "compiler"
                echec = self.essais(etiquette)
                if echec:
                    return echec
            return None
        finally:
            ecrire(chemin, juste)


ENTETE = "| fault | file | noticed by |"


IGNOREE = "**not noticed**"


def rangee(nom, fichier, qui):
    """One line of the list."""
    for ou, ligne, raison in SANS_EFFET:
        if not qui and fichier == ou and f"becomes `{ligne}`" in nom.replace("\\|", "|"):
            qui = f"cannot be: {raison}"
    return f"| {nom} | {fichier} | {qui or IGNOREE} |"


def anciennes(combien):
    """The rows of an earlier run, with what SANS_EFFET has learnt since."""
    lignes = lire(RAPPORT).split("\n")
    debut = lignes.index(ENTETE) + 2
    rangees = [ligne for ligne in lignes[debut : debut + combien] if ligne.startswith("|")]
    colonnes = [re.split(r"(?<!\\)\|", ligne) for ligne in rangees]
    return [rangee(nom.strip(), fichier.strip(), "" if qui.strip() == IGNOREE else qui.strip())
            for _, nom, fichier, qui, _ in colonnes]


def rapporter(rangees, total, o):
    impossibles = sum("| compiler |" in r or "| cannot be: " in r for r in rangees)
    ignorees = sum(IGNOREE in r for r in rangees)
    texte = [
        "# Faults planted one by one, and what noticed them",
        "",
        f"A list, not a score: a fault that no test noticed got a test, or a reason why none can, and "
        f"stands here as noticed or as explained. So the list shows what the tests have learnt, not what "
        f"share of other faults they would notice.",
        "",
        f"Written by `tests/mutations.py` (seed {o.graine}). {len(rangees)} of {total} faults tried: "
        f"{len(rangees) - impossibles - ignorees} noticed, {impossibles} that cannot be seen in a result "
        f"or are no program, {ignorees} neither.",
        "",
        ENTETE,
        "|---|---|---|",
    ]
    ecrire(RAPPORT, "\n".join(texte + rangees) + "\n")


def main():
    options = argparse.ArgumentParser()
    options.add_argument("--graine", type=int, default=1)
    options.add_argument("--tirees", type=int, default=15)
    options.add_argument("--dossier", default=os.path.join(RACINE, "build", "mutations"))
    options.add_argument("--de", type=int, default=0)
    options.add_argument("--essais", default=",".join(CIBLES), help="the kinds of tests to run")
    options.add_argument("--minutes", type=float, default=0)
    options.add_argument("--verifier", action="store_true",
                         help="only see that the named faults can still be planted")
    o = options.parse_args()
    if o.verifier:
        sys.exit(verifier_les_noms())
    debut = time.monotonic()
    banc = Banc(os.path.abspath(o.dossier), o.essais.split(","))
    fautes = toutes(banc.arbre, o.graine, o.tirees)
    print(f"{len(fautes)} faults; building", flush=True)
    for etiquette in banc.etiquettes:
        if not banc.construire(*CIBLES[etiquette]):
            sys.exit("the copy cannot be built")
        if echec := banc.essais(etiquette):
            sys.exit(f"a test fails without any fault: {echec}")
    rangees = anciennes(o.de) if o.de else []
    for n, faute in enumerate(fautes[len(rangees) :], len(rangees)):
        if o.minutes and time.monotonic() - debut > 60 * o.minutes:
            break
        qui = banc.qui_remarque(faute)
        rangees.append(rangee(faute.nom, faute.fichier, qui))
        print(f"{n}  {faute.nom}: {qui or 'NOT NOTICED'}", flush=True)
        rapporter(rangees, len(fautes), o)


if __name__ == "__main__":
    main()
