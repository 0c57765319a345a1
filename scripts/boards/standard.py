"""Boards whose rows are staggered as on a typewriter, on a grid of exactly one key unit."""

from .model import Board, Key
from .rows import row

NUMBERS = "1 2 3 4 5 6 7 8 9 0 minus equal"
UPPER = "q w e r t y u i o p left-bracket right-bracket"
HOME = "a s d f g h j k l semicolon quote"
LOWER = "z x c v b n m comma period slash"

MODIFIERS = "left-control:1.25 left-command:1.25 left-option:1.25@thumb space:6.25*"
WIDE_RIGHT = "right-option:1.25@thumb right-command:1.25 menu:1.25 right-control:1.25"
NARROW_RIGHT = "right-option@thumb ~fn-layer right-control"
ARROWS = "left-arrow down-arrow right-arrow"

CLUSTER = ["index", "middle", "ring"]
KEYPAD = CLUSTER + ["pinky"]


def l_shaped_return(x, y, upper, lower):
    """Return over two rows: `upper` and `lower` are its widths, x the left edge of the wider upper part."""
    return Key("return", x + upper - lower, y, lower, 2, hand="right", finger="pinky", row="home",
               second=(x, y, upper, 1))


def letters(y, iso, corner, right_shift):
    """The four rows with letters, 15 units wide but for the right shift key; `corner` is the key left of the 1."""
    keys = row(f"{corner} {NUMBERS} delete:2", 0, y, "number")
    keys += row(f"tab:1.5 {UPPER}" + ("" if iso else " backslash:1.5"), 0, y + 1, "upper")
    keys += row(f"caps-lock:1.75 {HOME} " + ("backslash" if iso else "return:2.25"), 0, y + 2, "home")
    if iso:
        keys.append(l_shaped_return(13.5, y + 1, 1.5, 1.25))
    left = "left-shift:1.25 grave" if iso else "left-shift:2.25"
    return keys + row(f"{left} {LOWER} right-shift:{right_shift}", 0, y + 3, "lower")


def sixty(iso):
    return letters(0, iso, "escape", 2.75) + row(f"{MODIFIERS} {WIDE_RIGHT}", 0, 4, "bottom")


def right_column(names, y):
    """Keys under each other, right of 15 units, from the number row down: the little finger's."""
    rows = zip(names.split(), ["number", "upper", "home", "lower"])
    return [key for line, (name, where) in enumerate(rows)
            for key in row(name, 15, y + line, where, hand="right", fingers=["pinky"])]


def compact(y, iso, corner, column):
    """Letters, arrow keys and a right column, 16 units wide and without gaps."""
    return (letters(y, iso, corner, 1.75) + right_column(column, y) + row("up-arrow", 14, y + 3, "lower") +
            row(f"{MODIFIERS} {NARROW_RIGHT} {ARROWS}", 0, y + 4, "bottom"))


def sixty_five(iso):
    return compact(0, iso, "escape", "forward-delete page-up page-down end")


def seventy_five(iso):
    functions = " ".join(f"f{i}" for i in range(1, 13))
    keys = row(f"escape {functions}", 0, 0, "function")
    keys += row("f13 f14 forward-delete", 13, 0, "function", hand="right", fingers=["pinky"] * 3)
    return keys + compact(1, iso, "section" if iso else "grave", "home page-up page-down end")


def navigation(x, y, top):
    """The six keys right of the letters, and the arrow keys; `top` is the key at their upper left."""
    keys = row(f"{top} home page-up", x, y, "number", hand="right", fingers=CLUSTER)
    keys += row("forward-delete end page-down", x, y + 1, "upper", hand="right", fingers=CLUSTER)
    keys += row("up-arrow", x + 1, y + 3, "lower")
    return keys + row(ARROWS, x, y + 4, "bottom")


def tenkeyless(iso):
    functions = [" ".join(f"f{i}" for i in range(first, first + 4)) for first in (1, 5, 9)]
    keys = row(f"escape +1 {functions[0]} +0.5 {functions[1]} +0.5 {functions[2]}", 0, 0, "function")
    keys += row("f13 f14 f15", 15.25, 0, "function", hand="right", fingers=CLUSTER)
    keys += letters(1.5, iso, "section" if iso else "grave", 2.75)
    keys += row(f"{MODIFIERS} {WIDE_RIGHT}", 0, 5.5, "bottom")
    return keys + navigation(15.25, 1.5, "help")


def keypad_digits(x, y):
    keys = []
    for line, (first, name) in enumerate([(7, "upper"), (4, "home"), (1, "lower")], start=1):
        digits = " ".join(f"keypad-{digit}" for digit in range(first, first + 3))
        keys += row(digits, x, y + line, name, hand="right", fingers=KEYPAD)
    return keys + row("keypad-0:2@thumb keypad-decimal@ring", x, y + 4, "bottom", hand="right")


def keypad(x, y):
    keys = row("keypad-clear keypad-divide keypad-multiply keypad-minus", x, y, "number", hand="right", fingers=KEYPAD)
    keys += keypad_digits(x, y)
    keys += row("keypad-plus", x + 3, y + 1, "upper", h=2, hand="right", fingers=["pinky"])
    return keys + row("keypad-enter", x + 3, y + 3, "lower", h=2, hand="right", fingers=["pinky"])


def full_size(iso):
    return tenkeyless(iso) + keypad(18.5, 1.5)


SIZES = [
    ("60-percent", "60 %", sixty), ("65-percent", "65 %", sixty_five), ("75-percent", "75 %", seventy_five),
    ("tenkeyless", "Tenkeyless", tenkeyless), ("full-size", "Full size", full_size),
]


def boards():
    for id_, name, keys in SIZES:
        for variant, iso in (("ansi", False), ("iso", True)):
            yield Board(f"{id_}-{variant}", f"{name} ({variant.upper()})", "Generic", True,
                        "The usual key sizes on the standard grid of 19.05 mm", keys(iso))
