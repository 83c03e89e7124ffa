#!/usr/bin/python3
"""Arranges PNG pictures on one sheet, each with its name and beside its reference if there is one.

    scripts/arrange-pictures.py PICTURES REFERENCES OUT.png
"""

import sys
from pathlib import Path

import cairo

COLUMNS = 4
CELL_WIDTH, CELL_HEIGHT, LABEL, GAP = 440, 250, 20, 10


def place(context, picture, x, y, width, height):
    """Draws a picture as large as it fits into a box, never enlarged, in the box's middle."""
    surface = cairo.ImageSurface.create_from_png(str(picture))
    scale = min(1, width / surface.get_width(), height / surface.get_height())
    drawn_width, drawn_height = surface.get_width() * scale, surface.get_height() * scale
    context.save()
    context.translate(x + (width - drawn_width) / 2, y + (height - drawn_height) / 2)
    context.set_source_rgb(1, 1, 1)
    context.rectangle(0, 0, drawn_width, drawn_height)
    context.fill()
    context.scale(scale, scale)
    context.set_source_surface(surface)
    context.paint()
    context.restore()


def draw_cell(context, picture, reference, x, y):
    context.set_source_rgb(0, 0, 0)
    context.move_to(x, y + LABEL - 6)
    context.show_text(picture.stem + ("   (ours, reference)" if reference.exists() else ""))
    width = CELL_WIDTH if not reference.exists() else (CELL_WIDTH - GAP) / 2
    place(context, picture, x, y + LABEL, width, CELL_HEIGHT - LABEL)
    if reference.exists():
        place(context, reference, x + width + GAP, y + LABEL, width, CELL_HEIGHT - LABEL)


def main():
    pictures, references, out = map(Path, sys.argv[1:4])
    files = sorted(pictures.glob("*.png"))
    rows = -(-len(files) // COLUMNS)
    sheet = cairo.ImageSurface(cairo.FORMAT_RGB24, COLUMNS * (CELL_WIDTH + GAP) + GAP,
                               rows * (CELL_HEIGHT + GAP) + GAP)
    context = cairo.Context(sheet)
    context.set_source_rgb(0.82, 0.84, 0.86)
    context.paint()
    context.select_font_face("sans-serif")
    context.set_font_size(13)
    for i, picture in enumerate(files):
        row, column = divmod(i, COLUMNS)
        draw_cell(context, picture, references / picture.name,
                  GAP + column * (CELL_WIDTH + GAP), GAP + row * (CELL_HEIGHT + GAP))
    sheet.write_to_png(str(out))


if __name__ == "__main__":
    main()
