"""A chart of figures over the number of nodes. Both axes are logarithmic; each curve is relative to
its value at ten nodes."""

import math
import re

WIDTH, HEIGHT = 720, 400
LEFT, RIGHT, TOP, BOTTOM = 64, 190, 24, 48
COLORS = ("#0b7285", "#c2255c", "#b94700", "#5f3dc4")   # at least 4.5:1 on white


def curve(figures, what):
    """Pairs (number of nodes, value relative to the value at the fewest nodes)."""
    points = sorted((int(match[1].replace(",", "")), figure.value) for figure in figures
                    if figure.what == what
                    and (match := re.fullmatch(r"([\d,]+) nodes", figure.size)))
    return [(nodes, value / points[0][1]) for nodes, value in points]


def draw(curves):
    """Returns the SVG. `curves` maps names to points."""
    maximum = max(value for points in curves.values() for _, value in points)
    decades = max(1, math.ceil(math.log10(maximum)))
    sizes = sorted({nodes for points in curves.values() for nodes, _ in points})

    def x(nodes):
        share = math.log10(nodes / sizes[0]) / math.log10(sizes[-1] / sizes[0])
        return LEFT + share * (WIDTH - LEFT - RIGHT)

    def y(value):
        share = math.log10(max(value, 0.8)) / decades
        return HEIGHT - BOTTOM - share * (HEIGHT - TOP - BOTTOM)

    parts = [
        f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {WIDTH} {HEIGHT}" role="img" '
        'font-family="sans-serif" font-size="13">',
        "<title>Growth from 10 to 100,000 nodes, as multiples of the figure at 10 nodes</title>",
        f'<rect width="{WIDTH}" height="{HEIGHT}" fill="#ffffff"/>',
    ]
    for decade in range(decades + 1):
        at = y(10**decade)
        parts += [f'<path d="M{LEFT} {at:.1f}H{WIDTH - RIGHT}" stroke="#dee2e6"/>',
                  f'<text x="{LEFT - 10}" y="{at + 4:.1f}" text-anchor="end" fill="#495057">'
                  f"{10**decade:,} ×</text>"]
    for nodes in sizes:
        parts.append(f'<text x="{x(nodes):.1f}" y="{HEIGHT - BOTTOM + 22}" text-anchor="middle" '
                     f'fill="#495057">{nodes:,}</text>')
    parts.append(f'<text x="{(LEFT + WIDTH - RIGHT) / 2:.1f}" y="{HEIGHT - 6}" '
                 'text-anchor="middle" fill="#495057">nodes</text>')
    labels = label_positions({name: y(points[-1][1]) for name, points in curves.items()})
    for (name, points), color in zip(curves.items(), COLORS):
        line = " ".join(f"{x(nodes):.1f},{y(value):.1f}" for nodes, value in points)
        parts.append(f'<polyline points="{line}" fill="none" stroke="{color}" stroke-width="2.5"/>')
        parts += [f'<circle cx="{x(nodes):.1f}" cy="{y(value):.1f}" r="3.5" fill="{color}"/>'
                  for nodes, value in points]
        parts.append(f'<text x="{WIDTH - RIGHT + 14}" y="{labels[name] + 4:.1f}" fill="{color}">'
                     f"{name}, {points[-1][1]:.3g} ×</text>")
    return "\n".join([*parts, "</svg>", ""])


def label_positions(ends):
    """The y coordinates of the labels: at the end of the curve, or below the previous label."""
    positions = {}
    last = -math.inf
    for name, end in sorted(ends.items(), key=lambda item: item[1]):
        last = positions[name] = max(end, last + 18)
    return positions
