#!/usr/bin/python3
"""Arranges PNG pictures on one sheet, each with its name and beside its reference if there is one.

    scripts/arrange-pictures.py PICTURES REFERENCES OUT.png
"""

import sys
from pathlib import Path

from PIL import Image, ImageDraw

COLUMNS = 4
CELL_WIDTH, CELL_HEIGHT, LABEL, GAP = 440, 250, 20, 10


def place(sheet, picture, x, y, width, height):
    """Draws a picture as large as it fits into a box, never enlarged, in the box's middle."""
    image = Image.open(picture).convert("RGBA")
    image.thumbnail((width, height), Image.LANCZOS)
    paper = Image.new("RGBA", image.size, "white")
    paper.alpha_composite(image)
    sheet.paste(paper, (x + (width - image.width) // 2, y + (height - image.height) // 2))


def draw_cell(sheet, picture, reference, x, y):
    label = picture.stem + ("   (ours, reference)" if reference.exists() else "")
    ImageDraw.Draw(sheet).text((x, y + 4), label, fill="black")
    width = CELL_WIDTH if not reference.exists() else (CELL_WIDTH - GAP) // 2
    place(sheet, picture, x, y + LABEL, width, CELL_HEIGHT - LABEL)
    if reference.exists():
        place(sheet, reference, x + width + GAP, y + LABEL, width, CELL_HEIGHT - LABEL)


def main():
    pictures, references, out = map(Path, sys.argv[1:4])
    files = sorted(pictures.glob("*.png"))
    rows = -(-len(files) // COLUMNS)
    size = (COLUMNS * (CELL_WIDTH + GAP) + GAP, rows * (CELL_HEIGHT + GAP) + GAP)
    sheet = Image.new("RGB", size, (209, 214, 219))
    for i, picture in enumerate(files):
        row, column = divmod(i, COLUMNS)
        x, y = GAP + column * (CELL_WIDTH + GAP), GAP + row * (CELL_HEIGHT + GAP)
        draw_cell(sheet, picture, references / picture.name, x, y)
    sheet.save(out)


if __name__ == "__main__":
    main()
