#!/usr/bin/env python3
"""Writes recordings into a folder, make.py FOLDER: one evening at a keyboard and a mouse, in every form that the recording
programs have, and with all that real recordings hold. Nothing in it is random, so it writes the same each time."""

import re
import sys
from pathlib import Path

SYN, KEY, REL, MSC = 0, 1, 2, 4
TYPES = {0: "EV_SYN", 1: "EV_KEY", 2: "EV_REL", 4: "EV_MSC"}


def codes():
    """The names and numbers of linux/input-event-codes.h."""
    found = {}
    for line in Path("/usr/include/linux/input-event-codes.h").read_text().splitlines():
        match = re.match(r"#define\s+((?:KEY|BTN|REL|MSC)_\w+)\s+(0x[0-9a-f]+|\d+)\b", line)
        if match:
            found[match[1]] = int(match[2], 0)
    return found


CODES = codes()


def name_of(kind, code):
    prefix = {KEY: ("KEY_", "BTN_"), REL: ("REL_",), MSC: ("MSC_",)}[kind]
    for name, number in CODES.items():
        if number == code and name.startswith(prefix) and name not in ("BTN_MOUSE", "KEY_MIN_INTERESTING"):
            return name
    return "?"


class Evening:
    """Frames of events, by device: (microseconds, [(type, code, value)…])."""

    def __init__(self):
        self.now = 0
        self.keyboard = []
        self.mouse = []

    def wait(self, milliseconds):
        self.now += milliseconds * 1000 + 137

    def at(self, hours, minutes, seconds):
        self.now = ((hours * 60 + minutes) * 60 + seconds) * 1_000_000 + 250_013

    def key(self, name, value):
        code = CODES[name]
        scan = [] if value == 2 else [(MSC, 4, 458752 + code)]
        self.keyboard.append((self.now, scan + [(KEY, code, value), (SYN, 0, 1 if value == 2 else 0)]))
        self.wait(31)

    def tap(self, name):
        self.key(name, 1)
        self.wait(40)
        self.key(name, 0)
        self.wait(55)

    def hold(self, name, repeats):
        self.key(name, 1)
        self.wait(250)
        for _ in range(repeats):
            self.key(name, 2)
        self.key(name, 0)

    def chord(self, *names):
        for name in names[:-1]:
            self.key(name, 1)
        self.tap(names[-1])
        for name in reversed(names[:-1]):
            self.key(name, 0)

    def type(self, text):
        signs = {" ": "SPACE", ",": "COMMA", ".": "DOT", "-": "MINUS", "\n": "ENTER", "'": "APOSTROPHE"}
        for sign in text:
            if sign.isupper():
                self.chord("KEY_LEFTSHIFT", "KEY_" + sign)
            else:
                self.tap("KEY_" + signs.get(sign, sign.upper()))

    def turn(self, *values):
        events = [(REL, CODES["REL_" + axis], value) for axis, value in values]
        self.mouse.append((self.now, events + [(SYN, 0, 0)]))
        self.wait(8)

    def click(self, name):
        for value in (1, 0):
            self.mouse.append((self.now, [(MSC, 4, 589825), (KEY, CODES[name], value), (SYN, 0, 0)]))
            self.wait(70)

    def sweep(self, frames):
        for i in range(frames):
            self.turn(("X", 3 + i % 5), ("Y", -2 + i % 3))


def evening():
    """From 22:59:20 on, were it started then, until after midnight."""
    e = Evening()
    e.key("KEY_ENTER", 0)  # of the command that began the recording
    e.wait(900)
    e.type("Dear Ada,\nthe parcel came on Tuesday.")
    e.sweep(40)
    e.click("BTN_LEFT")
    e.chord("KEY_LEFTCTRL", "KEY_S")
    e.at(0, 0, 38)  # the hour ends amid this
    e.type(" It rained all day, and nobody minded")
    e.hold("KEY_BACKSPACE", 12)
    e.chord("KEY_RIGHTCTRL", "KEY_LEFTSHIFT", "KEY_Z")
    e.chord("KEY_LEFTMETA", "KEY_L")
    e.chord("KEY_RIGHTALT", "KEY_E")
    # Both sides of a modifier, of which one is let go.
    e.key("KEY_LEFTCTRL", 1)
    e.key("KEY_RIGHTCTRL", 1)
    e.key("KEY_LEFTCTRL", 0)
    e.tap("KEY_C")
    e.key("KEY_RIGHTCTRL", 0)
    e.tap("KEY_C")
    for name in ("CAPSLOCK", "F5", "KP5", "102ND", "VOLUMEUP", "MICMUTE", "LEFT", "COMPOSE"):
        e.tap("KEY_" + name)
    for name in ("BTN_LEFT", "BTN_RIGHT", "BTN_MIDDLE", "BTN_SIDE"):
        e.click(name)
    e.turn(("WHEEL", -1), ("WHEEL_HI_RES", -120))
    for parts in (-40, -40):
        e.turn(("WHEEL_HI_RES", parts))
    e.turn(("WHEEL", -1), ("WHEEL_HI_RES", -40))
    for parts in (90, -60, -60):  # turned back halfway: one step, not one and a half
        e.turn(("WHEEL_HI_RES", parts))
    e.turn(("HWHEEL", 1), ("HWHEEL_HI_RES", 120))
    e.turn(("WHEEL", 2))  # a wheel of the old kind
    e.turn(("X", 4200), ("Y", 0))  # a jump of the pointer
    e.at(1, 0, 37)  # the day ends amid this
    e.type("Yours, with cold feet, until the week-end.\n")
    e.sweep(25)
    e.key("KEY_LEFTCTRL", 1)
    e.click("BTN_LEFT")
    e.tap("KEY_W")
    e.key("KEY_S", 1)  # the recording ends here, keys held
    return e


KEYBOARD = dict(name="Keychron K3 Keyboard", id=(3, 0x05AC, 0x024F, 0x0111), node="/dev/input/event4")
MOUSE = dict(name="Logitech MX Master", id=(3, 0x046D, 0x4060, 0x0111), node="/dev/input/event7")
STRAY = {3: "a", 11: "^C", 30: "hello, is this - thing: [on]?", 31: "", 57: "[1]+  Stopped                 sleep 5",
         80: "ls -la: command not found", 121: "E", 122: "user@host:~$ "}


def comment(event, since):
    kind, code, value = event
    if kind == SYN:
        return "------------ SYN_REPORT (%d) ---------- +%dms" % (value, since // 1000)
    return "%s / %-20s %7d" % (TYPES[kind], name_of(kind, code), value)


def lines_with_stray(frames, line_of):
    """The lines of frames, and between them what a terminal printed."""
    before = frames[0][0] if frames else 0
    for number, (time, events) in enumerate(frames):
        if number in STRAY:
            yield STRAY[number]
        for event in events:
            yield line_of(time, event, comment(event, time - before))
        before = time


def evemu(device, frames, base):
    ids = " ".join("%04x" % part for part in device["id"])
    yield from ("# EVEMU 1.3", "# Kernel: 6.1.0-18-amd64", '# Input device name: "%s"' % device["name"],
                "N: " + device["name"], "I: " + ids, "P: 00 00 00 00 00 00 00 00", "B: 00 0b 00 00 00 00 00 00 00",
                "################################", "#      Waiting for events      #",
                "################################")
    for line in lines_with_stray(frames, lambda time, event, note: "E: %d.%06d %04x %04x %04d\t# %s" % (
            (time + base) // 1_000_000, (time + base) % 1_000_000, *event, note)):
        yield line


def libinput_head(devices):
    yield from ("# libinput record", "version: 1", "ndevices: %d" % devices, "libinput:", '  version: "1.22.1"',
                '  git: "unknown"', "system:", '  os: "debian:12"', '  kernel: "6.1.0-18-amd64"',
                '  dmi: "dmi:bvnLENOVO:bvrGJET72WW(2.22):bd02/21/2014"', "devices:")


def libinput_device(device):
    yield from ("- node: " + device["node"], "  evdev:", "    # Name: " + device["name"],
                '    name: "%s"' % device["name"], "    id: [%d, %d, %d, %d]" % device["id"], "    codes:",
                "      0: [0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15] # EV_SYN", "    properties: []",
                "  udev:", "    properties:", "    - ID_INPUT=1", "  quirks:", "  events:")


def libinput(device, frames):
    yield from libinput_device(device)
    yield "  # Current time is 22:59:20"
    for number, (time, events) in enumerate(frames):
        if number in STRAY:
            yield STRAY[number]
        yield "  - evdev:"
        for event in events:
            yield "    - [%3d, %6d, %3d, %3d, %7d] # %s" % (time // 1_000_000, time % 1_000_000, *event,
                                                           comment(event, 0))


def libinput_flat(device, frames):
    """As older versions and other writers of YAML have it: a frame a line."""
    yield from libinput_device(device)
    for time, events in frames:
        lists = ["[%d, %d, %d, %d, %d]" % (time // 1_000_000, time % 1_000_000, *event) for event in events]
        yield "  - evdev: [%s]" % ", ".join(lists)


def write(name, *parts):
    (FOLDER / name).write_text("".join(line + "\n" for part in parts for line in part))


def main():
    e = evening()
    write("evening.evemu", evemu(KEYBOARD, e.keyboard, 1_695_243_560_000_000),
          evemu(MOUSE, e.mouse, 1_695_243_560_000_000))
    write("evening.yml", libinput_head(2), libinput(KEYBOARD, e.keyboard), libinput(MOUSE, e.mouse))
    write("evening-flat.yml", libinput_head(2), libinput_flat(MOUSE, e.mouse), libinput_flat(KEYBOARD, e.keyboard))
    write("evening-documents.yml", libinput_head(1), libinput(KEYBOARD, e.keyboard), ["---"], libinput_head(1),
          libinput(MOUSE, e.mouse))


if __name__ == "__main__":
    FOLDER = Path(sys.argv[1])
    FOLDER.mkdir(parents=True, exist_ok=True)
    main()
