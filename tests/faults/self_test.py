#!/usr/bin/env python3
"""Sees that the checks find what they are for, in a program with faults that are known: self_test.py INJECTOR."""

import sys
import tempfile
from pathlib import Path

from commands import Command, keys
from kills import kill_often
from run import Trial, chosen

PROGRAM = str(Path(__file__).with_name("careless.py"))
FOUND = {
    "nothing": None,
    "writes in place": "lost or doubled: ('day', '2026-09-20')",
    "adds twice": "lost or doubled: ('day', '2026-09-20')",
    "fails late": "a failure was said, though all of it took effect",
    "says done": "success was said, but not done: ('day', '2026-09-20')",
    "names nothing": "the message names no file",
    "ends oddly": "ended with 3",
    "keeps quiet": "nothing was said of what may not be safe yet",
    "leaves its temporary": "after another run, there is data/days/.",
}


def failures_of(how, injector):
    command = Command(how, (sys.executable, "-I", "-S", PROGRAM, how, "{root}/data"),
                      {"data/days/2026-09-20.org": keys((9, 0, 50))}, adds=True, most=24)
    with tempfile.TemporaryDirectory(prefix="faults-") as place:
        trial = Trial(command, "/", injector, Path(place).resolve(), None)
        for fault in chosen(command, trial.undisturbed(), thorough=False):
            trial.disturb(fault)
    return trial.failures


def found_by_kills(injector):
    """Whether kills at random moments find a program that writes in two steps what is one."""
    command = Command("adds twice", (sys.executable, "-I", "-S", PROGRAM, "adds twice", "{root}/data"),
                      {"data/days/2026-09-20.org": keys((9, 0, 50))}, adds=True)
    killed, failures = kill_often(command, "/", injector, None, 60)
    return killed and any(FOUND["adds twice"] in failure for failure in failures)


def main(injector):
    wrong = 0 if found_by_kills(injector) else 1
    print(f"kills: {'not as it should be' if wrong else 'as it should be'}")
    for how, complaint in FOUND.items():
        failures = failures_of(how, injector)
        found = any(complaint in failure for failure in failures) if complaint else not failures
        print(f"{how}: {'as it should be' if found else failures}")
        wrong += not found
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
