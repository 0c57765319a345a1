"""Buttons, wheels and motion."""

from check import check, ends_well, expect
from typist import EV_REL, SCROLLS

HI_RES = 11  # the kernel's code of a wheel's turn in parts


def with_mouse(lab, play, driver, **options):
    lab.start()
    heard = lab.said().count("Mouse")
    lab.machine.ask_monitor("device_add", driver=driver, id="mouse", **options)
    while "Mouse" not in lab.machine.witness.next("a mouse is found"):
        pass
    lab.heard_times("Mouse", heard + 1)
    try:
        play(lab)
    finally:
        lab.machine.ask_monitor("device_del", id="mouse")
        while not lab.machine.witness.next("a mouse is gone").startswith("closed"):
            pass
    ends_well(lab)


def click_and_scroll(lab, display=None):
    for button in ("left", "right", "middle", "side", "left"):
        lab.typist.click(button, display)
    for turn in ("wheel-up", "wheel-up", "wheel-down", "wheel-down", "wheel-down"):
        lab.typist.scroll(turn, display)


@check("buttons and the wheel of a USB mouse, which reports whole steps and parts")
def usb_mouse(lab):
    with_mouse(lab, click_and_scroll, "usb-mouse", bus="usb.0")


@check("buttons and the wheel of a virtio mouse, which reports whole steps alone")
def virtio_mouse(lab):
    with_mouse(lab, lambda lab: click_and_scroll(lab, "screen1"), "virtio-mouse-pci", display="screen1")


@check("buttons and the wheel of the mouse that every PC has (PS/2)")
def built_in_mouse(lab):
    lab.start()
    click_and_scroll(lab)
    ends_well(lab)


@check("motion: so many points, and none without it")
def motion(lab):
    def play(lab):
        for _ in range(50):
            lab.typist.glide(20, 0)
            lab.typist.glide(0, -15)
        lab.typist.click("left")

    with_mouse(lab, play, "usb-mouse", bus="usb.0")
    expect(500 < lab.distance < 5000, f"{lab.distance} points for 1,750 units of the device")
    moved = lab.distance
    lab.clean()
    lab.start()
    lab.typist.tap("a")
    ends_well(lab)
    expect(lab.distance == 0, f"{lab.distance} points without motion")
    return f"{moved} points for 1,750 units of the device"


@check("a wheel that turns in eighths of a step")
def fine_wheel(lab):
    machine = lab.machine
    machine.must("mkfifo /tmp/wheel && (helper wheel /tmp/wheel 'Fine wheel' </dev/null >/dev/null 2>&1 & echo $! >/tmp/wheel.pid)")
    try:
        while machine.witness.next("a wheel") != "opened Fine wheel":
            pass
        lab.start()
        for eighths, steps in ((8, 1), (-24, 3), (4, 0), (4, 1), (-4, 0), (4, 0)):
            machine.must(f"echo {eighths} >/tmp/wheel")
            lab.typist.witness(EV_REL, HI_RES, 15 * eighths)
            for _ in range(steps):
                lab.typist.count("mouse", lab.typist.hour, SCROLLS - 1)
        lab.typist.tap("a")
        ends_well(lab)
    finally:
        machine.must("kill $(cat /tmp/wheel.pid); rm /tmp/wheel")
