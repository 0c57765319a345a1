#!/usr/bin/env python3
"""Tries at length what must never lose or double a press: at_length.py [--kills N] [--short] PROGRAMS INJECTOR

Kills at random moments, each failing call (unless it is to be short), a small full disk, many writers of one day.
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
from writers import write_at_once

WRITERS = 50
ROUNDS = 4
PAGES = 8  # free pages of a small disk, from none on


def writing(asked):
    """The commands that write, those of the recorder only with a stage."""
    named = [c for c in COMMANDS if not c.reads and c.name != "remember" and (not asked.names or c.name in asked.names)]
    return [c for c in named if not c.partial or asked.stage]


def kill_one(name, asked, times):
    random.seed(f"{asked.seed} {name}")
    [command] = [c for c in COMMANDS if c.name == name]
    stage = functools.cache(lambda: Stage(*asked.stage))
    return kill_often(command, asked.programs, asked.injector, stage, times)


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
    rounds = 1 if asked.short else ROUNDS
    for killed in (0, WRITERS // 3):
        for _ in range(rounds):
            found += write_at_once(asked.programs, asked.injector, WRITERS, killed)
    return f"writers: {2 * rounds} times {WRITERS} of one day at once, in half of them {WRITERS // 3} were to be killed", found


def full_disk(asked):
    """On a disk of its own, in a process that may mount one."""
    if os.environ.get("FAULTS_MAY_MOUNT") != "1":
        again = ["unshare", "--mount", "--map-root-user", sys.executable, __file__, *sys.argv[1:], "--only-disk"]
        ended = subprocess.run(again, env=os.environ | {"FAULTS_MAY_MOUNT": "1"}, capture_output=True, text=True, check=False)
        lines = ended.stdout.splitlines()
        return (lines[0], lines[1:]) if lines else ("small disk: not tried", [ended.stderr])
    full, found = 0, []
    commands = [c for c in writing(asked) if not c.partial]
    for command in commands:
        times, failures = fill_up(command, asked.programs, asked.injector, PAGES)
        full += times
        found += failures
    return f"small disk: {PAGES * len(commands)} times, {full} times it was full", found


def each_call(asked):
    words = [sys.executable, str(Path(__file__).with_name("run.py")), "--thorough", asked.programs, asked.injector]
    words += ["--stage", *asked.stage] if asked.stage else []
    ended = subprocess.run(words + [c.name for c in writing(asked)], capture_output=True, text=True, check=False)
    lines = ended.stdout.splitlines()
    counts = [line.split(", ") for line in lines if line.endswith(" complaints") and " calls, " in line]
    faults = sum(int(words[1].split()[0]) for words in counts)
    line = f"failing calls: {faults} faults in {len(counts)} commands"
    return line, [line for line in lines if not line.endswith(" complaints")] if ended.returncode else []


def parts(asked):
    if asked.only_disk:
        return [full_disk]
    return [kills, writers] if asked.short else [kills, writers, full_disk, each_call]


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--kills", type=int, default=10_000)
    parser.add_argument("--short", action="store_true", help="kills and writers alone, one round of these")
    parser.add_argument("--only-disk", action="store_true")
    parser.add_argument("--seed", type=int, default=random.randrange(2**32))
    parser.add_argument("--jobs", type=int, default=os.cpu_count())
    parser.add_argument("--stage", nargs=2, metavar=("PROGRAM", "PRELOADS"), help="what plays a keyboard")
    parser.add_argument("programs")
    parser.add_argument("injector")
    parser.add_argument("names", nargs="*", help="commands; all that write when none is named")
    asked = parser.parse_intermixed_args()
    random.seed(asked.seed)
    if not asked.only_disk:
        print(f"seed {asked.seed}", flush=True)
    wrong = 0
    for part in parts(asked):
        line, found = part(asked)
        wrong += len(found)
        print("\n".join([f"{line}; {len(found)} complaints", *found] if not asked.only_disk else [line, *found]), flush=True)
    if not asked.only_disk:
        print("nothing lost, nothing doubled" if not wrong else f"{wrong} complaints")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
