"""Boards of two mirrored halves: one half is described as slots, and keys stand in the text as on the half."""

import math
from dataclasses import dataclass

from .model import Board, Key
from .rows import words

FIVE = "pinky ring middle index index".split()
SIX = ["pinky"] + FIVE
SEVEN = SIX + ["index"]


@dataclass
class Slot:
    """A key's place on the left half, turned clockwise by r degrees about (rx, ry)."""

    x: float
    y: float
    w: float = 1
    h: float = 1
    r: float = 0
    rx: float = 0
    ry: float = 0
    finger: str = "thumb"


def columns(y, offsets, fingers, first=0.0, outer=1.0):
    """One row of slots over columns that are shifted down by `offsets`; the outermost column is `outer` units wide."""
    slots, x = [], first
    for offset, finger in zip(offsets, fingers):
        width = outer if not slots else 1
        slots.append(Slot(x, y + offset, width, finger=finger))
        x += width
    return slots


def tilted(cx, cy, r, w=1, h=1):
    """A thumb slot turned about its own centre."""
    return Slot(cx - w / 2, cy - h / 2, w, h, r, cx, cy)


def arc(cx, cy, degrees, radius=4.35):
    """Thumb slots side by side on a circle about (cx, cy), at angles clockwise from straight up."""
    return [tilted(cx + radius * math.sin(math.radians(r)), cy - radius * math.cos(math.radians(r)), r)
            for r in degrees]


def turned(r, rx, ry, slots):
    """Slots turned together about one point."""
    return [Slot(slot.x, slot.y, slot.w, slot.h, r, rx, ry, slot.finger) for slot in slots]


def key_at(slot, word, row, hand, width):
    """The key in a slot; on the right hand the slot is mirrored in a board of that width."""
    x, r, rx = slot.x, slot.r, slot.rx
    if hand == "right":
        x, r, rx = width - slot.x - slot.w, -slot.r, width - slot.rx
    name = "thumb" if slot.finger == "thumb" and row != "bottom" else row
    return Key(word.name, x, slot.y, slot.w, slot.h, r, rx, slot.ry, hand, word.finger or slot.finger, name,
               word.sends, word.rests)


def halves(width, rows):
    """The keys of rows of (name, slots, "left keys | right keys"), both texts as one sees them from left to right."""
    keys = []
    for name, slots, text in rows:
        for hand, side in zip(("left", "right"), text.split("|")):
            row = list(words(side))
            assert len(row) == len(slots), text
            pairs = zip(slots if hand == "left" else reversed(slots), row)
            keys += [key_at(slot, word, name, hand, width) for slot, word in pairs if word != "."]
    return keys


def split(id_, name, maker, width, rows, notes):
    source = "Column shifts as commonly published for the board, thumb keys placed by eye"
    return Board(id_, name, maker, False, source, halves(width, rows), notes).at_origin()
