"""Rows of keys written as text.

A row is words: "tab:1.5" is a key 1.5 units wide, "+0.25" a gap, "." the place of a key that the board lacks. Before a
name, "~" makes a key that sends no code of its own; after the width, "@thumb" names the finger where it is not the one
taught, and "*" marks a key where a thumb rests.
"""

import re
from dataclasses import dataclass

from .keys import TAUGHT
from .model import Key

_WORD = re.compile(r"(~?)([a-z0-9-]+)(?::([0-9.]+))?(?:@([a-z]+))?(\*?)")


@dataclass
class Word:
    name: str
    sends: bool
    width: float
    finger: str
    rests: bool


def words(text):
    for word in text.split():
        if word[0] in "+.":
            yield word
        else:
            silent, name, width, finger, rests = _WORD.fullmatch(word).groups()
            yield Word(name, not silent, float(width or 1), finger, bool(rests))


def row(text, x, y, name, h=1, hand=None, fingers=None):
    """The keys of a row from left to right. Without `fingers` (from left to right) they are struck as taught."""
    keys = []
    for word in words(text):
        if isinstance(word, str):
            x += 1 if word == "." else float(word)
            continue
        taught_hand, taught_finger = TAUGHT.get(word.name, (hand, None))
        finger = word.finger or (fingers[len(keys)] if fingers else taught_finger)
        assert finger is not None, f"{word.name}: no finger"
        keys.append(Key(word.name, x, y, word.width, h, hand=hand or taught_hand, finger=finger, row=name,
                        sends=word.sends, rests=word.rests))
        x += word.width
    return keys
