#!/usr/bin/env python3
"""Tries the recorder on a real kernel, in an emulated machine: run.py PROGRAMS KERNEL PLACE

PROGRAMS is a folder with built programs, KERNEL an unpacked package of a kernel, PLACE a folder for what is made here.
"""

import argparse
import random
import subprocess
import sys
import time
from pathlib import Path

import figures  # noqa: F401  each module adds its checks, in this order
import guest_system
import key_checks  # noqa: F401
import life_checks  # noqa: F401
import mouse_checks  # noqa: F401
from check import CHECKS
from lab import Lab
from machine import Failed, Machine


def start(asked):
    place = asked.place.resolve()
    place.mkdir(parents=True, exist_ok=True)
    [kernel] = asked.kernel.glob("boot/vmlinuz-*")
    system = guest_system.make(asked.programs.resolve(), asked.kernel.resolve(), place)
    subprocess.run(["truncate", "-s", "64M", place / "slow.img"], check=True)
    subprocess.run(["/usr/sbin/mkfs.ext4", "-qF", place / "slow.img"], check=True)
    return Machine(kernel, system, place)


def run_one(lab, title, function):
    """Whether a check found nothing wrong."""
    began = time.monotonic()
    try:
        lab.clean()
        said = function(lab)
        print(f"ok    {title}" + (f": {said}" if said else "") + f" ({time.monotonic() - began:.0f} s)", flush=True)
        return True
    except Failed as wrong:
        print(f"WRONG {title}: {wrong}", flush=True)
        return False


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--seed", type=int, default=random.randrange(2**32))
    parser.add_argument("--only", action="append", help="a part of the titles of checks; may be given several times")
    for name in ("programs", "kernel", "place"):
        parser.add_argument(name, type=Path)
    asked = parser.parse_args()
    random.seed(asked.seed)
    machine = start(asked)
    began = time.monotonic()
    try:
        machine.wait_until_ready()
        lab = Lab(machine)
        print(f"Linux {lab.machine.must('uname -r').strip()} runs, seed {asked.seed}", flush=True)
        chosen = [(title, function) for title, function in CHECKS if any(part in title for part in asked.only or [""])]
        right = sum(run_one(lab, title, function) for title, function in chosen)
    finally:
        machine.end()
    print(f"{right} of {len(chosen)} checks found nothing wrong, in {time.monotonic() - began:.0f} seconds")
    return 0 if right == len(chosen) else 1


if __name__ == "__main__":
    sys.exit(main())
