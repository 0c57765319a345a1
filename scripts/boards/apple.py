"""The keyboards of Macs: rows of 14.5 units, a low function row, an upside-down T of half-height arrow keys."""

from .model import Board, Key
from .rows import row
from .standard import HOME, KEYPAD, LOWER, NUMBERS, UPPER, keypad_digits, l_shaped_return, navigation

FUNCTIONS = " ".join(f"f{i}" for i in range(1, 13))
SOURCE = "Key sizes after X.Org's xkb-data (Apple aluminium keyboards), in quarter units"

WIDTH = 14.5
LOW = 0.66  # height of a low function row, and where the next row starts

BOTTOM = "fn left-control left-option left-command:1.25@thumb space:5* right-command:1.25@thumb right-option"
JIS_BOTTOM = "caps-lock left-option left-command:1.25@thumb eisu:1.25 space:3.5* kana:1.25 right-command:1.25@thumb fn"
WIDE_BOTTOM = ("left-control:1.5 left-option:1.25 left-command:1.5@thumb space:6* "
               "right-command:1.5@thumb right-option:1.25 right-control:1.5")


def letters(kind, y):
    if kind == "jis":
        keys = row("1:1.5 2 3 4 5 6 7 8 9 0 minus equal yen delete", 0, y, "number")
        keys += row(f"tab {UPPER}", 0, y + 1, "upper")
        keys += row(f"left-control:1.25 {HOME} backslash", 0, y + 2, "home")
        keys.append(l_shaped_return(13, y + 1, 1.5, 1.25))
        return keys + row(f"left-shift:1.75 {LOWER} underscore right-shift:1.75", 0, y + 3, "lower")
    iso = kind == "iso"
    keys = row(("section" if iso else "grave") + f" {NUMBERS} delete:1.5", 0, y, "number")
    keys += row(f"tab:1.5 {UPPER}" + ("" if iso else " backslash"), 0, y + 1, "upper")
    keys += row(f"caps-lock:1.75 {HOME} " + ("backslash" if iso else "return:1.75"), 0, y + 2, "home")
    if iso:
        keys.append(l_shaped_return(13.5, y + 1, 1, 0.75))
    left = "left-shift:1.25 grave" if iso else "left-shift:2.25"
    return keys + row(f"{left} {LOWER} right-shift:2.25", 0, y + 3, "lower")


def small_arrows(y):
    keys = row("up-arrow", 12.5, y, "bottom", h=0.5)
    return keys + row("left-arrow down-arrow right-arrow", 11.5, y + 0.5, "bottom", h=0.5)


def compact(kind, y):
    return letters(kind, y) + row(JIS_BOTTOM if kind == "jis" else BOTTOM, 0, y + 4, "bottom") + small_arrows(y + 4)


def macbook(kind):
    return row(f"escape:1.5 {FUNCTIONS} ~touch-id", 0, 0, "function") + compact(kind, 1)


def low_functions(last):
    """Fourteen low keys over the whole width of the letters."""
    names = f"escape {FUNCTIONS} ~{last}".split()
    step = WIDTH / len(names)
    return [key for i, name in enumerate(names) for key in row(f"{name}:1.035", i * step, 0, "function", h=LOW)]


def magic(kind):
    return low_functions("touch-id") + compact(kind, LOW)


def magic_numpad(kind):
    keys = low_functions("touch-id") + letters(kind, LOW) + row(WIDE_BOTTOM, 0, LOW + 4, "bottom")
    keys += row("f13 f14 f15", 14.875, 0, "function", h=LOW, hand="right", fingers=KEYPAD)
    keys += navigation(14.875, LOW, "fn")
    keys += row("f16 f17 f18 f19", 18.25, 0, "function", h=LOW, hand="right", fingers=KEYPAD)
    keys += row("keypad-clear keypad-equal keypad-divide keypad-multiply", 18.25, LOW, "number", hand="right",
                fingers=KEYPAD)
    keys += keypad_digits(18.25, LOW)
    keys += row("keypad-minus", 21.25, LOW + 1, "upper", hand="right", fingers=["pinky"])
    keys += row("keypad-plus", 21.25, LOW + 2, "home", hand="right", fingers=["pinky"])
    return keys + row("keypad-enter", 21.25, LOW + 3, "lower", h=2, hand="right", fingers=["pinky"])


MODELS = [
    ("macbook", "MacBook", macbook, ["ansi", "iso", "jis"]),
    ("magic-keyboard", "Magic Keyboard", magic, ["ansi", "iso", "jis"]),
    ("magic-keyboard-numpad", "Magic Keyboard with number pad", magic_numpad, ["ansi", "iso"]),
]


def boards():
    for id_, name, keys, kinds in MODELS:
        for kind in kinds:
            yield Board(f"{id_}-{kind}", f"{name} ({kind.upper()})", "Apple", False, SOURCE, keys(kind))
