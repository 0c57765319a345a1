"""Keys, modifiers and keyboards."""

import time

from check import check, ends_well, expect
from typist import EV_KEY, KEYS, MODIFIERS

LETTERS = "thequickbrownfxjmpsvlazydg"


@check("each key, pressed once on a USB keyboard and once on a virtio one")
def single_presses(lab):
    lab.start()
    for display in ("screen0", "screen1"):
        for key in KEYS:
            lab.typist.tap(key, display)
    ends_well(lab)
    return f"{2 * len(KEYS)} presses"


@check("the keyboard that every PC has (PS/2)")
def built_in_keyboard(lab):
    lab.start()
    for key in LETTERS:
        lab.typist.tap(key, None)
    ends_well(lab)


@check("a key that is held until it repeats counts once")
def held_until_it_repeats(lab):
    lab.start()
    repeats = 0
    for key in ("j", "backspace", "down"):
        lab.typist.down(key)
        lab.typist.witness(EV_KEY, KEYS[key][0], 2)
        time.sleep(0.5)
        lab.typist.up(key)
        repeats += 1 + lab.typist.reports(EV_KEY, KEYS[key][0], 2)
    ends_well(lab)
    return f"the kernel reported {repeats} repeats"


@check("both sides of each modifier, and a shortcut while one of two is still held")
def both_sides(lab):
    lab.start()
    typist = lab.typist
    for key in MODIFIERS:
        typist.down(key)
        typist.tap("c")
        typist.up(key)
    for left, right in (("ctrl", "ctrl_r"), ("alt", "alt_r"), ("meta_l", "meta_r"), ("shift", "shift_r")):
        typist.down(left)
        typist.down(right)
        typist.up(left)
        typist.tap("v")
        typist.up(right)
        typist.tap("x")
    ends_well(lab)


@check("a shortcut with three modifiers; Caps Lock is none")
def three_modifiers(lab):
    lab.start()
    for key in ("ctrl", "shift", "meta_r"):
        lab.typist.down(key)
    lab.typist.tap("s")
    for key in ("meta_r", "shift", "ctrl"):
        lab.typist.up(key)
    lab.typist.tap("caps_lock")
    lab.typist.tap("s")
    ends_well(lab)


@check("shortcuts over two keyboards")
def two_keyboards(lab):
    lab.start()
    typist = lab.typist
    typist.down("ctrl", "screen0")
    typist.tap("c", "screen1")
    typist.down("ctrl", "screen1")
    typist.up("ctrl", "screen0")
    typist.tap("v", "screen0")
    typist.up("ctrl", "screen1")
    typist.tap("v", "screen0")
    ends_well(lab)


@check("a modifier that was held before the recorder started")
def held_before(lab):
    lab.typist.down("ctrl", "screen1", counts=False)
    lab.start()
    lab.typist.tap("c", "screen0")
    lab.typist.up("ctrl", "screen1")
    lab.typist.tap("c", "screen0")
    ends_well(lab)


def plug(lab):
    lab.machine.ask_monitor("device_add", driver="usb-kbd", id="third", bus="usb.0", display="screen2")
    while lab.machine.witness.next("a keyboard is found") != "opened QEMU QEMU USB Keyboard":
        pass


def pull(lab):
    lab.machine.ask_monitor("device_del", id="third")
    while lab.machine.witness.next("a keyboard is gone") != "closed QEMU QEMU USB Keyboard":
        pass


@check("a keyboard that is plugged in while it runs, and pulled while a key is held")
def plugged_and_pulled(lab):
    lab.start()
    for key in ("ctrl", "meta_l"):
        listening = lab.said().count("listening to QEMU QEMU USB Keyboard")
        plug(lab)
        lab.heard_times("listening to QEMU QEMU USB Keyboard", listening + 1)
        lab.typist.tap("a", "screen2")
        lab.typist.down(key, "screen2")
        lab.typist.tap("c", "screen0")
        pull(lab)
        lab.typist.held.clear()
        lab.typist.tap("c", "screen0")
    ends_well(lab)


def with_a_pad(lab, *options, counts):
    """Strikes keys on a keyboard that a program made."""
    lab.machine.must("mkfifo /tmp/pad && (helper pad /tmp/pad 'Macro pad' </dev/null >/dev/null 2>&1 & echo $! >/tmp/pad.pid)")
    try:
        while lab.machine.witness.next("a pad") != "opened Macro pad":
            pass
        lab.start(*options)
        for key in ("a", "s", "d"):
            lab.machine.must(f"echo {KEYS[key][0]} >/tmp/pad")
            lab.typist.witness(EV_KEY, KEYS[key][0], 1)
            lab.typist.witness(EV_KEY, KEYS[key][0], 0)
            if counts:
                lab.typist.expect(key)
        lab.typist.tap("f")
        ends_well(lab)
    finally:
        lab.machine.must("kill $(cat /tmp/pad.pid); rm /tmp/pad")


@check("a keyboard that a program made (uinput) does not count")
def made_by_a_program(lab):
    with_a_pad(lab, counts=False)


@check("it counts with --remapper")
def remapper(lab):
    with_a_pad(lab, "--remapper", "macro", counts=True)


@check("a user who may not read the devices is told so, and nothing is written")
def may_not_read(lab):
    lab.start(user="bob", folder=None, waits=False)
    status = lab.ended()
    said = lab.said()
    expect(status == 1, f"ended with {status}: {said}")
    expect("QEMU QEMU USB Keyboard" in said and "Permission denied" in said, said)
    expect(lab.machine.run("ls -A /home/bob")[0].strip() == "", "something was written")
