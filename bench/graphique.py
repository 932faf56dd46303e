# SPDX-License-Identifier: MIT
"""A chart with two logarithmic axes, drawn as SVG."""
from html import escape
from math import ceil, floor, log10

LARGEUR, HAUTEUR = 900, 560
GAUCHE, DROITE, HAUT, BAS = 80, 250, 50, 60
PLACE_DES_NOMS_LONGS = 200  # more to the right
# For charts of one program's own lines, in their order.
PALETTE = ("#c0392b", "#2471a3", "#1e8449", "#7d3c98", "#b9770e", "#117a65", "#5d6d7e", "#a04000",
           "#1a5276", "#6c3483", "#0e6655", "#922b21")
COULEURS = {"premiers": "#c0392b", "primesieve": "#2471a3", "primecount": "#1e8449"}
EXPOSANTS = str.maketrans("-0123456789", "⁻⁰¹²³⁴⁵⁶⁷⁸⁹")


def puissance(k):
    return "10" + str(k).translate(EXPOSANTS)


def duree(k):
    """10^k seconds in words that fit an axis."""
    if k >= 0:
        return f"{10**k} s"
    return f"{10**(k + 3)} ms" if k >= -3 else f"{10**(k + 6)} µs"


def dessiner(courbes, titre, axe_x, palette=(), plafond=None):
    """`courbes`: {(who, what): [(x, seconds) ...]}; a list is drawn dashed, a count solid. Colours go
    by who, or from line to line where there is a palette. Points from `plafond` seconds on are hollow."""
    xs = [log10(x) for points in courbes.values() for x, _ in points]
    ys = [log10(y) for points in courbes.values() for _, y in points]
    x0, x1 = floor(min(xs)), max(ceil(max(xs)), floor(min(xs)) + 1)
    y0, y1 = floor(min(ys)), max(ceil(max(ys)), floor(min(ys)) + 1)

    def px(x):
        return GAUCHE + (log10(x) - x0) / (x1 - x0) * (LARGEUR - GAUCHE - DROITE)

    def py(y):
        return HAUTEUR - BAS - (log10(y) - y0) / (y1 - y0) * (HAUTEUR - HAUT - BAS)

    largeur = LARGEUR + (PLACE_DES_NOMS_LONGS if palette else 0)
    svg = [f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {largeur} {HAUTEUR}" '
           'font-family="sans-serif" font-size="13">',
           f'<rect width="{largeur}" height="{HAUTEUR}" fill="white"/>',
           f'<text x="{GAUCHE}" y="28" font-size="17">{escape(titre)}</text>']
    svg += axes(px, py, range(x0, x1 + 1), range(y0, y1 + 1))
    milieu = (GAUCHE + LARGEUR - DROITE) / 2
    svg.append(f'<text x="{milieu}" y="{HAUTEUR - 14}" text-anchor="middle">'
               f'{escape(axe_x)}</text>')
    for numero, ((qui, quoi), points) in enumerate(courbes.items()):
        couleur = palette[numero % len(palette)] if palette else COULEURS.get(qui, "#7d3c98")
        places = [(px(x), py(y), plafond is not None and y >= plafond) for x, y in sorted(points)]
        svg += courbe(qui, quoi, places, numero, couleur)
    return "\n".join(svg + ["</svg>"]) + "\n"


def axes(px, py, en_x, en_y):
    gauche, droite, haut, bas = GAUCHE, LARGEUR - DROITE, HAUT, HAUTEUR - BAS
    traits = []
    for k in en_x:
        x = px(10.0**k)
        traits.append(f'<line x1="{x:.1f}" y1="{haut}" x2="{x:.1f}" y2="{bas}" stroke="#ddd"/>'
                      f'<text x="{x:.1f}" y="{bas + 20}" text-anchor="middle">'
                      f'{puissance(k)}</text>')
    for k in en_y:
        y = py(10.0**k)
        traits.append(f'<line x1="{gauche}" y1="{y:.1f}" x2="{droite}" y2="{y:.1f}" '
                      f'stroke="#ddd"/><text x="{gauche - 8}" y="{y + 4:.1f}" '
                      f'text-anchor="end">{duree(k)}</text>')
    return traits


def courbe(qui, quoi, points, numero, couleur):
    """`points`: x, y, and whether the point is hollow."""
    tirets = ' stroke-dasharray="7 4"' if quoi == "list" else ""
    suite = " ".join(f"{x:.1f},{y:.1f}" for x, y, _ in points)
    x, y = LARGEUR - DROITE + 20, HAUT + 20 + 24 * numero
    return [f'<polyline points="{suite}" fill="none" stroke="{couleur}" stroke-width="2"{tirets}/>',
            *(f'<circle cx="{a:.1f}" cy="{b:.1f}" r="3.5" stroke="{couleur}" '
              f'fill="{"white" if creux else couleur}"/>' for a, b, creux in points),
            f'<line x1="{x}" y1="{y}" x2="{x + 34}" y2="{y}" stroke="{couleur}" '
            f'stroke-width="2"{tirets}/>',
            f'<text x="{x + 42}" y="{y + 4}">{escape(qui)}: {quoi}</text>']
