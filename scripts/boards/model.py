"""A board and its JSON file."""

import json
import math
from dataclasses import dataclass
from typing import Optional

from .keys import CODES, RESTING


@dataclass
class Key:
    """A key in key units of 19.05 mm, turned clockwise by r degrees about (rx, ry)."""

    name: str
    x: float
    y: float
    w: float = 1
    h: float = 1
    r: float = 0
    rx: float = 0
    ry: float = 0
    hand: str = ""
    finger: str = ""
    row: str = ""
    sends: bool = True
    rests: bool = False
    second: Optional[tuple] = None  # x, y, w, h

    def move(self, dx, dy):
        self.x, self.y, self.rx, self.ry = self.x + dx, self.y + dy, self.rx + dx, self.ry + dy
        if self.second:
            x, y, w, h = self.second
            self.second = (x + dx, y + dy, w, h)

    def corners(self):
        turn = math.radians(self.r)
        for x, y, w, h in filter(None, [(self.x, self.y, self.w, self.h), self.second]):
            for px, py in [(x, y), (x + w, y), (x + w, y + h), (x, y + h)]:
                dx, dy = px - self.rx, py - self.ry
                yield (self.rx + math.cos(turn) * dx - math.sin(turn) * dy,
                       self.ry + math.sin(turn) * dx + math.cos(turn) * dy)

    def members(self):
        """What the file says about the key: the members that are not as when absent."""
        members = {"id": self.name}
        if self.sends:
            members["keyCode"] = CODES[self.name]
        members["x"], members["y"] = number(self.x), number(self.y)
        if self.w != 1:
            members["w"] = number(self.w)
        if self.h != 1:
            members["h"] = number(self.h)
        if self.r:
            members.update(r=number(self.r), rx=number(self.rx), ry=number(self.ry))
        if self.second:
            members["second"] = dict(zip("xywh", map(number, self.second)))
        members.update(hand=self.hand, finger=self.finger, row=self.row)
        if self.rests or self.name in RESTING:
            members["home"] = True
        return members


@dataclass
class Board:
    id: str
    name: str
    maker: str
    exact: bool
    source: str
    keys: list
    notes: str = ""

    def at_origin(self):
        """Moved so that its corners touch both axes from within, at most a thousandth of a unit away."""
        corners = [corner for key in self.keys for corner in key.corners()]
        dx, dy = (math.ceil(-min(values) * 1000 - 1e-6) / 1000 for values in zip(*corners))
        for key in self.keys:
            key.move(dx, dy)
        return self

    def text(self):
        head = {"id": self.id, "name": self.name, "maker": self.maker,
                "geometry": "exact" if self.exact else "approximate", "source": self.source}
        if self.notes:
            head["notes"] = self.notes
        lines = [f"  {quoted(name)}: {quoted(value)}," for name, value in head.items()]
        keys = ",\n".join("    " + quoted(key.members()) for key in self.keys)
        return "{\n" + "\n".join(lines) + '\n  "keys": [\n' + keys + "\n  ]\n}\n"


def quoted(value):
    return json.dumps(value, ensure_ascii=False)


def number(value):
    rounded = round(value, 4)
    return int(rounded) if rounded == int(rounded) else rounded
