"""One recorder in the emulated machine, and what it wrote."""

import shlex
import sys
from pathlib import Path

from machine import Failed
from typist import Typist

sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "tests/faults"))
import ledger  # noqa: E402  reads the files without the program

FOLDER = "/home/ada/Keys"
LOG = "/tmp/recorder.log"
FIRST = "2026-09-20"
DISTANCE = 4  # the column of the mouse's table that nobody can foretell


def label_text(label):
    return " ".join(map(str, label))


class Lab:
    def __init__(self, machine):
        self.machine, self.typist = machine, Typist(machine)
        self.recorder = None

    # The clock

    def set_clock(self, moment):
        """Sets the machine's clock, as in "2026-09-20 23:59:50"."""
        self.machine.must(f"date -s {shlex.quote(moment)}")
        self.typist.at(moment[:10], int(moment[11:13]))

    def end_minute(self):
        """Sets the clock a minute forward, which ends the minute for the recorder, and waits until it has stored it."""
        times = f"$(ls -l --full-time {self.folder}/days 2>/dev/null | md5sum)"
        self.machine.must(f'before="{times}"; echo "$before" >/tmp/before; date -s @$(($(date +%s) + 60))')
        self.machine.wait_for(f'[ "{times}" != "$(cat /tmp/before)" ]', "a minute is stored")

    # The recorder

    def start(self, *options, user="ada", folder=FOLDER, waits=True):
        self.folder = folder
        into = ("--folder", folder) if folder else ()
        words = " ".join(map(shlex.quote, ("/tappora/tappora-record", *into, *options)))
        begin = f"echo $$ >/tmp/pid; cd /home/{user}; export HOME=/home/{user}; exec {as_user(user)} {words}"
        self.machine.must(f"rm -f {LOG} /tmp/pid /tmp/status; (sh -c {shlex.quote(begin)} >{LOG} 2>&1; echo $? >/tmp/status) &")
        self.machine.wait_for("[ -s /tmp/pid ]", "the recorder starts")
        self.recorder = self.machine.must("cat /tmp/pid").strip()
        if waits:
            self.heard("counts go to")

    def heard(self, text):
        """Waits until the recorder has said this."""
        self.machine.wait_for(f"grep -qF -e {shlex.quote(text)} {LOG} || ! kill -0 {self.recorder} 2>/dev/null", text)
        if text not in self.said():
            raise Failed(f'the recorder did not say "{text}": {self.said()}')

    def heard_times(self, text, times):
        self.machine.wait_for(f"[ $(grep -cF -e {shlex.quote(text)} {LOG}) -ge {times} ]", text)

    def said(self):
        return self.machine.read(LOG) or ""

    def end(self, signal="TERM"):
        """Ends the recorder, and gives its exit status."""
        self.machine.run(f"kill -{signal} {self.recorder}")
        return self.ended()

    def ended(self):
        """Waits until the recorder has ended, and gives its exit status."""
        self.recorder = None
        self.machine.wait_for("[ -s /tmp/status ]", "the recorder ends")
        return int(self.machine.must("cat /tmp/status"))

    # What it wrote

    def counts(self, day=FIRST):
        """What a day's file holds, without the distance; nothing when there is none."""
        text = self.machine.read(f"{self.folder}/days/{day}.org")
        counts = ledger.day_counts(text)[0] if text else {}
        self.distance = sum(count for label, count in counts.items() if label[0] == "mouse" and label[2] == DISTANCE)
        return {label: count for label, count in counts.items() if count and (label[0] != "mouse" or label[2] != DISTANCE)}

    def complaints(self):
        """How the files differ from what was typed."""
        found = []
        for day, expected in self.typist.expected.items():
            counted = self.counts(day)
            for label in sorted(set(expected) | set(counted), key=str):
                if expected.get(label, 0) != counted.get(label, 0):
                    found.append(f"{day} {label_text(label)}: {expected.get(label, 0)} typed, {counted.get(label, 0)} counted")
        return found

    # Between checks

    def clean(self):
        if self.recorder:
            self.end("KILL")
        self.machine.run("killall -9 tappora-record tappora-practice; rm -rf /home/ada/* /home/ada/.[a-z]* /home/bob/* /tmp/tappora-*")
        self.machine.must(f"date -s '{FIRST} 10:00:05'")
        self.machine.must("mkdir /home/ada/Keys && chown ada: /home/ada/Keys")
        self.typist.forget()
        self.typist.start(FIRST, 10)
        self.folder = FOLDER


def as_user(user):
    return f"/usr/bin/setpriv --reuid {user} --regid {user} --init-groups"
