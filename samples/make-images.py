#!/usr/bin/env python3
"""Makes the sample documents that hold images: still-life.eps, fax-page.eps and stress-plot.eps.

Nothing but the standard library is used, and the results are the same every time. The pictures are
computed here, and so are the encodings: base-85 text, run-length and fax Group 4.

    samples/make-images.py [FOLDER]        the documents go to FOLDER, else beside this script
"""

import math
import random
import re
import sys
from pathlib import Path

HERE = Path(__file__).resolve().parent


# --- encodings -----------------------------------------------------------------------------------

def ascii85(data):
    """Base-85 text in lines, with its end marker."""
    text = []
    for start in range(0, len(data), 4):
        group = data[start:start + 4]
        value = int.from_bytes(group.ljust(4, b"\0"), "big")
        if value == 0 and len(group) == 4:
            text.append("z")
            continue
        digits = []
        for _ in range(5):
            value, digit = divmod(value, 85)
            digits.append(chr(33 + digit))
        text.append("".join(reversed(digits))[:len(group) + 1])
    joined = "".join(text) + "~>"
    return "\n".join(joined[i:i + 96] for i in range(0, len(joined), 96))


def run_length(data):
    """Runs of three and more as a count and a byte, the rest as counted literals; then the end."""
    out = bytearray()
    literal = bytearray()

    def flush():
        for start in range(0, len(literal), 128):
            piece = literal[start:start + 128]
            out.append(len(piece) - 1)
            out.extend(piece)
        literal.clear()

    at = 0
    while at < len(data):
        run = 1
        while run < 128 and at + run < len(data) and data[at + run] == data[at]:
            run += 1
        if run >= 3:
            flush()
            out += bytes((257 - run, data[at]))
        else:
            literal += data[at:at + run]
        at += run
    flush()
    return bytes(out) + b"\x80"


# Codes of the runs 0 to 63, then of 64, 128, ... 1728.
WHITE = """
00110101 000111 0111 1000 1011 1100 1110 1111 10011 10100 00111 01000 001000 000011 110100 110101
101010 101011 0100111 0001100 0001000 0010111 0000011 0000100 0101000 0101011 0010011 0100100
0011000 00000010 00000011 00011010 00011011 00010010 00010011 00010100 00010101 00010110 00010111
00101000 00101001 00101010 00101011 00101100 00101101 00000100 00000101 00001010 00001011 01010010
01010011 01010100 01010101 00100100 00100101 01011000 01011001 01011010 01011011 01001010 01001011
00110010 00110011 00110100
11011 10010 010111 0110111 00110110 00110111 01100100 01100101 01101000 01100111 011001100
011001101 011010010 011010011 011010100 011010101 011010110 011010111 011011000 011011001
011011010 011011011 010011000 010011001 010011010 011000 010011011""".split()
BLACK = """
0000110111 010 11 10 011 0011 0010 00011 000101 000100 0000100 0000101 0000111 00000100 00000111
000011000 0000010111 0000011000 0000001000 00001100111 00001101000 00001101100 00000110111
00000101000 00000010111 00000011000 000011001010 000011001011 000011001100 000011001101
000001101000 000001101001 000001101010 000001101011 000011010010 000011010011 000011010100
000011010101 000011010110 000011010111 000001101100 000001101101 000011011010 000011011011
000001010100 000001010101 000001010110 000001010111 000001100100 000001100101 000001010010
000001010011 000000100100 000000110111 000000111000 000000100111 000000101000 000001011000
000001011001 000000101011 000000101100 000001011010 000001100110 000001100111
0000001111 000011001000 000011001001 000001011011 000000110011 000000110100 000000110101
0000001101100 0000001101101 0000001001010 0000001001011 0000001001100 0000001001101 0000001110010
0000001110011 0000001110100 0000001110101 0000001110110 0000001110111 0000001010010 0000001010011
0000001010100 0000001010101 0000001011010 0000001011011 0000001100100 0000001100101""".split()
VERTICAL = {0: "1", 1: "011", 2: "000011", 3: "0000011", -1: "010", -2: "000010", -3: "0000010"}
HORIZONTAL, PASS, END_OF_LINE = "001", "0001", "000000000001"


def changes(row):
    """Where the colour changes along a row that is preceded by white."""
    places = []
    colour = 0
    for x, pixel in enumerate(row):
        if pixel != colour:
            places.append(x)
            colour = pixel
    return places


def run_code(length, colour):
    codes = BLACK if colour else WHITE
    long = codes[63 + length // 64] if length >= 64 else ""
    return long + codes[length % 64]


def group4(rows):
    """Rows of 0 (white) and 1 (black), less than 1792 wide, as fax Group 4 data."""
    width = len(rows[0])
    bits = []
    above = []
    for row in rows:
        here = changes(row)
        at, colour = -1, 0
        while at < width:
            ahead = [x for x in here[colour::2] if x > at or (at < 0 and x >= 0)]
            back = [x for x in here[1 - colour::2] if ahead and x > ahead[0]]
            a1 = ahead[0] if ahead else width
            a2 = back[0] if back else width
            b1 = next((x for x in above[colour::2] if x > at), width)
            b2 = next((x for x in above[1 - colour::2] if x > b1), width)
            if b2 < a1:
                bits.append(PASS)
                at = b2
            elif -3 <= a1 - b1 <= 3:
                bits.append(VERTICAL[a1 - b1])
                at, colour = a1, 1 - colour
            else:
                bits += [HORIZONTAL, run_code(a1 - max(at, 0), colour), run_code(a2 - a1, 1 - colour)]
                at = a2
        above = here
    bits += [END_OF_LINE, END_OF_LINE]
    text = "".join(bits)
    text += "0" * (-len(text) % 8)
    return int(text, 2).to_bytes(len(text) // 8, "big")


# --- a photograph: balls on a bench, traced ray by ray ----------------------------------------------

def add(a, b, scale=1.0):
    return tuple(x + scale * y for x, y in zip(a, b))


def dot(a, b):
    return sum(x * y for x, y in zip(a, b))


def unit(a):
    length = math.sqrt(dot(a, a))
    return tuple(x / length for x in a)


BALLS = [  # centre, radius, colour, how much it mirrors
    ((-1.25, 0.9, 4.6), 0.9, (0.75, 0.77, 0.80), 0.55),
    ((0.75, 0.7, 3.7), 0.7, (0.80, 0.22, 0.12), 0.15),
    ((1.75, 1.1, 6.0), 1.1, (0.85, 0.65, 0.25), 0.35),
    ((-0.25, 0.35, 2.9), 0.35, (0.15, 0.35, 0.65), 0.20),
]
SUN = unit((-0.55, 0.8, -0.45))
EYE = (0.0, 1.5, -1.6)


def nearest(start, ray):
    best = None
    for ball in BALLS:
        centre, radius = ball[0], ball[1]
        to = add(start, centre, -1)
        b = dot(to, ray)
        c = dot(to, to) - radius * radius
        root = b * b - c
        if root > 0 and -b - math.sqrt(root) > 1e-4:
            distance = -b - math.sqrt(root)
            if best is None or distance < best[0]:
                best = (distance, ball)
    if ray[1] < -1e-6 and start[1] / -ray[1] > 1e-4:
        distance = start[1] / -ray[1]
        if best is None or distance < best[0]:
            best = (distance, None)
    return best


def sky(ray):
    t = max(0.0, ray[1]) ** 0.6
    glow = max(0.0, dot(ray, SUN)) ** 40
    return (0.85 - 0.5 * t + 0.5 * glow, 0.88 - 0.35 * t + 0.45 * glow, 0.92 - 0.12 * t + 0.3 * glow)


def bench(point):
    plank = math.floor(point[0] / 0.8)
    grain = math.sin(40 * point[0] + 3 * math.sin(1.7 * point[2] + plank)) * 0.5 + 0.5
    joint = 0.55 if abs(point[0] / 0.8 - plank) < 0.025 else 1.0
    shade = (0.86 + 0.14 * grain) * joint * (0.9 + 0.1 * math.sin(plank * 2.3))
    return (0.62 * shade, 0.45 * shade, 0.29 * shade)


def trace(start, ray, depth=0):
    hit = nearest(start, ray)
    if hit is None:
        return sky(ray)
    distance, ball = hit
    point = add(start, ray, distance)
    normal = unit(add(point, ball[0], -1)) if ball else (0.0, 1.0, 0.0)
    colour, mirror = (ball[2], ball[3]) if ball else (bench(point), 0.06)
    lit = max(0.0, dot(normal, SUN))
    if lit and nearest(add(point, normal, 1e-3), SUN) is not None:
        lit = 0.0
    # corners where things touch are darker
    open_sky = 0.5 + 0.5 * normal[1]
    if ball is None:
        for centre, radius, _, _ in BALLS:
            away = math.hypot(point[0] - centre[0], point[2] - centre[2]) / radius
            open_sky *= 1 - 0.7 * math.exp(-2.2 * away * away)
    result = [c * (0.28 * open_sky + 0.85 * lit) for c in colour]
    if depth < 3 and mirror:
        back = add(ray, normal, -2 * dot(ray, normal))
        seen = trace(add(point, normal, 1e-3), back, depth + 1)
        fresnel = mirror + (1 - mirror) * (1 - abs(dot(ray, normal))) ** 5
        result = [r * (1 - fresnel) + s * fresnel for r, s in zip(result, seen)]
    if ball:
        shine = max(0.0, dot(add(ray, normal, -2 * dot(ray, normal)), SUN)) ** 60 if lit else 0
        result = [r + 0.8 * shine for r in result]
    haze = 1 - math.exp(-0.008 * distance * (2 if ball is None else 1))
    return tuple(r * (1 - haze) + s * haze for r, s in zip(result, (0.8, 0.83, 0.86)))


def photograph(width, height, noise):
    samples = bytearray()
    for row in range(height):
        for column in range(width):
            total = [0.0, 0.0, 0.0]
            for dx, dy in ((0.25, 0.35), (0.75, 0.15), (0.35, 0.85), (0.85, 0.65)):
                x = (column + dx - width / 2) / width * 1.15
                y = (height / 2 - row - dy) / width * 1.15
                total = [t + c for t, c in zip(total, trace(EYE, unit((x, y - 0.16, 1.0))))]
            edge = ((column / width - 0.5) ** 2 + (row / height - 0.5) ** 2) * 0.5
            grain = noise.gauss(0, 0.006)
            for c in total:
                value = max(0.0, c / 4 * (1 - edge)) ** (1 / 1.25) * 1.05 + grain
                samples.append(max(0, min(255, round(255 * value))))
    return bytes(samples)


# --- a fax: a page of lettering and a sketch, drawn with a pen and scanned askew --------------------

def lettering():
    """The strokes of the letters in bearing-plate.eps, by character, and that part of its prolog."""
    text = (HERE / "bearing-plate.eps").read_text()
    prolog = text[text.index("% Lettering."):text.index("% Centre lines")]
    glyphs = {}
    table = prolog[prolog.index("/Font [") + 7:prolog.index("\n] def")]
    for code, body in enumerate(re.findall(r"\{([^}]*)\}", table), start=32):
        strokes = []
        for x, y, verb in re.findall(r"(-?[\d.]+) (-?[\d.]+) ([ml])", body):
            if verb == "m":
                strokes.append([])
            strokes[-1].append((float(x), float(y)))
        if "closepath" in body:
            closed = len(re.findall("m", body[:body.index("closepath")])) - 1
            strokes[closed].append(strokes[closed][0])
        glyphs[chr(code)] = strokes
    return glyphs, prolog


class Page:
    """A sheet of white pixels with a pen; coordinates from the upper left, the sheet a bit askew."""

    def __init__(self, width, height, degrees):
        self.width, self.height = width, height
        self.rows = [bytearray(width) for _ in range(height)]
        self.sine, self.cosine = math.sin(math.radians(degrees)), math.cos(math.radians(degrees))

    def dab(self, x, y, radius):
        x, y = (self.cosine * (x - self.width / 2) - self.sine * (y - self.height / 2) + self.width / 2,
                self.sine * (x - self.width / 2) + self.cosine * (y - self.height / 2) + self.height / 2)
        for row in range(max(0, math.ceil(y - radius)), min(self.height, math.floor(y + radius) + 1)):
            half = math.sqrt(radius * radius - (row - y) ** 2)
            for column in range(max(0, math.ceil(x - half)), min(self.width, math.floor(x + half) + 1)):
                self.rows[row][column] = 1

    def line(self, points, radius=1.3):
        for (x0, y0), (x1, y1) in zip(points, points[1:]):
            steps = max(1, math.ceil(math.hypot(x1 - x0, y1 - y0)))
            for i in range(steps + 1):
                self.dab(x0 + (x1 - x0) * i / steps, y0 + (y1 - y0) * i / steps, radius)

    def arc(self, x, y, radius, begin, end, pen=1.3):
        turns = [math.radians(begin + (end - begin) * i / 48) for i in range(49)]
        self.line([(x + radius * math.cos(t), y - radius * math.sin(t)) for t in turns], pen)

    def write(self, glyphs, text, x, y, size, pen=1.3):
        for character in text:
            for stroke in glyphs[character]:
                self.line([(x + size * u, y - size * v) for u, v in stroke], pen)
            x += 6 * size


def bracket(page, glyphs, x, y):
    """The sketch of an angle bracket with two holes and its dimensions."""
    page.line([(x, y), (x, y - 210), (x + 36, y - 210), (x + 36, y - 60)], 2)
    page.arc(x + 60, y - 60, 24, 180, 270, 2)
    page.line([(x + 60, y - 36), (x + 260, y - 36), (x + 260, y), (x, y)], 2)
    for cx, cy in ((x + 120, y - 18), (x + 210, y - 18)):
        for edge in (-13, 13):
            page.line([(cx + edge, cy - 18), (cx + edge, cy + 18)], 1.2)
        for step in range(-26, 26, 13):
            page.line([(cx, cy + step), (cx, cy + step + 8)], 0.8)
    for i in range(14):
        page.line([(x + 4, y - 40 - 12 * i), (x + 32, y - 58 - 12 * i)], 0.8)
    page.line([(x, y + 14), (x, y + 54)], 0.8)
    page.line([(x + 260, y + 14), (x + 260, y + 54)], 0.8)
    page.line([(x, y + 44), (x + 260, y + 44)], 0.8)
    page.write(glyphs, "260", x + 108, y + 38, 2.6)
    page.line([(x - 14, y), (x - 54, y)], 0.8)
    page.line([(x - 14, y - 210), (x - 54, y - 210)], 0.8)
    page.line([(x - 44, y), (x - 44, y - 210)], 0.8)
    page.write(glyphs, "210", x - 104, y - 98, 2.6)


def fax(noise):
    glyphs, _ = lettering()
    page = Page(1000, 720, 0.9)
    page.write(glyphs, "TELEFAX", 60, 96, 7.5, 3.2)
    page.write(glyphs, "TO DRAWING OFFICE", 560, 66, 2.6)
    page.write(glyphs, "FROM WORKSHOP 2", 560, 96, 2.6)
    page.line([(50, 120), (950, 120)], 1.8)
    for i, text in enumerate(("PLEASE CHANGE THE ANGLE BRACKET OF SHEET 17",
                              "AS SKETCHED BELOW. BOTH HOLES @26 THROUGH,",
                              "INNER CORNER R24, WALL 36 ALL ROUND.")):
        page.write(glyphs, text, 60, 172 + 38 * i, 2.9)
    bracket(page, glyphs, 190, 590)
    page.write(glyphs, "QUANTITY   48", 560, 350, 2.9)
    page.write(glyphs, "MATERIAL   S235", 560, 392, 2.9)
    page.write(glyphs, "NEEDED BY  FRIDAY", 560, 434, 2.9)
    signature = [(600 + 2.1 * i, 560 - 34 * math.sin(i / 4.1) * math.exp(-((i - 30) / 34) ** 2)
                  - 10 * math.sin(i / 1.7)) for i in range(110)]
    page.line(signature, 1.6)
    page.line([(590, 600), (860, 600)], 0.8)
    for _ in range(420):
        page.dab(noise.uniform(0, 1000), noise.uniform(0, 720), noise.choice((0.5, 0.5, 0.8, 1.2)))
    page.line([(noise.uniform(312, 314), y) for y in range(0, 720, 6)], 0.45)
    return page.rows


# --- a stress plot: bands of colour around a hole in a stretched plate -------------------------------

BANDS = [(20, 40, 130), (20, 80, 190), (20, 130, 220), (30, 175, 215), (50, 200, 170), (90, 205, 110),
         (150, 215, 70), (210, 220, 50), (245, 205, 40), (245, 165, 35), (235, 115, 30), (220, 65, 30),
         (185, 25, 35)]


def equivalent_stress(x, y, hole):
    """Of a wide plate pulled along x by the stress 1, at a place outside its round hole."""
    q = hole * hole / (x * x + y * y)
    angle = 2 * math.atan2(y, x)
    radial = (1 - q) / 2 + (1 - 4 * q + 3 * q * q) / 2 * math.cos(angle)
    hoop = (1 + q) / 2 - (1 + 3 * q * q) / 2 * math.cos(angle)
    shear = -(1 + 2 * q - 3 * q * q) / 2 * math.sin(angle)
    return math.sqrt(radial ** 2 - radial * hoop + hoop ** 2 + 3 * shear ** 2)


def stress_rows(width, height, hole):
    for row in range(height):
        pixels = []
        for column in range(width):
            x, y = column + 0.5 - width / 2, height / 2 - row - 0.5
            if math.hypot(x, y) < hole:
                pixels.append((255, 255, 255))
            else:
                level = equivalent_stress(x, y, hole) / 3 * len(BANDS)
                pixels.append(BANDS[min(len(BANDS) - 1, int(level))])
        yield [bytes(pixel[plane] for pixel in pixels) for plane in range(3)]


# --- documents ---------------------------------------------------------------------------------------

HEAD = """%!PS-Adobe-3.0 EPSF-3.0
%%Title: {title}
%%BoundingBox: 0 0 {width} {height}
%%LanguageLevel: 2
%%Pages: 1
%%EndComments
"""
TAIL = "showpage\n%%EOF\n"


def still_life():
    width, height = 168, 126
    data = photograph(width, height, random.Random(1))
    return HEAD.format(title="Still life", width=360, height=280) + f"""%%BeginProlog
% width height x y grey panel
/panel {{setgray moveto exch dup 0 rlineto exch 0 exch rlineto -1 mul 0 rlineto closepath fill}} bind def
%%EndProlog
%%Page: 1 1
360 280 0 0 0.12 panel 336 252 12 14 0.96 panel
gsave
18 20 translate 324 240 scale
/setcolorspace where {{pop /DeviceRGB setcolorspace}} if
<< /ImageType 1 /Width {width} /Height {height} /BitsPerComponent 8
   /Decode [0 1 0 1 0 1] /ImageMatrix [{width} 0 0 -{height} 0 {height}]
   /DataSource currentfile /ASCII85Decode filter >> image
{ascii85(data)}
grestore
""" + TAIL


def fax_page():
    rows = fax(random.Random(2))
    width, height = len(rows[0]), len(rows)
    return HEAD.format(title="Fax page", width=400, height=288) + f"""%%Page: 1 1
gsave
400 288 scale
<< /ImageType 1 /Width {width} /Height {height} /BitsPerComponent 1
   /Decode [0 1] /ImageMatrix [{width} 0 0 -{height} 0 {height}]
   /DataSource currentfile /ASCII85Decode filter
     << /K -1 /Columns {width} /Rows {height} >> /CCITTFaxDecode filter >> image
{ascii85(group4(rows))}
grestore
""" + TAIL


def stress_plot():
    width, height, hole = 240, 150, 26
    rows = "\n".join(ascii85(run_length(plane))
                     for planes in stress_rows(width, height, hole) for plane in planes)
    colours = "\n".join("[" + " ".join(f"{c / 255:.3f}" for c in band) + "]" for band in BANDS)
    _, letters = lettering()
    source = "{{currentfile /ASCII85Decode filter /RunLengthDecode filter {} readstring pop}}"
    return HEAD.format(title="Stress around a hole", width=460, height=270) + f"""%%BeginProlog
/m {{moveto}} bind def
/l {{lineto}} bind def
/r {{rlineto}} bind def
{letters}% One row of samples for each colour, for programs that run the procedures of the image.
/red {width} string def /green {width} string def /blue {width} string def
/bands [
{colours}
] def
/bar {{ % index: the bands from the lowest up, from the origin
  dup bands length lt
  {{ bands 1 index get aload pop setrgbcolor
    0 0 m 14 0 r 0 13 r -14 0 r closepath fill 0 13 translate 1 add bar }} {{pop}} ifelse }} bind def
%%EndProlog
%%Page: 1 1
gsave
24 36 translate 336 210 scale
{width} {height} 8 [{width} 0 0 -{height} 0 {height}]
{source.format("red")}
{source.format("green")}
{source.format("blue")} true 3 colorimage
{rows}
grestore
% the plate, the hole, the pull
1.2 setlinewidth 0 setgray
24 36 m 336 0 r 0 210 r -336 0 r closepath stroke
192 141 {hole * 1.4:g} 0 360 arc stroke
0.6 setlinewidth (EQUIVALENT STRESS AROUND A HOLE, PULLED SIDEWAYS) 1.1 192 252 TC
gsave 404 56 translate 0 bar grestore
0.8 setlinewidth 404 56 m 14 0 r 0 {13 * len(BANDS)} r -14 0 r closepath stroke
0.55 setlinewidth (0) 1 424 53 T (1.5) 1 424 {56 + 6.5 * len(BANDS) - 3:g} T
(3.0) 1 424 {56 + 13 * len(BANDS) - 3} T
0.9 setlinewidth 12 141 m 22 0 r stroke 350 141 m 22 0 r stroke
8 141 m 8 2.6 r 0 -5.2 r closepath fill 376 141 m -8 2.6 r 0 -5.2 r closepath fill
""" + TAIL


def main():
    folder = Path(sys.argv[1]) if len(sys.argv) > 1 else HERE
    for name, make in (("still-life", still_life), ("fax-page", fax_page), ("stress-plot", stress_plot)):
        (folder / f"{name}.eps").write_text(make(), newline="\n")


if __name__ == "__main__":
    main()
