#!/usr/bin/env python3
"""Draws the program's pictures and plays its sounds into files.

    resources/draw.py            writes everything beside this script

Needs the standard library and ImageMagick ("convert"). Every picture is one list of
shapes that is written as SVG and drawn as PNG, so the two cannot differ; the same input
gives the same bytes. The results are committed, since the build needs no ImageMagick.
"""

import math
import os
import struct
import subprocess
import wave

HERE = os.path.dirname(os.path.abspath(__file__))
OVERSAMPLING = 4

SEA = ["#0d2450", "#12305f", "#1a4074", "#24548b", "#3a73a6"]
LAND = ["#efe4bd", "#cbd39a", "#a3bd7c", "#7fa166", "#8d8f5a", "#a2875a", "#bfa98a",
        "#f4f1ea"]
INK = "#22303f"
PAPER = "#f7f4ea"
ACCENT = "#c8502d"


def see_through(colour, opacity):
    if colour == "none" or opacity == 1:
        return colour
    return f"{colour}{round(opacity * 255):02x}"


class Picture:
    """Shapes in picture units; the top left corner is 0, 0."""

    def __init__(self, width, height):
        self.width, self.height = width, height
        self.shapes = []

    def path(self, data, fill="none", opacity=1.0, stroke="none", thickness=1.0):
        self.shapes.append(("path", data, fill, opacity, stroke, thickness))

    def rectangle(self, x, y, width, height, radius, fill, opacity=1.0):
        r = min(radius, width / 2, height / 2)
        if r <= 0:
            self.path(f"M{x} {y} L{x + width} {y} L{x + width} {y + height} "
                      f"L{x} {y + height} Z", fill, opacity)
            return
        self.path(f"M{x + r} {y} L{x + width - r} {y} Q{x + width} {y} {x + width} {y + r} "
                  f"L{x + width} {y + height - r} "
                  f"Q{x + width} {y + height} {x + width - r} {y + height} "
                  f"L{x + r} {y + height} Q{x} {y + height} {x} {y + height - r} "
                  f"L{x} {y + r} Q{x} {y} {x + r} {y} Z", fill, opacity)

    def text(self, x, y, size, words, fill, bold=False, spacing=0.0, opacity=1.0):
        self.shapes.append(("text", x, y, size, words, fill, bold, spacing, opacity))

    def svg(self):
        out = [f'<svg xmlns="http://www.w3.org/2000/svg" width="{self.width}" '
               f'height="{self.height}" viewBox="0 0 {self.width} {self.height}">']
        for shape in self.shapes:
            if shape[0] == "path":
                _, data, fill, opacity, stroke, thickness = shape
                line = ("" if stroke == "none" else
                        f' stroke="{stroke}" stroke-width="{thickness}"'
                        ' stroke-linecap="round" stroke-linejoin="round"')
                out.append(f'<path d="{data}" fill="{fill}" fill-rule="evenodd"{line}'
                           f' opacity="{opacity}"/>')
            else:
                _, x, y, size, words, fill, bold, spacing, opacity = shape
                weight = ' font-weight="bold"' if bold else ""
                out.append(f'<text x="{x}" y="{y}" font-family="Liberation Sans, Arial, '
                           f'sans-serif" font-size="{size}"{weight} letter-spacing='
                           f'"{spacing}" fill="{fill}" opacity="{opacity}">{words}</text>')
        return "\n".join(out + ["</svg>", ""])

    def mvg(self, scale):
        out = [f"viewbox 0 0 {self.width * scale} {self.height * scale}",
               f"scale {scale},{scale}", "fill-rule evenodd", "stroke-linecap round",
               "stroke-linejoin round"]
        for shape in self.shapes:
            if shape[0] == "path":
                _, data, fill, opacity, stroke, thickness = shape
                out += ["push graphic-context", f"fill {see_through(fill, opacity)}",
                        f"stroke {see_through(stroke, opacity)}",
                        f"stroke-width {thickness}", f"path '{data}'",
                        "pop graphic-context"]
            else:
                _, x, y, size, words, fill, bold, spacing, opacity = shape
                out += ["push graphic-context", f"fill {see_through(fill, opacity)}",
                        "stroke none", "text-antialias 1",
                        f"font Liberation-Sans{'-Bold' if bold else ''}",
                        f"font-size {size}", f"kerning {spacing}",
                        f"text {x},{y} '{words}'", "pop graphic-context"]
        return "\n".join(out) + "\n"

    def write(self, name, sizes):
        """sizes: pairs of a file name and pixels for each picture unit."""
        with open(f"{HERE}/{name}.svg", "w", encoding="utf-8") as file:
            file.write(self.svg())
        for png, scale in sizes:
            width, height = round(self.width * scale), round(self.height * scale)
            subprocess.run(
                ["convert", "-size", f"{width * OVERSAMPLING}x{height * OVERSAMPLING}",
                 "-background", "none", "mvg:-", "-filter", "Box", "-resize",
                 f"{width}x{height}!", "-strip", "-define", "png:exclude-chunks=date,time",
                 "-define", "png:compression-level=9", f"PNG32:{HERE}/{png}.png"],
                input=self.mvg(scale * OVERSAMPLING).encode(), check=True)


# ---- the land in the pictures

def noise(x, y, seed):
    """Smooth noise of period 1, between -1 and 1."""
    def corner(i, j):
        n = (i * 374761393 + j * 668265263 + seed * 1274126177) & 0xFFFFFFFF
        n = ((n ^ (n >> 13)) * 1274126177) & 0xFFFFFFFF
        return ((n ^ (n >> 16)) & 0xFFFF) / 32767.5 - 1
    i, j = math.floor(x), math.floor(y)
    u, v = x - i, y - j
    u, v = u * u * (3 - 2 * u), v * v * (3 - 2 * v)
    top = corner(i, j) * (1 - u) + corner(i + 1, j) * u
    bottom = corner(i, j + 1) * (1 - u) + corner(i + 1, j + 1) * u
    return top * (1 - v) + bottom * v


def island(hills, rough, seed, wavelength):
    """Height at a place: hills are (x, y, radius, stretch, height)."""
    def height(x, y):
        h = -0.35
        for hx, hy, radius, stretch, top in hills:
            d = ((x - hx) / (radius * stretch)) ** 2 + ((y - hy) / radius) ** 2
            h += top * math.exp(-d)
        for octave in range(4):
            h += rough / 1.9 ** octave * noise(x * 2 ** octave / wavelength,
                                               y * 2 ** octave / wavelength, seed + octave)
        return h
    return height


def contour(height, level, box, step):
    """The places above `level` as one SVG path, closed along the edge of the box."""
    x0, y0, x1, y1 = box
    columns, rows = round((x1 - x0) / step), round((y1 - y0) / step)
    grid = [[height(x0 + i * step, y0 + j * step) - level
             if 0 < i < columns and 0 < j < rows else -1e-3
             for i in range(columns + 1)] for j in range(rows + 1)]

    def cut(edge):
        (i, j), (k, l) = edge
        a, b = grid[j][i], grid[l][k]
        t = a / (a - b)
        return x0 + (i + (k - i) * t) * step, y0 + (j + (l - j) * t) * step

    onward = {}  # from a crossed grid edge to the next along the line
    for j in range(rows):
        for i in range(columns):
            corners = [(i, j), (i + 1, j), (i + 1, j + 1), (i, j + 1)]
            sides = [tuple(sorted((corners[k], corners[(k + 1) % 4]))) for k in range(4)]
            inside = [grid[b][a] > 0 for a, b in corners]
            entering = [k for k in range(4) if not inside[k] and inside[(k + 1) % 4]]
            for k in range(4):
                if inside[k] and not inside[(k + 1) % 4]:
                    # the nearest entering side behind this one closes the corner
                    back = next((k - m) % 4 for m in range(1, 5) if (k - m) % 4 in entering)
                    onward[sides[k]] = sides[back]
    data = []
    while onward:
        edge = next(iter(onward))
        loop = []
        while edge in onward:
            loop.append(cut(edge))
            edge = onward.pop(edge)
        if len(loop) < 8:
            continue
        mid = [((a[0] + b[0]) / 2, (a[1] + b[1]) / 2)
               for a, b in zip(loop, loop[1:] + loop[:1])]
        data.append(f"M{mid[-1][0]:.2f} {mid[-1][1]:.2f} " + " ".join(
            f"Q{p[0]:.2f} {p[1]:.2f} {m[0]:.2f} {m[1]:.2f}" for p, m in zip(loop, mid))
            + " Z")
    return " ".join(data)


def shifted(data, dx, dy):
    words, out, odd = data.split(), [], False
    for word in words:
        letter = word[0] if word[0].isalpha() else ""
        if word == "Z":
            out.append(word)
            continue
        value = float(word[len(letter):])
        out.append(f"{letter}{value + (dy if odd else dx):.2f}")
        odd = not odd
    return " ".join(out)


def relief(picture, height, box, step, sea_levels, land_levels, shadow):
    for colour, level in zip(SEA[1:], sea_levels):
        picture.path(contour(height, level, box, step), colour)
    for colour, level in zip(LAND, land_levels):
        data = contour(height, level, box, step)
        if data:
            picture.path(shifted(data, shadow, shadow * 1.4), "#000000", 0.22)
            picture.path(data, colour)


# ---- the pictures

def banner():
    picture = Picture(640, 120)
    picture.rectangle(0, 0, 640, 120, 0, SEA[0])
    for y in range(0, 121, 24):
        picture.path(f"M0 {y} L640 {y}", stroke="#ffffff", opacity=0.05, thickness=1)
    for x in range(0, 641, 24):
        picture.path(f"M{x} 0 L{x} 120", stroke="#ffffff", opacity=0.05, thickness=1)
    hills = island([(104, 62, 34, 1.7, 0.85),
                    (168, 50, 24, 1.6, 0.62),
                    (128, 52, 17, 1.8, 0.42), (64, 72, 20, 1.4, 0.35),
                    (226, 78, 15, 1.5, 0.56), (22, 26, 9, 1.3, 0.42),
                    (258, 40, 7, 1.2, 0.44)], 0.15, 11, 34)

    def land(x, y):  # deep water under the words
        return hills(x, y) - max(0, x - 250) / 150
    relief(picture, land, (-16, -16, 400, 136), 2, [-0.31, -0.21, -0.12, -0.05],
           [0, 0.1, 0.22, 0.35, 0.5, 0.66, 0.82, 0.98], 1.0)
    picture.text(318, 66, 46, "Vardenix", PAPER, bold=True, spacing=1.5)
    picture.text(321, 90, 13.5, "THEATER TERRAIN EDITOR", "#a9c3dd", spacing=2.6)
    picture.write("logo", [("logo", 1), ("logo@2x", 2)])


def icon():
    picture = Picture(64, 64)
    picture.rectangle(1, 1, 62, 62, 13, SEA[0])
    picture.rectangle(2.5, 2.5, 59, 59, 11.5, SEA[2])
    land = island([(34, 33, 21, 1.05, 1.0), (28, 38, 12, 1.2, 0.35),
                   (40, 27, 9, 1.0, 0.5)], 0.17, 5, 22)
    box = (4, 4, 60, 60)
    picture.path(contour(land, -0.12, box, 1), SEA[4])
    for colour, level in zip([LAND[0], LAND[2], LAND[3], LAND[5], LAND[7]],
                             [0.02, 0.22, 0.5, 0.82, 1.08]):
        data = contour(land, level, box, 1)
        picture.path(shifted(data, 0.7, 1.0), "#000000", 0.25)
        picture.path(data, colour)
    picture.write("DEF", [(f"DEF{size}", size / 64)
                          for size in (16, 24, 32, 48, 64, 128, 256)])


def folder():
    picture = Picture(24, 24)
    picture.path("M2.5 6.5 Q2.5 5 4 5 L9 5 L11 7 L19 7 Q20.5 7 20.5 8.5 L20.5 19 L4 19 "
                 "Q2.5 19 2.5 17.5 Z", "#c9a24a", stroke="#7d6124", thickness=1)
    picture.path("M6 10.5 L22.6 10.5 L19.6 19 L3.2 19 Z", "#f2d07c", stroke="#7d6124",
                 thickness=1)
    picture.write("browse", [("browse", 1), ("browse@2x", 2)])


def show():
    picture = Picture(24, 24)
    picture.path("M2 5.5 L8 3.5 L14 5.5 L20 3.5 L20 17.5 L14 19.5 L8 17.5 L2 19.5 Z",
                 PAPER, stroke=INK, thickness=1)
    picture.path("M8 3.5 L14 5.5 L14 19.5 L8 17.5 Z", "#d9e4c3", stroke=INK, thickness=1)
    picture.path("M3.6 14 Q6 11 7.4 12 M15.4 8 Q17 10 18.6 8", stroke="#3a73a6",
                 thickness=1.2)
    picture.path("M11.5 13 L18 13 L18 9.8 L23.3 14.8 L18 19.8 L18 16.6 L11.5 16.6 Z",
                 ACCENT, stroke=PAPER, thickness=0.9)
    picture.write("show", [("show", 1), ("show@2x", 2)])


def globe():
    picture = Picture(24, 24)
    circle = "M12 2.5 A9.5 9.5 0 0 1 12 21.5 A9.5 9.5 0 0 1 12 2.5 Z"
    picture.path(circle, "#dbe8f4", stroke=SEA[3], thickness=1.2)
    picture.path("M12 2.5 Q5 12 12 21.5 M12 2.5 Q19 12 12 21.5 M12 2.5 L12 21.5 "
                 "M2.5 12 L21.5 12 M4 7.3 L20 7.3 M4 16.7 L20 16.7",
                 stroke=SEA[3], thickness=1)
    picture.write("website", [("website", 1), ("website@2x", 2)])


def scale():
    """The height classes as one strip: sea, shallows, then the land's colours."""
    picture = Picture(640, 4)
    colours = SEA[2:] + LAND
    for i, colour in enumerate(colours):
        left = 640 * i / len(colours)
        picture.rectangle(round(left, 2), 0, round(640 / len(colours) + 1, 2), 4, 0, colour)
    picture.write("heights", [("heights", 1), ("heights@2x", 2)])


# Of the control panel's buttons; 24 units a side, shown at 16 to 20 pixels.

def two_sizes(picture, name):
    picture.write(name, [(name, 1), (f"{name}@2x", 2)])


def signs():
    plus = Picture(24, 24)
    plus.path("M12 5 L12 19 M5 12 L19 12", stroke=INK, thickness=2.6)
    two_sizes(plus, "plus")
    minus = Picture(24, 24)
    minus.path("M5 12 L19 12", stroke=INK, thickness=2.6)
    two_sizes(minus, "minus")


def magnifiers():
    for name, sign in (("zoomin", "M10 6.8 L10 13.2 M6.8 10 L13.2 10"),
                       ("zoomout", "M6.8 10 L13.2 10")):
        picture = Picture(24, 24)
        picture.path("M15.4 15.4 L21 21", stroke=ACCENT, thickness=3.4)
        picture.path("M10 2.8 A7.2 7.2 0 0 1 10 17.2 A7.2 7.2 0 0 1 10 2.8 Z", "#dbe8f4",
                     stroke=INK, thickness=1.6)
        picture.path(sign, stroke=SEA[3], thickness=2)
        two_sizes(picture, name)


def arrows():
    back = "M5 9.5 L14 9.5 Q20 9.5 20 14.7 Q20 20 14 20 L9 20 M9.5 4.5 L4.5 9.5 L9.5 14.5"
    forth = "M19 9.5 L10 9.5 Q4 9.5 4 14.7 Q4 20 10 20 L15 20 M14.5 4.5 L19.5 9.5 L14.5 14.5"
    for name, data in (("undo", back), ("redo", forth)):
        picture = Picture(24, 24)
        picture.path(data, stroke=SEA[3], thickness=2.4)
        two_sizes(picture, name)


def disk():
    picture = Picture(24, 24)
    picture.path("M3.5 5 Q3.5 3.5 5 3.5 L17 3.5 L20.5 7 L20.5 19 Q20.5 20.5 19 20.5 "
                 "L5 20.5 Q3.5 20.5 3.5 19 Z", SEA[3], stroke=SEA[0], thickness=1)
    picture.path("M7.5 4 L15.5 4 L15.5 9.5 L7.5 9.5 Z", PAPER)
    picture.path("M12.5 5 L14.3 5 L14.3 8.3 L12.5 8.3 Z", SEA[3])
    picture.path("M6.5 12.5 L17.5 12.5 L17.5 20 L6.5 20 Z", PAPER)
    picture.path("M8.5 15 L15.5 15 M8.5 17.5 L13.5 17.5", stroke=SEA[4], thickness=1)
    two_sizes(picture, "save")


def regions():
    for name, arrow in (("import", "M12 3 L12 13 M8 9.4 L12 13.4 L16 9.4"),
                        ("export", "M12 13 L12 3.4 M8 7 L12 3 L16 7")):
        picture = Picture(24, 24)
        picture.path("M8 9.5 L3.5 9.5 L3.5 20.5 L20.5 20.5 L20.5 9.5 L16 9.5", LAND[1],
                     stroke=INK, thickness=1.3)
        picture.path("M5 18.6 Q8 14.5 11 16.5 Q14.5 18.5 19 14.6 L19 19 L5 19 Z", LAND[3])
        picture.path(arrow, stroke=ACCENT, thickness=2.4)
        two_sizes(picture, name)


def places():
    goal = Picture(24, 24)
    goal.path("M12 21.5 Q5 14.5 5 9.8 Q5 2.8 12 2.8 Q19 2.8 19 9.8 Q19 14.5 12 21.5 Z",
              ACCENT, stroke=INK, thickness=1)
    goal.path("M12 7 A2.8 2.8 0 0 1 12 12.6 A2.8 2.8 0 0 1 12 7 Z", PAPER)
    two_sizes(goal, "goto")
    middle = Picture(24, 24)
    middle.path("M12 3.5 A8.5 8.5 0 0 1 12 20.5 A8.5 8.5 0 0 1 12 3.5 Z", PAPER,
                stroke=INK, thickness=1.5)
    middle.path("M12 3.5 A8.5 8.5 0 0 1 12 20.5 Z", INK)
    two_sizes(middle, "reset")


def brush():
    """The mouse pointer of the painting commands; its tip is at 4, 27."""
    picture = Picture(32, 32)
    picture.path("M14 17 L25 4 Q28 2 29 5 L17.5 19.5 Z", "#b98a4b", stroke=INK, thickness=1)
    picture.path("M12 15.5 L14 17 L17.5 19.5 L18.5 21.5 L15.8 22.3 L11.5 18.6 Z", "#c9d1d8",
                 stroke=INK, thickness=1)
    picture.path("M11 19 Q8 19.5 7.5 23 Q7 26 4 27 Q11 29 14 25.5 Q15.8 23.5 15 22.3 Z",
                 "#3a73a6", stroke=INK, thickness=1)
    two_sizes(picture, "brush")


def map_tools():
    """Pointers and buttons: a frame at 6, 6; a bucket that pours at 6, 25; a pipette, 4, 28."""
    frame = Picture(32, 32)
    frame.path("M6 1 L6 11 M1 6 L11 6", stroke=INK, thickness=1.4)
    frame.path("M10 12 L28 12 L28 27 L10 27 Z", SEA[4], stroke=INK, thickness=1.4)
    two_sizes(frame, "rectangle")
    bucket = Picture(32, 32)
    bucket.path("M13 13 Q14 3 19 4 Q23 5 22.5 12", stroke=INK, thickness=1.4)
    bucket.path("M10.5 16 L20.5 8 L29.5 17.5 L19.5 26.5 Z", "#c9d1d8", stroke=INK, thickness=1.2)
    bucket.path("M12 17.4 L27 16.4 L19.5 25 Z", "#3a73a6")
    bucket.path("M10.5 16 Q5 18.5 4.6 23 Q4.7 26.4 6.4 26.4 Q8 26.4 8 23 Q8.2 20.5 11.5 17.6 Z",
                "#3a73a6", stroke=INK, thickness=1)
    two_sizes(bucket, "fill")
    pipette = Picture(32, 32)
    pipette.path("M4 28 L6 22 L17 11 L21 15 L10 26 Z", PAPER, stroke=INK, thickness=1.2)
    pipette.path("M4 28 L6 22 L9.5 18.5 L13.5 22.5 L10 26 Z", "#3a73a6", stroke=INK, thickness=1)
    pipette.path("M15 9 L18.5 10 L24 4.5 Q26 3 28 4.5 Q29.3 6.5 27.6 8.2 L22 13.8 L23 17 Z",
                 INK, stroke=INK, thickness=1)
    two_sizes(pipette, "pick")


def hand_tools():
    """Frames that select, at 6, 6; a rubber that wipes at 6, 25; a lake with its shore; a hill."""
    frame = Picture(32, 32)
    frame.path("M6 1 L6 11 M1 6 L11 6", stroke=INK, thickness=1.4)
    frame.path("M10 12 L14 12 M17 12 L21 12 M24 12 L28 12 L28 15 M28 18 L28 21 M28 24 L28 27 "
               "L25 27 M22 27 L18 27 M15 27 L10 27 L10 24 M10 21 L10 18 M10 15 L10 12",
               stroke=INK, thickness=2)
    two_sizes(frame, "select")
    lasso = Picture(32, 32)
    lasso.path("M12 19 Q4 17 5 11 Q7 4 17 4 Q28 5 28 12 Q27 19 17 20 Q13 20 12 19 Z",
               stroke=INK, thickness=2)
    lasso.path("M12 19 Q9 22 12 24 Q15 26 12 30", stroke=INK, thickness=2)
    two_sizes(lasso, "lasso")
    rubber = Picture(32, 32)
    rubber.path("M6 22 L18 7 L28 14 L16 28 L10 28 Z", "#d98a8a", stroke=INK, thickness=1.2)
    rubber.path("M6 22 L11 15.8 L21 22.2 L16 28 L10 28 Z", PAPER, stroke=INK, thickness=1.2)
    rubber.path("M3 28.5 L29 28.5", stroke=INK, thickness=1.4)
    two_sizes(rubber, "eraser")
    lake = Picture(32, 32)
    lake.path("M2 4 L30 4 L30 28 L2 28 Z", LAND[2], stroke=INK, thickness=1.2)
    lake.path("M6 17 Q6 9 14 9 Q18 9 20 11 Q27 11 26 18 Q25 24 16 24 Q7 24 6 17 Z", LAND[0])
    lake.path("M8.5 17 Q9 11.5 14 11.5 Q17 11.5 19 13.5 Q24 13.5 23.5 17.5 Q22 21.5 16 21.5 "
              "Q9.5 21.5 8.5 17 Z", SEA[4])
    two_sizes(lake, "ground")
    hill = Picture(32, 32)
    hill.path("M2 27 Q9 25 12 14 Q14 6 17 6 Q20 6 22 14 Q24 25 30 27 Z", LAND[4], stroke=INK,
              thickness=1.2)
    hill.path("M9.6 21 Q17 24 23.6 21 M12 14 Q17 17 22 14", stroke=INK, thickness=1.2)
    two_sizes(hill, "hill")


def no_tile():
    """Neutral, so that it never looks like ground, and calm, since it fills whole maps."""
    side = 128
    rows = bytearray()
    for y in range(side):
        for x in range(side):
            shade = 150 + (6 if (x + y) // 16 % 2 else 0)
            if x in (0, side - 1) or y in (0, side - 1):
                shade = 132
            rows += bytes((shade, shade, shade - 2))
    subprocess.run(["convert", "ppm:-", "-strip", "-quality", "90", f"{HERE}/NoTile.jpg"],
                   input=b"P6\n%d %d\n255\n" % (side, side) + bytes(rows), check=True)


# ---- the sounds

def sound(name, notes, seconds, partials, decay):
    """notes: pairs of a start in seconds and a frequency in hertz."""
    rate = 22050
    samples = []
    for n in range(int(rate * seconds)):
        t, value = n / rate, 0.0
        for start, frequency in notes:
            age = t - start
            if age < 0:
                continue
            attack = min(1.0, age / 0.006)
            for harmonic, strength in partials:
                value += (attack * strength * math.exp(-age * decay * (0.6 + 0.4 * harmonic))
                          * math.sin(2 * math.pi * frequency * harmonic * age))
        samples.append(value * min(1.0, (seconds - t) / 0.05))
    peak = max(abs(s) for s in samples)
    with wave.open(f"{HERE}/{name}.wav", "wb") as file:
        file.setnchannels(1)
        file.setsampwidth(1)
        file.setframerate(rate)
        file.writeframes(struct.pack(f"{len(samples)}B", *(
            max(0, min(255, round(128 + 88 * s / peak))) for s in samples)))


def sounds():
    scale_steps = [0, 2, 4, 7, 9, 12, 14]
    voices = [([(1, 1.0), (2, 0.4), (3, 0.15)], 6), ([(1, 1.0), (2.76, 0.5), (5.4, 0.2)], 7)]
    for number in range(1, 15):
        partials, decay = voices[number % 2]
        root = 392 * 2 ** (scale_steps[(number - 1) // 2] / 12)
        figure = [(0, 4), (0, 7, 12), (7, 0), (12, 7, 4)][number % 4]
        notes = [(0.11 * i, root * 2 ** (step / 12)) for i, step in enumerate(figure)]
        sound(f"S{number}", notes, 0.62, partials, decay)


if __name__ == "__main__":
    for draw in (banner, icon, folder, show, globe, scale, signs, magnifiers, arrows,
                 disk, regions, places, brush, map_tools, hand_tools, no_tile,
                 sounds):
        draw()
