#!/usr/bin/env python3
"""Tries at length what must never lose or double a press: at_length.py [--kills N] PROGRAMS INJECTOR [COMMAND…]

Kills at random moments, many writers of one day, a small full disk, a vanishing folder, each failing call. `--part` chooses among these.
"""

import argparse
import functools
import os
import random
import subprocess
import sys
from concurrent.futures import ProcessPoolExecutor
from pathlib import Path

from actors import Stage
from commands import COMMANDS
from kills import kill_often
from small_disk import fill_up
from vanish import vanish_often
from writers import write_at_once

WRITERS = 50
PAGES = 8  # free pages of a small disk, from none on


def writing(asked):
    """The commands that write, those of the recorder only with a stage."""
    named = [c for c in COMMANDS if not c.reads and c.name != "remember" and (not asked.names or c.name in asked.names)]
    return [c for c in named if not c.partial or asked.stage]


def command_of(name):
    [command] = [c for c in COMMANDS if c.name == name]
    return command


def kill_one(name, asked, times):
    random.seed(f"{asked.seed} {name}")
    stage = functools.cache(lambda: Stage(*asked.stage))
    return kill_often(command_of(name), asked.programs, asked.injector, stage, times)


def kills(asked):
    commands = writing(asked)
    each = -(-asked.kills // len(commands))
    with ProcessPoolExecutor(asked.jobs) as pool:
        results = list(pool.map(functools.partial(kill_one, asked=asked, times=each), [c.name for c in commands]))
    done = sum(killed for killed, _ in results)
    line = f"kills: {len(commands) * each} of {len(commands)} commands, {done} before they were done"
    return line, [failure for _, failures in results for failure in failures]


def writers(asked):
    found = []
    for killed in (0, WRITERS // 3):
        for _ in range(asked.rounds):
            found += write_at_once(asked.programs, asked.injector, WRITERS, killed)
    return f"writers: {2 * asked.rounds} times {WRITERS} of one day at once, in half of them {WRITERS // 3} were to be killed", found


def full_disk(asked):
    """On a disk that is mounted for this, in a process of its own that may mount."""
    if not asked.may_mount:
        program = ["unshare", "--mount", "--map-root-user", sys.executable, *sys.argv, "--part", "disk", "--may-mount"]
        ended = subprocess.run(program, capture_output=True, text=True, check=False)
        [line, *found] = ended.stdout.splitlines()[1:-1] or ["small disk: not tried; ", ended.stderr]
        return line.rpartition(";")[0], found
    full, found = 0, []
    commands = [c for c in writing(asked) if not c.partial]
    for command in commands:
        times, failures = fill_up(command, asked.programs, asked.injector, PAGES)
        full += times
        found += failures
    return f"small disk: {PAGES * len(commands)} runs of {len(commands)} commands, {full} found it full", found


def vanish_one(name, asked):
    return vanish_often(command_of(name), asked.programs, asked.injector)


def folder_vanishes(asked):
    """The recorder has tests of its own for this; a picture of a folder that is gone is another one."""
    commands = [c for c in writing(asked) if not c.partial and "picture" not in c.name and c.name != "widget-write"]
    with ProcessPoolExecutor(asked.jobs) as pool:
        results = list(pool.map(functools.partial(vanish_one, asked=asked), [c.name for c in commands]))
    line = f"vanishing folder: {sum(times for times, _ in results)} times under {len(commands)} commands"
    return line, [failure for _, failures in results for failure in failures]


def each_call(asked):
    words = [sys.executable, str(Path(__file__).with_name("run.py")), "--thorough", asked.programs, asked.injector]
    words += ["--stage", *asked.stage] if asked.stage else []
    ended = subprocess.run(words + [c.name for c in writing(asked)], capture_output=True, text=True, check=False)
    lines = ended.stdout.splitlines()
    counts = [line.split(", ") for line in lines if line.endswith(" complaints") and " calls, " in line]
    faults = sum(int(words[1].split()[0]) for words in counts)
    line = f"failing calls: {faults} faults in {len(counts)} commands"
    return line, [line for line in lines if not line.endswith(" complaints")] if ended.returncode else []


PARTS = {"kills": kills, "writers": writers, "disk": full_disk, "vanish": folder_vanishes,
         "calls": each_call}


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--kills", type=int, default=10_000)
    parser.add_argument("--rounds", type=int, default=4, help="of the writers")
    parser.add_argument("--part", action="append", choices=PARTS)
    parser.add_argument("--may-mount", action="store_true", help=argparse.SUPPRESS)
    parser.add_argument("--seed", type=int, default=random.randrange(2**32))
    parser.add_argument("--jobs", type=int, default=os.cpu_count())
    parser.add_argument("--stage", nargs=2, metavar=("PROGRAM", "PRELOADS"), help="what plays a keyboard")
    parser.add_argument("programs")
    parser.add_argument("injector")
    parser.add_argument("names", nargs="*", help="commands; all that write when none is named")
    asked = parser.parse_intermixed_args()
    random.seed(asked.seed)
    print(f"seed {asked.seed}", flush=True)
    wrong = 0
    for name in ["disk"] if asked.may_mount else asked.part or PARTS:
        line, found = PARTS[name](asked)
        wrong += len(found)
        print("\n".join([f"{line}; {len(found)} complaints", *found]), flush=True)
    print(f"{wrong} complaints" if wrong else "nothing lost, nothing doubled")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
