#!/usr/bin/env python3
"""Shows widgets on a desktop of its own, X11 or Wayland, and looks at the screen: window_test.py PROGRAMS x11|wayland

Ends with 77 where that desktop is not installed."""

import contextlib
import datetime
import json
import os
import pathlib
import shutil
import signal
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
    needs = ["Xvfb"]

    def __init__(self, folder, stack):
        self.frame = folder / "Xvfb_screen0"
        reading, writing = os.pipe()
        stack.enter_context(running(["Xvfb", "-displayfd", str(writing), "-fbdir", folder, "-screen", "0", "800x300x24"],
                                    pass_fds=[writing], stderr=subprocess.DEVNULL))
        self.variables = {"DISPLAY": ":" + os.read(reading, 20).decode().strip(), "GDK_BACKEND": "x11"}

    def column(self, x, y, height):
        """From the screen in memory, a file of XWD."""
        data = self.frame.read_bytes()
        header = struct.unpack(">20I", data[:80])
        rows = [header[0] + header[19] * 12 + row * header[12] + 4 * x for row in range(y, y + height)]
        return [tuple(data[at:at + 3][::-1]) for at in rows]


class Wayland:
    needs = ["sway", "grim"]

    def __init__(self, folder, stack):
        config = folder / "sway"
        config.write_text("output HEADLESS-1 resolution 800x300 bg #335577 solid_color\nxwayland disable\n")
        self.variables = {"XDG_RUNTIME_DIR": str(folder), "GDK_BACKEND": "wayland"}
        # sway does not run as root.
        user = ["setpriv", "--reuid", "65534", "--regid", "65534", "--clear-groups"] if os.getuid() == 0 else []
        if user:
            for path in (folder, config):
                os.chown(path, 65534, 65534)
        stack.enter_context(running([*user, "sway", "-c", config], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                                    env={**os.environ, **self.variables, "HOME": str(folder), "WLR_BACKENDS": "headless",
                                         "WLR_LIBINPUT_NO_DEVICES": "1", "WLR_RENDERER": "pixman"}))
        socket = until("sway's socket", lambda: next(folder.glob("wayland-?"), None))
        self.variables["WAYLAND_DISPLAY"] = socket.name

    def column(self, x, y, height):
        picture = subprocess.run(["grim", "-g", f"{x},{y} 1x{height}", "-t", "ppm", "-"], env={**os.environ, **self.variables},
                                 capture_output=True, check=True).stdout
        pixels = picture[-3 * height:]
        return [tuple(pixels[at:at + 3]) for at in range(0, len(pixels), 3)]


def snapshot(day):
    return json.dumps({"day": str(day), "today": 24000, "byHour": [1000] * 24, "week": [], "heat": [], "language": "en"})


def replace(file, text):
    beside = file.with_name(".new")
    beside.write_text(text, encoding="utf-8")
    beside.rename(file)


def switches(process):
    """How often any thread of it has gone to sleep."""
    status = [task.read_text() for task in pathlib.Path(f"/proc/{process.pid}/task").glob("*/status")]
    return sum(int(line.split()[1]) for text in status for line in text.splitlines() if line.startswith("voluntary_ctxt_switches"))


def isLine(desktop):
    """The hours lie at 40, 40; their line is level, three quarters and more up the chart."""
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
        time.sleep(1)
        before = switches(program)
        (home / "share/stranger").write_text("of another program", encoding="utf-8")
        time.sleep(3)
        assert switches(program) == before, "it does not sleep"
        replace(file, snapshot(datetime.date.today() - datetime.timedelta(days=1)))
        until("waiting, yesterday's file being none", lambda: not isLine(desktop))
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
