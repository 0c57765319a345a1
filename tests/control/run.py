#!/usr/bin/env python3
"""Asks, pauses and resumes a live recorder: run.py PROGRAMS INJECTOR STAGE PRELOADS

The recorder listens to a keyboard that the stage plays, and its clock stands still unless it is set.
"""
import json
import os
import signal
import socket
import subprocess
import sys
import tempfile
from datetime import datetime, timedelta, timezone
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tests/faults"))
from actors import Recorder, Stage  # noqa: E402
from world import PATIENCE, World  # noqa: E402

A = 30  # a key
MOCKING = "/usr/bin/python3"  # the one that Debian's modules are for
HAS_MOCK = subprocess.run([MOCKING, "-c", "import dbusmock"], check=False, stderr=subprocess.DEVNULL).returncode == 0


class Session:
    """A data folder, a keyboard, and a recorder that can be started and ended."""

    def __init__(self, programs, injector, stage, place):
        self.programs, self.stage = programs, stage
        self.world = World(place, injector, {})
        self.world.make()
        stage.plug()
        self.environment = self.world.environment() | stage.variables(self.world)
        self.environment["DBUS_SYSTEM_BUS_ADDRESS"] = "unix:path=/nowhere"

    def start(self, first):
        """Starts a recorder, which prints this and is ready then."""
        environment = dict(self.environment)
        environment["LD_PRELOAD"] += " " + self.stage.preloads
        program = str(self.programs / "tappora-record")
        self.recorder = Recorder([program, "--watch", "--folder", f"{self.world.root}/data"], environment)
        expect(self.recorder.prints("counts go to"), True, "it is ready")
        expect(first in self.recorder.printed, True, f"it says {first}")

    def says(self, text):
        expect(self.recorder.prints(text), True, f"it says {text}: {self.recorder.printed}")

    def press(self):
        self.stage.tell(f"tap {self.stage.number} {A}")

    def counts_not(self):
        """What is pressed does not count. Nothing shows when it was read, but that of another keyboard after it."""
        self.press()
        self.plug()

    def plug(self):
        """Another keyboard takes the place of this one."""
        old = self.stage.number
        self.stage.plug()
        self.says(f"listening to A keyboard (/dev/input/event{self.stage.number})")
        self.stage.tell(f"unplug {old}")

    def counts(self):
        self.press()
        self.says("key — counted")

    def end(self, by):
        self.recorder.process.send_signal(by)
        self.recorder.process.wait()

    def ask(self, *words, status, out=None, err=""):
        """Runs `tappora` for the data folder and compares what it prints, in which the world's place is ROOT."""
        ended = subprocess.run([str(self.programs / "tappora"), *words, "--folder", f"{self.world.root}/data"], env=self.environment, capture_output=True,
                               text=True, timeout=PATIENCE, check=False)
        named = {"out": ended.stdout, "err": ended.stderr}
        shown = {name: text.replace(str(self.world.root), "ROOT") for name, text in named.items()}
        expect((ended.returncode, shown["err"]), (status, err), " ".join(words))
        if out is not None:
            expect(shown["out"], out, " ".join(words))
        return ended.stdout

    def sockets(self):
        return sorted((self.world.root / "run/tappora").glob("record-*.sock"))

    def total(self):
        return json.loads(self.ask("summary", "--json", "--from", "2026-09-20", "--to", "2026-09-20", status=0))


def expect(got, wanted, what):
    if got != wanted:
        sys.exit(f"{what}: {got!r} instead of {wanted!r}")


NO_BUS = (("Locked", "not known: system bus: No such file or directory"),
          ("To know it", "`sudo systemctl start dbus systemd-logind` has it known; where that is not possible, `tappora settings "
           "set record.pauseWhenLocked false` ends this notice, and `tappora pause` pauses"))


def facts(headline, since, keyboard, *rows):
    usual = [("Folder", "ROOT/data"), ("Since", since), ("Listens to", f"A keyboard (/dev/input/event{keyboard})")]
    return headline + "".join(f"{title:<12} {value}\n" for title, value in [*usual, *rows, *NO_BUS])


def tells_what_it_does(session):
    session.start("listening to A keyboard")
    session.ask("status", status=0, out=facts("Counting.\n", "10:00", 1, ("Last stored", "nothing yet")))
    session.counts()
    session.stage.set_clock(session.stage.BEGIN + 60)
    session.counts()
    session.ask("status", status=0, out=facts("Counting.\n", "10:00", 1, ("Last stored", "10:01: 1 press, 0 clicks")))
    expect(str(session.recorder.printed).count("what is typed while the session is locked counts"), 1, "the notice, in two minutes")
    answer = json.loads(session.ask("status", "--json", status=0))
    expect((answer["counts"], answer["recorders"][0]["process"]), (True, session.recorder.process.pid), "--json")
    session.name = session.sockets()[0].name
    expect(oct(session.sockets()[0].stat().st_mode & 0o777), "0o600", "the socket's mode")


def is_held_up_by_nobody(session):
    """Clients that say nothing, half a line, too much, or nonsense."""
    clients = []
    for said in [b"", b'{"ask":', b"x" * 9000, b'{"ask":"everything"}\n'] * 5:
        client = socket.socket(socket.AF_UNIX)
        client.connect(str(session.sockets()[0]))
        client.send(said)
        clients.append(client)
    session.ask("status", status=0)
    session.counts()


def is_asked_by_setup(session):
    """Setting up ends with what the recorder says. systemd is played."""
    plays = session.world.root / "plays"
    plays.mkdir()
    for name, play in (("id", "case $* in -un) echo ada ;; -u) /usr/bin/id -u ;; *) echo ada input ;; esac"),
                       ("systemctl", "case $* in *show*) echo Version=252 ;; *is-enabled*) exit 1 ;; esac")):
        (plays / name).write_text(f"#!/bin/sh\n{play}\n")
        (plays / name).chmod(0o755)
    environment = session.environment | {"PATH": f"{plays}:{os.environ['PATH']}", "TAPPORA_FOLDER": f"{session.world.root}/data"}
    ended = subprocess.run([str(session.programs / "tappora"), "setup", "user-service"], env=environment, capture_output=True,
                           text=True, timeout=PATIENCE, check=False)
    expect((ended.returncode, ended.stderr, ended.stdout.replace(str(session.world.root), "ROOT")),
           (0, "", "user-service: set up\nIt counts into ROOT/data.\nWhat it counts: tappora status. "
            "Its log: journalctl --user -u tappora-record\n"), "setup")


def pauses_over_kills_and_ends_by_itself(session):
    session.ask("pause", "30m", status=0, out="Paused until 10:31: nothing is counted.\n")
    pause = {"since": "2026-09-20T10:01:30Z", "until": "2026-09-20T10:31:30Z"}
    expect(json.loads(session.ask("--json", status=0))["pause"], pause, "the glance")
    expect(json.loads(session.ask("widget", status=0))["pause"], pause, "the widgets' feed")
    session.says("paused until 10:31: nothing is counted")
    session.counts_not()
    session.end(signal.SIGKILL)
    session.start("listening to A keyboard")
    session.says("paused until 10:31: nothing is counted")
    session.ask("status", status=3, out=facts("Paused until 10:31: nothing is counted.\n", "10:01", session.stage.number,
                                              ("Last stored", "nothing yet"), ("Paused since", "10:01")))
    session.counts_not()
    session.stage.set_clock(session.stage.BEGIN + 31 * 60 + 1)
    session.press()
    session.says("counting again")
    session.says("key — counted")
    session.ask("resume", status=0, out="Counting again.\n")


def distrusts_what_is_kept(session):
    """A file that says nothing of use is a pause without an end; so is one that cannot be read."""
    state = session.world.root / "home/.local/state/tappora"
    kept = state / session.name.replace("record-", "pause-").replace(".sock", ".json")
    for text, why in (('{"since": "2026-09-20T10:00:00Z", "until": "2036-09-20T10:00:00Z"}', "a pause is 31 days at most"),
                      ('{"since": 5}', "since: not a string"), ("", "parse error"), (None, "Is a directory")):
        if text is None:
            kept.unlink()
            kept.mkdir()
        else:
            kept.write_text(text)
        session.start(f"{kept}: {why}")
        session.says("paused: nothing is counted")
        session.counts_not()
        session.end(signal.SIGTERM)
    kept.rmdir()
    state.rmdir()
    state.write_text("no folder")
    session.start("listening to A keyboard")
    session.ask("pause", status=0, out="Paused until tappora resume: nothing is counted.\n",
                err="tappora: ROOT/home/.local/state/tappora: Not a directory; a restart ends the pause\n")
    session.end(signal.SIGTERM)
    state.unlink()


class Logind:
    """A mock of it on a bus of its own, with a session of this user."""

    SESSION = "/org/freedesktop/login1/session/c1"

    def __init__(self, place):
        self.address = f"unix:path={place}/bus"
        self.bus = subprocess.Popen(["dbus-daemon", "--session", "--nofork", "--print-address", f"--address={self.address}"],
                                    stdout=subprocess.PIPE)
        self.bus.stdout.readline()
        self.mock = subprocess.Popen([MOCKING, "-m", "dbusmock", "--system", "--template", "logind"],
                                     env={"DBUS_SYSTEM_BUS_ADDRESS": self.address}, stdout=subprocess.DEVNULL)
        subprocess.run(["gdbus", "wait", "--address", self.address, "org.freedesktop.login1"], check=True, timeout=PATIENCE)
        self.call("/org/freedesktop/login1", "org.freedesktop.DBus.Mock.AddSession", "string:c1", "string:seat0",
                  f"uint32:{os.getuid()}", "string:me", "boolean:true")

    def call(self, path, *words):
        subprocess.run(["dbus-send", f"--bus={self.address}", "--print-reply=literal", "--dest=org.freedesktop.login1", path,
                        *words], check=True, stdout=subprocess.DEVNULL, timeout=PATIENCE)

    def lock(self, is_locked):
        self.call(self.SESSION, "org.freedesktop.login1.Session.SetLockedHint", f"boolean:{str(is_locked).lower()}")

    def end(self):
        for process in (self.mock, self.bus):
            process.terminate()
            process.wait()


def counts_nothing_while_locked(session):
    if not HAS_MOCK:
        print("no mock of logind: locked sessions are not tested")
        return
    logind = Logind(session.world.place)
    try:
        session.environment["DBUS_SYSTEM_BUS_ADDRESS"] = logind.address
        logind.lock(True)
        session.start("listening to A keyboard")
        session.says("the session is locked: nothing is counted")
        session.counts_not()
        logind.lock(False)
        session.says("counting again")
        before = session.total()["keystrokes"]
        session.counts()
        logind.lock(True)
        session.says("the session is locked: nothing is counted")
        session.counts_not()
        session.ask("status", status=3)
        settings = session.world.root / "home/.config/tappora/settings.json"
        settings.parent.mkdir(parents=True, exist_ok=True)
        settings.write_text('{"record.pauseWhenLocked": false}')
        session.stage.set_clock(session.stage.BEGIN + 42 * 60)
        session.press()  # wakes the recorder, which looks at the settings at the end of a minute
        session.says("counting again")
        session.counts()
        session.end(signal.SIGTERM)
        expect(session.total()["keystrokes"], before + 2, "what was counted around a locked session")
    finally:
        logind.end()


def ends_a_pause_in_time(session):
    """By the real clock, with nothing else that wakes the recorder."""
    clock = session.environment.pop("FAULTS_CLOCK")
    session.start("listening to A keyboard")
    end = datetime.now(timezone.utc).replace(microsecond=0) + timedelta(seconds=2)
    with socket.socket(socket.AF_UNIX) as client:
        client.connect(str(session.sockets()[0]))
        client.send(json.dumps({"ask": "pause", "until": end.strftime("%Y-%m-%dT%H:%M:%SZ")}).encode() + b"\n")
        expect(json.loads(client.makefile().readline())["status"]["counts"], False, "it counts while it is paused")
    session.says("counting again")
    said = datetime.now(timezone.utc)
    next_minute = end.replace(second=0) + timedelta(minutes=1)
    expect(end <= said < max(next_minute, end + timedelta(seconds=20)), True, f"the pause ends at {end}, not at {said}")
    session.end(signal.SIGTERM)
    session.environment["FAULTS_CLOCK"] = clock


def keeps_the_pause_of_a_signal(session):
    session.recorder.process.send_signal(signal.SIGUSR1)
    session.says("paused: nothing is counted")
    expect(len(list((session.world.root / "home/.local/state/tappora").glob("pause-*.json"))), 1, "kept")
    session.counts_not()
    session.end(signal.SIGTERM)
    session.start("listening to A keyboard")
    session.says("paused: nothing is counted")
    session.ask("resume", status=0, out="Counting again.\n")
    session.says("counting again")
    session.counts()


def is_found_again(session):
    """Its directory goes away with a session; the next minute it is there again."""
    for path in session.sockets():
        path.unlink()
    session.ask("status", status=3)
    session.stage.set_clock(session.stage.BEGIN + 40 * 60)
    session.counts()
    session.stage.set_clock(session.stage.BEGIN + 41 * 60)
    session.counts()
    session.ask("status", status=0)


def says_where_figures_are_that_no_keyboard_is_left(session):
    session.stage.tell(f"unplug {session.stage.number}")
    session.says("no keyboard is left; waiting for one")
    expect("Nothing is counted: there is no keyboard that can be read; tappora status says more.\n" in session.ask(status=0), True,
           "the glance")
    session.ask("status", status=3)
    session.stage.plug()
    session.says(f"listening to A keyboard (/dev/input/event{session.stage.number})")


def refuses_a_name_that_is_taken(session):
    path = session.sockets()[0]
    session.end(signal.SIGTERM)
    path.write_text("not a socket")
    session.start(f"tappora status and tappora pause do not find this recorder: {path}: "
                  "something else has the name of the recorder's socket")
    session.counts()
    session.ask("pause", status=3, err="tappora: nothing is counted: no recorder counts into ROOT/data\n")
    path.unlink()
    session.end(signal.SIGTERM)


def main(programs, injector, stage, preloads):
    with tempfile.TemporaryDirectory(dir="/tmp") as place:
        session = Session(programs, Path(injector).resolve(), Stage(stage, preloads), place)
        for check in (tells_what_it_does, is_held_up_by_nobody, is_asked_by_setup, pauses_over_kills_and_ends_by_itself,
                      keeps_the_pause_of_a_signal, is_found_again,
                      says_where_figures_are_that_no_keyboard_is_left, refuses_a_name_that_is_taken):
            check(session)
        expect(session.total()["keystrokes"], 6, "what was counted, without the two in the minute of the kill")
        distrusts_what_is_kept(session)
        counts_nothing_while_locked(session)
        ends_a_pause_in_time(session)


if __name__ == "__main__":
    if len(sys.argv) != 5:
        sys.exit(__doc__)
    main(Path(sys.argv[1]).resolve(), *sys.argv[2:])
