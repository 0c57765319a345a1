#!/usr/bin/env python3
"""Disturbs each file system call of a command in turn, and checks what becomes of it; CONTRIBUTING.md explains.

    run.py PROGRAMS INJECTOR COMMAND…     the commands are in commands.py
    run.py --thorough PROGRAMS INJECTOR   each error at each call, of all commands, which takes long
"""

import argparse
import functools
import os
import sys
import tempfile
from pathlib import Path

import ledger
from actors import Stage
from checks import CHANGES, Judgement, errors_of
from commands import COMMANDS
from world import Fault, World

IN_MEMORY = "/dev/shm"  # where flushing costs nothing


class Trial:
    """One command, undisturbed and then disturbed in all ways."""

    def __init__(self, command, programs, injector, place, stage):
        self.command, self.programs = command, Path(programs).resolve()
        self.world = World(place, Path(injector).resolve(), command.files, stage)
        self.known = {}  # the outcome of another run, by what was there
        self.failures = []

    def go(self, fault=None):
        play = self.command.play
        if play:
            return play(self.world, self.programs, fault)
        return self.world.run((str(self.programs / self.command.arguments[0]), *self.command.arguments[1:]), fault)

    def undisturbed(self):
        """Learns what the command does when nothing fails, once and twice."""
        self.world.make()
        before = ledger.read(self.world.root)
        plain = self.go()
        self.judgement = Judgement(self.command, self.world.root, before, ledger.read(self.world.root), plain)
        self.tree = ledger.tree(self.world.root)
        self.go()
        self.twice, self.twice_tree = ledger.read(self.world.root), ledger.tree(self.world.root)
        if plain.status != 0:
            raise SystemExit(f"{self.command.name}: fails undisturbed: {plain.err}")
        return plain.calls

    def disturb(self, fault):
        self.world.make()
        outcome = self.go(fault)
        call = next((call for call in outcome.calls if call.number == fault.at), None)
        if not call:
            return
        now = ledger.read(self.world.root)
        found = self.judgement.complaints(fault, call, outcome, now)
        found += [f"wrong for good: {text}" for text in ledger.month_problems(self.world.root)]
        found += self.another_run(now)
        for text in found:
            said = (outcome.err or outcome.out).strip()
            self.failures.append(f"{self.command.name}: {fault.action} at {call}: {text}\n    it said: {said}")

    def another_run(self, earlier):
        state = repr(ledger.tree(self.world.root))
        if state not in self.known:
            outcome = self.go()
            now, tree = ledger.read(self.world.root), ledger.tree(self.world.root)
            self.known[state] = self.judgement.after_again(outcome, earlier, now, self.twice) + self.leftovers(tree)
        return self.known[state]

    def leftovers(self, tree):
        """Files of a world in its end that there are not when nothing failed. One that found nothing left to be done
        leaves a temporary file to the next writer."""
        known = {**self.tree, **self.twice_tree}
        return [f"after another run, there is {name}" for name in tree
                if name not in known and not (self.command.again and name.endswith(ledger.TEMPORARY))]


def place_for(command):
    """A live recorder would take a folder in /dev for a device of the stage."""
    return IN_MEMORY if not command.partial and os.access(IN_MEMORY, os.W_OK) else None


def faults_for(calls, thorough):
    """The ways to disturb these calls: in an ordinary run, one error at each, and no close of what was read."""
    turns = {}
    for before, call in zip([None, *calls], calls):
        errors = errors_of(call)
        turn = turns[call.name] = turns.get(call.name, -1) + 1
        if thorough or call.name != "close":
            for error in errors if thorough else errors[turn % len(errors):][:1]:
                yield Fault(call.number, error)
        if thorough or call.name in CHANGES or (before and before.name in CHANGES):
            yield Fault(call.number, "kill")
        if call.name in ("open-new", "write", "mkdir"):
            yield Fault(call.number, "full")


def spread(faults, most):
    """At most so many of them, from the first to the last."""
    step = max(1.0, len(faults) / most)
    return [faults[int(index * step)] for index in range(min(len(faults), most))]


def chosen(command, calls, thorough):
    """The faults of this run: two of three at calls that change something."""
    faults = list(faults_for(calls, thorough))
    if thorough:
        return faults
    changes = [fault for fault in faults if calls[fault.at - 1].name in CHANGES]
    others = [fault for fault in faults if calls[fault.at - 1].name not in CHANGES]
    return sorted(spread(changes, command.most * 2 // 3) + spread(others, command.most // 3), key=lambda f: f.at)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--thorough", action="store_true")
    parser.add_argument("--only", type=int, help="the number of a call")
    parser.add_argument("--stage", nargs=2, metavar=("PROGRAM", "PRELOADS"), help="what plays a keyboard")
    parser.add_argument("programs")
    parser.add_argument("injector")
    parser.add_argument("names", nargs="*")
    asked = parser.parse_intermixed_args()
    failures, tried = [], 0
    stage = functools.cache(lambda: Stage(*asked.stage))
    for command in (c for c in COMMANDS if c.name in asked.names or not asked.names):
        with tempfile.TemporaryDirectory(prefix="faults-", dir=place_for(command)) as place:
            trial = Trial(command, asked.programs, asked.injector, Path(place).resolve(), stage)
            calls = trial.undisturbed()
            faults = [f for f in chosen(command, calls, asked.thorough) if asked.only in (None, f.at)]
            for fault in faults:
                trial.disturb(fault)
            found = len(trial.failures)
            print(f"{command.name}: {len(calls)} calls, {len(faults)} faults, {found} complaints", flush=True)
            failures += trial.failures
            tried += len(faults)
    print("\n".join(failures))
    return 1 if failures or not tried else 0


if __name__ == "__main__":
    sys.exit(main())
