"""Boards that are one plain grid: columns decide which finger strikes a key, and thumbs the middle of the last row."""

from .model import Board
from .rows import row

COLUMNS = [("left", finger) for finger in "pinky pinky ring middle index index".split()]
COLUMNS += [("right", finger) for _, finger in reversed(COLUMNS)]

PLANCK = [
    ("upper", "tab q w e r t y u i o p delete"),
    ("home", "escape a s d f g h j k l semicolon quote"),
    ("lower", "left-shift z x c v b n m comma period slash return"),
]
BOTTOM = ("~backlight left-control left-option left-command ~lower@thumb space:2@thumb* ~raise@thumb "
          "left-arrow down-arrow up-arrow right-arrow")
PREONIC = [
    ("number", "grave 1 2 3 4 5 6 7 8 9 0 delete"),
    ("upper", "tab q w e r t y u i o p forward-delete"),
] + PLANCK[1:]


def grid(rows):
    keys = []
    for y, (name, text) in enumerate(rows + [("bottom", BOTTOM)]):
        keys += row(text, 0, y, name, fingers=[""] * 12)
    for key in keys:
        key.hand, finger = COLUMNS[int(key.x + key.w / 2)]
        key.finger = key.finger or finger
    return keys


def boards():
    for id_, name, rows in (("planck", "Planck", PLANCK), ("preonic", "Preonic", PREONIC)):
        yield Board(id_, name, "OLKB", True, "A plain grid of 19.05 mm, with a space bar of two units",
                    grid(rows), "Codes of the firmware's first layer.")
