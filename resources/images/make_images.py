#!/usr/bin/env python3
"""Makes the pictures of this folder from the maps below, one character a pixel.

Run it here after a change and keep the files it writes: the build embeds those.
"""
import pathlib
import struct

COLOURS = {
    ".": 0xC0C0C0,  # the ground: transparent in icons, the face of the toolbar in bitmaps
    "#": 0x202830,  # outlines
    "w": 0xFFFFFF,
    "c": 0xE4F0FA,  # glass
    "g": 0x808890,
    "B": 0x86B4DE,  # blue: light, middle, dark
    "b": 0x2F6FAF,
    "n": 0x1F4468,
    "Y": 0xFFEDA8,  # yellow: light, middle, dark
    "y": 0xF2C84B,
    "o": 0xB07C22,
    "r": 0xC0392B,
}

OPEN = """
................
................
..#####.........
.#YYYYY#........
.#Yyyyyy######..
.#Yyyyyyyyyyy#..
.#Yyyyyyyyyyy#..
.#Yyy###########
.#Yy#YYYYYYYYYY#
.#Yy#Yyyyyyyyy#.
.#y#Yyyyyyyyyo#.
.#y#Yyyyyyyyo#..
.##Yyyyyyyyyo#..
.##ooooooooo#...
.###########....
................
"""

HELP = """
................
.....######.....
...##BBBBBB##...
..#BBbbbbbbbb#..
..#Bbbwwwwbbb#..
.#Bbbwwbbwwbbb#.
.#Bbbbbbbwwbbb#.
.#Bbbbbbwwbbbb#.
.#Bbbbbwwbbbbb#.
.#Bbbbbwwbbbbb#.
.#Bbbbbbbbbbbb#.
..#bbbbwwbbbn#..
..#bbbbwwbbnn#..
...##nnnnnn##...
.....######.....
................
"""

ORGANIZER = """
................
.#######........
.#BBBBB#........
.#bbbbb#........
.#######........
...#............
...#...#######..
...#...#YYYYY#..
...#####yyyyy#..
...#...#######..
...#............
...#...#######..
...#...#YYYYY#..
...#####yyyyy#..
.......#######..
................
"""

ZOOM_IN = """
...................
.....####..........
...##cccc##........
..#cwwccccc#.......
..#cwcbbccc#.......
.#ccccbbcccc#......
.#ccbbbbbbcc#......
.#ccbbbbbbcc#......
.#ccccbbcccc#......
..#cccbbccc#.......
..#cccccccc#.......
...##cccc####......
.....######oo#.....
..........##oo#....
............#oo#...
.............#oo#..
..............##...
...................
"""

ZOOM_OUT = """
................
....####........
..##cccc##......
..#cwwccc#......
.#cwcccccc#.....
.#cbbbbbbc#.....
.#cbbbbbbc#.....
.#cccccccc#.....
..#cccccc#......
..##cccc###.....
....######o#....
.........#oo#...
..........#oo#..
...........#oo#.
............##..
................
"""

MAIN = """
................................
................................
....##############..............
...#BBBBBBBBBBBBBB#.............
..#Bbbbbbbbbbbbbbbn#............
..#Bbbwwwwwwwwwwbbn#............
..#Bbbbbbbbbbbbbbbn#######......
..#Bbbwwwwwwbbbbbbn#######......
..#Bbbbbbbbbbbbbbbn#....##......
..#Bbbbbbbbbbbbbbbn#....##......
...#nnnnnnnnnnnnnn#.....##......
....##############......##......
......##................##......
.....####...............##......
....######..............##......
...########.............##......
......##.............########...
......##..............######....
......##...............####.....
......##................##......
......##......##############....
......##.....#YYYYYYYYYYYYYY#...
......##....#Yyyyyyyyyyyyyyyo#..
......##....#Yyyooooooooooyyo#..
......#######Yyyyyyyyyyyyyyyo#..
......#######Yyyooooooyyyyyyo#..
............#Yyyyyyyyyyyyyyyo#..
............#Yyyyyyyyyyyyyyyo#..
.............#oooooooooooooo#...
..............##############....
................................
................................
"""

TEXT = """
................................
................................
................................
..############################..
..#BBBBBBBBBBBBBBBBBBBBBBBBBB#..
..#Bbwwwwwwwbbbbbbbbbbbwwbwwn#..
..#Bbwwwwwwwbbbbbbbbbbbwwbwwn#..
..#Bbbbbbbbbbbbbbbbbbbbbbbbbn#..
..#nnnnnnnnnnnnnnnnnnnnnnnnnn#..
..############################..
..#wwwwwwwwwwwwwwwwwwwwwwwwww#..
..#wwgggggggggggggggggwwwwwww#..
..#wwwwwwwwwwwwwwwwwwwwwwwwww#..
..#wwgggggggggggggggggggggwww#..
..#wwwwwwwwwwwwwwwwwwwwwwwwww#..
..#wwwwwggggggggggggggwwwwwww#..
..#wwwwwwwwwwwwwwwwwwwwwwwwww#..
..#wwwwwggggggggggggggggggwww#..
..#wwwwwwwwwwwwwwwwwwwwwwwwww#..
..#wwgggggggggggwwwwwwwwwwwww#..
..#wwwwwwwwwwwwwwwwwwwwwwwwww#..
..############################..
..#ccbbcccccccccccccccccccccc#..
..#cccbbccccccccccccrrccccccc#..
..#ccccbbcc#######ccrrccccccc#..
..#cccbbccccccccccccrrccccccc#..
..#ccbbcccccccccccccrrccccccc#..
..#cccccccccccccccccccccccccc#..
..############################..
................................
................................
................................
"""

# Letters of the banner, on a common base line.
GLYPHS = {
    "K": """
##......##
##.....##.
##....##..
##...##...
##..##....
##.##.....
####......
####......
##.##.....
##..##....
##...##...
##....##..
##.....##.
##......##
""",
    "o": """
..#####..
.#######.
##.....##
##.....##
##.....##
##.....##
##.....##
##.....##
.#######.
..#####..
""",
    "r": """
##.###
######
###...
##....
##....
##....
##....
##....
##....
##....
""",
    "v": """
##......##
##......##
.##....##.
.##....##.
..##..##..
..##..##..
...####...
...####...
....##....
....##....
""",
    "a": """
.######..
.#######.
.......##
..#######
.########
##.....##
##.....##
##....###
#########
.#####.##
""",
    "n": """
##.####..
########.
###....##
##.....##
##.....##
##.....##
##.....##
##.....##
##.....##
##.....##
""",
    "e": """
..#####..
.#######.
##.....##
##.....##
#########
#########
##.......
##.....##
.#######.
..#####..
""",
    "U": """
##.......##
##.......##
##.......##
##.......##
##.......##
##.......##
##.......##
##.......##
##.......##
##.......##
##.......##
###.....###
.#########.
..#######..
""",
    "I": """
##
##
##
##
##
##
##
##
##
##
##
##
##
##
""",
}

# The sign at the left of the banner: two states and the ways between them.
SIGN = """
..wwwwwwwwww............
.wbbbbbbbbbbw...........
wbbbbbbbbbbbbw..........
wbbbbbbbbbbbbwwwwww.....
wbbbbbbbbbbbbwwwwww.....
wbbbbbbbbbbbbw...ww.....
.wbbbbbbbbbbw..wwwwww...
..wwwwwwwwww....wwww....
....ww...........ww.....
...wwww....wwwwwwwwww...
..wwwwww..wyyyyyyyyyyw..
....ww...wyyyyyyyyyyyyw.
....ww...wyyyyyyyyyyyyw.
....wwwwwwyyyyyyyyyyyyw.
....wwwwwwyyyyyyyyyyyyw.
.........wyyyyyyyyyyyyw.
..........wyyyyyyyyyyw..
...........wwwwwwwwww...
"""


def rows_of(text):
    rows = text.split()
    assert all(len(row) == len(rows[0]) for row in rows)
    return rows


def pixels_of(text):
    return [[COLOURS[mark] for mark in row] for row in rows_of(text)]


def put(pixels, text, left, top, colour=None):
    """Draws a map over pixels, in its own colours or in one."""
    for y, row in enumerate(rows_of(text)):
        for x, mark in enumerate(row):
            if mark != ".":
                pixels[top + y][left + x] = COLOURS[mark] if colour is None else colour


def write_text(pixels, text, left, base, colour):
    for letter in text:
        if letter == " ":
            left += 6
            continue
        rows = rows_of(GLYPHS[letter])
        put(pixels, GLYPHS[letter], left, base - len(rows), colour)
        left += len(rows[0]) + 2


def banner():
    width, height = 150, 30
    top, bottom = (0x2F, 0x6F, 0xAF), (0x1B, 0x3C, 0x5C)

    def shade(y):
        parts = [a + (b - a) * y // (height - 1) for a, b in zip(top, bottom)]
        return parts[0] << 16 | parts[1] << 8 | parts[2]

    pixels = [[shade(y)] * width for y in range(height)]
    put(pixels, SIGN, 9, 6)
    for dx, dy, colour in ((1, 1, 0x12283E), (0, 0, 0xFFFFFF)):
        write_text(pixels, "Korvane UI", 41 + dx, 22 + dy, colour)
    for x in range(width):
        pixels[0][x], pixels[height - 1][x] = COLOURS["B"], COLOURS["#"]
    for y in range(height):
        pixels[y][0], pixels[y][width - 1] = COLOURS["B"], COLOURS["#"]
    return pixels


def table_of(colours, size):
    """A colour table: blue, green, red, reserved."""
    data = b"".join(struct.pack("<I", colour) for colour in colours)
    return data.ljust(4 * size, b"\0")


def packed_row(values, bits):
    word = 0
    for value in values:
        word = word << bits | value
    used = len(values) * bits
    size = (used + 31) // 32 * 4
    return (word << (size * 8 - used)).to_bytes(size, "big")


def info_header(width, height, bits, size):
    return struct.pack("<IiiHHIIiiII", 40, width, height, 1, bits, 0, size, 2835, 2835, 0, 0)


def bmp(pixels):
    colours = sorted({colour for row in pixels for colour in row})
    rows = [packed_row([colours.index(colour) for colour in row], 8) for row in reversed(pixels)]
    data = b"".join(rows)
    offset = 14 + 40 + 4 * 256
    return (struct.pack("<2sIHHI", b"BM", offset + len(data), 0, 0, offset)
            + info_header(len(pixels[0]), len(pixels), 8, len(data))
            + table_of(colours, 256) + data)


def ico(text):
    """One image of 16 colours; the ground is transparent, and black below the mask."""
    rows = rows_of(text)
    marks = sorted(set("".join(rows)) - {"."})
    assert len(marks) < 16
    table = [0] + [COLOURS[mark] for mark in marks]
    index = {mark: i + 1 for i, mark in enumerate(marks)} | {".": 0}
    data = b"".join(packed_row([index[mark] for mark in row], 4) for row in reversed(rows))
    data += b"".join(packed_row([mark == "." for mark in row], 1) for row in reversed(rows))
    image = info_header(len(rows[0]), 2 * len(rows), 4, len(data)) + table_of(table, 16) + data
    entry = struct.pack("<BBBBHHII", len(rows[0]), len(rows), 16, 0, 1, 4, len(image), 22)
    return struct.pack("<HHH", 0, 1, 1) + entry + image


def main():
    folder = pathlib.Path(__file__).parent
    for name, data in {
        "open.bmp": bmp(pixels_of(OPEN)),
        "help.bmp": bmp(pixels_of(HELP)),
        "organizer.bmp": bmp(pixels_of(ORGANIZER)),
        "zoom_in.bmp": bmp(pixels_of(ZOOM_IN)),
        "zoom_out.bmp": bmp(pixels_of(ZOOM_OUT)),
        "banner.bmp": bmp(banner()),
        "main.ico": ico(MAIN),
        "text.ico": ico(TEXT),
    }.items():
        (folder / name).write_bytes(data)


if __name__ == "__main__":
    main()
