#!/usr/bin/env python3
"""Draws the launcher's icon groups: an arrow that leaves an open ring.

Usage: draw.py OUTPUT_FOLDER            (writes program.ico, eight images of today's sizes,
                                         launcher.ico, nine of old, and plain.ico, one)
       draw.py --pictures OUTPUT_FOLDER (writes each image of program.ico as icon-SIZE.png)

Every depth is drawn on purpose. 32 bits: smooth edges over transparency, colours that run. 8 bits:
the same, in a palette of the picture's own, cut out hard at the edge. 4 bits: flat in the sixteen
colours of old, no smoothing.
"""

import math
import struct
import sys
import zlib
from dataclasses import dataclass
from pathlib import Path

SAMPLES = 6  # per pixel and direction
SAMPLES_OF_HUGE = 4  # from 128 pixels on


@dataclass
class Shapes:
    """The drawing, in units of the icon's side, from the upper left corner; its axis lies halfway
    down. The ring keeps a moat between itself and the arrow."""

    margin: float
    corner: float
    ring_centre: float
    ring_outer: float
    ring_inner: float
    head_base: float
    head_tip: float
    head_half: float
    shaft_start: float
    shaft_half: float
    moat: float


LARGE = Shapes(0.03, 0.19, 0.44, 0.34, 0.21, 0.60, 0.94, 0.22, 0.40, 0.075, 0.045)
# In sixteenths: at that size each edge lies between two pixels.
SMALL = Shapes(*(value / 16 for value in (0, 3, 7, 6, 4, 10, 15, 4, 6, 1, 1)))
SMALL_BELOW = 24

TOP, BOTTOM = (58, 134, 214), (18, 66, 128)
RING, ARROW = (255, 255, 255), (255, 190, 60)

OLD_COLOURS = [
    (0, 0, 0), (128, 0, 0), (0, 128, 0), (128, 128, 0), (0, 0, 128), (128, 0, 128),
    (0, 128, 128), (192, 192, 192), (128, 128, 128), (255, 0, 0), (0, 255, 0), (255, 255, 0),
    (0, 0, 255), (255, 0, 255), (0, 255, 255), (255, 255, 255),
]  # fmt: skip
OLD_PLATE, OLD_RING, OLD_ARROW = 4, 15, 11


def on_plate(shapes, x, y):
    edge = shapes.margin + shapes.corner
    dx = max(edge - x, x - (1 - edge), 0)
    dy = max(edge - y, y - (1 - edge), 0)
    return math.hypot(dx, dy) <= shapes.corner


def on_ring(shapes, x, y):
    distance = math.hypot(x - shapes.ring_centre, y - 0.5)
    return shapes.ring_inner <= distance <= shapes.ring_outer


def on_arrow(shapes, x, y, wider=0.0):
    off_axis = abs(y - 0.5) - wider
    if shapes.head_base - wider <= x <= shapes.head_tip + wider:
        length = shapes.head_tip - shapes.head_base
        return off_axis <= shapes.head_half * min((shapes.head_tip + wider - x) / length, 1)
    return shapes.shaft_start - wider <= x < shapes.head_base and off_axis <= shapes.shaft_half


def layer_at(shapes, x, y):
    """0 nothing, 1 plate, 2 ring, 3 arrow."""
    if on_arrow(shapes, x, y):
        return 3
    if on_ring(shapes, x, y) and not on_arrow(shapes, x, y, shapes.moat):
        return 2
    return 1 if on_plate(shapes, x, y) else 0


def coverages(size):
    """For each pixel, row by row from the top: how much of it each layer covers, in samples."""
    shapes = SMALL if size < SMALL_BELOW else LARGE
    samples = SAMPLES if size < 128 else SAMPLES_OF_HUGE
    rows = []
    for row in range(size):
        pixels = []
        for column in range(size):
            counts = [0, 0, 0, 0]
            for i in range(samples):
                for k in range(samples):
                    x = (column + (k + 0.5) / samples) / size
                    y = (row + (i + 0.5) / samples) / size
                    counts[layer_at(shapes, x, y)] += 1
            pixels.append(counts)
        rows.append(pixels)
    return rows


def plate_colour(row, size):
    share = row / (size - 1)
    return tuple(round(a + (b - a) * share) for a, b in zip(TOP, BOTTOM))


def smooth_pixel(counts, row, size):
    """Red, green, blue and opacity of a pixel."""
    opaque = sum(counts[1:])
    if opaque == 0:
        return 0, 0, 0, 0
    colours = (plate_colour(row, size), RING, ARROW)
    mixed = (sum(n * c[i] for n, c in zip(counts[1:], colours)) / opaque for i in range(3))
    return *(round(value) for value in mixed), round(255 * opaque / sum(counts))


def padded(row):
    return row + bytes(-len(row) % 4)


def image(size, bits, palette, rows, mask):
    """A device-independent bitmap as icons hold it: colours, then the mask, bottom row first."""
    header = struct.pack("<IiiHHIIiiII", 40, size, 2 * size, 1, bits, 0, 0, 0, 0, 0, 0)
    colours = b"".join(struct.pack("<BBBB", b, g, r, 0) for r, g, b in palette)
    mask_rows = []
    for row in mask:
        text = "".join("1" if clear else "0" for clear in row).ljust(-(-size // 8) * 8, "0")
        mask_rows.append(padded(int(text, 2).to_bytes(len(text) // 8, "big")))
    return header + colours + b"".join(map(padded, reversed(rows))) + b"".join(reversed(mask_rows))


def deep_image(size, drawing):
    pixels = [[smooth_pixel(c, y, size) for c in row] for y, row in enumerate(drawing)]
    rows = [b"".join(struct.pack("<BBBB", b, g, r, a) for r, g, b, a in row) for row in pixels]
    return image(size, 32, [], rows, [[a == 0 for *_, a in row] for row in pixels])


def palette_image(size, drawing):
    pixels = [[smooth_pixel(c, y, size) for c in row] for y, row in enumerate(drawing)]
    # Shades that the eye can't tell apart share an entry, which leaves far fewer than 256.
    coarse = [[tuple(v & ~7 | v >> 5 for v in p[:3]) if p[3] >= 128 else None for p in row]
              for row in pixels]  # fmt: skip
    palette = [(0, 0, 0)] + sorted({p for row in coarse for p in row if p is not None})
    palette += [(0, 0, 0)] * (256 - len(palette))
    numbers = {colour: number for number, colour in reversed([*enumerate(palette)][1:])}
    rows = [bytes(0 if p is None else numbers[p] for p in row) for row in coarse]
    return image(size, 8, palette, rows, [[p is None for p in row] for row in coarse])


def flat_image(size, drawing):
    colours = (0, OLD_PLATE, OLD_RING, OLD_ARROW)
    layers = [[counts.index(max(counts)) for counts in row] for row in drawing]
    rows = []
    for row in layers:
        nibbles = [colours[layer] for layer in row] + [0] * (size % 2)
        rows.append(bytes(a << 4 | b for a, b in zip(nibbles[::2], nibbles[1::2])))
    return image(size, 4, OLD_COLOURS, rows, [[layer == 0 for layer in row] for row in layers])


def chunk(name, data):
    return struct.pack(">I", len(data)) + name + data + struct.pack(">I", zlib.crc32(name + data))


def png_image(size, drawing):
    """Each row as its difference from the one above, which the running colours make small."""
    packed, above = b"", bytes(4 * size)
    for y, row in enumerate(drawing):
        line = b"".join(bytes(smooth_pixel(counts, y, size)) for counts in row)
        packed += b"\2" + bytes((a - b) & 0xFF for a, b in zip(line, above))
        above = line
    header = struct.pack(">IIBBBBB", size, size, 8, 6, 0, 0, 0)
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header)
            + chunk(b"IDAT", zlib.compress(packed, 9)) + chunk(b"IEND", b""))


# The bits per pixel that each makes.
BITS = {flat_image: 4, palette_image: 8, deep_image: 32, png_image: 32}
# The largest picture, which only shows files and never a window, may be packed.
OF_OLD = [(48, flat_image), (48, palette_image), (48, png_image),
          *((size, drawer) for size in (32, 16)
            for drawer in (flat_image, palette_image, deep_image))]  # fmt: skip
# From 40 pixels on packed, as every system can read it that asks for such sizes.
OF_TODAY = [*((size, deep_image) for size in (16, 20, 24, 32)),
            *((size, png_image) for size in (40, 48, 64, 256))]  # fmt: skip


def write_icon(path, kinds):
    """`kinds`: (size, drawer) of each image."""
    drawings = {size: coverages(size) for size, _ in kinds}
    images = [(size, BITS[drawer], drawer(size, drawings[size])) for size, drawer in kinds]
    offset = 6 + 16 * len(images)
    entries = b""
    for size, bits, data in images:
        colours = 16 if bits == 4 else 0
        side = size % 256
        entries += struct.pack("<BBBBHHII", side, side, colours, 0, 1, bits, len(data), offset)
        offset += len(data)
    bodies = b"".join(data for *_, data in images)
    path.write_bytes(struct.pack("<HHH", 0, 1, len(images)) + entries + bodies)


def main():
    if len(sys.argv) == 3 and sys.argv[1] == "--pictures":
        for size, _ in OF_TODAY:
            path = Path(sys.argv[2]) / f"icon-{size}.png"
            path.write_bytes(png_image(size, coverages(size)))
        return
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    folder = Path(sys.argv[1])
    write_icon(folder / "program.ico", OF_TODAY)
    write_icon(folder / "launcher.ico", OF_OLD)
    write_icon(folder / "plain.ico", [(32, flat_image)])


main()
