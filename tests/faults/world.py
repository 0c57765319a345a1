"""Runs a program in a small world of its own (a data folder, a home, a place for locks), where one of its file system
calls may be disturbed by the library that injector.cpp makes."""

import errno
import os
import shutil
import signal
import subprocess
from dataclasses import dataclass
from pathlib import Path

from ledger import digest

PATIENCE = 120  # seconds after which a program is taken for one that hangs
SETUP_TIME = 1_789_000_000  # when the files of a world were written, each a minute after the one before it


@dataclass(frozen=True)
class Fault:
    """What to do at which call: an error's name, "short", "kill", "kill-later" or "full"; see injector.cpp."""

    at: int
    action: str
    later: int = 0  # microseconds

    def variables(self):
        number = getattr(errno, self.action, None)
        return {"FAULTS_AT": str(self.at), "FAULTS_DO": self.action if number is None else str(number),
                "FAULTS_LATER": str(self.later)}


@dataclass(frozen=True)
class Call:
    number: int
    name: str
    path: str

    def __str__(self):
        return f"call {self.number}, {self.name} {self.path}"


@dataclass
class Outcome:
    """How a program ended: its exit status, or a signal's number below 0."""

    status: int
    out: str
    err: str
    calls: list


class World:
    """`files` are texts by path, or bytes; {root} in them is the world's own place. A path that ends in "/" is a folder."""

    def __init__(self, place, injector, files, stage=None):
        self.place, self.injector, self.stage = Path(place), injector, stage
        self.root, self.log = self.place / "world", self.place / "calls"
        self.files = files

    def make(self):
        """Makes it as it is before a command, whatever it was."""
        shutil.rmtree(self.root, ignore_errors=True)
        for name in ("data", "home", "run"):
            (self.root / name).mkdir(parents=True, mode=0o700)
        for minute, (name, text) in enumerate(self.files.items()):
            path = self.root / self.filled(name)
            path.parent.mkdir(parents=True, exist_ok=True)
            if name.endswith("/"):
                path.mkdir(exist_ok=True)
                continue
            if isinstance(text, bytes):
                path.write_bytes(text)
            else:
                path.write_text(self.filled(text))
            os.utime(path, (SETUP_TIME + 60 * minute,) * 2)

    def filled(self, text):
        return text.replace("{root}", str(self.root)).replace("{waiting}", self.waiting())

    def waiting(self):
        """Where hours wait for the data folder."""
        return f"home/.local/state/tappora/waiting/{digest(str(self.root / 'data').encode())}"

    def environment(self, fault=None):
        preloaded = [str(self.injector), *os.environ.get("LD_PRELOAD", "").split()]
        variables = {
            "PATH": "/usr/bin:/bin",
            "HOME": f"{self.root}/home",
            "XDG_RUNTIME_DIR": f"{self.root}/run",
            "TZ": "UTC",
            "LC_ALL": "C.UTF-8",
            "NO_COLOR": "1",
            "TERM": "xterm-256color",
            "XKB_DEFAULT_LAYOUT": "none",
            "ASAN_OPTIONS": "verify_asan_link_order=0:detect_leaks=0:exitcode=99",
            "UBSAN_OPTIONS": "exitcode=99",
            "LD_PRELOAD": " ".join(preloaded),
            "FAULTS_FOLDER": str(self.root),
            "FAULTS_LOG": str(self.log),
        }
        if "TAPPORA_RESOURCES" in os.environ:
            variables["TAPPORA_RESOURCES"] = os.environ["TAPPORA_RESOURCES"]
        return variables | (fault.variables() if fault else {})

    def run(self, arguments, fault=None):
        """Runs a program to its end, with nobody to ask."""
        self.log.unlink(missing_ok=True)
        try:
            ended = subprocess.run(
                [self.filled(argument) for argument in arguments], env=self.environment(fault), cwd=self.place,
                stdin=subprocess.DEVNULL, capture_output=True, text=True, timeout=PATIENCE, check=False)
        except subprocess.TimeoutExpired as late:
            return Outcome(-signal.SIGALRM, str(late.stdout), str(late.stderr), self.calls())
        return Outcome(ended.returncode, ended.stdout, ended.stderr, self.calls())

    def calls(self):
        lines = self.log.read_text().splitlines() if self.log.exists() else []
        return [Call(int(number), name, path) for number, name, path in (line.split(" ", 2) for line in lines)]
