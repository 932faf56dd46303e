# SPDX-License-Identifier: MIT
"""A model of the primes by rank whose only source is Debian's `primecount` and a Miller-Rabin test of
its own: it takes the words of a session one by one and writes what must come, byte for byte.

It knows the main menu, the decomposition of numbers whose factors it is told or can divide out, the
ranked listing with its consultation, and the bounded listing. The texts are typed here anew.

usage: modele_des_rangs.py <SESSION.in >SESSION.out   (standard error: what must come there)
"""

import bisect
import math
import shutil
import subprocess
import sys

from conduite import (AUTRE_N, COMMANDE, COMMANDE_AU_DEBUT, DIFFERENCE, EFFECTIF_BORNES, INFERIEURE,
                      MAJORANT, MAJORANT_DU_NOMBRE, MINIMUM, MINORANT, PLUS_GRAND_RANG,
                      PLUS_PETIT_RANG, QUESTION_MENU, QUESTION_N, RANG, SUPERIEURE, Impossible)

DEUX_63 = 2**63
BORNE_MAX = 2**50  # what the table can owe

# The last prime below 2^63 (C. Caldwell, The Prime Pages, "Primes just less than a power of two")
# with its rank (OEIS A007053, primes <= 2^63): primecount would take hours.
FIN = (9223372036854775783, 216289611853439384)

# The last prime below 10^15 (OEIS A033874) with its rank (OEIS A006880): primecount would take seconds.
AVANT_10_15 = (10**15 - 11, 29844570422669)

REFUS = b"premiers: commande refusee : au-dela du dernier nombre premier inferieur a 2^63\n"

TRAIT = "\n" + "_" * 107

MENU = (
    " \n   POUR MODIFIER LA TAILLE DU TEXTE ET DE LA FENETRE : [TOUCHE CTRL] + [MOLETTE DE LA "
    "SOURIS]. \n " + TRAIT + "\n" + "*" * 107 + "\n"
    " \n  \t  *****  CALCUL DE NOMBRES PREMIERS  ***** : "
    "\n \n \t Que voulez-vous faire ? : \n "
    "\n \n \t \t [1] - Decomposer un nombre en facteurs premiers ? "
    "\n \n \t \t [2] - Lister les nombres premiers avec leurs rangs ? "
    "\n \n \t \t [3] - Afficher les nombres premiers compris entre deux bornes (sans leurs rangs) ? "
    "\n \n \t \t [4] - Concatenation de nombres premiers ? "
    "\n \n \t \t [5] - Afficher des explications ? "
    "\n \n \t \t [0] - Fermer le programme ? ")

DECOMPOSITION = (
    TRAIT + " \n \n \t *****  DECOMPOSITION D'UN ENTIER N EN FACTEURS PREMIERS.  ***** ")

ACCUEIL = (
    TRAIT + "\n"
    " \n  \t  *****  CALCUL DE NOMBRES PREMIERS  ***** : "
    " \n \n \t  Le dernier nombre premier calcule est  :    [ {np} : {P} ] ."
    " \n \n \t  K etant un entier positif, vous pouvez saisir au debut et en cours d'utilisation : "
    " \n \n \t \t [K] :   Pour afficher les K nombres premiers suivants le dernier calcule. "
    " \n \n \t \t [=K] :  Pour afficher le nombre premier de rang K. Ce rang, doit etre superieur "
    "a :  {np}"
    " \n \n \t \t [-K] :  Pour afficher tous les nombres premiers superieurs a  {P}  jusqu'a la "
    "valeur K . "
    " \n \n \t \t [=-K] : Pour afficher le plus grand nombre premier superieur a  {P} et inferieur "
    "a K "
    " \n \n \t \t [*] :   Cette option permet d'afficher des nombres premiers isoles ou des "
    "sequences de nombres premiers, tous inferieurs au dernier deja calcule."
    " \n \t \t         Ce dernier nombre etant celui calcule depuis le premier lancement d'un des "
    "deux programmes : Decomposition et Liste.  "
    " \n \t \t         En fin de consultation on peut reprendre le calcul, a partir du dernier "
    "nombre premier calcule. "
    " \n \n \t \t [0] :   Pour arreter les calculs. \n ")

CONSULTATION = (
    " \n \n \n \t AFFICHAGE DE SELECTIONS DES NOMBRES PREMIERS DEJA CALCULES. "
    " \n \n \t Le dernier nombre premier calcule est \t [ {np} : {P} ] ."
    " \n \n \t Voulez vous faire : "
    " \n \n \t \t [1] - Voir un nombre premier dont le rang donne est inferieur a {np} ? "
    " \n \n \t \t [2] - Voir le plus grand nombre premier majore par un nombre inferieur a {P} ? "
    " \n \n \t \t [3] - Voir tous les nombres premiers dont les rangs sont compris entre deux "
    "limites inferieures a {np} ? "
    " \n \n \t \t [4] - Voir tous les nombres premiers compris entre deux bornes inferieures a {P} ? "
    " \n \n \t \t [5] - Chercher les nombres premiers consecutifs de difference fixee, compris "
    "entre deux bornes inferieures a {P} ? "
    " \n \n \t \t [0] - Reprendre les calculs des nombres premiers superieurs a {P} de rang  {np} ? ")

PETITS = [p for p in range(2, 200) if all(p % d for d in range(2, p))]
PRIMORIELLE = math.prod(PETITS)
# G. Jaeschke, "On strong pseudoprimes to several bases", 1993; J. Sorenson and J. Webster, "Strong
# pseudoprimes to twelve prime bases", 2017: no composite below the limit passes the first primes.
BASES_PROUVEES = ((341550071728321, 7), (3317044064679887385961981, 13))


def est_premier(n):
    """Miller-Rabin: a proof below 3.3 * 10^24, and forty bases beyond."""
    if n < 200:
        return n in PETITS
    if math.gcd(n, PRIMORIELLE) != 1:
        return False
    nombre = next((b for limite, b in BASES_PROUVEES if n < limite), 40)
    s = ((n - 1) & (1 - n)).bit_length() - 1
    for a in PETITS[:nombre]:
        x = pow(a, n >> s, n)
        if x in (1, n - 1):
            continue
        for _ in range(s - 1):
            x = x * x % n
            if x == n - 1:
                break
        else:
            return False
    return True


def premier_apres(v):
    v += 1
    while not est_premier(v):
        v += 1
    return v


def premier_avant(v):
    """The largest prime below v, 0 if there is none."""
    v -= 1
    while v > 1 and not est_premier(v):
        v -= 1
    return v if v > 1 else 0


def premiers_entre(a, b):
    a = max(a, 2)
    if a <= 2 <= b:
        yield 2
    for n in range(a | 1, b + 1, 2):
        if est_premier(n):
            yield n


def primecount(*arguments):
    if shutil.which("primecount") is None:
        raise Impossible("primecount is missing; on Debian: apt-get install primecount-bin")
    r = subprocess.run(["primecount", *map(str, arguments), "-t1"], capture_output=True, text=True,
                       check=True)
    return int(r.stdout)


class Comptes:
    """Ranks and primes at any height: from a remembered count nearby by single steps, else from
    primecount."""

    PRES = 4000  # so wide is walked rather than counted

    def __init__(self):
        self.valeurs = [2, AVANT_10_15[0], FIN[0]]
        self.rangs = [1, AVANT_10_15[1], FIN[1]]

    def retenir(self, p, rang):
        i = bisect.bisect_left(self.valeurs, p)
        if i == len(self.valeurs) or self.valeurs[i] != p:
            self.valeurs.insert(i, p)
            self.rangs.insert(i, rang)
        return p, rang

    def proche(self, liste, cible):
        i = bisect.bisect_left(liste, cible)
        candidats = [j for j in (i - 1, i) if 0 <= j < len(liste)]
        j = min(candidats, key=lambda c: abs(liste[c] - cible))
        return self.valeurs[j], self.rangs[j]

    def jusqu_a(self, v):
        """The largest prime <= v with its rank; (0, 0) if there is none."""
        if v < 2:
            return 0, 0
        p, rang = self.proche(self.valeurs, v)
        if abs(p - v) > self.PRES:
            return self.retenir(premier_avant(v + 1), primecount(v))
        if p <= v:
            rang += sum(1 for _ in premiers_entre(p + 1, v))
        else:
            rang -= sum(1 for _ in premiers_entre(v + 1, p))
        return self.retenir(premier_avant(v + 1), rang)

    def de_rang(self, n):
        p, rang = self.proche(self.rangs, n)
        if abs(rang - n) > self.PRES // 20:
            return self.retenir(primecount("-n", n), n)[0]
        while rang < n:
            p, rang = premier_apres(p), rang + 1
        while rang > n:
            p, rang = premier_avant(p), rang - 1
        return self.retenir(p, n)[0]


def enroule(n):
    return (n + DEUX_63) % (2 * DEUX_63) - DEUX_63


def chiffres(mot):
    return mot.isascii() and mot.isdigit() and mot[0] != "0"


def plus_petit_facteur(n):
    d = 3
    while d * d <= n:
        if n % d == 0:
            return d
        d += 2
    return n


class Modele:
    """A session: `taper(word)`; `question` is the prompt that waits, None once it is closed;
    `ecran` and `erreurs` hold what must have come."""

    def __init__(self, comptes, facteurs=()):
        self.comptes = comptes
        self.facteurs_connus = list(facteurs)
        self.np, self.P = 2, 3
        self.borne_due = 2
        self.un = self.voir = False
        self.ecran = []
        self.erreurs = b""
        self.question = None
        self.dialogue = self.menu()
        next(self.dialogue)

    def taper(self, mot):
        try:
            self.dialogue.send(mot)
        except StopIteration:
            self.question = None

    def ecrire(self, *textes):
        self.ecran.extend(str(t) for t in textes)

    def octets(self):
        return "".join(self.ecran).encode()

    # ---- Questions: a word that is not accepted has the prompt alone repeated ----

    def demander(self, question, accepter):
        while True:
            self.ecrire(question)
            self.question = question
            mot = yield
            if len(mot) < 200:
                reponse = accepter(mot)
                if reponse is not None:
                    return reponse

    def choix(self, question, dernier):
        return self.demander(question, lambda mot: int(mot) if len(mot) == 1 and mot.isdigit() and
                             int(mot) <= dernier else None)

    def grand(self, question):
        return self.demander(question, lambda mot: int(mot) if chiffres(mot.removeprefix("+"))
                             else None)

    def nombre(self, question):
        def accepter(mot):
            if not chiffres(mot.removeprefix("+")):
                return None
            return enroule(int(mot)) or None
        return self.demander(question, accepter)

    def commande(self, question):
        """The value; `self.voir` for a star."""
        def accepter(mot):
            self.voir = mot == "*" and self.np > 2
            if self.voir:
                return 0
            if mot[0] == "=":
                self.un = True
                mot = mot[1:]
            if mot == "0":
                return 0
            if mot[:1] in ("+", "-") and chiffres(mot[1:]) or chiffres(mot):
                return enroule(int(mot))
            return None
        return self.demander(question, accepter)

    # ---- The table ----

    def etendre_au_rang(self, n):
        if n > self.np:
            self.np, self.P = n, self.comptes.de_rang(n)

    def etendre_au_dela(self, borne):
        if borne >= self.P:
            rang = self.comptes.jusqu_a(borne)[1] + 1
            self.np, self.P = self.comptes.retenir(premier_apres(borne), rang)[::-1]

    def noter(self, borne):
        if self.borne_due < borne <= BORNE_MAX:
            self.borne_due = borne

    def dessiner(self, texte):
        self.ecrire(texte.format(np=self.np, P=self.P))

    def entree(self, rang, p):
        self.ecrire(f"   [ {rang} : {p} ] ")

    def lister(self, rang, premiers):
        for p in premiers:
            if rang % 100 == 1:
                self.ecrire(" \n \n \n ")
            self.entree(rang, p)
            rang += 1

    # ---- The main menu and its choices ----

    def menu(self):
        while True:
            self.ecrire(MENU)
            choix = yield from self.choix(QUESTION_MENU, 5)
            if choix == 0:
                return
            if choix > 3:
                raise ValueError("not modelled: choice", choix)
            yield from (self.decomposition, self.listing, self.bornes)[choix - 1]()

    def factoriser(self, n):
        """Prime factors, with repetition: the known ones, then the small ones, and a prime left."""
        facteurs = []
        for p in [*self.facteurs_connus, 2, *range(3, 100000, 2)]:
            if n == 1 or (p * p > n and p not in self.facteurs_connus):
                break
            while n % p == 0:
                facteurs.append(p)
                n //= p
        if n > 1:
            if not est_premier(n):
                raise ValueError(f"cannot factor {n}")
            facteurs.append(n)
        return sorted(facteurs)

    def noter_decomposition(self, facteurs):
        if not facteurs:
            return
        q = facteurs[-1]
        if facteurs.count(q) > 1:
            self.noter(q - 1)
        else:
            self.noter(max(math.isqrt(q), *facteurs[-2:-1], 0))

    def decomposition(self):
        self.ecrire(DECOMPOSITION)
        while True:
            n = yield from self.grand(QUESTION_N)
            facteurs = self.factoriser(n)
            self.noter_decomposition(facteurs)
            self.ecrire(f" \n \n \t {n}")
            if len(facteurs) == 1:
                self.ecrire("  est un nombre premier. ")
            else:
                fois = [(p, facteurs.count(p)) for p in sorted(set(facteurs))]
                self.ecrire(" =  ", " X ".join(f"({p})" + (f"^{e}" if e > 1 else "")
                                               for p, e in fois))
            if (yield from self.choix(AUTRE_N, 1)) == 0:
                return

    def bornes(self):
        self.ecrire(" \n ")
        a, b = 1, 0
        while b < a:
            a = yield from self.nombre(INFERIEURE)
            self.ecrire(" \n  ")
            b = yield from self.nombre(SUPERIEURE)
        effectif_seul = yield from self.choix(EFFECTIF_BORNES, 1)
        premiers = list(premiers_entre(a, b))
        if not effectif_seul:
            self.ecrire(" \n \n \t  Entre ces limites, les nombres premiers sont : ",
                        *(f" {p} , " for p in premiers))
        self.ecrire(f" \n \n \t  Il y a  {len(premiers)}  nombres premiers entre ces limites. "
                    "\n \n \n ")
        if premiers and premiers[-1] >= 5:
            self.noter(int(math.sqrt(float(premiers[-1]))))
        connus = set(premiers)
        for n in range(max(a, 5) | 1, b + 1, 2):
            if n not in connus and math.isqrt(n) > self.borne_due:
                self.noter(plus_petit_facteur(n) - 1)

    # ---- The primes by rank ----

    def possible(self, K):
        """Whether a command needs nothing beyond the last prime below 2^63."""
        return K <= FIN[1] if K > 0 else enroule(-K) < max(self.P, FIN[0])

    def listing(self):
        self.etendre_au_dela(self.borne_due)
        self.dessiner(ACCUEIL)
        while True:
            if self.np > 2:
                self.dessiner(" \n \n \t  Dernier nombre calcule  :    [ {np} : {P} ] .")
            K = yield from self.commande(COMMANDE if self.np > 2 else COMMANDE_AU_DEBUT)
            if self.voir:
                yield from self.consultation()
                continue
            if (self.un and 0 < K < self.np) or -self.P < K < 0:
                self.un = False
                continue
            if not self.un and K > 0:
                K = enroule(K + self.np)
            if not self.possible(K):
                self.erreurs += REFUS
                self.un = False
                continue
            self.executer(K)
            self.un = False
            if K == 0:
                return

    def executer(self, K):
        np, P = self.np, self.P
        if K > 0:
            self.etendre_au_rang(K)
        if K < 0:
            self.etendre_au_dela(enroule(-K))
        montre = self.np - 1 if K < 0 else self.np
        if self.un:
            self.ecrire(f" \n \n \t {montre} eme nombre premier : ")
            self.entree(montre, self.comptes.de_rang(montre))
            return
        self.ecrire(" \n \n \t Liste des nombres premiers :   [ 1 : 2 ]   [ 2 : 3 ] " if np == 2
                    else " \n \n \t Nombres premiers suivants :  ")
        self.lister(np + 1, premiers_entre(P + 1, self.P if K > 0 else enroule(-K)))

    # ---- The consultation ----

    def rang(self, question):
        while True:
            r = yield from self.nombre(question)
            if 1 <= r <= self.np:
                return r

    def valeur(self, question):
        while True:
            v = yield from self.nombre(question)
            if v <= self.P:
                return v

    def deux(self, demander, questions):
        while True:
            a = yield from demander(questions[0])
            self.ecrire(" \n  ")
            b = yield from demander(questions[1])
            if a <= b:
                return a, b

    def seul(self, p, rang):
        self.ecrire(f" \n \n \t [ {rang} : {p} ] ")

    def consultation(self):
        while True:
            self.dessiner(CONSULTATION)
            choix = yield from self.choix(QUESTION_MENU, 5)
            if choix == 0:
                return
            yield from (self.de_rang, self.majore, self.entre_rangs, self.entre_bornes,
                        self.suites)[choix - 1]()

    def de_rang(self):
        r = yield from self.rang(RANG)
        self.seul(self.comptes.de_rang(r), r)

    def majore(self):
        self.seul(*self.comptes.jusqu_a((yield from self.valeur(MAJORANT_DU_NOMBRE))))

    def entre_rangs(self):
        a, b = yield from self.deux(self.rang, (PLUS_PETIT_RANG, PLUS_GRAND_RANG))
        self.ecrire(" \n \n ")
        self.lister(a, premiers_entre(self.comptes.de_rang(a), self.comptes.de_rang(b)))

    def entre_bornes(self):
        a, b = yield from self.deux(self.valeur, (MINORANT, MAJORANT))
        self.ecrire(" \n \n ")
        self.lister(self.comptes.jusqu_a(a - 1)[1] + 1, premiers_entre(a, b))

    def suites(self):
        a, b = yield from self.deux(self.valeur, (MINORANT, MAJORANT))
        ecart = yield from self.nombre(DIFFERENCE)
        minimum = 0
        while minimum < 2:
            minimum = yield from self.nombre(MINIMUM)
        self.ecrire(" \n \n ")
        rang = self.comptes.jusqu_a(a - 1)[1]
        couples, suite = 0, []  # differences found so far; the run that ends here
        for p in premiers_entre(a, b):
            rang += 1
            if not suite or p - suite[-1] != ecart:
                suite = [p]
                continue
            suite.append(p)
            couples += 1
            if len(suite) == minimum:
                self.ecrire(f" \n    {couples - minimum + 2}  :  ")
                for w, q in enumerate(suite):
                    self.entree(rang - minimum + 1 + w, q)
            elif len(suite) > minimum:
                self.entree(rang, p)


def deriver(tape):
    """What must come for a whole session: standard output, standard error."""
    modele = Modele(Comptes())
    for mot in tape.split():
        if modele.question is None:
            break
        modele.taper(mot)
    if modele.question is not None:
        raise ValueError("the session is not closed")
    return modele.octets(), modele.erreurs


if __name__ == "__main__":
    sortie, erreurs = deriver(sys.stdin.read())
    sys.stdout.buffer.write(sortie)
    sys.stderr.buffer.write(erreurs)
