"""Types and clicks at the machine's devices, and keeps a list of what must be counted. It shares no table with the
program that is tried."""

from collections import Counter

# The monitor's names of keys: the code that Linux gives the key, and the one under which it is counted.
KEYS = {
    "a": (30, 0), "s": (31, 1), "d": (32, 2), "f": (33, 3), "h": (35, 4), "g": (34, 5), "z": (44, 6), "x": (45, 7),
    "c": (46, 8), "v": (47, 9), "b": (48, 11), "q": (16, 12), "w": (17, 13), "e": (18, 14), "r": (19, 15),
    "y": (21, 16), "t": (20, 17), "1": (2, 18), "2": (3, 19), "3": (4, 20), "4": (5, 21), "6": (7, 22), "5": (6, 23),
    "equal": (13, 24), "9": (10, 25), "7": (8, 26), "minus": (12, 27), "8": (9, 28), "0": (11, 29),
    "bracket_right": (27, 30), "o": (24, 31), "u": (22, 32), "bracket_left": (26, 33), "i": (23, 34), "p": (25, 35),
    "ret": (28, 36), "l": (38, 37), "j": (36, 38), "apostrophe": (40, 39), "k": (37, 40), "semicolon": (39, 41),
    "backslash": (43, 42), "comma": (51, 43), "slash": (53, 44), "n": (49, 45), "m": (50, 46), "dot": (52, 47),
    "tab": (15, 48), "spc": (57, 49), "grave_accent": (41, 50), "backspace": (14, 51), "esc": (1, 53),
    "f1": (59, 122), "f5": (63, 96), "f12": (88, 111), "home": (102, 115), "end": (107, 119), "pgup": (104, 116),
    "pgdn": (109, 121), "delete": (111, 117), "insert": (110, 114), "left": (105, 123), "right": (106, 124),
    "down": (108, 125), "up": (103, 126), "kp_0": (82, 82), "kp_5": (76, 87), "kp_enter": (96, 76), "kp_add": (78, 69),
    "meta_r": (126, 54), "meta_l": (125, 55), "shift": (42, 56), "caps_lock": (58, 57), "alt": (56, 58),
    "ctrl": (29, 59), "shift_r": (54, 60), "alt_r": (100, 61), "ctrl_r": (97, 62),
}
MODIFIERS = {"ctrl": "ctrl", "ctrl_r": "ctrl", "alt": "opt", "alt_r": "opt", "shift": "shift", "shift_r": "shift",
             "meta_l": "cmd", "meta_r": "cmd"}
ORDER = ("ctrl", "opt", "shift", "cmd")
BUTTONS = {"left": (272, 1), "right": (273, 2), "middle": (274, 3), "side": (275, 3)}  # and the column of its clicks
SCROLLS = 4  # the column of a day's table of the mouse
EV_KEY, EV_REL = 1, 2
BATCH = 6  # events that even a small queue of a device takes


class Typist:
    """`day` and `hour` are those that the machine's clock shows."""

    def __init__(self, machine):
        self.machine = machine
        self.seen = Counter()
        self.start("2026-09-20", 10)

    def start(self, day, hour):
        self.expected, self.held = {}, set()
        self.at(day, hour)

    def at(self, day, hour):
        self.day, self.hour = day, str(hour)

    def count(self, *label):
        self.expected.setdefault(self.day, Counter())[label] += 1

    # What the kernel says

    def witness(self, *event):
        """Waits until the kernel has reported this event, once more than when it was waited for before."""
        wanted = " ".join(map(str, event))
        while self.seen[wanted] == 0:
            self.seen[self.machine.witness.next(f"the kernel does not report {wanted}")] += 1
        self.seen[wanted] -= 1

    def reports(self, *event):
        """How many of these events the kernel has reported that nobody waited for; forgets them."""
        while not self.machine.witness.lines.empty():
            self.seen[self.machine.witness.lines.get()] += 1
        return self.seen.pop(" ".join(map(str, event)), 0)

    def forget(self):
        self.reports()
        self.seen.clear()

    # Keys

    def send(self, display, *events):
        where = {"device": display} if display else {}
        self.machine.ask_monitor("input-send-event", events=list(events), **where)

    def move(self, display, key, is_down):
        self.send(display, {"type": "key", "data": {"down": is_down, "key": {"type": "qcode", "data": key}}})

    def down(self, key, display="screen0", counts=True):
        self.move(display, key, True)
        self.witness(EV_KEY, KEYS[key][0], 1)
        if counts:
            self.expect(key)
        if key in MODIFIERS:
            self.held.add((display, key))

    def up(self, key, display="screen0"):
        self.move(display, key, False)
        self.witness(EV_KEY, KEYS[key][0], 0)
        self.held.discard((display, key))

    def expect(self, key):
        code = str(KEYS[key][1])
        self.count("keys", self.hour, code)
        names = {MODIFIERS[held] for _, held in self.held}
        if names - {"shift"} and key not in MODIFIERS and key != "caps_lock":
            self.count("chords", self.hour, "+".join(name for name in ORDER if name in names), code)

    def tap(self, key, display="screen0", counts=True):
        self.down(key, display, counts)
        self.up(key, display)

    def type(self, keys, display="screen0", counts=True):
        """Strikes keys one after the other, as fast as the kernel takes them."""
        keys = list(keys)
        for first in range(0, len(keys), BATCH):
            batch = keys[first:first + BATCH]
            for key in batch:
                self.move(display, key, True)
                self.move(display, key, False)
            for key in batch:
                self.witness(EV_KEY, KEYS[key][0], 1)
                self.witness(EV_KEY, KEYS[key][0], 0)
                if counts:
                    self.expect(key)

    # The mouse

    def click(self, button, display=None):
        code, column = BUTTONS[button]
        for is_down in (True, False):
            self.send(display, {"type": "btn", "data": {"down": is_down, "button": button}})
            self.witness(EV_KEY, code, int(is_down))
        self.count("mouse", self.hour, column - 1)

    def scroll(self, button, display=None):
        """Turns the wheel by one step: wheel-up or wheel-down."""
        for is_down in (True, False):
            self.send(display, {"type": "btn", "data": {"down": is_down, "button": button}})
        self.witness(EV_REL, 8, 1 if button == "wheel-up" else -1)
        self.count("mouse", self.hour, SCROLLS - 1)

    def glide(self, right, down, display=None):
        for axis, value in (("x", right), ("y", down)):
            if value:
                self.send(display, {"type": "rel", "data": {"axis": axis, "value": value}})
                self.witness(EV_REL, 0 if axis == "x" else 1, value)
