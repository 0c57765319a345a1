"""A board in one piece whose two halves are turned towards the hands."""

from .model import Board
from .rows import row

TURN = 10
LEFT = (4.9, 4.0)  # about where the left half turns, and the right one
RIGHT = (14.0, 4.0)

NAMES = ["number", "upper", "home", "lower", "bottom"]


def part(hand, rows, turn=0, about=(0, 0)):
    """Rows of (y, x, text), turned together."""
    keys = [key for y, x, text in rows for key in row(text, x, y, NAMES[y], hand=hand)]
    for key in keys:
        key.r, key.rx, key.ry = turn, *about
    return keys


def alice():
    keys = part("left", [
        (0, 0.25, "escape +0.25 grave 1"),
        (1, 0.125, "page-up@pinky +0.375 tab:1.5 q"),
        (2, 0, "page-down@pinky +0.5 caps-lock:1.75 a"),
        (3, 1.5, "left-shift:2.25 z"),
        (4, 1.5, "left-control:1.5"),
    ])
    keys += part("left", [
        (0, 3.65, "2 3 4 5 6"),
        (1, 4.15, "w e r t"),
        (2, 4.4, "s d f g"),
        (3, 4.9, "x c v b"),
        (4, 4.9, "left-option:1.5@thumb ~left-space:2@thumb* left-command@thumb"),
    ], TURN, LEFT)
    keys += part("right", [
        (0, 10.75, "7 8 9 0"),
        (1, 10.25, "y u i o"),
        (2, 10.5, "h j k l"),
        (3, 10.0, "~right-b@index n m comma"),
        (4, 9.75, "space:2.75* right-option:1.5@thumb"),
    ], -TURN, RIGHT)
    keys += part("right", [
        (0, 15.0, "minus equal delete:2"),
        (1, 14.5, "p left-bracket right-bracket backslash:1.5"),
        (2, 14.75, "semicolon quote return:2.25"),
        (3, 14.25, "period slash right-shift:1.75 ~fn-layer"),
        (4, 16.5, "right-control:1.5"),
    ])
    return keys


def boards():
    yield Board("alice", "Alice", "Generic", False, "The usual key sizes, halves turned by ten degrees", alice(),
                "The second B and the second space count on the left ones.").at_origin()
