#!/usr/bin/env python3
"""Asks, pauses and resumes a live recorder: run.py PROGRAMS INJECTOR STAGE PRELOADS

The recorder listens to a keyboard that the stage plays, and its clock stands still unless it is set.
"""
import json
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


class Session:
    """A data folder, a keyboard, and a recorder that can be started and ended."""

    def __init__(self, programs, injector, stage, place):
        self.programs, self.stage = programs, stage
        self.world = World(place, injector, {})
        self.world.make()
        stage.plug()
        self.environment = self.world.environment() | stage.variables(self.world)

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
        """Runs `tappora` and compares what it prints, in which the data folder is DATA."""
        ended = subprocess.run([str(self.programs / "tappora"), *words], env=self.environment, capture_output=True,
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
        return json.loads(self.ask("summary", "--json", "--folder", f"{self.world.root}/data", "--from", "2026-09-20",
                                   "--to", "2026-09-20", status=0))


def expect(got, wanted, what):
    if got != wanted:
        sys.exit(f"{what}: {got!r} instead of {wanted!r}")


def facts(headline, since, keyboard, *rows):
    usual = [("Folder", "ROOT/data"), ("Since", since), ("Listens to", f"A keyboard (/dev/input/event{keyboard})")]
    return headline + "".join(f"{title:<12} {value}\n" for title, value in [*usual, *rows])


def tells_what_it_does(session):
    session.start("listening to A keyboard")
    session.ask("status", status=0, out=facts("Counting.\n", "10:00", 1, ("Last stored", "nothing yet")))
    session.counts()
    session.stage.set_clock(session.stage.BEGIN + 60)
    session.counts()
    session.ask("status", status=0, out=facts("Counting.\n", "10:00", 1, ("Last stored", "10:01: 1 press, 0 clicks")))
    answer = json.loads(session.ask("status", "--json", "--folder", f"{session.world.root}/data", status=0))
    expect((answer["counts"], answer["recorders"][0]["process"]), (True, session.recorder.process.pid), "--json")
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


def pauses_over_kills_and_ends_by_itself(session):
    session.ask("pause", "30m", status=0, out="Paused until 10:31: nothing is counted.\n")
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
    expect(datetime.now(timezone.utc) >= end, True, "it waits for the end")
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


def refuses_a_name_that_is_taken(session):
    path = session.sockets()[0]
    session.end(signal.SIGTERM)
    path.write_text("not a socket")
    session.start(f"tappora status and tappora pause do not find this recorder: {path}: "
                  "something else has the name of the recorder's socket")
    session.counts()
    session.ask("pause", status=3, err="tappora: no recorder runs: nothing is being counted\n")
    path.unlink()
    session.end(signal.SIGTERM)


def main(programs, injector, stage, preloads):
    with tempfile.TemporaryDirectory(dir="/tmp") as place:
        session = Session(programs, Path(injector).resolve(), Stage(stage, preloads), place)
        for check in (tells_what_it_does, is_held_up_by_nobody, pauses_over_kills_and_ends_by_itself,
                      keeps_the_pause_of_a_signal, is_found_again, refuses_a_name_that_is_taken,
                      ends_a_pause_in_time):
            check(session)
        expect(session.total()["keystrokes"], 6, "what was counted, without the two in the minute of the kill")


if __name__ == "__main__":
    if len(sys.argv) != 5:
        sys.exit(__doc__)
    main(Path(sys.argv[1]).resolve(), *sys.argv[2:])
