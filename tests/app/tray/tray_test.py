#!/usr/bin/env python3
"""Shows the tray to a watcher on a bus of its own, and plays the recorder to it: tray_test.py PROGRAMS

Ends with 77 where the bus, the display or Python's GLib is not installed."""

import contextlib
import datetime
import json
import os
import pathlib
import shutil
import socket
import subprocess
import sys
import tempfile
import threading
import time

SYSTEM_PYTHON = "/usr/bin/python3"
try:
    from gi.repository import Gio, GLib
except ImportError:
    if sys.executable == SYSTEM_PYTHON or not os.path.exists(SYSTEM_PYTHON):
        sys.exit(77)
    os.execv(SYSTEM_PYTHON, [SYSTEM_PYTHON, *sys.argv])
if not all(map(shutil.which, ["dbus-run-session", "Xvfb"])):
    sys.exit(77)

WATCHER = Gio.DBusNodeInfo.new_for_xml("""<node><interface name="org.kde.StatusNotifierWatcher">
  <method name="RegisterStatusNotifierItem"><arg type="s" direction="in"/></method>
  <property name="RegisteredStatusNotifierItems" type="as" access="read"/>
  <property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
  <property name="ProtocolVersion" type="i" access="read"/>
  <signal name="StatusNotifierHostRegistered"/></interface></node>""").interfaces[0]
PROPERTIES = {"RegisteredStatusNotifierItems": GLib.Variant("as", []), "ProtocolVersion": GLib.Variant("i", 0),
              "IsStatusNotifierHostRegistered": GLib.Variant("b", True)}


def until(what, test, seconds=60):
    end = time.monotonic() + seconds
    while not (result := test()):
        if time.monotonic() > end:
            sys.exit(f"not seen in {seconds} s: {what}")
        while GLib.MainContext.default().iteration(False):
            pass
        time.sleep(0.05)
    return result


@contextlib.contextmanager
def running(arguments, **options):
    process = subprocess.Popen(arguments, **options)
    try:
        yield process
    finally:
        process.terminate()
        process.wait(30)


class Recorder:
    """Answers as a recorder does, whose only keyboard can be unplugged."""

    def __init__(self, runtime):
        self.has_keyboard, self.pause, self.asked = True, None, []
        (runtime / "tappora").mkdir(mode=0o700)
        self.server = socket.socket(socket.AF_UNIX)
        self.server.bind(str(runtime / "tappora/record-0.sock"))
        self.server.listen()
        threading.Thread(target=self.serve, daemon=True).start()

    def serve(self):
        while True:
            connection, _ = self.server.accept()
            question = json.loads(connection.makefile().readline())
            if question["ask"] != "status":
                self.asked.append(question)
                since = {"since": "2026-09-20T07:00:00Z"}
                self.pause = {**since, **question} if question["ask"] == "pause" else None
            devices = [{"name": "A keyboard", "keyboard": True}] if self.has_keyboard else []
            status = {"process": 1, "folder": "/", "since": "2026-09-20T07:00:00Z", "devices": devices,
                      "unreadable": [], "locked": False, **({"pause": self.pause} if self.pause else {})}
            connection.sendall(json.dumps({"status": status}).encode() + b"\n")
            connection.close()


class Watcher:
    """What a panel has on the bus, and sees of the item that registers."""

    def __init__(self):
        self.bus = Gio.bus_get_sync(Gio.BusType.SESSION)
        self.item = None
        self.bus.register_object("/StatusNotifierWatcher", WATCHER, self.called, lambda *of: PROPERTIES[of[4]], None)
        Gio.bus_own_name_on_connection(self.bus, "org.kde.StatusNotifierWatcher", 0, None, None)

    def called(self, bus, sender, path, interface, method, arguments, invocation):
        self.item = (sender, arguments.unpack()[0])
        invocation.return_value(None)

    def call(self, path, method, arguments):
        interface, name = method.rsplit(".", 1)
        return self.bus.call_sync(self.item[0], path, interface, name, arguments, None, 0, 10000, None).unpack()

    def sees(self, name):
        path = self.item[1]
        asked = GLib.Variant("(ss)", ("org.kde.StatusNotifierItem", name))
        return self.call(path, "org.freedesktop.DBus.Properties.Get", asked)[0]

    def menu(self):
        """The entries' numbers and whether they can be chosen, by label."""
        asked = GLib.Variant("(iias)", (0, -1, []))
        entries = self.call(self.sees("Menu"), "com.canonical.dbusmenu.GetLayout", asked)[1][2]
        return {entry[1]["label"]: (entry[0], entry[1].get("enabled", True)) for entry in entries if "label" in entry[1]}

    def choose(self, label):
        number = self.menu()[label][0]
        arguments = GLib.Variant("(isvu)", (number, "clicked", GLib.Variant("s", ""), 0))
        self.call(self.sees("Menu"), "com.canonical.dbusmenu.Event", arguments)


def expect(what, seen, expected):
    if seen != expected:
        sys.exit(f"{what}: {seen!r}, not {expected!r}")


def look_at(watcher, recorder, tray):
    until("an item", lambda: watcher.item)
    until("it counts", lambda: watcher.sees("IconName") == "tappora-counting")
    until("today's count", lambda: watcher.sees("XAyatanaLabel") == "1,234")
    expect("title", watcher.sees("Title"), "Tappora: Counting: 1,234 keys today")
    icons = pathlib.Path(watcher.sees("IconThemePath"))
    for name in ("counting", "paused", "off"):
        expect(name, (icons / f"tappora-{name}.svg").is_file(), True)
    expect("resume", watcher.menu()["Resume"][1], False)
    watcher.choose("Pause for 15 minutes")
    until("the pause", lambda: watcher.sees("IconName") == "tappora-paused")
    end = datetime.datetime.fromisoformat(recorder.asked[0]["until"].replace("Z", "+00:00"))
    minutes = (end - datetime.datetime.now(datetime.timezone.utc)).total_seconds() / 60
    expect("minutes", 0 < minutes <= 15 + 1 / 60, True)  # to the next whole second
    expect("pausing again", watcher.menu()["Pause for an hour"][1], False)
    watcher.choose("Resume")
    until("it counts again", lambda: watcher.sees("IconName") == "tappora-counting")
    watcher.choose("Pause until tomorrow")
    until("the long pause", lambda: watcher.sees("IconName") == "tappora-paused")
    expect("end", recorder.asked[2]["until"][11:], "00:00:00Z")
    recorder.pause, recorder.has_keyboard = None, False
    until("no keyboard", lambda: watcher.sees("IconName") == "tappora-off")
    until("why", lambda: watcher.sees("Title").startswith("Tappora: Not counting: no keyboard can be read"))
    with contextlib.suppress(GLib.Error):  # it may end before it answers
        watcher.choose("Quit")
    until("the end", lambda: tray.poll() is not None)
    expect("exit status", tray.returncode, 0)


def main(programs):
    with contextlib.ExitStack() as stack:
        home = pathlib.Path(stack.enter_context(tempfile.TemporaryDirectory()))
        reading, writing = os.pipe()
        stack.enter_context(running(["Xvfb", "-displayfd", str(writing)], pass_fds=[writing],
                                    stderr=subprocess.DEVNULL))
        shared = home / ".local/share/Tappora"
        shared.mkdir(parents=True)
        day = datetime.datetime.now(datetime.timezone.utc).strftime("%Y-%m-%d")
        hours = [0] * 24
        hours[0] = 1234
        (shared / "widget.json").write_text(json.dumps(
            {"day": day, "today": 1234, "byHour": hours, "week": [], "heat": [], "language": "en"}))
        runtime = home / "runtime"
        runtime.mkdir(mode=0o700)
        environment = {**os.environ, "HOME": str(home), "XDG_RUNTIME_DIR": str(runtime), "GDK_BACKEND": "x11",
                       "DISPLAY": ":" + os.read(reading, 20).decode().strip(), "TZ": "UTC"}
        for name in ("XDG_DATA_HOME", "XDG_CONFIG_HOME", "WAYLAND_DISPLAY"):
            environment.pop(name, None)
        recorder, watcher = Recorder(runtime), Watcher()
        with running([pathlib.Path(programs) / "tappora-tray"], env=environment) as tray:
            look_at(watcher, recorder, tray)


if "TAPPORA_TRAY_BUS" not in os.environ:
    os.environ["TAPPORA_TRAY_BUS"] = "own"
    os.execvp("dbus-run-session", ["dbus-run-session", "--", sys.executable, *sys.argv])
main(*sys.argv[1:])
