#!/usr/bin/env python3
"""Shows widgets on a desktop of its own, X11 or Wayland, and looks at the screen: window_test.py PROGRAMS x11|wayland

Ends with 77 where that desktop is not installed."""

import contextlib
import datetime
import json
import os
import pathlib
import re
import shutil
import signal
import socket
import struct
import subprocess
import sys
import tempfile
import time

PAPER = (243, 243, 243)  # of a light widget
ACCENT = (0, 102, 217)  # of its line over the hours


def until(what, test, seconds=60):
    end = time.monotonic() + seconds
    while not (result := test()):
        if time.monotonic() > end:
            sys.exit(f"not seen in {seconds} s: {what}")
        time.sleep(0.1)
    return result


@contextlib.contextmanager
def running(arguments, **options):
    process = subprocess.Popen(arguments, **options)
    try:
        yield process
    finally:
        process.terminate()
        process.wait(30)


class X11:
    needs = ["Xvfb", "xdotool"]
    last = ("screen", "1100 130")

    def __init__(self, folder, stack):
        self.frame = folder / "Xvfb_screen0"
        reading, writing = os.pipe()
        stack.enter_context(running(["Xvfb", "-displayfd", str(writing), "-fbdir", folder, "-screen", "0", "1600x300x24"],
                                    pass_fds=[writing], stderr=subprocess.DEVNULL))
        self.variables = {"DISPLAY": ":" + os.read(reading, 20).decode().strip(), "GDK_BACKEND": "x11"}

    def column(self, x, y, height):
        """From the screen in memory, a file of XWD."""
        data = self.frame.read_bytes()
        header = struct.unpack(">20I", data[:80])
        rows = [header[0] + header[19] * 12 + row * header[12] + 4 * x for row in range(y, y + height)]
        return [tuple(data[at:at + 3][::-1]) for at in rows]


    def drag(self, *points):
        steps = [word for x, y in points[1:] for word in ("mousemove", str(x), str(y), "sleep", "0.02")]
        subprocess.run(["xdotool", "mousemove", *map(str, points[0]), "mousedown", "1", *steps, "mouseup", "1"],
                       env={**os.environ, **self.variables}, check=True)


class Wayland:
    needs = ["sway", "grim"]
    last = ("HEADLESS-2", "300 130")

    def __init__(self, folder, stack):
        config = folder / "sway"
        config.write_text("output * resolution 800x300 bg #335577 solid_color\n"
                          "output HEADLESS-1 position 0 0\noutput HEADLESS-2 position 800 0\nxwayland disable\n")
        self.variables = {"XDG_RUNTIME_DIR": str(folder), "GDK_BACKEND": "wayland"}
        # sway does not run as root.
        user = ["setpriv", "--reuid", "65534", "--regid", "65534", "--clear-groups"] if os.getuid() == 0 else []
        if user:
            for path in (folder, config):
                os.chown(path, 65534, 65534)
        stack.enter_context(running([*user, "sway", "-c", config], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                                    env={**os.environ, **self.variables, "HOME": str(folder), "WLR_BACKENDS": "headless", "WLR_HEADLESS_OUTPUTS": "2",
                                         "WLR_LIBINPUT_NO_DEVICES": "1", "WLR_RENDERER": "pixman"}))
        self.variables["WAYLAND_DISPLAY"] = until("sway's socket", lambda: next(folder.glob("wayland-?"), None)).name

    def column(self, x, y, height):
        picture = subprocess.run(["grim", "-g", f"{x},{y} 1x{height}", "-t", "ppm", "-"], env={**os.environ, **self.variables},
                                 capture_output=True, check=True).stdout
        pixels = picture[-3 * height:]
        return [tuple(pixels[at:at + 3]) for at in range(0, len(pixels), 3)]


    def drag(self, *points):
        pointer = VirtualPointer(f"{self.variables['XDG_RUNTIME_DIR']}/{self.variables['WAYLAND_DISPLAY']}")
        pointer.move(*points[0])
        pointer.button(True)
        for point in points[1:]:
            pointer.move(*point)
        pointer.button(False)
        self.pointer = pointer  # it leaves with its connection


class VirtualPointer:
    """A mouse, by the Wayland protocol wlr-virtual-pointer."""

    def __init__(self, path):
        self.socket = socket.socket(socket.AF_UNIX)
        self.socket.connect(path)
        self.send(1, 1, struct.pack("I", 2))  # the registry is object 2
        manager = "zwlr_virtual_pointer_manager_v1"
        text = struct.pack("I", len(manager) + 1) + manager.encode().ljust(-(-(len(manager) + 1) // 4) * 4, b"\0")
        globals_ = b""
        while (at := globals_.find(text)) < 0:
            globals_ += self.socket.recv(4096)
        name = globals_[at - 4:at]
        self.send(2, 0, name + text + struct.pack("II", 1, 3))
        self.send(3, 0, struct.pack("II", 0, 4))

    def send(self, target, request, arguments):
        self.socket.sendall(struct.pack("II", target, (8 + len(arguments)) << 16 | request) + arguments)

    def move(self, x, y):
        self.send(4, 1, struct.pack("5I", 0, x, y, 1600, 300))
        self.frame()

    def button(self, isDown):
        self.send(4, 2, struct.pack("3I", 0, 0x110, isDown))
        self.frame()

    def frame(self):
        self.send(4, 4, b"")
        time.sleep(0.02)


def snapshot(day):
    return json.dumps({"day": str(day), "today": 24000, "byHour": [1000] * 24, "week": [], "heat": [], "language": "en"})


def replace(file, text):
    beside = file.with_name(".new")
    beside.write_text(text, encoding="utf-8")
    beside.rename(file)


def watched(process):
    """The inodes whose changes wake it up."""
    text = ""
    for file in pathlib.Path(f"/proc/{process.pid}/fdinfo").iterdir():
        with contextlib.suppress(FileNotFoundError):  # closed by now
            text += file.read_text()
    return {int(inode, 16) for inode in re.findall(r"^inotify .*?ino:([0-9a-f]+)", text, re.MULTILINE)}


def sleepsThroughNeighbours(process, folder):
    """Whether changes in the folder wake it up, and those beside it do not."""
    inodes = watched(process)
    return folder.stat().st_ino in inodes and folder.parent.stat().st_ino not in inodes


def isLine(desktop):
    """The hours are at 40, 40; their line is level, three quarters and more up the chart."""
    return ACCENT in desktop.column(200, 70, 60)


def test(desktop, programs, home):
    file = home / "share/Tappora/widget.json"
    environment = {"PATH": os.environ["PATH"], "HOME": str(home), "XDG_DATA_HOME": str(home / "share"),
                   "XDG_CONFIG_HOME": str(home / "config"), "NO_AT_BRIDGE": "1", "ASAN_OPTIONS": "detect_leaks=0",
                   "LANG": "C.UTF-8", **desktop.variables}
    with running([programs / "tappora-widgets", "hours"], env=environment) as program:
        until("the widget", lambda: desktop.column(200, 60, 1) == [PAPER])
        assert not isLine(desktop), "counts where there are none"
        assert desktop.column(41, 41, 1) != [PAPER], "a corner that is not round"
        file.parent.mkdir(parents=True)
        replace(file, snapshot(datetime.date.today()))
        until("the hours", lambda: isLine(desktop))
        until("its folder watched, and none above", lambda: sleepsThroughNeighbours(program, file.parent))
        replace(file, snapshot(datetime.date.today() - datetime.timedelta(days=1)))
        until("waiting, yesterday's file being none", lambda: not isLine(desktop))
        desktop.drag(*((60 + 53 * step, 60 + 10 * step) for step in range(21)))
        until("the place that it was dragged to", lambda: desktop.column(1200, 150, 1) == [PAPER])
        assert desktop.column(200, 60, 1) != [PAPER], "it is still where it was"
        until("it kept", (home / "config/tappora/settings.json").exists)
        kept = json.loads((home / "config/tappora/settings.json").read_text(encoding="utf-8"))
        assert kept == {"widgets.place.hours:medium": desktop.last[0],
                        f"widgets.place.hours:medium@{desktop.last[0]}": desktop.last[1]}, kept
        program.send_signal(signal.SIGTERM)
        assert (status := program.wait(30)) == 0, f"it ends with {status}"


def main():
    programs, kind = pathlib.Path(sys.argv[1]), {"x11": X11, "wayland": Wayland}[sys.argv[2]]
    missing = [need for need in kind.needs if not shutil.which(need)]
    if missing:
        print("not installed:", *missing)
        sys.exit(77)
    with tempfile.TemporaryDirectory() as home, tempfile.TemporaryDirectory() as folder, contextlib.ExitStack() as stack:
        test(kind(pathlib.Path(folder), stack), programs, pathlib.Path(home))


main()
